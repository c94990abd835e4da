// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/state_image.h"

#include <random>

#include "simulator/embedded_client.h"

namespace test {
namespace {

Bytes encode(const simulator::Driver& driver) {
  const auto image = simulator::encodeState(driver);
  const auto* first = reinterpret_cast<const std::uint8_t*>(image.data());
  return {first, first + image.size()};
}

/// What is wrong with an image; empty when nothing is. All calls share a driver, made fresh before each: its memory
/// would take most of the time.
std::string fault(const Bytes& image) {
  static const auto driver = std::make_unique<simulator::Driver>();
  for (std::size_t store = 0; store < 3; ++store) driver->policies().store(store).reset();
  driver->policies().setAsmVersion({});
  try {
    simulator::decodeState(std::as_bytes(std::span{image}), *driver);
  } catch (const simulator::StateError& error) {
    return error.what();
  }
  EXPECT_EQ(encode(*driver), image) << "equal drivers have equal images";
  return {};
}

Bytes small() { return part(smallState(), 0, 4004); }

TEST(StateImage, of_a_driver_without_policies_is_as_documented) {
  ModelClient client;
  ASSERT_EQ(client.same(kModifyAsm, modifyRequest(6).u32(3988, 3).u32(3992, 5)).outcome, Outcome::success);
  const Bytes documented =
      hex("56 51 53 53 54 41 54 45  01 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00  03 00 00 00  05 00 00 00"
          "a5 3f a6 88 70 88 21 8a");
  EXPECT_EQ(encode(client.driver()), documented);
  EXPECT_EQ(fault(documented), "");
}

TEST(StateImage, holds_the_policies_store_by_store_in_order) {
  ModelClient client;
  ASSERT_EQ(client.add(kModifyBalanceProfile, simplePolicy(4)), 0);
  ASSERT_EQ(client.add(kModifyAsm, simplePolicy(3)), 0);
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(2)), 0);
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(1)), 0);
  Record expected = Record{32 + 4 * 3972}.text(0, "VQSSTATE").u32(8, 1).u32(12, 2).u32(16, 1).u32(20, 1);
  for (std::uint32_t i = 0; i < 4; ++i)
    expected.put(32 + 3972 * std::size_t{i}, simplePolicy(Ids{2, 1, 3, 4}[i]).bytes());
  EXPECT_EQ(difference(encode(client.driver()), sealed(expected)), "");
  EXPECT_EQ(fault(sealed(expected)), "");
}

TEST(StateImage, of_full_stores_comes_back) {
  ModelClient client;
  for (const std::uint32_t code : kModifyCodes)
    for (std::uint32_t id = 0; id < 400; ++id) ASSERT_EQ(client.add(code, simplePolicy(id)), 0);
  const Bytes image = encode(client.driver());
  EXPECT_EQ(image.size(), 32U + 1200 * 3972 + 8);
  EXPECT_EQ(fault(image), "");
}

TEST(StateImage, every_changed_byte_is_noticed) {
  const Bytes image = smallState();
  ASSERT_EQ(fault(image), "");
  for (std::size_t offset = 0; offset < image.size(); ++offset)
    for (const std::uint8_t change : std::initializer_list<std::uint8_t>{0x01, 0x80, 0xFF}) {
      Bytes damaged = image;
      damaged[offset] ^= change;
      ASSERT_NE(fault(damaged), "") << offset;
    }
}

TEST(StateImage, every_truncation_is_noticed) {
  const Bytes image = smallState();
  for (std::size_t length = 0; length < image.size(); ++length) {
    const std::string reason = fault(part(image, 0, length));
    ASSERT_EQ(reason, length < 8 ? "is not a state file of the simulator" : "is cut short") << length;
  }
}

TEST(StateImage, has_nothing_behind_its_end) {
  Bytes image = smallState();
  image.push_back(0);
  EXPECT_EQ(fault(image), "is longer than its content");
}

TEST(StateImage, of_another_kind_or_format_is_refused) {
  EXPECT_EQ(fault({}), "is not a state file of the simulator");
  EXPECT_EQ(fault(sealed(Record{32}.text(0, "VQSSTATF").u32(8, 1))), "is not a state file of the simulator");
  EXPECT_EQ(fault(sealed(Record{32}.text(0, "VQSSTATE"))), "has the unknown format 0");
  EXPECT_EQ(fault(sealed(Record{32}.text(0, "VQSSTATE").u32(8, 2))),
            "was written by a newer simulator (format 2, this one reads 1)");
  EXPECT_EQ(fault(sealed(Record{32}.text(0, "VQSSTATE").u32(8, 0xFFFFFFFF))),
            "was written by a newer simulator (format 4294967295, this one reads 1)");
}

TEST(StateImage, counts_stop_at_400_in_each_store) {
  for (const std::size_t offset : std::initializer_list<std::size_t>{12, 16, 20}) {
    for (const std::uint32_t count : {401U, 0x10000000U, 0xFFFFFFFFU})
      EXPECT_EQ(fault(sealed(Record{32}.text(0, "VQSSTATE").u32(8, 1).u32(offset, count))),
                "counts more policies than a store can hold");
    EXPECT_EQ(fault(sealed(Record{32}.text(0, "VQSSTATE").u32(8, 1).u32(offset, 400))), "is cut short");
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
    return sealed(Record{4004}.put(0, content).u32(offset, value));
  };
  EXPECT_EQ(fault(with(24, 0xFFFF)), "");
  EXPECT_EQ(fault(with(24, 0x10000)), "holds a version word above 65535");
  EXPECT_EQ(fault(with(28, 0x10000)), "holds a version word above 65535");
  EXPECT_EQ(fault(with(32 + 184, 16)), "holds a malformed policy");
  EXPECT_EQ(fault(with(32 + 188, 0xFFFFFFFF)), "holds a malformed policy");
  EXPECT_EQ(fault(with(32 + 192, 1)), "holds a malformed policy");
  EXPECT_EQ(fault(with(32 + 3968, 1)), "holds a malformed policy");
}

TEST(StateImage, ids_are_unique_in_a_store_only) {
  Record image = Record{32 + 2 * 3972}.text(0, "VQSSTATE").u32(8, 1);
  image.put(32, simplePolicy(7).bytes()).put(32 + 3972, simplePolicy(7).bytes());
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
