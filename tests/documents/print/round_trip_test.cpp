// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>

#include "documents/documents.h"
#include "format/catalogue/actions.h"
#include "format/catalogue/conditions.h"
#include "tests/support/policy_model.h"
#include "tests/support/temporary_folder.h"

namespace documents {
namespace {

using test::Bytes;
using test::sample;

constexpr ReadOptions kWhateverItSays{.structureVersion = 2, .allowUnknown = true};

Bytes toBytes(const std::vector<std::byte>& bytes) {
  Bytes result;
  for (const auto byte : bytes) result.push_back(std::to_integer<std::uint8_t>(byte));
  return result;
}

PolicySet readBinary(const Bytes& file) {
  const auto result = readPolicies(std::as_bytes(std::span{file}));
  EXPECT_TRUE(result.policies);
  return result.policies.value_or(PolicySet{});
}

/// What the document of a set says; printed again it is the same document.
std::optional<PolicySet> throughDocument(const PolicySet& policies) {
  const auto document = printDocument(policies);
  const auto result = readDocument(document, kWhateverItSays);
  if (result.policies) {
    EXPECT_EQ(printDocument(*result.policies), document);
  }
  EXPECT_EQ(formatDocument(document).text, document);
  return result.policies;
}

TEST(RoundTrip, keeps_every_sample) {
  for (const char* name :
       {"laptop-r3.bin", "laptop-r4.bin", "laptop-r5.bin", "limits-r5.bin", "wide-r5.bin", "fleet-r5.bin"}) {
    const auto policies = readBinary(sample(name));
    EXPECT_EQ(throughDocument(policies), policies) << name;
  }
}

TEST(RoundTrip, compiles_the_samples_of_revision_5_to_the_same_bytes) {
  for (const char* name : {"laptop-r5.bin", "limits-r5.bin", "wide-r5.bin", "fleet-r5.bin"}) {
    const auto file = sample(name);
    const auto policies = throughDocument(readBinary(file));
    ASSERT_TRUE(policies) << name;
    EXPECT_EQ(test::difference(toBytes(writeBinary(*policies)), file), "") << name;
  }
}

/// Policies of every kind, always the same ones.
class RandomPolicies {
 public:
  explicit RandomPolicies(std::uint32_t seed) : random_{seed} {}

  test::Policy next() {
    test::Policy policy;
    policy.name = text(63);
    policy.description = bytes(31);
    policy.flag0 = small();
    policy.id = number();
    policy.param0 = number();
    policy.flag1 = small();
    policy.flag2 = small();
    policy.param1 = number();
    policy.param2 = number();
    policy.conditions.clear();
    for (std::size_t count = sizeUpTo(15); count > 0; --count)
      policy.conditions.push_back({id(std::size(vqs::kConditionRows)), below(5), number(), rare(number())});
    for (std::size_t count = sizeUpTo(5); count > 0; --count)
      policy.texts.push_back({text(255), static_cast<std::uint8_t>(below(2))});
    for (std::size_t count = sizeUpTo(32); count > 0; --count)
      policy.actions.push_back({id(std::size(vqs::kActionRows)), number(), rare(number()), rare(small()), rare(small()),
                                rare(number()), rare(small()), rare(number())});
    return policy;
  }

 private:
  std::uint32_t below(std::size_t count) { return static_cast<std::uint32_t>(random_() % count); }
  std::uint8_t small() { return static_cast<std::uint8_t>(below(4) == 0 ? below(256) : below(3)); }

  /// Small ones, which are options and bits, single bits, those around the sign, and any.
  std::uint32_t number() {
    switch (below(4)) {
      case 0:
        return below(70);
      case 1:
        return 1U << below(32);
      case 2:
        return 0x80000000U - 2 + below(4);
      default:
        return static_cast<std::uint32_t>(random_()) >> below(32);
    }
  }

  template <class Number>
  Number rare(Number number) {
    return below(4) == 0 ? number : Number{0};
  }

  std::uint32_t id(std::size_t known) { return below(8) == 0 ? number() : below(known); }

  std::size_t sizeUpTo(std::size_t most) {
    switch (below(8)) {
      case 0:
        return 0;
      case 1:
        return most;
      default:
        return below(most + 1);
    }
  }

  char16_t unit() {
    switch (below(6)) {
      case 0:
        return static_cast<char16_t>(0xD800 + below(0x800));
      case 1:
        return static_cast<char16_t>(1 + below(0xFFFF));
      case 2:
        return static_cast<char16_t>(1 + below(0xA0));
      default:
        return static_cast<char16_t>(0x20 + below(0x5F));
    }
  }

  std::u16string text(std::size_t most) {
    std::u16string text;
    for (std::size_t count = sizeUpTo(most); count > 0; --count) text += unit();
    return text;
  }

  /// UTF-8 now and then.
  std::string bytes(std::size_t most) {
    std::string text;
    const std::size_t size = sizeUpTo(most);
    while (text.size() < size)
      text += below(3) == 0 ? std::string{static_cast<char>(1 + below(255))} : below(2) == 0 ? "\xC3\xA9" : "a";
    return text.substr(0, size);
  }

  std::mt19937 random_;
};

VqsPolicyV2 recordOf(const test::Policy& model) { return test::recordOf<VqsPolicyV2>(test::policyBody(2, model)); }

/// Records of a test run; more of them when VQS_RANDOM_RECORDS says so.
std::size_t recordCount() {
  const char* const count = std::getenv("VQS_RANDOM_RECORDS");
  return count != nullptr ? static_cast<std::size_t>(std::strtoul(count, nullptr, 10)) : 3000;
}

TEST(RoundTrip, keeps_random_records) {
  RandomPolicies random{20'261'122};
  for (std::size_t i = 0; i < recordCount(); ++i) {
    const auto record = recordOf(random.next());
    const PolicySet policies{
        .version1 = static_cast<std::uint16_t>(i), .version2 = 1, .policies = {fromRecord(record)}};
    const auto result = throughDocument(policies);
    ASSERT_TRUE(result) << i << ": " << printDocument(policies);
    ASSERT_EQ(result->version1, static_cast<std::uint16_t>(i));
    ASSERT_EQ(result->policies.size(), 1U);
    ASSERT_EQ(test::difference(test::bytesOf(toRecord(result->policies[0])), test::bytesOf(record)), "") << i;
  }
}

TEST(RoundTrip, keeps_every_unit) {
  for (std::uint32_t first = 1; first < 0x10000; first += 60) {
    PolicySet policies;
    policies.policies.resize(1);
    for (std::uint32_t unit = first; unit < first + 60 && unit < 0x10000; ++unit)
      policies.policies[0].name += static_cast<char16_t>(unit);
    EXPECT_EQ(throughDocument(policies), policies) << first;
  }
}

TEST(RoundTrip, keeps_every_byte_of_a_description) {
  for (unsigned first = 1; first < 0x100; ++first)
    for (const char* rest : {"", "\x80", "\xBF\xBF", "a", "\xA9z"}) {
      PolicySet policies;
      policies.policies.resize(1);
      policies.policies[0].description = std::string{static_cast<char>(first)} + rest;
      EXPECT_EQ(throughDocument(policies), policies) << first << rest;
    }
}

}  // namespace
}  // namespace documents
