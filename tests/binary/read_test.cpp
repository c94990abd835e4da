// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/binary/captured_output.h"
#include "tests/binary/reading.h"
#include "tests/support/results.h"

namespace test {
namespace {

constexpr std::uint64_t kStrides[] = {804, 1448, 3916};

class ReadBinaryV2 : public BinaryReading {
 protected:
  std::string twoPolicies() { return file(writtenFile({richPolicy(), smallPolicy()}, 1, 2)); }

  /// What a call that must not get as far as the file gives.
  vqsStatus readWith(QtfSession* on, const char* path, VqsPolicyBinary* binary, std::uint64_t* size,
                     std::uint32_t version = 2) {
    const auto buffer = bytesOf(buffer_);
    const auto before = size_;
    const vqsStatus status = vqsPbReadBinaryV2(on, path, binary, size, version);
    EXPECT_EQ(bytesOf(buffer_), buffer);
    EXPECT_EQ(size_, before);
    return status;
  }

  VqsPolicyBinary buffer_ = poisoned<VqsPolicyBinary>();
  std::uint64_t size_ = 200 + 2 * 3916;
};

TEST_F(ReadBinaryV2, refuses_missing_arguments) {
  const auto path = twoPolicies();
  EXPECT_EQ(readWith(nullptr, path.c_str(), &buffer_, &size_), kInvalid);
  EXPECT_EQ(readWith(&closed, path.c_str(), &buffer_, &size_), kInvalid);
  EXPECT_EQ(readWith(session, nullptr, &buffer_, &size_), kInvalid);
  EXPECT_EQ(readWith(session, path.c_str(), nullptr, &size_), kInvalid);
  EXPECT_EQ(readWith(session, path.c_str(), &buffer_, nullptr), kInvalid);
  size_ = 0;
  EXPECT_EQ(readWith(session, path.c_str(), nullptr, &size_), kInvalid);
}

TEST_F(ReadBinaryV2, refuses_version_0xffffffff_even_in_a_size_query_and_without_a_file) {
  const auto path = twoPolicies();
  EXPECT_EQ(readWith(session, path.c_str(), &buffer_, &size_, 0xFFFFFFFF), kInvalid);
  size_ = 0;
  EXPECT_EQ(readWith(session, path.c_str(), &buffer_, &size_, 0xFFFFFFFF), kInvalid);
  EXPECT_EQ(readWith(session, folder_.path("none").c_str(), &buffer_, &size_, 0xFFFFFFFF), kInvalid);
}

TEST_F(ReadBinaryV2, tells_the_size_for_every_version_and_writes_nothing_else) {
  const auto path = twoPolicies();
  const std::pair<std::uint32_t, std::uint64_t> cases[] = {
      {0, 200 + 2 * 804}, {1, 200 + 2 * 1448},         {2, 200 + 2 * 3916},
      {3, 200 + 2 * 804}, {7, 200 + 2 * 804},          {0x80000000, 200 + 2 * 804},
      {4, 200 + 2 * 804}, {0xFFFFFFFE, 200 + 2 * 804}, {100, 200 + 2 * 804}};
  for (const auto& [version, size] : cases) {
    const auto outcome = read(path, version, 0);
    EXPECT_EQ(outcome.status, kDone) << version;
    EXPECT_EQ(outcome.size, size) << version;
    EXPECT_EQ(outcome.buffer, Bytes(64, kPoison)) << version;
  }
}

TEST_F(ReadBinaryV2, a_size_query_does_not_look_at_the_policies) {
  const auto hollow = file(fileOf({}, {.policyCount = 3}));
  EXPECT_EQ(read(hollow, 2, 0).size, 200U + 3 * 3916);
  expectRefused(fileOf({}, {.policyCount = 3}));
  const auto many = file(fileOf({}, {.policyCount = 401}));
  EXPECT_EQ(read(many, 0, 0).size, 200U + 401 * 804);
  const auto most = file(fileOf({}, {.policyCount = 0xFFFFFFFF}));
  EXPECT_EQ(read(most, 2, 0).size, 200U + 0xFFFFFFFFULL * 3916);
  EXPECT_EQ(read(most, 0xFFFFFFFE, 0).size, 200U + 0xFFFFFFFFULL * 804);
}

TEST_F(ReadBinaryV2, a_size_query_checks_the_header) {
  for (const Bytes& content :
       {fileOf({}), fileOf({{}}, {.formatVersion = 2}), fileOf({{}}, {.magic = "$QTX"}), Bytes{1}, Bytes(3, 1)}) {
    const auto outcome = read(file(content), 2, 0);
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_EQ(outcome.size, 0U);
  }
  EXPECT_EQ(read(folder_.path("none"), 2, 0).status, kFailed);
}

TEST_F(ReadBinaryV2, gives_two_policies_in_200_and_twice_3916_bytes) {
  expectBodies(writtenFile({richPolicy(), smallPolicy()}, 1, 2),
               {policyBody(2, richPolicy()), policyBody(2, smallPolicy())});
}

TEST_F(ReadBinaryV2, gives_the_layout_that_is_asked_for) {
  auto policy = richPolicy();
  policy.actions = {{1, 2}, {3, 4}};
  const auto path = file(writtenFile({policy, smallPolicy()}, 1, 2));
  const Bytes bodies[] = {joined({policyBody(0, policy), policyBody(0, smallPolicy())}),
                          joined({policyBody(1, policy), policyBody(1, smallPolicy())}),
                          joined({policyBody(2, policy), policyBody(2, smallPolicy())})};
  for (std::uint32_t version = 0; version < 3; ++version) {
    const std::uint64_t room = 200 + 2 * kStrides[version];
    const auto outcome = read(path, version, room);
    EXPECT_EQ(outcome.status, kDone);
    EXPECT_EQ(outcome.size, room);
    EXPECT_EQ(difference(outcome.buffer, joined({headOf(1, 2, 2, version), bodies[version], Bytes(64, kPoison)})), "");
  }
}

// Callers may carve the memory out of something larger.
TEST_F(ReadBinaryV2, writes_to_any_address) {
  auto policy = richPolicy();
  policy.actions = {{1, 2}, {3, 4}};
  const auto path = file(writtenFile({policy, smallPolicy()}, 1, 2));
  for (std::uint32_t version = 0; version < 3; ++version) {
    std::uint64_t room = 200 + 2 * kStrides[version];
    const Bytes image =
        joined({headOf(1, 2, 2, version), policyBody(version, policy), policyBody(version, smallPolicy())});
    for (const std::size_t offset : {1U, 2U, 3U}) {
      Bytes buffer(offset + room + 64, kPoison);
      auto* const binary = reinterpret_cast<VqsPolicyBinary*>(buffer.data() + offset);
      EXPECT_EQ(vqsPbReadBinaryV2(session, path.c_str(), binary, &room, version), kDone);
      EXPECT_EQ(difference(buffer, joined({Bytes(offset, kPoison), image, Bytes(64, kPoison)})), "") << offset;
    }
  }
}

TEST_F(ReadBinaryV2, writes_what_fits_of_a_policy_that_does_not_to_any_address) {
  auto policy = smallPolicy();
  policy.name = u"\u0394";
  const auto path = file(writtenFile({policy}, 1, 2));
  std::uint64_t room = 200 + 804;
  Bytes buffer(3 + room, kPoison);
  auto* const binary = reinterpret_cast<VqsPolicyBinary*>(buffer.data() + 3);
  EXPECT_EQ(vqsPbReadBinaryV2(session, path.c_str(), binary, &room, 0), kDone);
  EXPECT_EQ(difference(buffer, joined({Bytes(3, kPoison), headOf(1, 2, 1, 0), Bytes(804, 0)})), "");
}

TEST_F(ReadBinaryV2, needs_the_whole_size_and_leaves_the_size_word_alone) {
  const auto path = twoPolicies();
  for (std::uint32_t version = 0; version < 3; ++version) {
    const std::uint64_t need = 200 + 2 * kStrides[version];
    for (const std::uint64_t room : {std::uint64_t{1}, std::uint64_t{200}, need - 1}) {
      const auto outcome = read(path, version, room);
      EXPECT_EQ(outcome.status, kFailed) << room;
      EXPECT_EQ(outcome.size, room);
      EXPECT_EQ(outcome.buffer, Bytes(outcome.buffer.size(), kPoison)) << room;
    }
    for (const std::uint64_t room : {need, need + 1, need + 5000}) {
      const auto outcome = read(path, version, room);
      EXPECT_EQ(outcome.status, kDone) << room;
      EXPECT_EQ(outcome.size, room);
      const Bytes behind(outcome.buffer.begin() + static_cast<long>(need), outcome.buffer.end());
      EXPECT_EQ(behind, Bytes(behind.size(), kPoison)) << room;
    }
  }
}

TEST_F(ReadBinaryV2, refuses_a_read_of_any_other_version_that_a_size_query_takes) {
  const auto path = twoPolicies();
  for (const std::uint32_t version : {3U, 7U, 0x80000000U, 0xFFFFFFFEU}) {
    EXPECT_EQ(read(path, version, 0).status, kDone);
    const auto outcome = read(path, version);
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_EQ(outcome.size, kRoom);
    EXPECT_EQ(outcome.buffer, Bytes(outcome.buffer.size(), kPoison));
  }
}

TEST_F(ReadBinaryV2, speaks_once_of_an_empty_file_and_refuses_it) {
  const auto path = file({});
  for (const std::uint64_t room : {std::uint64_t{0}, kRoom}) {
    CapturedOutput output;
    const auto outcome = read(path, 2, room);
    EXPECT_EQ(output.text(), kNotFullyRead);
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_EQ(outcome.size, room);
    EXPECT_EQ(outcome.buffer, Bytes(outcome.buffer.size(), kPoison));
  }
}

TEST_F(ReadBinaryV2, refuses_a_missing_file_and_a_folder) {
  CapturedOutput output;
  const auto missing = read(folder_.path("none"), 2);
  EXPECT_EQ(output.text(), "");
  EXPECT_EQ(missing.status, kFailed);
  EXPECT_EQ(missing.buffer, Bytes(missing.buffer.size(), kPoison));
  const auto directory = read(folder_.path(""), 2);
  EXPECT_EQ(directory.status, kFailed);
  EXPECT_EQ(directory.buffer, Bytes(directory.buffer.size(), kPoison));
  EXPECT_EQ(read("", 2).status, kFailed);
}

TEST_F(ReadBinaryV2, is_silent_about_a_file_that_is_read_but_refused) {
  CapturedOutput output;
  EXPECT_EQ(read(file(Bytes(100, 0)), 2).status, kFailed);
  EXPECT_EQ(read(file(hex("01 00 05")), 2).status, kFailed);
  EXPECT_EQ(read(twoPolicies(), 2).status, kDone);
  EXPECT_EQ(output.text(), "");
}

// A policy that does not fit the structure version ends the conversion, not the call.

TEST_F(ReadBinaryV2, a_second_option_of_an_action_ends_the_conversion_to_version_0) {
  auto misfit = richPolicy();
  misfit.actions = {{1, 2}, {3, 4, 0, 1, 0, 0, 0, 0}, {5, 6}};
  const auto path = file(writtenFile({smallPolicy(), misfit, smallPolicy()}, 1, 2));
  const auto outcome = read(path, 0, 200 + 3 * 804);
  EXPECT_EQ(outcome.status, kDone);
  auto partly = Record{804};
  partly.put(0, policyBody(0, misfit)).fill(544 + 8, 16, 0);
  EXPECT_EQ(difference(outcome.buffer, joined({headOf(1, 2, 3, 0), policyBody(0, smallPolicy()), partly, Bytes(804, 0),
                                               Bytes(64, kPoison)})),
            "");
}

TEST_F(ReadBinaryV2, a_text_of_32_characters_ends_the_conversion_to_version_0_and_is_cut_in_version_1) {
  auto misfit = smallPolicy();
  misfit.texts = {{u"fits", 1}, {std::u16string(32, u't'), 1}};
  misfit.actions = {{1, 2}};
  const auto path = file(writtenFile({misfit, smallPolicy()}, 1, 2));
  const auto v0 = read(path, 0, 200 + 2 * 804);
  EXPECT_EQ(v0.status, kDone);
  auto partly = Record{804};
  partly.put(0, policyBody(0, shortened(misfit))).fill(376 + 33, 33, 0).fill(544, 8, 0);
  EXPECT_EQ(difference(v0.buffer, joined({headOf(1, 2, 2, 0), partly, Bytes(804, 0), Bytes(64, kPoison)})), "");
  const auto v1 = read(path, 1, 200 + 2 * 1448);
  EXPECT_EQ(v1.status, kDone);
  EXPECT_EQ(difference(v1.buffer, joined({headOf(1, 2, 2, 1), policyBody(1, shortened(misfit)),
                                          policyBody(1, smallPolicy()), Bytes(64, kPoison)})),
            "");
}

TEST_F(ReadBinaryV2, a_text_without_any_zero_unit_is_cut_even_in_version_0) {
  Entry entry{.texts = {{.text = units(std::u16string(256, u't')), .flag = 1}}};
  const Policy policy{.name = u"A", .description = "", .texts = {{std::u16string(31, u't'), 1}}};
  const auto outcome = read(file(fileOf({entry})), 0, 200 + 804);
  EXPECT_EQ(outcome.status, kDone);
  EXPECT_EQ(difference(outcome.buffer, joined({headOf(1, 2, 1, 0), policyBody(0, policy), Bytes(64, kPoison)})), "");
}

TEST_F(ReadBinaryV2, a_name_of_64_units_is_cut_in_the_8_bit_versions) {
  const Entry entry{.name = units(std::u16string(64, u'N'))};
  const Policy policy{.name = std::u16string(63, u'N'), .description = ""};
  const auto path = file(fileOf({entry}));
  const auto v0 = read(path, 0, 200 + 804);
  EXPECT_EQ(v0.status, kDone);
  EXPECT_EQ(difference(v0.buffer, joined({headOf(1, 2, 1, 0), policyBody(0, policy), Bytes(64, kPoison)})), "");
  const auto v1 = read(path, 1, 200 + 1448);
  EXPECT_EQ(v1.status, kDone);
  EXPECT_EQ(difference(v1.buffer, joined({headOf(1, 2, 1, 1), policyBody(1, policy), Bytes(64, kPoison)})), "");
}

TEST_F(ReadBinaryV2, an_op_or_flag_out_of_range_ends_the_conversion_in_every_version) {
  Entry wrongOp{.conditions = {{1, 4, 2, 3}, {1, 5, 2, 3}}};
  Entry wrongFlag{.texts = {{.text = hex("78 00 00 00"), .flag = 2}}};
  for (std::uint32_t version = 0; version < 3; ++version)
    for (const auto& entry : {wrongOp, wrongFlag}) {
      const auto stride = static_cast<long>(kStrides[version]);
      const auto outcome = read(file(fileOf({{}, entry, {}})), version);
      EXPECT_EQ(outcome.status, kDone);
      EXPECT_EQ(difference({outcome.buffer.data(), 200}, headOf(1, 2, 3, version)), "");
      const auto third = outcome.buffer.begin() + 200 + 2 * stride;
      EXPECT_EQ(Bytes(third, third + stride), Bytes(static_cast<std::size_t>(stride), 0));
    }
}

TEST_F(ReadBinaryV2, a_name_beyond_the_locale_ends_the_conversion_to_the_8_bit_versions) {
  auto misfit = richPolicy();
  misfit.name = std::u16string{u"\u3042"};
  const auto path = file(writtenFile({smallPolicy(), misfit, smallPolicy()}, 1, 2));
  const auto v0 = read(path, 0, 200 + 3 * 804);
  EXPECT_EQ(v0.status, kDone);
  EXPECT_EQ(difference(v0.buffer,
                       joined({headOf(1, 2, 3, 0), policyBody(0, smallPolicy()), Bytes(1608, 0), Bytes(64, kPoison)})),
            "");
  const auto v1 = read(path, 1, 200 + 3 * 1448);
  EXPECT_EQ(v1.status, kDone);
  EXPECT_EQ(difference(v1.buffer,
                       joined({headOf(1, 2, 3, 1), policyBody(1, smallPolicy()), Bytes(2896, 0), Bytes(64, kPoison)})),
            "");
}

TEST_F(ReadBinaryV2, reads_back_a_description_without_what_stood_behind_its_zero_byte) {
  auto policy = smallPolicy();
  policy.description = std::string{"ab\0cd", 5};
  const Bytes list = joined({Record{16}.u32(0, 2).u32(4, 1).u64(8, 3916), policyBody(2, policy)});
  const auto path = folder_.path("policies.bin");
  ASSERT_EQ(vqsPbCreateBinaryV2(session, reinterpret_cast<const VqsPolicyListV2*>(list.data()), 1, 2, path.c_str()),
            kDone);
  policy.description = "ab";
  const auto outcome = read(path, 2, 200 + 3916);
  EXPECT_EQ(difference(outcome.buffer, joined({headOf(1, 2, 1, 2), policyBody(2, policy), Bytes(64, kPoison)})), "");
}

}  // namespace
}  // namespace test
