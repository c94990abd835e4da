// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <source_location>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/host.h"
#include "src/channel/session_record.h"
#include "tests/support/bytes.h"

namespace test {

/// How a request's buffers must stand to each other.
enum class BufferForm { kSame, kSplit, kIn, kOut };

/// One request that must come, and what is answered.
class Exchange {
 public:
  Exchange(std::uint32_t code, BufferForm form, std::source_location where) : code_(code), form_(form), where_(where) {}

  /// Every byte of the request. Without it the exchange expects none, which no request meets.
  Exchange& request(Bytes bytes) {
    request_ = std::move(bytes);
    return *this;
  }
  Exchange& request(std::string_view text) { return request(hex(text)); }
  /// Any bytes, of this length.
  Exchange& anyRequest(std::size_t length) {
    anyLength_ = length;
    return *this;
  }
  /// The length of the answer buffer, where it is not the request's.
  Exchange& answerLength(std::size_t length) {
    answerLength_ = length;
    return *this;
  }
  /// Bytes written to the answer buffer from its start; what they do not reach keeps what it holds.
  Exchange& reply(Bytes bytes) {
    reply_.emplace_back(0, std::move(bytes));
    return *this;
  }
  Exchange& reply(std::string_view text) { return reply(hex(text)); }
  Exchange& replyAt(std::size_t offset, Bytes bytes) {
    reply_.emplace_back(offset, std::move(bytes));
    return *this;
  }
  Exchange& replyWord(std::size_t offset, std::uint32_t word) {
    return replyAt(offset, Record{4}.u32(0, word).bytes());
  }
  /// No bytes-returned variable is passed.
  Exchange& withoutCount() {
    counted_ = false;
    return *this;
  }
  /// The request fails, after the reply, if any, has been written.
  Exchange& fails() {
    fails_ = true;
    return *this;
  }

 private:
  friend class ScriptedDriver;

  std::uint32_t code_;
  BufferForm form_;
  std::source_location where_;
  Bytes request_;
  std::optional<std::size_t> anyLength_;
  std::optional<std::size_t> answerLength_;
  std::vector<std::pair<std::size_t, Bytes>> reply_;
  bool counted_ = true;
  bool fails_ = false;
};

/// A driver that takes exactly the requests of its script, in order, and fails the test on anything else or on
/// anything left over.
class ScriptedDriver : public host::Device {
 public:
  static constexpr char16_t kPath[] = u"\\\\?\\root#system#0000#{9dc9718b-59bf-43ee-94ed-34bb823dcedf}";
  static constexpr GUID kInterfaceClass = {
      0x9DC9718B, 0x59BF, 0x43EE, {0x94, 0xED, 0x34, 0xBB, 0x82, 0x3D, 0xCE, 0xDF}};

  ScriptedDriver() { host::attachDevice(*this, kInterfaceClass, kPath); }
  virtual ~ScriptedDriver();
  ScriptedDriver(const ScriptedDriver&) = delete;
  ScriptedDriver& operator=(const ScriptedDriver&) = delete;

  /// One buffer is request and answer.
  Exchange& expectSame(std::uint32_t code, std::source_location where = std::source_location::current()) {
    return script_.emplace_back(code, BufferForm::kSame, where);
  }
  /// The answer goes to a buffer of its own.
  Exchange& expectSplit(std::uint32_t code, std::source_location where = std::source_location::current()) {
    return script_.emplace_back(code, BufferForm::kSplit, where);
  }
  /// A request without an answer buffer.
  Exchange& expectIn(std::uint32_t code, std::source_location where = std::source_location::current()) {
    return script_.emplace_back(code, BufferForm::kIn, where).answerLength(0);
  }
  /// An answer buffer, of answerLength(), without a request.
  Exchange& expectOut(std::uint32_t code, std::source_location where = std::source_location::current()) {
    return script_.emplace_back(code, BufferForm::kOut, where);
  }

  /// Every answer's byte count from now on, whatever the answer's length.
  void report(DWORD count) { reported_ = count; }

  [[nodiscard]] int openHandles() const { return openHandles_; }
  /// Where each request came from since this was asked last.
  std::vector<HANDLE> takeRequestsOn() { return std::exchange(requestsOn_, {}); }
  /// The answer buffer of the last request.
  [[nodiscard]] const void* answeredAt() const { return answeredAt_; }
  [[nodiscard]] std::size_t requestsServed() const { return next_; }

  bool open(HANDLE handle) override;
  bool control(HANDLE handle, const host::DeviceRequest& request) override;
  void close(HANDLE handle) override;

 private:
  [[nodiscard]] std::string title(const Exchange& exchange) const;
  static std::string formMismatch(const Exchange& exchange, const host::DeviceRequest& request);
  static std::string mismatch(const Exchange& exchange, const host::DeviceRequest& request);

  std::deque<Exchange> script_;
  std::size_t next_ = 0;
  int openHandles_ = 0;
  std::optional<DWORD> reported_;
  std::vector<HANDLE> requestsOn_;
  const void* answeredAt_ = nullptr;
};

/// A session on the scripted driver, made by hand so that no traffic precedes the test's own.
class OpenSession {
 public:
  explicit OpenSession(ScriptedDriver& driver);
  ~OpenSession();
  OpenSession(const OpenSession&) = delete;
  OpenSession& operator=(const OpenSession&) = delete;
  operator QtfSession*() { return &session_; }  // NOLINT(google-explicit-constructor): stands for the pointer
  QtfSession* operator->() { return &session_; }

 private:
  QtfSession session_{};
};

}  // namespace test
