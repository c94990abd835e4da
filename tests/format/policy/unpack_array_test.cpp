// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "src/channel/text.h"
#include "tests/format/policy/conversions.h"
#include "tests/support/faults.h"
#include "tests/support/policy_model.h"

namespace test {
namespace {

using ::testing::TestWithParam;
using ::testing::Values;

class UnpackArray : public TestWithParam<std::uint32_t> {
 protected:
  static std::uint32_t version() { return GetParam(); }
  static std::size_t stride() { return layoutOf(GetParam()).size; }

  UnpackArray() : bodies(3 * stride(), kPoison) {
    for (const std::uint32_t id : {21U, 22U, 23U}) append(packed, packedPolicy(numberedPolicy(id)));
  }

  static void append(Bytes& to, const Bytes& bytes) { to.insert(to.end(), bytes.begin(), bytes.end()); }
  [[nodiscard]] static Bytes body(std::uint32_t id) { return policyBody(version(), numberedPolicy(id), kPoison); }

  bool unpackAll(std::uint64_t size, std::uint32_t count) { return unpackAs(version(), size, count); }
  bool unpackAs(std::uint32_t as, std::uint64_t size, std::uint32_t count) {
    return vqs::unpackPolicyArray(bodies.data(), size, as, policies(), count, vqs::kRuntimeText);
  }
  [[nodiscard]] const vqs::PackedPolicy* policies() const {
    return reinterpret_cast<const vqs::PackedPolicy*>(packed.data());
  }
  void expectUntouched() { EXPECT_EQ(difference(bodies, Bytes(3 * stride(), kPoison)), ""); }
  void expectBodies(const std::vector<Bytes>& expected) {
    Bytes all;
    for (const auto& one : expected) append(all, one);
    EXPECT_EQ(difference(bodies, all), "");
  }

  Bytes packed;
  Bytes bodies;
};

TEST_P(UnpackArray, lays_bodies_back_to_back_in_order) {
  EXPECT_TRUE(unpackAll(3 * stride(), 3));
  expectBodies({body(21), body(22), body(23)});
}

TEST_P(UnpackArray, unpacks_as_many_as_asked_for) {
  EXPECT_TRUE(unpackAll(3 * stride(), 1));
  expectBodies({body(21), Bytes(2 * stride(), kPoison)});
}

TEST_P(UnpackArray, refuses_a_null_destination_or_none) {
  EXPECT_FALSE(vqs::unpackPolicyArray(nullptr, 3 * stride(), version(), policies(), 3, vqs::kRuntimeText));
  EXPECT_FALSE(vqs::unpackPolicyArray(nullptr, 3 * stride(), 9, policies(), 3, vqs::kRuntimeText));
  EXPECT_FALSE(unpackAll(0, 3));
  EXPECT_FALSE(unpackAs(9, 0, 0));
  expectUntouched();
}

TEST_P(UnpackArray, refuses_an_unknown_version) {
  for (const std::uint32_t unknown : {3U, 4U, 0xFFFFFFFFU}) {
    EXPECT_FALSE(unpackAs(unknown, 1, 3));
    EXPECT_FALSE(unpackAs(unknown, 3 * stride(), 0));
  }
  expectUntouched();
}

TEST_P(UnpackArray, that_is_one_byte_short_is_refused_before_anything_is_converted) {
  EXPECT_FALSE(unpackAll(3 * stride() - 1, 3));
  EXPECT_FALSE(unpackAll(1, 1));
  EXPECT_FALSE(unpackAll(3 * stride(), 4));
  expectUntouched();
}

TEST_P(UnpackArray, does_not_overflow_on_a_huge_count) {
  EXPECT_FALSE(unpackAll(3 * stride(), 0xFFFFFFFF));
  EXPECT_FALSE(unpackAll(0xFFFFFFFFULL * stride() - 1, 0xFFFFFFFF));
  expectUntouched();
}

TEST_P(UnpackArray, of_nothing_is_not_converted) {
  EXPECT_FALSE(unpackAll(3 * stride(), 0));
  EXPECT_FALSE(unpackAll(1, 0));
  expectUntouched();
}

TEST_P(UnpackArray, stops_at_the_first_malformed_policy) {
  packed = Record{3 * 3972}.put(0, packed).u32(3972 + 184, 16);
  EXPECT_FALSE(unpackAll(3 * stride(), 3));
  const Bytes rest(bodies.begin() + static_cast<std::ptrdiff_t>(2 * stride()), bodies.end());
  bodies.resize(stride());
  expectBodies({body(21)});
  EXPECT_EQ(rest, Bytes(stride(), kPoison));
}

TEST_P(UnpackArray, allocates_nothing) {
  const Faults faults;
  EXPECT_TRUE(unpackAll(3 * stride(), 3));
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

INSTANTIATE_TEST_SUITE_P(To, UnpackArray, Values(0U, 1U, 2U), versionName);

TEST(UnpackArrayOfTexts, passes_a_failed_conversion_on) {
  auto content = numberedPolicy(1);
  content.name = std::u16string(1, 0x3042);
  const auto packed = packedPolicy(content).bytes();
  Bytes bodies(1448, kPoison);
  const auto* policy = reinterpret_cast<const vqs::PackedPolicy*>(packed.data());
  EXPECT_FALSE(vqs::unpackPolicyArray(bodies.data(), 804, 0, policy, 1, vqs::kRuntimeText));
  EXPECT_FALSE(vqs::unpackPolicyArray(bodies.data(), 1448, 1, policy, 1, vqs::kRuntimeText));
}

}  // namespace
}  // namespace test
