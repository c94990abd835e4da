// SPDX-License-Identifier: Apache-2.0
#include "tests/format/policy/conversions.h"

#include <cerrno>

#include "src/channel/text.h"
#include "tests/support/policy_model.h"

namespace test {
namespace {

/// The conversions tell no more than that they failed: the runtime's error indicator, cleared before, tells why.
int resultOf(bool isConverted) {
  if (isConverted) return 0;
  return errno == 0 ? 1 : -1;
}

}  // namespace

int pack(std::uint32_t version, const Bytes& body, vqs::PackedPolicy& packed) {
  EXPECT_EQ(body.size(), layoutOf(version).size);
  errno = 0;
  return resultOf(vqs::packPolicyBody(version, body.data(), &packed, vqs::kRuntimeText));
}

int unpack(std::uint32_t version, const Bytes& packed, Bytes& body) {
  EXPECT_EQ(packed.size(), 3972U);
  EXPECT_EQ(body.size(), layoutOf(version).size);
  errno = 0;
  const auto* source = reinterpret_cast<const vqs::PackedPolicy*>(packed.data());
  return resultOf(vqs::unpackPolicyBody(version, source, body.data(), vqs::kRuntimeText));
}

std::string versionName(const ::testing::TestParamInfo<std::uint32_t>& instance) {
  return std::string{"Version"}.append(std::to_string(instance.param));
}

}  // namespace test
