// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/binary/reading.h"
#include "tests/support/results.h"
#include "tests/support/samples.h"

// The files of examples/policies against the descriptions beside them. Neither was made with this library.

namespace test {
namespace {

class ReadSamples : public BinaryReading {
 protected:
  static Bytes content(const std::string& name) {
    const Bytes bytes = sample(name + ".bin");
    EXPECT_EQ(bytes.size(), sampleContent(name + ".json").size);
    return bytes;
  }

  /// The whole answer: head, bodies, and poison behind them.
  void expectAnswer(const std::string& name, std::uint32_t version, const std::vector<Bytes>& bodies) {
    const auto described = sampleContent(name + ".json");
    const auto count = static_cast<std::uint32_t>(described.policies.size());
    const Bytes expected = joined({headOf(described.version1, described.version2, count, version), joined(bodies)});
    const auto query = read(samplePath(name + ".bin"), version, 0);
    EXPECT_EQ(query.status, kDone);
    EXPECT_EQ(query.size, expected.size());
    const auto outcome = read(samplePath(name + ".bin"), version, query.size);
    EXPECT_EQ(outcome.status, kDone);
    EXPECT_EQ(difference(outcome.buffer, joined({expected, Bytes(64, kPoison)})), "") << name;
  }

  static std::vector<Bytes> bodies(const std::string& name, std::uint32_t version) {
    std::vector<Bytes> result;
    for (const auto& policy : sampleContent(name + ".json").policies)
      result.push_back(policyBody(version, version == 2 ? policy : shortened(policy)));
    return result;
  }
};

TEST_F(ReadSamples, version_2_gives_exactly_what_is_described) {
  for (const std::string name : {"laptop-r3", "laptop-r4", "laptop-r5", "limits-r5", "wide-r5"}) {
    EXPECT_FALSE(content(name).empty());
    expectAnswer(name, 2, bodies(name, 2));
  }
}

TEST_F(ReadSamples, the_test_s_own_assembler_makes_the_same_files) {
  for (const std::string name : {"laptop-r5", "limits-r5", "wide-r5"}) {
    const auto described = sampleContent(name + ".json");
    EXPECT_EQ(difference(writtenFile(described.policies, described.version1, described.version2), content(name)), "");
  }
}

TEST_F(ReadSamples, version_1_gives_the_8_bit_files_whole) {
  for (const std::string name : {"laptop-r3", "laptop-r4", "laptop-r5", "limits-r5"})
    expectAnswer(name, 1, bodies(name, 1));
}

TEST_F(ReadSamples, version_0_gives_revision_3_whole_since_its_actions_have_no_options) {
  expectAnswer("laptop-r3", 0, bodies("laptop-r3", 0));
}

TEST_F(ReadSamples, version_0_ends_at_the_first_action_with_an_option) {
  for (const std::string name : {"laptop-r4", "laptop-r5"}) {
    const auto policies = sampleContent(name + ".json").policies;
    std::size_t misfits = 0;
    while (policies[8].actions[misfits].option1 == 0) ++misfits;
    auto expected = bodies(name, 0);
    Record partly{804};
    partly.put(0, expected[8]);
    for (std::size_t action = misfits; action < policies[8].actions.size(); ++action)
      partly.fill(544 + 8 * action, 8, 0);
    expected[8] = partly;
    for (std::size_t i = 9; i < 16; ++i) expected[i] = Bytes(804, 0);
    expectAnswer(name, 0, expected);
  }
  auto limits = bodies("limits-r5", 0);
  limits[0] = Record{804}.put(0, limits[0]).fill(544, 256, 0);
  limits[1] = Bytes(804, 0);
  expectAnswer("limits-r5", 0, limits);
}

TEST_F(ReadSamples, the_8_bit_versions_end_at_the_first_name_beyond_the_locale) {
  for (const auto& [version, stride] : {std::pair<std::uint32_t, std::size_t>{0, 804}, {1, 1448}}) {
    const auto outcome = read(samplePath("wide-r5.bin"), version, 200 + 3 * stride);
    EXPECT_EQ(outcome.status, kDone);
    EXPECT_EQ(difference({outcome.buffer.data(), 200}, headOf(5, 5, 3, version)), "");
    const std::size_t behindName = 200 + (version == 0 ? 64 : 68);
    EXPECT_EQ(difference({outcome.buffer.data() + behindName, outcome.buffer.size() - 64 - behindName},
                         Bytes(3 * stride + 200 - behindName, 0)),
              "");
  }
}

TEST_F(ReadSamples, four_hundred_policies_are_read_and_one_more_is_refused) {
  const std::uint64_t room = 200 + 401 * 3916;
  const auto fleet = read(samplePath("fleet-r5.bin"), 2, room);
  EXPECT_EQ(fleet.status, kDone);
  EXPECT_EQ(difference({fleet.buffer.data(), 200}, headOf(9, 9, 400, 2)), "");
  const std::u16string first = u"Quiet on battery 000";
  EXPECT_EQ(difference({fleet.buffer.data() + 204, 42}, joined({units(first), {0, 0}})), "");
  const auto last = fleet.buffer.begin() + 200 + 399 * 3916 + 4;
  EXPECT_NE(Bytes(last, last + 2), Bytes(2, 0));
  Bytes oneMore = sample("fleet-r5.bin");
  oneMore.resize(oneMore.size() - 3 * 400);
  oneMore = joined({oneMore, entryBytes({})});
  oneMore[12] = 0x91;
  const auto refused = read(file(oneMore), 2, room);
  EXPECT_EQ(refused.status, kFailed);
  EXPECT_EQ(refused.buffer, Bytes(refused.buffer.size(), kPoison));
}

TEST_F(ReadSamples, what_was_read_is_written_again_as_the_identical_file) {
  for (const std::string name : {"laptop-r5", "limits-r5", "wide-r5", "fleet-r5"}) {
    const auto size = read(samplePath(name + ".bin"), 2, 0).size;
    auto outcome = read(samplePath(name + ".bin"), 2, size);
    ASSERT_EQ(outcome.status, kDone);
    const auto& head = *reinterpret_cast<const VqsPolicyBinary*>(outcome.buffer.data());
    const Bytes bodies(outcome.buffer.begin() + 200, outcome.buffer.end() - 64);
    const Bytes list = joined({Record{16}.u32(0, 2).u32(4, head.policyCount).u64(8, bodies.size()), bodies});
    const auto path = folder_.path(name);
    EXPECT_EQ(vqsPbCreateBinaryV2(session, reinterpret_cast<const VqsPolicyListV2*>(list.data()), head.binaryVersion1,
                                  head.binaryVersion2, path.c_str()),
              kDone);
    EXPECT_EQ(difference(readFile(path), sample(name + ".bin")), "") << name;
  }
}

}  // namespace
}  // namespace test
