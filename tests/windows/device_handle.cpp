// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/device_handle.h"

#include <gtest/gtest.h>
// after windows.h, which it needs
#include <cfgmgr32.h>

namespace test {

DeviceHandle::DeviceHandle() : handle_(INVALID_HANDLE_VALUE) {
  GUID interfaceClass = {0x9DC9718B, 0x59BF, 0x43EE, {0x94, 0xED, 0x34, 0xBB, 0x82, 0x3D, 0xCE, 0xDF}};
  wchar_t paths[512] = {};
  EXPECT_EQ(CM_Get_Device_Interface_ListW(&interfaceClass, nullptr, paths, 512, 0), static_cast<DWORD>(CR_SUCCESS));
  handle_ = CreateFileW(paths, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                        FILE_ATTRIBUTE_NORMAL, nullptr);
  EXPECT_NE(handle_, INVALID_HANDLE_VALUE) << "error " << GetLastError();
}

void DeviceHandle::close() {
  if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
  handle_ = INVALID_HANDLE_VALUE;
}

void DeviceHandle::moveTo(HANDLE process) {
  HANDLE moved = nullptr;
  EXPECT_TRUE(DuplicateHandle(GetCurrentProcess(), handle_, process, &moved, 0, FALSE, DUPLICATE_SAME_ACCESS));
  close();
}

DeviceHandle::Answer DeviceHandle::request(DWORD code, const Bytes& input, DWORD outputLength) const {
  Bytes bytes = input;
  Answer answer{0, Bytes(outputLength, 0xA5), 0};
  if (!DeviceIoControl(handle_, code, bytes.data(), static_cast<DWORD>(bytes.size()), answer.output.data(),
                       outputLength, &answer.returned, nullptr))
    answer.error = GetLastError();
  return answer;
}

}  // namespace test
