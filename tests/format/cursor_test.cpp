// SPDX-License-Identifier: Apache-2.0
#include "format/cursor.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "tests/support/bytes.h"

namespace test {
namespace {

TEST(ByteReader, takes_fields_one_after_the_other) {
  const Bytes bytes = hex("01 34 12 78 56 34 12 aa bb");
  vqs::ByteReader reader{std::as_bytes(std::span{bytes})};
  std::uint8_t byte = 0;
  std::uint16_t half = 0;
  std::uint32_t word = 0;
  ASSERT_TRUE(reader.take(byte) && reader.take(half) && reader.take(word));
  EXPECT_EQ(byte, 0x01);
  EXPECT_EQ(half, 0x1234);
  EXPECT_EQ(word, 0x12345678U);
  std::span<const std::byte> rest;
  ASSERT_TRUE(reader.take(std::size_t{2}, rest));
  EXPECT_EQ(rest[0], std::byte{0xAA});
  EXPECT_EQ(rest[1], std::byte{0xBB});
}

TEST(ByteReader, leaves_everything_alone_when_a_field_is_not_whole) {
  const Bytes bytes = hex("01 02 03");
  vqs::ByteReader reader{std::as_bytes(std::span{bytes})};
  std::uint32_t word = kPoisonWord;
  std::span<const std::byte> field;
  EXPECT_FALSE(reader.take(word));
  EXPECT_EQ(word, kPoisonWord);
  EXPECT_FALSE(reader.take(std::size_t{4}, field));
  EXPECT_TRUE(field.empty());
  EXPECT_TRUE(reader.take(std::size_t{3}, field));
  EXPECT_FALSE(reader.take(std::size_t{1}, field));
  EXPECT_TRUE(reader.take(std::size_t{0}, field));
}

TEST(ByteWriter, puts_fields_one_after_the_other_until_the_buffer_is_full) {
  Bytes buffer(7, kPoison);
  vqs::ByteWriter writer{std::as_writable_bytes(std::span{buffer})};
  EXPECT_TRUE(writer.put(std::uint16_t{0x1234}));
  EXPECT_TRUE(writer.put(std::uint32_t{0x89ABCDEF}));
  EXPECT_FALSE(writer.put(std::uint16_t{1}));
  EXPECT_EQ(buffer, hex("34 12 ef cd ab 89 a5"));
  EXPECT_TRUE(writer.put(std::uint8_t{7}));
  EXPECT_FALSE(writer.put(std::uint8_t{8}));
  EXPECT_EQ(buffer, hex("34 12 ef cd ab 89 07"));
}

}  // namespace
}  // namespace test
