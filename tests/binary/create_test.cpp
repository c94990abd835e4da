// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include <vqs/policy_binary.h>
#include "tests/support/faults.h"
#include "tests/support/policy_file.h"
#include "tests/support/results.h"
#include "tests/support/samples.h"
#include "tests/support/session_test.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

/// A policy that every structure version carries whole.
Policy narrowPolicy() {
  auto policy = richPolicy();
  policy.actions = {{0x01020304, 0x05060708}, {0xE1E2E3E4, 0xE5E6E7E8}};
  return policy;
}

Bytes bodiesOf(const std::vector<Policy>& policies, std::uint32_t structureVersion) {
  Bytes bodies;
  for (const auto& policy : policies) bodies = joined({bodies, policyBody(structureVersion, policy)});
  return bodies;
}

/// A list as vqsPbCreateBinaryV2 takes it: the head, then the bodies.
class List {
 public:
  List(std::uint32_t structureVersion, std::uint32_t count, std::uint64_t size, const Bytes& bodies)
      : bytes_(joined({Record{16}.u32(0, structureVersion).u32(4, count).u64(8, size), bodies})) {}
  List(std::uint32_t structureVersion, const std::vector<Policy>& policies)
      : List(structureVersion, static_cast<std::uint32_t>(policies.size()), bodiesOf(policies, structureVersion).size(),
             bodiesOf(policies, structureVersion)) {}

  operator const VqsPolicyListV2*() const {  // NOLINT(google-explicit-constructor): stands for the list
    return reinterpret_cast<const VqsPolicyListV2*>(bytes_.data());
  }
  void setCount(std::uint8_t count) { bytes_[4] = count; }

 private:
  Bytes bytes_;
};

class Create : public SessionTest {
 protected:
  vqsStatus createV2(const VqsPolicyListV2* list) { return vqsPbCreateBinaryV2(session, list, 1, 2, path_.c_str()); }
  vqsStatus createV0(const Bytes& bodies, std::uint32_t count) {
    return vqsPbCreateBinary(nullptr, reinterpret_cast<const VqsPolicyV0*>(bodies.data()), count, 1, 2, path_.c_str());
  }
  void expectWritten(const std::vector<Policy>& policies) {
    EXPECT_EQ(difference(readFile(path_), writtenFile(policies, 1, 2)), "");
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.path("out.bin");
};

using PbCreateBinary = Create;
using PbCreateBinaryV2 = Create;

TEST_F(PbCreateBinary, writes_version_0_policies_in_order_without_a_session) {
  EXPECT_EQ(createV0(bodiesOf({narrowPolicy(), smallPolicy(), narrowPolicy()}, 0), 3), kDone);
  expectWritten({narrowPolicy(), smallPolicy(), narrowPolicy()});
}

TEST_F(PbCreateBinary, does_not_look_at_the_session) {
  const Bytes bodies = policyBody(0, smallPolicy());
  const auto* policies = reinterpret_cast<const VqsPolicyV0*>(bodies.data());
  EXPECT_EQ(vqsPbCreateBinary(&closed, policies, 1, 0xFFFF, 0x8000, path_.c_str()), kDone);
  EXPECT_EQ(difference(readFile(path_), writtenFile({smallPolicy()}, 0xFFFF, 0x8000)), "");
}

TEST_F(PbCreateBinary, refuses_missing_policies_and_a_missing_path) {
  const Bytes bodies = policyBody(0, smallPolicy());
  const auto* policies = reinterpret_cast<const VqsPolicyV0*>(bodies.data());
  EXPECT_EQ(vqsPbCreateBinary(session, nullptr, 1, 1, 2, path_.c_str()), kInvalid);
  EXPECT_EQ(vqsPbCreateBinary(session, nullptr, 0, 1, 2, path_.c_str()), kInvalid);
  EXPECT_EQ(vqsPbCreateBinary(session, policies, 1, 1, 2, nullptr), kInvalid);
  EXPECT_EQ(vqsPbCreateBinary(session, policies, 0, 1, 2, nullptr), kInvalid);
  EXPECT_FALSE(fileExists(path_));
}

TEST_F(PbCreateBinary, fails_with_a_count_of_zero_and_creates_no_file) {
  EXPECT_EQ(createV0(policyBody(0, smallPolicy()), 0), kFailed);
  EXPECT_FALSE(fileExists(path_));
}

TEST_F(PbCreateBinary, fails_with_a_malformed_policy_and_leaves_an_existing_file_alone) {
  folder_.write("out.bin", {1, 2, 3});
  auto wrongOp = narrowPolicy();
  wrongOp.conditions[1].op = 5;
  auto wrongFlag = narrowPolicy();
  wrongFlag.texts[1].flag = 2;
  auto endlessName = Record{804}.fill(0, 64, 'N').bytes();
  EXPECT_EQ(createV0(bodiesOf({smallPolicy(), wrongOp}, 0), 2), kFailed);
  EXPECT_EQ(createV0(bodiesOf({wrongFlag, smallPolicy()}, 0), 2), kFailed);
  EXPECT_EQ(createV0(endlessName, 1), kFailed);
  EXPECT_EQ(readFile(path_), (Bytes{1, 2, 3}));
}

TEST_F(PbCreateBinary, replaces_a_longer_file_whole) {
  folder_.write("out.bin", Bytes(5000, 9));
  EXPECT_EQ(createV0(policyBody(0, smallPolicy()), 1), kDone);
  expectWritten({smallPolicy()});
}

TEST_F(PbCreateBinary, fails_when_the_file_cannot_be_opened) {
  path_ = folder_.path("no/such/folder/out.bin");
  EXPECT_EQ(createV0(policyBody(0, smallPolicy()), 1), kFailed);
  path_ = folder_.path("");
  EXPECT_EQ(createV0(policyBody(0, smallPolicy()), 1), kFailed);
}

/// No reader takes such a file, so it must not take the place of a good one.
TEST_F(PbCreateBinary, leaves_the_file_alone_with_a_count_above_its_limit) {
  const std::pair<std::size_t, std::uint32_t> cases[] = {{120, 16}, {120, 20}, {124, 6}, {800, 33}};
  for (const auto& [offset, count] : cases) {
    ASSERT_EQ(createV0(policyBody(0, smallPolicy()), 1), kDone);
    auto body = Record{804};
    body.put(0, policyBody(0, narrowPolicy())).u32(offset, count);
    EXPECT_EQ(createV0(body, 1), kFailed) << offset;
    expectWritten({smallPolicy()});
  }
}

TEST_F(PbCreateBinary, writes_what_no_reader_takes_otherwise) {
  auto body = Record{804};
  body.put(0, policyBody(0, narrowPolicy())).fill(64, 32, 'd').u32(120, 0);
  EXPECT_EQ(createV0(body, 1), kDone) << "a description without end, and no conditions";
  Bytes bodies;
  for (int i = 0; i < 401; ++i) bodies = joined({bodies, policyBody(0, smallPolicy())});
  EXPECT_EQ(createV0(bodies, 401), kDone) << "more than 400 policies";
}

TEST_F(PbCreateBinary, fails_with_counts_that_lead_beyond_the_packed_record) {
  const std::pair<std::size_t, std::uint32_t> cases[] = {{120, 237},        {124, 7},          {800, 33},
                                                         {120, 0xFFFFFFFF}, {124, 0xFFFFFFFF}, {800, 0xFFFFFFFF}};
  for (const auto& [offset, count] : cases) {
    auto body = Record{804};
    body.put(0, policyBody(0, smallPolicy())).u32(offset, count);
    EXPECT_EQ(createV0(body, 1), kFailed) << offset << ' ' << count;
    EXPECT_FALSE(fileExists(path_));
  }
}

TEST_F(PbCreateBinary, writes_a_description_of_32_bytes_into_a_file_that_is_refused_on_reading) {
  auto policy = smallPolicy();
  policy.description = std::string(32, 'd');
  EXPECT_EQ(createV0(policyBody(0, policy), 1), kDone);
  auto entry = wideEntry(policy);
  entry.description = joined({Bytes(32, 'd'), hex("01 00")});
  EXPECT_EQ(difference(readFile(path_), joined({fileOf({entry}), Bytes(3, 0)})), "");
  std::uint64_t size = 200 + 804;
  Bytes buffer(size);
  EXPECT_EQ(vqsPbReadBinaryV2(session, path_.c_str(), reinterpret_cast<VqsPolicyBinary*>(buffer.data()), &size, 0),
            kFailed);
}

TEST_F(PbCreateBinary, writes_a_policy_without_conditions_into_a_file_that_is_refused_on_reading) {
  auto policy = smallPolicy();
  policy.conditions.clear();
  EXPECT_EQ(createV0(policyBody(0, policy), 1), kDone);
  expectWritten({policy});
  VqsPolicyBinaryV0* summary = nullptr;
  EXPECT_EQ(vqsPbReadBinary(nullptr, path_.c_str(), &summary), kFailed);
}

TEST_F(PbCreateBinaryV2, writes_policies_of_every_structure_version) {
  for (std::uint32_t version = 0; version < 3; ++version) {
    EXPECT_EQ(createV2(List{version, {narrowPolicy(), smallPolicy(), narrowPolicy()}}), kDone) << version;
    expectWritten({narrowPolicy(), smallPolicy(), narrowPolicy()});
  }
}

// A caller that changes its list while it is written harms only what it has said is there.
TEST_F(PbCreateBinaryV2, takes_the_list_as_it_found_it_first) {
  List list{2, std::vector(3, narrowPolicy())};
  list.setCount(1);
  Faults faults;
  faults.before(Fault::kAllocation, 1, [&] { list.setCount(3); });
  EXPECT_EQ(createV2(list), kDone);
  expectWritten({narrowPolicy()});
}

TEST_F(PbCreateBinaryV2, keeps_all_fields_of_an_action_from_version_1_on) {
  for (const std::uint32_t version : {1U, 2U}) {
    EXPECT_EQ(createV2(List{version, {richPolicy()}}), kDone) << version;
    expectWritten({richPolicy()});
  }
}

TEST_F(PbCreateBinaryV2, writes_the_laptop_file_from_its_description) {
  const auto laptop = sampleContent("laptop-r5.json");
  EXPECT_EQ(vqsPbCreateBinaryV2(session, List{2, laptop.policies}, 3, 41, path_.c_str()), kDone);
  EXPECT_EQ(difference(readFile(path_), sample("laptop-r5.bin")), "");
  EXPECT_EQ(vqsPbCreateBinaryV2(session, List{1, laptop.policies}, 3, 41, path_.c_str()), kDone);
  EXPECT_EQ(difference(readFile(path_), sample("laptop-r5.bin")), "");
}

TEST_F(PbCreateBinaryV2, writes_the_limits_and_the_wide_file_from_their_descriptions) {
  for (const std::string name : {"limits-r5", "wide-r5"}) {
    const auto content = sampleContent(name + ".json");
    EXPECT_EQ(
        vqsPbCreateBinaryV2(session, List{2, content.policies}, content.version1, content.version2, path_.c_str()),
        kDone);
    EXPECT_EQ(difference(readFile(path_), sample(name + ".bin")), "") << name;
  }
}

TEST_F(PbCreateBinaryV2, refuses_missing_arguments) {
  const List list{2, {smallPolicy()}};
  EXPECT_EQ(vqsPbCreateBinaryV2(nullptr, list, 1, 2, path_.c_str()), kInvalid);
  EXPECT_EQ(vqsPbCreateBinaryV2(&closed, list, 1, 2, path_.c_str()), kInvalid);
  EXPECT_EQ(vqsPbCreateBinaryV2(session, nullptr, 1, 2, path_.c_str()), kInvalid);
  EXPECT_EQ(vqsPbCreateBinaryV2(session, list, 1, 2, nullptr), kInvalid);
  EXPECT_FALSE(fileExists(path_));
}

TEST_F(PbCreateBinaryV2, needs_as_many_bytes_as_its_bodies_take) {
  const std::uint64_t strides[] = {804, 1448, 3916};
  for (std::uint32_t version = 0; version < 3; ++version) {
    const Bytes bodies = bodiesOf({smallPolicy(), smallPolicy()}, version);
    const std::uint64_t need = 2 * strides[version];
    EXPECT_EQ(createV2(List{version, 2, need - 1, bodies}), kFailed);
    EXPECT_EQ(createV2(List{version, 2, 0, bodies}), kFailed);
    EXPECT_FALSE(fileExists(path_));
    EXPECT_EQ(createV2(List{version, 2, need, bodies}), kDone);
    EXPECT_EQ(createV2(List{version, 2, need + 1, bodies}), kDone);
    EXPECT_EQ(createV2(List{version, 2, UINT64_MAX, bodies}), kDone);
    expectWritten({smallPolicy(), smallPolicy()});
    EXPECT_EQ(std::remove(path_.c_str()), 0);
  }
}

TEST_F(PbCreateBinaryV2, compares_sizes_without_overflow) {
  EXPECT_NE(createV2(List{2, 0xFFFFFFFF, 3916, policyBody(2, smallPolicy())}), kDone);
  EXPECT_EQ(createV2(List{2, 0x10000, 3916, policyBody(2, smallPolicy())}), kFailed);
  EXPECT_FALSE(fileExists(path_));
}

TEST_F(PbCreateBinaryV2, fails_with_any_other_structure_version) {
  for (const std::uint32_t version : {3U, 7U, 0x80000000U, 0xFFFFFFFFU})
    EXPECT_EQ(createV2(List{version, 1, 3916, policyBody(2, smallPolicy())}), kFailed) << version;
  EXPECT_FALSE(fileExists(path_));
}

TEST_F(PbCreateBinaryV2, fails_with_a_count_of_zero_whatever_the_size) {
  EXPECT_EQ(createV2(List{2, 0, 0, policyBody(2, smallPolicy())}), kFailed);
  EXPECT_EQ(createV2(List{2, 0, 3916, policyBody(2, smallPolicy())}), kFailed);
  EXPECT_FALSE(fileExists(path_));
}

TEST_F(PbCreateBinaryV2, fails_with_a_malformed_policy_and_leaves_an_existing_file_alone) {
  folder_.write("out.bin", {1, 2, 3});
  auto wrongOp = narrowPolicy();
  wrongOp.conditions[0].op = 0xFFFFFFFF;
  for (std::uint32_t version = 0; version < 3; ++version)
    EXPECT_EQ(createV2(List{version, {smallPolicy(), wrongOp}}), kFailed);
  auto endlessText = Record{3916};
  endlessText.put(0, policyBody(2, richPolicy())).fill(448, 512, 't');
  EXPECT_EQ(createV2(List{2, 1, 3916, endlessText}), kFailed);
  EXPECT_EQ(readFile(path_), (Bytes{1, 2, 3}));
}

TEST_F(PbCreateBinaryV2, writes_a_name_of_64_units_into_a_file_that_is_refused_on_reading) {
  auto policy = smallPolicy();
  policy.name = std::u16string(64, u'N');
  EXPECT_EQ(createV2(List{2, {policy}}), kDone);
  auto entry = wideEntry(policy);
  entry.name = joined({units(policy.name), {0, 0}});
  const Bytes file = readFile(path_);
  EXPECT_EQ(difference(file, joined({fileOf({entry}), Bytes(3, 0)})), "");
  EXPECT_EQ(Bytes(file.begin() + 16, file.begin() + 20), hex("82 00 00 00"));
  VqsPolicyBinaryV0* summary = nullptr;
  EXPECT_EQ(vqsPbReadBinary(nullptr, path_.c_str(), &summary), kFailed);
}

TEST_F(PbCreateBinaryV2, does_not_read_what_is_the_callers_own) {
  const std::pair<std::size_t, std::size_t> reserved[][2] = {
      {{97, 3}, {128, 8}}, {{0, 4}, {136, 8}}, {{0, 4}, {200, 8}}};
  for (std::uint32_t version = 0; version < 3; ++version) {
    const Bytes body = policyBody(version, narrowPolicy());
    Record soiled{body.size()};
    soiled.put(0, body);
    for (const auto& [offset, size] : reserved[version]) soiled.fill(offset, size, 0xEE);
    EXPECT_EQ(createV2(List{version, 1, body.size(), soiled}), kDone) << version;
    expectWritten({narrowPolicy()});
  }
}

TEST_F(PbCreateBinaryV2, passes_the_path_on_byte_by_byte) {
  path_ = folder_.path("\xE4 \xFF;\x01.bin");
  EXPECT_EQ(createV2(List{2, {smallPolicy()}}), kDone);
  expectWritten({smallPolicy()});
  VqsPolicyBinaryV0* summary = nullptr;
  ASSERT_EQ(vqsPbReadBinary(nullptr, path_.c_str(), &summary), kDone);
  HeapFree(GetProcessHeap(), 0, summary);
}

TEST_F(PbCreateBinaryV2, writes_version_pairs_as_given) {
  for (const auto& [first, second] : {std::pair<std::uint16_t, std::uint16_t>{0, 0}, {0, 7}, {0xFFFF, 0xFFFF}}) {
    EXPECT_EQ(vqsPbCreateBinaryV2(session, List{2, {smallPolicy()}}, first, second, path_.c_str()), kDone);
    EXPECT_EQ(difference(readFile(path_), writtenFile({smallPolicy()}, first, second)), "");
  }
}

}  // namespace
}  // namespace test
