// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace tool::lsp {

/// The most bytes of a message's header, and of what follows it. A document that is read has half of that.
inline constexpr std::size_t kLongestHeader = 4096;
inline constexpr std::size_t kLongestBody = std::size_t{32} << 20;

/// What came in next.
struct Incoming {
  enum class Kind : std::uint8_t {
    kMessage,
    /// a message that is longer than any that is read, and was left out
    kTooLong,
    /// nothing more comes
    kEnd,
    /// what came is no header, so that nobody knows where the next one begins; or it ends in a message
    kBroken
  };
  Kind kind;
  std::string body = {};
};

/// Cuts a stream of bytes into messages, each of which has a header that says its length.
class MessageReader {
 public:
  explicit MessageReader(std::FILE* stream) : stream_(stream) {}

  /// Waits for the next message.
  Incoming next();

 private:
  std::optional<std::string> line();
  std::optional<std::uint64_t> header();
  Incoming body(std::uint64_t length);
  bool skip(std::uint64_t length);

  std::FILE* stream_;
  /// bytes that the header at hand may still have
  std::size_t room_ = 0;
  bool hasBegun_ = false;
};

/// A message with its header.
std::string framed(std::string_view body);

}  // namespace tool::lsp
