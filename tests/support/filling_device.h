// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <optional>

#include "tests/support/scripted_driver.h"

namespace test {

/// A device that fills every answer and writes down where the last request came from.
class FillingDevice : public host::Device {
 public:
  static constexpr std::uint8_t kFill = 0x11;

  FillingDevice() { host::attachDevice(*this, ScriptedDriver::kInterfaceClass, ScriptedDriver::kPath); }
  ~FillingDevice() { host::detachDevice(*this); }
  FillingDevice(const FillingDevice&) = delete;
  FillingDevice& operator=(const FillingDevice&) = delete;

  bool open(HANDLE /*handle*/) override { return true; }
  bool control(HANDLE handle, const host::DeviceRequest& request) override {
    requestOn = handle;
    last = request;
    auto* answer = static_cast<std::uint8_t*>(request.output);
    if (answer != nullptr) answerBefore.assign(answer, answer + request.outputLength);
    if (answer != nullptr) std::fill_n(answer, request.outputLength, kFill);
    if (request.returned != nullptr) {
      countBefore = *request.returned;
      *request.returned = reported.value_or(request.outputLength);
    }
    return true;
  }
  void close(HANDLE /*handle*/) override {}

  std::optional<DWORD> reported;
  HANDLE requestOn = nullptr;
  host::DeviceRequest last{};
  DWORD countBefore = kPoisonWord;
  Bytes answerBefore;
};

}  // namespace test
