// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/documents.h"
#include "tests/documents/policies/models.h"
#include "tests/support/policy_file.h"
#include "tests/support/temporary_folder.h"

namespace documents {
namespace {

using test::Bytes;
using test::sample;

Bytes toBytes(const std::vector<std::byte>& bytes) {
  Bytes result;
  for (const auto byte : bytes) result.push_back(std::to_integer<std::uint8_t>(byte));
  return result;
}

std::string textOf(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }

PolicySet setOf(std::size_t count) {
  PolicySet set;
  set.policies.resize(count);
  return set;
}

TEST(WriteBinary, makes_the_samples_of_revision_5) {
  for (const char* name : {"laptop-r5", "limits-r5", "wide-r5"})
    EXPECT_EQ(test::difference(toBytes(writeBinary(sampleSet(std::string{name} + ".json"))),
                               sample(std::string{name} + ".bin")),
              "")
        << name;
}

TEST(WriteBinary, makes_the_fleet_again_from_what_was_read) {
  const auto fleet = sample("fleet-r5.bin");
  const auto read = readPolicies(std::as_bytes(std::span{fleet}));
  ASSERT_TRUE(read.policies);
  EXPECT_EQ(read.policies->policies.size(), 400U);
  EXPECT_EQ(test::difference(toBytes(writeBinary(*read.policies)), fleet), "");
}

TEST(WriteBinary, is_empty_for_no_policies_and_for_more_than_a_file_may_have) {
  EXPECT_TRUE(writeBinary(setOf(0)).empty());
  EXPECT_FALSE(writeBinary(setOf(1)).empty());
  EXPECT_FALSE(writeBinary(setOf(400)).empty());
  EXPECT_TRUE(writeBinary(setOf(401)).empty());
}

TEST(WriteRegistry, makes_the_samples) {
  const auto binary = sample("laptop-r5.bin");
  const auto bytes = std::as_bytes(std::span{binary});
  EXPECT_EQ(writeRegistry(bytes, RegistryValue::kAsm, RegistryEncoding::kUtf8), textOf(sample("laptop-asm.reg")));
  EXPECT_EQ(writeRegistry(bytes, RegistryValue::kBalanceProfile, RegistryEncoding::kUtf8),
            textOf(sample("laptop-balanceprofile.reg")));
}

TEST(WriteRegistry, writes_utf_16_as_registry_editors_do) {
  using namespace std::string_literals;
  const auto text =
      writeRegistry(std::as_bytes(std::span{"\x01\xAB", 2}), RegistryValue::kAsm, RegistryEncoding::kUtf16);
  EXPECT_EQ(text.substr(0, 8), "\xFF\xFEW\0i\0n\0"s);
  EXPECT_EQ(text.substr(2 + 2 * 36, 10), "\r\0\n\0\r\0\n\0[\0"s);
  EXPECT_EQ(text.substr(text.size() - 14), "0\0001\0,\0a\0b\0\r\0\n\0"s);
  EXPECT_EQ(text.size(), 2 + 2 * (36 + 2 + 2 + 73 + 2 + 34 + 2));
}

TEST(WriteRegistry, is_read_back_in_every_form) {
  const auto binary = sample("wide-r5.bin");
  for (const auto value : {RegistryValue::kAsm, RegistryValue::kBalanceProfile})
    for (const auto encoding : {RegistryEncoding::kUtf8, RegistryEncoding::kUtf16}) {
      const auto text = writeRegistry(std::as_bytes(std::span{binary}), value, encoding);
      const auto result = readPolicies(std::as_bytes(std::span{text}));
      EXPECT_TRUE(result.findings.empty());
      ASSERT_TRUE(result.policies);
      EXPECT_EQ(*result.policies, sampleSet("wide-r5.json"));
    }
}

}  // namespace
}  // namespace documents
