// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vqs/session.h>
#include "bench/harness/require.h"
#include "host/device.h"

namespace bench {

/// A device that does nothing and says that it did it, so that what is left to measure is the library.
class QuietDevice final : public host::Device {
 public:
  QuietDevice() {
    constexpr GUID kDriverInterface = {0x9DC9718B, 0x59BF, 0x43EE, {0x94, 0xED, 0x34, 0xBB, 0x82, 0x3D, 0xCE, 0xDF}};
    require(host::attachDevice(*this, kDriverInterface, u"\\\\?\\quiet"), "a device");
  }
  ~QuietDevice() { host::detachDevice(*this); }
  QuietDevice(QuietDevice&&) = delete;

  bool open(HANDLE /*handle*/) override { return true; }
  bool control(HANDLE /*handle*/, const host::DeviceRequest& /*request*/) override { return true; }
  void close(HANDLE /*handle*/) override {}
};

/// An open session.
class Session {
 public:
  Session() { require(vqsInitialize(&session_) == VQS_SUCCESS, "a session"); }
  ~Session() { vqsUninitialize(session_); }
  Session(Session&&) = delete;

  [[nodiscard]] QtfSession* get() const { return session_; }

 private:
  QtfSession* session_ = nullptr;
};

}  // namespace bench
