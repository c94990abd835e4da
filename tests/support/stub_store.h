// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "host/host.h"
#include "src/channel/session_record.h"
#include "tests/support/bytes.h"

namespace test {

/// A driver whose stores all hold the same policies and whose version pair is 3, 41. Where a test is not about the
/// requests themselves, it answers as often as it is asked.
class StubStore : public host::Device {
 public:
  explicit StubStore(std::vector<Bytes> packed);
  ~StubStore();
  StubStore(const StubStore&) = delete;
  StubStore& operator=(const StubStore&) = delete;

  /// What the store claims to hold, whatever it holds.
  void claim(std::uint32_t count) { claimed_ = count; }
  /// The nth request fails, counted from 1.
  void failAt(int nth) { failAt_ = nth; }
  [[nodiscard]] const std::vector<std::uint32_t>& codes() const { return codes_; }

  QtfSession* session() { return &session_; }

  bool open(HANDLE /*handle*/) override { return true; }
  void close(HANDLE /*handle*/) override {}
  bool control(HANDLE handle, const host::DeviceRequest& request) override;

 private:
  void fetch(Bytes& record) const;

  std::vector<Bytes> packed_;
  std::uint32_t claimed_;
  int failAt_ = 0;
  std::vector<std::uint32_t> codes_;
  QtfSession session_{};
};

}  // namespace test
