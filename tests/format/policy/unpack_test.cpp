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

class UnpackAny : public TestWithParam<std::uint32_t> {
 protected:
  static std::uint32_t version() { return GetParam(); }
  static const Layout& layout() { return layoutOf(GetParam()); }

  int unpackPacked(const Bytes& packed) { return unpack(version(), packed, body); }
  void expectUnpacked(const Bytes& packed, const Bytes& expected) {
    body.assign(layout().size, kPoison);
    EXPECT_EQ(unpackPacked(packed), 0);
    EXPECT_EQ(difference(body, expected), "");
  }
  [[nodiscard]] std::string textAt(std::size_t offset) const {
    return reinterpret_cast<const char*>(body.data() + offset);
  }
  [[nodiscard]] std::string nameText() const { return textAt(layout().name); }
  [[nodiscard]] std::string text(std::size_t index) const { return textAt(layout().texts + 33 * index); }

  Policy content = fullPolicy(version());
  Bytes body = Bytes(layout().size, kPoison);
};

class Unpack : public UnpackAny {};

TEST_P(Unpack, puts_every_field_in_its_place_and_touches_nothing_else) {
  expectUnpacked(packedPolicy(content), policyBody(version(), content, kPoison));
}

TEST_P(Unpack, leaves_entries_beyond_the_counts_untouched) {
  content = numberedPolicy(0x41424344);
  expectUnpacked(packedPolicy(content), policyBody(version(), content, kPoison));
}

TEST_P(Unpack, never_reads_padding_reserved_bytes_or_text_lengths) {
  auto packed = packedPolicy(content);
  packed.fill(161, 3, 0xEE).fill(174, 2, 0xEE);
  for (std::size_t i = 0; i < 5; ++i) packed.fill(436 + 528 * i + 1, 13, 0xEE).fill(436 + 528 * i + 526, 2, 0xEE);
  for (std::size_t i = 0; i < 32; ++i) packed.fill(3076 + 28 * i + 14, 2, 0xEE).fill(3076 + 28 * i + 21, 3, 0xEE);
  expectUnpacked(packed, policyBody(version(), content, kPoison));
}

TEST_P(Unpack, never_reads_entries_beyond_the_counts) {
  content = numberedPolicy(3);
  auto packed = packedPolicy(content);
  packed.fill(196 + 16 * 3, 16 * 12, 0xEE).fill(436 + 528 * 2, 528 * 3, 0xEE).fill(3076 + 28 * 4, 28 * 28, 0xEE);
  expectUnpacked(packed, policyBody(version(), content, kPoison));
}

TEST_P(Unpack, carries_scalars_unchanged_whatever_they_are) {
  content.flag0 = content.flag1 = content.flag2 = 0xFF;
  content.param0 = content.param1 = content.param2 = content.id = 0xFFFFFFFF;
  content.conditions[14] = {0xFFFFFFFF, 0, 0xFFFFFFFF, 0xFFFFFFFF};
  content.actions[31].actionId = content.actions[31].value = 0xFFFFFFFF;
  content.description.assign(32, '\xFF');
  expectUnpacked(packedPolicy(content), policyBody(version(), content, kPoison));
}

TEST_P(Unpack, allocates_nothing) {
  const auto packed = packedPolicy(content).bytes();
  const Faults faults;
  EXPECT_EQ(unpackPacked(packed), 0);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(Unpack, undoes_what_packing_did) {
  vqs::PackedPolicy packed{};
  ASSERT_EQ(pack(version(), policyBody(version(), content), packed), 0);
  expectUnpacked(bytesOf(packed), policyBody(version(), content, kPoison));
}

INSTANTIATE_TEST_SUITE_P(To, Unpack, Values(0U, 1U, 2U), versionName);

class UnpackNarrow : public UnpackAny {
 protected:
  NoInvalidParameter strict;
};

TEST_P(UnpackNarrow, cuts_a_name_of_64_units_to_63) {
  content.name = std::u16string(64, u'n');
  ASSERT_EQ(unpackPacked(packedPolicy(content)), 0);
  EXPECT_EQ(nameText(), std::string(63, 'n'));
}

TEST_P(UnpackNarrow, forces_a_nul_into_the_last_byte_of_a_name) {
  content.name = u"short";
  ASSERT_EQ(unpackPacked(packedPolicy(content)), 0);
  EXPECT_EQ(nameText(), "short");
  EXPECT_EQ(body[layout().name + 63], 0);
}

TEST_P(UnpackNarrow, takes_units_for_bytes_in_the_plain_locale) {
  for (std::uint32_t i = 0; i < 63; ++i) content.name[i] = static_cast<char16_t>(0xC1 + i);
  for (std::uint32_t i = 0; i < 31; ++i) content.texts[3].text[i] = static_cast<char16_t>(0x80 + i);
  expectUnpacked(packedPolicy(content), policyBody(version(), content, kPoison));
}

TEST_P(UnpackNarrow, refuses_a_name_beyond_8_bits_and_writes_no_scalar) {
  content.name = u"\x3042";
  errno = 0;
  EXPECT_EQ(unpackPacked(packedPolicy(content)), -1);
  EXPECT_EQ(errno, EILSEQ);
  const std::size_t behindName = layout().name + 64;
  EXPECT_EQ(Bytes(body.begin() + static_cast<std::ptrdiff_t>(behindName), body.end()),
            Bytes(layout().size - behindName, kPoison));
}

TEST_P(UnpackNarrow, refuses_a_text_beyond_8_bits) {
  content.texts[4].text = u"a\x0100";
  errno = 0;
  EXPECT_EQ(unpackPacked(packedPolicy(content)), -1);
  EXPECT_EQ(errno, EILSEQ);
}

TEST_P(UnpackNarrow, takes_texts_of_0_to_31_units) {
  for (const std::size_t length : {0U, 1U, 30U, 31U}) {
    content.texts[1].text = std::u16string(length, u't');
    ASSERT_EQ(unpackPacked(packedPolicy(content)), 0);
    EXPECT_EQ(text(1), std::string(length, 't'));
  }
}

// No zero unit anywhere: version 0 refuses long texts, but this one slips through.
TEST_P(UnpackNarrow, cuts_a_text_without_any_zero_unit_in_version_0_too) {
  content.texts[0].text = std::u16string(256, u'z');
  content.texts[2].text = std::u16string(256, u'q');
  ASSERT_EQ(unpackPacked(packedPolicy(content)), 0);
  EXPECT_EQ(text(0), std::string(31, 'z'));
  EXPECT_EQ(text(2), std::string(31, 'q'));
}

TEST_P(UnpackNarrow, converts_to_the_characters_of_the_locale) {
  const Locale utf8{"C.UTF-8"};
  content = numberedPolicy(1);
  content.name = u"N\xE9\x3042\xD83D\xDE00";
  content.texts[0].text = u"plain";
  content.texts[1].text = u"\xD83D\xDE00\x20AC";
  ASSERT_EQ(unpackPacked(packedPolicy(content)), 0);
  EXPECT_EQ(nameText(), "N\xC3\xA9\xE3\x81\x82\xF0\x9F\x98\x80");
  EXPECT_EQ(text(0), "plain");
  EXPECT_EQ(text(1), "\xF0\x9F\x98\x80\xE2\x82\xAC");
}

TEST_P(UnpackNarrow, cuts_a_name_whose_bytes_do_not_fit) {
  const Locale utf8{"C.UTF-8"};
  content = numberedPolicy(1);
  content.texts.clear();
  content.name = std::u16string(63, 0x3042);
  ASSERT_EQ(unpackPacked(packedPolicy(content)), 0);
  std::string expected;
  for (int i = 0; i < 21; ++i) expected += "\xE3\x81\x82";
  EXPECT_EQ(nameText(), expected);
}

TEST_P(UnpackNarrow, refuses_half_a_surrogate_pair) {
  const Locale utf8{"C.UTF-8"};
  content = numberedPolicy(1);
  content.texts.clear();
  content.name = u"a\xD83Dz";
  EXPECT_EQ(unpackPacked(packedPolicy(content)), -1);
}

INSTANTIATE_TEST_SUITE_P(To, UnpackNarrow, Values(0U, 1U), versionName);

class UnpackTexts : public Test {
 protected:
  UnpackTexts() { content.texts.resize(2); }
  Policy content = fullPolicy(0);
};

TEST_F(UnpackTexts, of_32_units_or_more_are_refused_by_version_0) {
  Bytes body(804, kPoison);
  for (const std::size_t length : {32U, 33U, 40U, 254U, 255U}) {
    content.texts[1].text = std::u16string(length, u'x');
    EXPECT_EQ(unpack(0, packedPolicy(content), body), 1) << length;
  }
}

TEST_F(UnpackTexts, of_32_units_or_more_are_cut_by_version_1) {
  for (const std::size_t length : {32U, 33U, 40U, 254U, 255U}) {
    Bytes body(1448, kPoison);
    content.texts[1].text = std::u16string(length, u'x');
    EXPECT_EQ(unpack(1, packedPolicy(content), body), 0) << length;
    EXPECT_EQ(reinterpret_cast<const char*>(body.data() + 384 + 33), std::string(31, 'x'));
  }
}

TEST_F(UnpackTexts, of_any_length_are_copied_by_version_2) {
  for (const std::size_t length : {32U, 40U, 255U, 256U}) {
    Bytes body(3916, kPoison);
    content.texts[1].text = std::u16string(length, 0x4E00);
    EXPECT_EQ(unpack(2, packedPolicy(content), body), 0) << length;
    EXPECT_EQ(difference(body, policyBody(2, content, kPoison).bytes()), "");
  }
}

TEST_F(UnpackTexts, are_judged_by_their_flag_before_their_units) {
  content.texts[0].text = u"\x3042";
  for (const std::uint32_t version : {0U, 1U}) {
    auto packed = packedPolicy(content);
    Bytes body(layoutOf(version).size, kPoison);
    EXPECT_EQ(unpack(version, packed, body), -1);
    EXPECT_EQ(unpack(version, packed.u8(436, 2), body), 1);
  }
}

class UnpackWide : public Test {
 protected:
  void expectUnpacked() {
    Bytes body(3916, kPoison);
    EXPECT_EQ(unpack(2, packedPolicy(content), body), 0);
    EXPECT_EQ(difference(body, policyBody(2, content, kPoison).bytes()), "");
  }

  Policy content = fullPolicy(2);
};

TEST_F(UnpackWide, copies_a_name_of_64_units_as_it_is) {
  content.name = std::u16string(64, 0xFFFF);
  expectUnpacked();
}

TEST_F(UnpackWide, copies_units_that_no_locale_knows) {
  content.name = u"\xD83D\x0100\xDE00";
  content.texts[0].text = u"\xDE00\xD83D";
  expectUnpacked();
}

TEST_F(UnpackWide, copies_what_stands_behind_a_zero_unit) {
  auto packed = packedPolicy(content);
  packed.u16(2 * 10, 0).u16(436 + 14 + 2 * 4, 0).u16(436 + 14 + 2 * 255, 0x1234);
  auto expected = policyBody(2, content, kPoison);
  expected.u16(4 + 2 * 10, 0).u16(448 + 2 * 4, 0).u16(448 + 2 * 255, 0x1234);
  Bytes body(3916, kPoison);
  EXPECT_EQ(unpack(2, packed, body), 0);
  EXPECT_EQ(difference(body, expected.bytes()), "");
}

TEST(UnpackNothing, is_a_null_pointer) {
  const vqs::PackedPolicy packed{};
  auto v0 = poisoned<VqsPolicyV0>();
  auto v1 = poisoned<VqsPolicyV1>();
  auto v2 = poisoned<VqsPolicyV2>();
  EXPECT_FALSE(vqs::unpackPolicyV0(nullptr, &v0, vqs::kRuntimeText));
  EXPECT_FALSE(vqs::unpackPolicyV0(&packed, nullptr, vqs::kRuntimeText));
  EXPECT_FALSE(vqs::unpackPolicyV1(nullptr, &v1, vqs::kRuntimeText));
  EXPECT_FALSE(vqs::unpackPolicyV1(&packed, nullptr, vqs::kRuntimeText));
  EXPECT_FALSE(vqs::unpackPolicyV2(nullptr, &v2));
  EXPECT_FALSE(vqs::unpackPolicyV2(&packed, nullptr));
  EXPECT_EQ(bytesOf(v0), Bytes(804, kPoison));
  EXPECT_EQ(bytesOf(v1), Bytes(1448, kPoison));
  EXPECT_EQ(bytesOf(v2), Bytes(3916, kPoison));
}

}  // namespace
}  // namespace test
