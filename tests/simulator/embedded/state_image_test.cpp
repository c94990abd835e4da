// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/state_image.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/simulator/embedded/client.h"
#include "tests/simulator/model/settings_view.h"

namespace test {
namespace {

/// What is wrong with an image; empty when nothing is.
std::string fault(const Bytes& image, ModelClient& client) {
  return simulator::decodeImage(std::as_bytes(std::span{image}), client.driver()).text();
}
/// All calls share a driver, made fresh before each: its memory would take most of the time.
std::string fault(const Bytes& image) {
  static ModelClient client;
  for (std::size_t store = 0; store < 3; ++store) client.driver().policies().store(store).reset();
  client.driver().policies().setAsmVersion({});
  client.driver().settings() = {};
  return fault(image, client);
}

Bytes small() { return smallContent(); }

/// Format 1, without its checksum.
Record oldContent(std::size_t policies) { return Record{32 + 3972 * policies}.text(0, "VQSSTATE").u32(8, 1); }

TEST(StateImage, of_a_driver_that_never_ran_holds_no_settings) {
  EXPECT_EQ(fault(sealed(Record{kPoliciesOffset}.text(0, "VQSSTATE").u32(8, 2))), "");
}

TEST(StateImage, of_format_1_is_read) {
  const Bytes documented =
      hex("56 51 53 53 54 41 54 45  01 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00  03 00 00 00  05 00 00 00"
          "a5 3f a6 88 70 88 21 8a");
  for (const Bytes& image : {documented, oldState()}) {
    ModelClient client;
    EXPECT_EQ(fault(image, client), "");
    EXPECT_EQ(client.ids(kReadAsm), image.size() == 40 ? Ids{} : Ids{7});
    EXPECT_EQ(part(client.same(kModifyAsm, modifyRequest(7)).answer, 3988, 8), hex("03 00 00 00  05 00 00 00"));
    EXPECT_EQ(featureStatus(client, 2), hex("01 00 00 00  00 00 00 00"));
  }
}

TEST(StateImage, of_format_2_holds_settings) {
  ModelClient client;
  ASSERT_EQ(fault(smallState(), client), "");
  client.surroundings.clock = 12345 + 5000;
  EXPECT_EQ(word(client.answer(kDebugOutput, {}, 4), 0), 5) << "seconds since the platform started";
  ModelClient other;
  ASSERT_EQ(fault(sealed(smallContent().u32(32 + 520, 1).u32(32 + 496, 5).u32(32 + 500, 6)), other), "");
  EXPECT_EQ(featureStatus(other, 5), hex("01 01 00 00  01 00 00 00")) << "the dynamic slider is on";
  EXPECT_EQ(other.answer(kAppIo, Record{12}, 12), Record{12}.u32(4, 5).u32(8, 6).bytes());
}

TEST(StateImage, holds_the_policies_store_by_store_in_order) {
  Record image = stateContent(4).u32(12, 2).u32(16, 1).u32(20, 1);
  for (std::uint32_t i = 0; i < 4; ++i)
    image.put(kPoliciesOffset + 3972 * std::size_t{i}, simplePolicy(Ids{2, 1, 3, 4}[i]).bytes());
  ModelClient client;
  ASSERT_EQ(fault(sealed(image), client), "");
  EXPECT_EQ(client.ids(kReadPb), (Ids{2, 1}));
  EXPECT_EQ(client.ids(kReadAsm), Ids{3});
  EXPECT_EQ(client.ids(kReadBalanceProfile), Ids{4});
}

TEST(StateImage, of_full_stores_is_read) {
  Record image = stateContent(1200).u32(12, 400).u32(16, 400).u32(20, 400);
  for (std::uint32_t i = 0; i < 1200; ++i) image.put(kPoliciesOffset + 3972 * std::size_t{i}, simplePolicy(i).bytes());
  ModelClient client;
  EXPECT_EQ(fault(sealed(image), client), "");
  for (const std::uint32_t code : kReadCodes) EXPECT_EQ(word(client.same(code, countQuery()).answer, 4), 400);
}

TEST(StateImage, every_changed_byte_is_noticed) {
  const Bytes image = smallState();
  ASSERT_EQ(fault(image), "");
  for (std::size_t offset = 12; offset < image.size(); ++offset)
    for (const std::uint8_t change : std::initializer_list<std::uint8_t>{0x01, 0x80, 0xFF}) {
      Bytes damaged = image;
      damaged[offset] ^= change;
      ASSERT_NE(fault(damaged), "") << offset;
    }
}

TEST(StateImage, every_truncation_is_noticed) {
  const Bytes image = smallState();
  for (std::size_t length = 12; length < image.size(); ++length)
    ASSERT_EQ(fault(part(image, 0, length)), "is cut short") << length;
}

TEST(StateImage, has_nothing_behind_its_end) {
  Bytes image = smallState();
  image.push_back(0);
  EXPECT_EQ(fault(image), "is longer than its content");
}

TEST(StateImage, counts_stop_at_400_in_each_store) {
  for (const std::size_t offset : std::initializer_list<std::size_t>{12, 16, 20}) {
    for (const Record& content : {oldContent(0), stateContent(0)}) {
      for (const std::uint32_t count : {401U, 0x10000000U, 0xFFFFFFFFU})
        EXPECT_EQ(fault(sealed(Record{content}.u32(offset, count))), "counts more policies than a store can hold");
      EXPECT_EQ(fault(sealed(Record{content}.u32(offset, 400))), "is cut short");
    }
  }
}

TEST(StateImage, wrong_checksum_is_told) {
  Bytes image = smallState();
  image[image.size() - 1] ^= 1;
  EXPECT_EQ(fault(image), "is damaged: wrong checksum");
}

TEST(StateImage, hostile_content_under_a_right_checksum_is_refused) {
  const Bytes content = small();
  ASSERT_EQ(fault(sealed(content)), "");
  const auto with = [&](std::size_t offset, std::uint32_t value) {
    return sealed(Record{content.size()}.put(0, content).u32(offset, value));
  };
  EXPECT_EQ(fault(with(24, 0xFFFF)), "");
  EXPECT_EQ(fault(with(24, 0x10000)), "holds settings that no driver can have");
  EXPECT_EQ(fault(with(28, 0x10000)), "holds settings that no driver can have");
  EXPECT_EQ(fault(with(kPoliciesOffset + 184, 16)), "holds a malformed policy");
  EXPECT_EQ(fault(with(kPoliciesOffset + 188, 0xFFFFFFFF)), "holds a malformed policy");
  EXPECT_EQ(fault(with(kPoliciesOffset + 192, 1)), "holds a malformed policy");
  EXPECT_EQ(fault(with(kPoliciesOffset + 3968, 1)), "holds a malformed policy");
}

TEST(StateImage, settings_that_no_driver_can_have_are_refused) {
  const auto with = [](std::size_t offset, std::uint32_t value) {
    return sealed(smallContent().u32(32 + offset, value));
  };
  constexpr std::pair<std::size_t, std::uint32_t> kUnsound[] = {
      {24, 2},                                       // started
      {28, 2},                                       // power source
      {32, 0xFFFFFFFF},                              // charge
      {32, 205200001},                               // more than a full one
      {36, 0xFFFFFFFF},                              // temperatures
      {40, 0x7FFFFFFF}, {44, 0x80000000}, {504, 2},  // SE1
      {508, 2},         {520, 2},                    // dynamic slider
      {524, 2},                                      // whether a charge rate is set
      {528, 45000},                                  // a rate that is not
      {540, 3},                                      // source of the binary
      {544, 1},                                      // version of the static one
      {556, 2},                                      // a simulated sensor
      {572, 1},                                      // words of a sensor that is none
      {620, 2},                                      // an override
      {732, 1},                                      // value of an override that is none
  };
  for (const auto& [offset, value] : kUnsound)
    EXPECT_EQ(fault(with(offset, value)), "holds settings that no driver can have") << offset;
}

TEST(StateImage, settings_outside_their_limits_are_refused) {
  const std::string unsound = "holds settings that no driver can have";
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 524, 1).u32(32 + 528, 100000))), "");
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 524, 1).u32(32 + 528, 100001))), unsound);
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 540, 1).u32(32 + 544, 0xFFFF))), "");
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 540, 1).u32(32 + 544, 0x10000))), unsound);
  // The sixth override is the battery's level.
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 640, 1).u32(32 + 752, 100))), "");
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 640, 1).u32(32 + 752, 101))), unsound);
  // The fifth is its rate, which is signed.
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 636, 1).u32(32 + 748, 0xFFFE7960))), "");
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 636, 1).u32(32 + 748, 0xFFFE795F))), unsound);
}

TEST(StateImage, tables_with_bytes_that_no_set_can_hold_are_refused) {
  // Current and previous ASM-lite table, and the last bytes of the fourth slider table.
  for (const std::size_t offset : std::initializer_list<std::size_t>{2196, 2196 + 415, 2612, 2612 + 415, 3043, 3055})
    EXPECT_EQ(fault(sealed(smallContent().u8(32 + offset, 1))), "holds settings that no driver can have") << offset;
}

TEST(StateImage, ids_are_unique_in_a_store_only) {
  Record image = stateContent(2);
  image.put(kPoliciesOffset, simplePolicy(7).bytes()).put(kPoliciesOffset + 3972, simplePolicy(7).bytes());
  EXPECT_EQ(fault(sealed(Record{image}.u32(12, 2))), "holds two policies of one id in a store");
  EXPECT_EQ(fault(sealed(Record{image}.u32(12, 1).u32(20, 1))), "");
}

TEST(StateImage, random_content_under_a_right_checksum_is_refused_or_kept) {
  std::mt19937_64 random{7};
  int kept = 0;
  for (int i = 0; i < 20000; ++i) {
    Bytes content = small();
    for (std::size_t changes = random() % 3; changes > 0; --changes)
      content[12 + random() % (content.size() - 12)] = static_cast<std::uint8_t>(random());
    kept += fault(sealed(content)).empty() ? 1 : 0;
  }
  EXPECT_GT(kept, 1000);
  EXPECT_LT(kept, 19000);
}

}  // namespace
}  // namespace test
