// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "host/host.h"
#include "tests/support/bytes.h"
#include "tests/support/scripted_driver.h"

namespace test {

/// A request as it arrived: where its buffers are, and what both held.
struct WitnessedRequest {
  host::DeviceRequest call;
  Bytes input;
  Bytes outputBefore;
  DWORD returnedBefore;
};

/// A device that writes down every request and answers it with success or failure.
class WitnessDevice final : public host::Device {
 public:
  explicit WitnessDevice(const std::u16string& path = u"\\\\?\\witness",
                         const GUID& of = ScriptedDriver::kInterfaceClass) {
    host::attachDevice(*this, of, path);
  }
  ~WitnessDevice() { host::detachDevice(*this); }
  WitnessDevice(const WitnessDevice&) = delete;
  WitnessDevice& operator=(const WitnessDevice&) = delete;

  bool open(HANDLE /*handle*/) override {
    if (refusesOpen) return false;
    ++openings;
    return true;
  }

  bool control(HANDLE handle, const host::DeviceRequest& request) override {
    handles.push_back(handle);
    requests.push_back({request, copyOf(request.input, request.inputLength),
                        copyOf(request.output, request.outputLength),
                        request.returned != nullptr ? *request.returned : 0xFFFFFFFF});
    return succeeds;
  }

  void close(HANDLE /*handle*/) override { ++closings; }

  bool refusesOpen = false;
  bool succeeds = true;
  int openings = 0;
  int closings = 0;
  std::vector<HANDLE> handles;
  std::vector<WitnessedRequest> requests;

 private:
  static Bytes copyOf(const void* buffer, DWORD length) {
    const auto* first = static_cast<const std::uint8_t*>(buffer);
    return first == nullptr ? Bytes{} : Bytes(first, first + length);
  }
};

}  // namespace test
