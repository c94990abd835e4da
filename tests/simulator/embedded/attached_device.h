// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/windows_api.h"
#include "tests/simulator/embedded/client.h"

namespace test {

/// Where the simulated driver's device is, once it is attached.
inline constexpr const char16_t* kPath = u"\\\\?\\root#system#0000#{9dc9718b-59bf-43ee-94ed-34bb823dcedf}";

inline HANDLE openDevice() {
  return CreateFileW(kPath, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

/// The verdict on a small policy; 1 as well when the request failed.
inline std::uint32_t addThrough(HANDLE device, std::uint32_t id) {
  Bytes record = addRequest(simplePolicy(id));
  DWORD returned = 0;
  if (!DeviceIoControl(device, kModifyPb, record.data(), 4000, record.data(), 4000, &returned, nullptr)) return 1;
  return word(record, 3980);
}

}  // namespace test
