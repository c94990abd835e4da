// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cerrno>

#include "src/channel/text.h"
#include "tests/format/policy/conversions.h"
#include "tests/support/faults.h"
#include "tests/support/locale.h"
#include "tests/support/policy_model.h"

namespace test {
namespace {

using ::testing::Test;
using ::testing::TestWithParam;
using ::testing::Values;

class PackAny : public TestWithParam<std::uint32_t> {
 protected:
  static std::uint32_t version() { return GetParam(); }
  static const Layout& layout() { return layoutOf(GetParam()); }

  int packBody(const Bytes& body) { return pack(version(), body, packed); }
  void expectPacked(const Bytes& body, const Bytes& expected) {
    EXPECT_EQ(packBody(body), 0);
    EXPECT_EQ(difference(bytesOf(packed), expected), "");
  }

  vqs::PackedPolicy packed{};
};

class Pack : public PackAny {};

TEST_P(Pack, puts_every_field_in_its_place) {
  const auto content = fullPolicy(version());
  expectPacked(policyBody(version(), content), packedPolicy(content));
}

TEST_P(Pack, never_reads_header_padding_or_reserved_bytes) {
  const auto content = fullPolicy(version());
  expectPacked(policyBody(version(), content, 0xEE), packedPolicy(content));
}

TEST_P(Pack, never_reads_entries_beyond_the_counts) {
  const auto content = numberedPolicy(0x31323334);
  expectPacked(policyBody(version(), content, 0xEE), packedPolicy(content));
}

TEST_P(Pack, of_a_policy_without_entries_writes_none) {
  auto content = fullPolicy(version());
  content.conditions.clear();
  content.texts.clear();
  content.actions.clear();
  expectPacked(policyBody(version(), content, 0xEE), packedPolicy(content));
}

TEST_P(Pack, of_an_empty_policy_is_all_zero) { expectPacked(policyBody(version(), emptyPolicy()), Record{3972}); }

TEST_P(Pack, allocates_nothing) {
  const auto body = policyBody(version(), fullPolicy(version())).bytes();
  const Faults faults;
  EXPECT_EQ(packBody(body), 0);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(Pack, carries_the_description_unchanged_behind_its_nul_too) {
  auto content = fullPolicy(version());
  content.description[3] = '\0';
  expectPacked(policyBody(version(), content), packedPolicy(content));
}

TEST_P(Pack, keeps_the_id_of_the_record) {
  for (const std::uint32_t id : {0U, 1U, 0x80000000U, 0xFFFFFFFFU}) {
    auto content = fullPolicy(version());
    content.id = id;
    expectPacked(policyBody(version(), content), packedPolicy(content));
  }
}

TEST_P(Pack, carries_scalars_unchanged_whatever_they_are) {
  auto content = fullPolicy(version());
  content.flag0 = content.flag1 = content.flag2 = 0xFF;
  content.param0 = content.param1 = content.param2 = 0xFFFFFFFF;
  content.conditions[0] = {0xFFFFFFFF, 4, 0xFFFFFFFF, 0xFFFFFFFF};
  content.actions[0].actionId = content.actions[0].value = 0xFFFFFFFF;
  expectPacked(policyBody(version(), content), packedPolicy(content));
}

TEST_P(Pack, gives_a_text_its_length_with_the_zero_unit) {
  for (const std::size_t length : {0U, 1U, 30U, 31U}) {
    auto content = numberedPolicy(7);
    content.texts[1].text = std::u16string(length, u'w');
    EXPECT_EQ(packedPolicy(content).bytes()[436 + 528 + 12], length + 1);
    expectPacked(policyBody(version(), content, 0xEE), packedPolicy(content));
    packed = {};
  }
}

INSTANTIATE_TEST_SUITE_P(From, Pack, Values(0U, 1U, 2U), versionName);

class PackNarrow : public PackAny {};

TEST_P(PackNarrow, widens_a_name_of_0_to_63_bytes) {
  for (const std::size_t length : {0U, 1U, 62U, 63U}) {
    auto content = fullPolicy(version());
    content.name.resize(length);
    packed = {};
    expectPacked(policyBody(version(), content, 0xEE), packedPolicy(content));
  }
}

TEST_P(PackNarrow, takes_bytes_for_units_in_the_plain_locale) {
  auto content = fullPolicy(version());
  for (std::uint32_t i = 0; i < 63; ++i) content.name[i] = static_cast<char16_t>(0x80 + i);
  content.texts[2].text = u"\x80\x9F\xA0\xC4\xE9\xFF";
  expectPacked(policyBody(version(), content, 0xEE), packedPolicy(content));
}

TEST_P(PackNarrow, refuses_a_name_of_64_bytes_without_nul_and_no_invalid_parameter) {
  const NoInvalidParameter strict;
  auto body = policyBody(version(), fullPolicy(version()));
  body.fill(layout().name, 64, 'n');
  errno = 0;
  EXPECT_EQ(packBody(body), -1);
  EXPECT_EQ(errno, ERANGE);
}

TEST_P(PackNarrow, takes_a_text_that_fills_its_32_bytes) {
  const NoInvalidParameter strict;
  auto content = fullPolicy(version());
  content.texts[4].text = u"0123456789abcdefghijklmnopqrstuv";
  EXPECT_EQ(packedPolicy(content).bytes()[436 + 4 * 528 + 12], 33);
  expectPacked(policyBody(version(), content, 0xEE), packedPolicy(content));
}

TEST_P(PackNarrow, converts_the_characters_of_the_locale) {
  const Locale utf8{"C.UTF-8"};
  auto content = numberedPolicy(1);
  content.name = u"N";
  auto body = policyBody(version(), content);
  body.text(layout().name, "N\xC3\xA9\xE3\x81\x82\xF0\x9F\x98\x80");
  content.name = u"N\xE9\x3042\xD83D\xDE00";
  // 8 characters of four bytes fill the field, and 16 units come of them.
  std::string pairs;
  for (int i = 0; i < 8; ++i) pairs += "\xF0\x9F\x98\x80";
  body.text(layout().texts, "").text(layout().texts + 33, pairs);
  content.texts[1].text.clear();
  for (int i = 0; i < 8; ++i) content.texts[1].text += u"\xD83D\xDE00";
  // The first text is 8-bit and no UTF-8: make it plain.
  body.fill(layout().texts, 31, 't');
  content.texts[0].text = std::u16string(31, u't');
  expectPacked(body, packedPolicy(content));
}

TEST_P(PackNarrow, refuses_a_name_that_the_locale_cannot_convert) {
  const Locale utf8{"C.UTF-8"};
  auto content = numberedPolicy(1);
  content.name = u"bad\xFF";
  errno = 0;
  EXPECT_EQ(packBody(policyBody(version(), content)), -1);
  EXPECT_EQ(errno, EILSEQ);
}

TEST_P(PackNarrow, refuses_a_text_that_the_locale_cannot_convert) {
  const Locale utf8{"C.UTF-8"};
  auto content = numberedPolicy(1);
  content.texts[1].text = u"\xE3\x81";
  errno = 0;
  EXPECT_EQ(packBody(policyBody(version(), content)), -1);
  EXPECT_EQ(errno, EILSEQ);
}

TEST_P(PackNarrow, does_not_convert_texts_beyond_the_count) {
  const Locale utf8{"C.UTF-8"};
  auto content = numberedPolicy(1);
  content.texts.clear();
  expectPacked(policyBody(version(), content, 0xFF), packedPolicy(content));
}

INSTANTIATE_TEST_SUITE_P(From, PackNarrow, Values(0U, 1U), versionName);

class PackWide : public Test {
 protected:
  void expectPacked(const Bytes& body, const Bytes& expected) {
    EXPECT_EQ(pack(2, body, packed), 0);
    EXPECT_EQ(difference(bytesOf(packed), expected), "");
  }

  Policy content = fullPolicy(2);
  vqs::PackedPolicy packed{};
};

TEST_F(PackWide, copies_a_name_of_64_units_as_it_is) {
  content.name = std::u16string(64, 0x3042);
  expectPacked(policyBody(2, content), packedPolicy(content));
}

TEST_F(PackWide, copies_what_stands_behind_the_zero_unit_of_a_name) {
  content.name = u"ab";
  auto body = policyBody(2, content);
  body.u16(4 + 2 * 63, 0xFEDC);
  auto expected = packedPolicy(content);
  expected.u16(2 * 63, 0xFEDC);
  expectPacked(body, expected);
}

TEST_F(PackWide, copies_units_beyond_8_bits_whatever_the_locale) {
  content.name = u"\x3042\xD83D\xDE00\xD83D";
  content.texts[0].text = u"\x0100\xFFFF\xDE00\x4E00";
  expectPacked(policyBody(2, content), packedPolicy(content));
  packed = {};
  const Locale utf8{"C.UTF-8"};
  expectPacked(policyBody(2, content), packedPolicy(content));
}

TEST_F(PackWide, takes_a_text_of_255_units) {
  content.texts[4].text = std::u16string(255, 0x4E00);
  auto expected = packedPolicy(content);
  expected.u16(436 + 4 * 528 + 12, 256);
  expectPacked(policyBody(2, content), expected);
}

TEST_F(PackWide, refuses_a_text_of_256_units) {
  content.texts[4].text = std::u16string(256, 0x4E00);
  EXPECT_EQ(pack(2, policyBody(2, content), packed), 1);
}

TEST_F(PackWide, copies_what_stands_behind_the_zero_unit_of_a_text) {
  content.texts[1].text = u"ab";
  auto body = policyBody(2, content);
  body.u16(448 + 514 + 2 * 3, 0x1234).u16(448 + 514 + 2 * 255, 0x5678);
  auto expected = packedPolicy(content);
  expected.u16(436 + 528 + 14 + 2 * 3, 0x1234).u16(436 + 528 + 14 + 2 * 255, 0x5678);
  expectPacked(body, expected);
}

TEST(PackNothing, is_a_null_pointer) {
  vqs::PackedPolicy packed{};
  const auto v0 = poisoned<VqsPolicyV0>();
  const auto v1 = poisoned<VqsPolicyV1>();
  const auto v2 = poisoned<VqsPolicyV2>();
  EXPECT_FALSE(vqs::packPolicyV0(nullptr, &packed, vqs::kRuntimeText));
  EXPECT_FALSE(vqs::packPolicyV0(&v0, nullptr, vqs::kRuntimeText));
  EXPECT_FALSE(vqs::packPolicyV1(nullptr, &packed, vqs::kRuntimeText));
  EXPECT_FALSE(vqs::packPolicyV1(&v1, nullptr, vqs::kRuntimeText));
  EXPECT_FALSE(vqs::packPolicyV2(nullptr, &packed));
  EXPECT_FALSE(vqs::packPolicyV2(&v2, nullptr));
  EXPECT_EQ(difference(bytesOf(packed), Record{3972}.bytes()), "");
}

}  // namespace
}  // namespace test
