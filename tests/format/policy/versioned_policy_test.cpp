// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "src/channel/text.h"
#include "tests/format/policy/conversions.h"
#include "tests/support/faults.h"
#include "tests/support/policy_model.h"

namespace test {
namespace {

/// A versioned record of exactly these many bytes.
class Versioned {
 public:
  Versioned(std::uint32_t version, std::size_t size) : bytes_(Record{size}.u32(0, version)) {}
  Versioned(std::uint32_t version, const Bytes& body) : bytes_(Record{4 + body.size()}.u32(0, version).put(4, body)) {}
  const VqsVersionedPolicy& operator*() const { return *reinterpret_cast<const VqsVersionedPolicy*>(bytes_.data()); }
  [[nodiscard]] std::size_t size() const { return bytes_.size(); }

 private:
  Bytes bytes_;
};

TEST(PolicyBodySize, is_known_for_three_versions) {
  EXPECT_EQ(vqs::policyBodySize(0), 804U);
  EXPECT_EQ(vqs::policyBodySize(1), 1448U);
  EXPECT_EQ(vqs::policyBodySize(2), 3916U);
  EXPECT_FALSE(vqs::policyBodySize(3).has_value());
  EXPECT_FALSE(vqs::policyBodySize(0xFFFFFFFF).has_value());
}

TEST(HoldsWholeBody, asks_for_four_bytes_and_the_body_of_the_version) {
  const Versioned v0{0, 808};
  EXPECT_FALSE(vqs::wholeBodyVersion(*v0, 807));
  EXPECT_TRUE(vqs::wholeBodyVersion(*v0, 808));
  const Versioned v1{1, 1452};
  EXPECT_FALSE(vqs::wholeBodyVersion(*v1, 1451));
  EXPECT_TRUE(vqs::wholeBodyVersion(*v1, 1452));
  const Versioned v2{2, 3920};
  EXPECT_FALSE(vqs::wholeBodyVersion(*v2, 3919));
  EXPECT_TRUE(vqs::wholeBodyVersion(*v2, 3920));
}

TEST(HoldsWholeBody, takes_more_than_is_needed) {
  const Versioned v0{0, 808};
  EXPECT_TRUE(vqs::wholeBodyVersion(*v0, 809));
  EXPECT_TRUE(vqs::wholeBodyVersion(*v0, 0xFFFFFFFFFFFFFFFF));
}

TEST(HoldsWholeBody, does_not_read_a_version_that_is_not_there) {
  // No more bytes than are announced: a look at the rest of the version would be one too far.
  for (const std::size_t size : {1U, 2U, 3U, 4U}) {
    const Bytes bytes(size, 0);
    EXPECT_FALSE(vqs::wholeBodyVersion(*reinterpret_cast<const VqsVersionedPolicy*>(bytes.data()), size)) << size;
  }
  EXPECT_FALSE(vqs::wholeBodyVersion(*Versioned(0, 808), 0));
}

TEST(HoldsWholeBody, knows_no_further_version) {
  for (const std::uint32_t version : {3U, 4U, 0x100U, 0xFFFFFFFFU}) {
    const Versioned record{version, 4096};
    EXPECT_FALSE(vqs::wholeBodyVersion(*record, 4096)) << version;
  }
}

TEST(VersionedPolicy, keeps_its_body_right_behind_the_version) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    const auto content = fullPolicy(version);
    const Versioned record{version, policyBody(version, content, 0xEE)};
    vqs::PackedPolicy packed{};
    EXPECT_TRUE(vqs::packVersionedPolicy(*record, record.size(), packed, vqs::kRuntimeText));
    EXPECT_EQ(difference(bytesOf(packed), packedPolicy(content).bytes()), "");
  }
}

TEST(VersionedPolicy, that_is_short_or_malformed_is_not_packed) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    auto body = policyBody(version, fullPolicy(version));
    vqs::PackedPolicy packed{};
    const Versioned whole{version, body};
    EXPECT_FALSE(vqs::packVersionedPolicy(*whole, whole.size() - 1, packed, vqs::kRuntimeText));
    EXPECT_EQ(difference(bytesOf(packed), Record{3972}.bytes()), "");
    body.u32(layoutOf(version).conditions + 4, 5);
    const Versioned malformed{version, body};
    EXPECT_FALSE(vqs::packVersionedPolicy(*malformed, malformed.size(), packed, vqs::kRuntimeText));
  }
}

TEST(PolicyBody, of_an_unknown_version_is_refused) {
  const auto body = policyBody(2, fullPolicy(2));
  vqs::PackedPolicy packed{};
  EXPECT_FALSE(vqs::packPolicyBody(3, body.bytes().data(), &packed, vqs::kRuntimeText));
  EXPECT_EQ(difference(bytesOf(packed), Record{3972}.bytes()), "");
  Bytes untouched(3916, kPoison);
  EXPECT_FALSE(vqs::unpackPolicyBody(3, &packed, untouched.data(), vqs::kRuntimeText));
  EXPECT_EQ(difference(untouched, Bytes(3916, kPoison)), "");
}

TEST(PolicyBody, is_converted_by_its_version) {
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    const auto content = fullPolicy(version);
    vqs::PackedPolicy packed{};
    EXPECT_TRUE(vqs::packPolicyBody(version, policyBody(version, content).bytes().data(), &packed, vqs::kRuntimeText));
    EXPECT_EQ(difference(bytesOf(packed), packedPolicy(content).bytes()), "");
    Bytes body(layoutOf(version).size, kPoison);
    EXPECT_TRUE(vqs::unpackPolicyBody(version, &packed, body.data(), vqs::kRuntimeText));
    EXPECT_EQ(difference(body, policyBody(version, content, kPoison).bytes()), "");
  }
}

TEST(PolicyBody, that_is_null_is_refused_in_every_version) {
  vqs::PackedPolicy packed{};
  for (const std::uint32_t version : {0U, 1U, 2U}) {
    EXPECT_FALSE(vqs::packPolicyBody(version, nullptr, &packed, vqs::kRuntimeText));
    EXPECT_FALSE(vqs::unpackPolicyBody(version, &packed, nullptr, vqs::kRuntimeText));
  }
}

}  // namespace
}  // namespace test
