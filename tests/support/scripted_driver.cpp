// SPDX-License-Identifier: Apache-2.0
#include "tests/support/scripted_driver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>

namespace test {
namespace {

std::string hexCode(std::uint32_t code) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "0x%08x", code);
  return text.data();
}

std::string lengths(const char* what, std::size_t actual, std::size_t expected) {
  return std::string{what} + " length is " + std::to_string(actual) + ", expected " + std::to_string(expected);
}

}  // namespace

ScriptedDriver::~ScriptedDriver() {
  for (; next_ < script_.size(); ++next_) ADD_FAILURE() << title(script_[next_]) << ": never came";
  EXPECT_EQ(openHandles_, 0) << "handles left open";
  host::detachDevice(*this);
}

bool ScriptedDriver::open(HANDLE /*handle*/) {
  ++openHandles_;
  return true;
}

void ScriptedDriver::close(HANDLE /*handle*/) { --openHandles_; }

std::string ScriptedDriver::title(const Exchange& exchange) const {
  return "exchange " + std::to_string(next_ + 1) + " of " + std::to_string(script_.size()) + " (" +
         hexCode(exchange.code_) + "), set at " + exchange.where_.file_name() + ":" +
         std::to_string(exchange.where_.line());
}

std::string ScriptedDriver::formMismatch(const Exchange& exchange, const host::DeviceRequest& request) {
  const bool noInput = exchange.form_ == BufferForm::kOut;
  const bool noOutput = exchange.form_ == BufferForm::kIn;
  if (noInput && request.input != nullptr) return "a request buffer was passed";
  if (noOutput && request.output != nullptr) return "an answer buffer was passed";
  if (noInput || noOutput) return {};
  const bool same = request.input == request.output;
  if (same == (exchange.form_ == BufferForm::kSame)) return {};
  return same ? "one buffer" : "two buffers";
}

std::string ScriptedDriver::mismatch(const Exchange& exchange, const host::DeviceRequest& request) {
  if (request.code != exchange.code_) return "the code is " + hexCode(request.code);
  if (request.overlapped != nullptr) return "an overlapped structure was passed";
  if (exchange.counted_ != (request.returned != nullptr))
    return exchange.counted_ ? "no bytes-returned variable was passed" : "a bytes-returned variable was passed";
  if (exchange.counted_ && *request.returned != 0) return "the bytes-returned variable is not zero";
  if (auto what = formMismatch(exchange, request); !what.empty()) return what;
  const std::size_t length = exchange.anyLength_.value_or(exchange.request_.size());
  if (request.inputLength != length) return lengths("request", request.inputLength, length);
  const std::size_t answer = exchange.answerLength_.value_or(length);
  if (request.outputLength != answer) return lengths("answer", request.outputLength, answer);
  if (exchange.anyLength_) return {};
  return difference({static_cast<const std::uint8_t*>(request.input), request.inputLength}, exchange.request_);
}

bool ScriptedDriver::control(HANDLE handle, const host::DeviceRequest& request) {
  requestsOn_.push_back(handle);
  answeredAt_ = request.output;
  if (next_ == script_.size()) {
    ADD_FAILURE() << "request " << hexCode(request.code) << " after the end of the script";
    return false;
  }
  const auto& exchange = script_[next_];
  if (const auto what = mismatch(exchange, request); !what.empty()) ADD_FAILURE() << title(exchange) << ": " << what;
  ++next_;
  for (const auto& [offset, bytes] : exchange.reply_) {
    if (request.output == nullptr || offset + bytes.size() > request.outputLength) {
      ADD_FAILURE() << title(exchange) << ": the reply does not fit the answer buffer";
      return false;
    }
    std::ranges::copy(bytes, static_cast<std::uint8_t*>(request.output) + offset);
  }
  if (request.returned != nullptr) *request.returned = reported_.value_or(request.outputLength);
  return !exchange.fails_;
}

OpenSession::OpenSession(ScriptedDriver& /*driver*/) {
  session_.handle = CreateFileW(ScriptedDriver::kPath, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  EXPECT_NE(session_.handle, INVALID_HANDLE_VALUE);
}

OpenSession::~OpenSession() { CloseHandle(session_.handle); }

}  // namespace test
