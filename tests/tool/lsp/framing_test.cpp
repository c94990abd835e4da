// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tool/lsp/framing.h"
#include "tool/system/paths.h"

namespace test {
namespace {

using tool::lsp::Incoming;
using tool::lsp::MessageReader;
using Kind = tool::lsp::Incoming::Kind;

/// A stream of these bytes.
tool::File streamOf(const std::string& bytes) {
  tool::File file{std::tmpfile()};
  EXPECT_EQ(std::fwrite(bytes.data(), 1, bytes.size(), file.get()), bytes.size());
  EXPECT_EQ(std::fseek(file.get(), 0, SEEK_SET), 0);
  return file;
}

/// What the first message of a stream is, and what comes behind it.
struct FirstTwo {
  Incoming first;
  Incoming second;
};
FirstTwo read(const std::string& bytes) {
  const auto file = streamOf(bytes);
  MessageReader reader{file.get()};
  Incoming first = reader.next();
  return {.first = first, .second = reader.next()};
}

TEST(MessageReader, cuts_a_stream_into_messages) {
  const auto [first, second] = read("Content-Length: 2\r\n\r\n{}Content-Length: 3\r\n\r\n[1]");
  EXPECT_EQ(first.kind, Kind::kMessage);
  EXPECT_EQ(first.body, "{}");
  EXPECT_EQ(second.kind, Kind::kMessage);
  EXPECT_EQ(second.body, "[1]");
}

TEST(MessageReader, takes_fields_in_any_case_and_order_and_line_ends_without_cr) {
  EXPECT_EQ(read("Content-Type: application/vscode-jsonrpc; charset=utf-8\r\nCONTENT-LENGTH:2 \r\n\r\n{}").first.body,
            "{}");
  EXPECT_EQ(read("content-length: 2\n\n{}").first.body, "{}");
}

TEST(MessageReader, takes_an_empty_message_for_one) {
  const auto [first, second] = read("Content-Length: 0\r\n\r\n");
  EXPECT_EQ(first.kind, Kind::kMessage);
  EXPECT_EQ(first.body, "");
  EXPECT_EQ(second.kind, Kind::kEnd);
}

TEST(MessageReader, counts_bytes_and_no_characters) {
  EXPECT_EQ(read("Content-Length: 4\r\n\r\n\"\xC3\xA4\"").first.body, "\"\xC3\xA4\"");
}

TEST(MessageReader, ends_with_the_stream) { EXPECT_EQ(read("").first.kind, Kind::kEnd); }

TEST(MessageReader, knows_what_is_no_header) {
  for (const std::string bytes :
       {"{}", "\r\n", "\r\n\r\n", "Content-Length 2\r\n\r\n{}", "Content-Length:\r\n\r\n{}",
        "Content-Length: -2\r\n\r\n{}", "Content-Length: 2x\r\n\r\n{}", "Content-Length: 0x2\r\n\r\n{}",
        "Content-Type: a\r\n\r\n{}", "Content-Length: 2\r\nContent-Length: 3\r\n\r\n{}",
        "Content-Length: 99999999999999999999\r\n\r\n{}", "Content-Length: 2\r\n", "Content-Length: 2\r\n\r\n{", "C"}) {
    EXPECT_EQ(read(bytes).first.kind, Kind::kBroken) << bytes;
  }
}

TEST(MessageReader, takes_headers_of_up_to_4096_bytes) {
  const std::string length = "Content-Length: 2\r\n\r\n";
  const auto withField = [&](std::size_t size) { return "X:" + std::string(size - length.size() - 4, 'x') + "\r\n"; };
  EXPECT_EQ(read(withField(4096) + length + "{}").first.body, "{}");
  EXPECT_EQ(read(withField(4097) + length + "{}").first.kind, Kind::kBroken);
  EXPECT_EQ(read(std::string(1 << 20, 'x')).first.kind, Kind::kBroken);
}

TEST(MessageReader, leaves_out_what_is_longer_than_32_mib) {
  const std::size_t longest = std::size_t{32} << 20;
  const auto message = [](std::size_t size) {
    return "Content-Length: " + std::to_string(size) + "\r\n\r\n" + std::string(size, ' ');
  };
  EXPECT_EQ(read(message(longest)).first.body.size(), longest);
  const auto [first, second] = read(message(longest + 1) + "Content-Length: 2\r\n\r\n{}");
  EXPECT_EQ(first.kind, Kind::kTooLong);
  EXPECT_EQ(first.body, "");
  EXPECT_EQ(second.body, "{}");
}

TEST(MessageReader, takes_no_memory_for_what_is_only_announced) {
  EXPECT_EQ(read("Content-Length: 18446744073709551615\r\n\r\n{}").first.kind, Kind::kBroken);
}

TEST(Framed, says_the_bytes_of_a_message) {
  EXPECT_EQ(tool::lsp::framed("\"\xC3\xA4\""), "Content-Length: 4\r\n\r\n\"\xC3\xA4\"");
}

}  // namespace
}  // namespace test
