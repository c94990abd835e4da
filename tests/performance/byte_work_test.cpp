// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "format/binary/builder.h"
#include "format/binary/reader.h"
#include "format/binary/registry_text.h"
#include "format/policy/conversion.h"
#include "tests/performance/byte_work.h"
#include "tests/support/bytes.h"
#include "tests/support/policy_model.h"
#include "tests/support/temporary_folder.h"

// What format/ copies and searches. A figure that changes is to be typed anew: a higher one with a reason, a lower one
// so that it stays.

namespace test {
namespace {

/// Texts of 2 and 11 units, of which a record has 512 bytes each.
vqs::PackedPolicy packedRecord() { return recordOf<vqs::PackedPolicy>(packedPolicy(richPolicy())); }

/// The text conversions of versions 0 and 1 are not part of format/.
constexpr vqs::TextConversion kNoText{};

class FleetBytes : public testing::Test {
 protected:
  [[nodiscard]] std::span<const std::byte> file() const { return std::as_bytes(std::span{bytes_}); }

  vqs::BinaryVersions versions{};

 private:
  Bytes bytes_ = sample("fleet-r5.bin");
};

TEST(ByteWork, pack) {
  const auto body = recordOf<VqsPolicyV2>(policyBody(2, richPolicy()));
  vqs::PackedPolicy packed{};
  // The name, the description and two texts, whole, and the 23 bytes of each action in three runs; and each text's end
  // is looked for.
  EXPECT_EQ(
      byteWorkOf([&] { EXPECT_TRUE(vqs::packPolicyV2(&body, &packed)); }),
      (ByteWork{
          .copies = 4 + 2 * 3, .copiedBytes = 128 + 32 + 2 * 512 + 2 * 23, .scans = 2, .scannedBytes = 2 * (3 + 12)}));
}

TEST(ByteWork, unpack) {
  const auto packed = packedRecord();
  VqsPolicyV2 body{};
  EXPECT_EQ(byteWorkOf([&] { EXPECT_TRUE(vqs::unpackPolicyV2(&packed, &body)); }),
            (ByteWork{.copies = 4 + 2 * 3, .copiedBytes = 128 + 32 + 2 * 512 + 2 * 23}));
}

TEST(ByteWork, size_of_a_binary) {
  const auto packed = packedRecord();
  // The ends of the name, of the description and of two texts.
  EXPECT_EQ(byteWorkOf([&] { EXPECT_EQ(vqs::policyBinarySize({&packed, 1}), 198U); }),
            (ByteWork{.scans = 4, .scannedBytes = 10 + 12 + 6 + 24}));
}

TEST(ByteWork, binary_that_is_built) {
  const auto packed = packedRecord();
  std::vector<std::byte> binary(198);
  // Each text's end is looked for once, and all is copied but the three bytes behind the policy. The header has 6
  // fields and the policy 13, of which name and description have a size; there are 3 for each text, 3 runs for
  // each action, and the conditions are one.
  EXPECT_EQ(byteWorkOf([&] { EXPECT_TRUE(vqs::buildPolicyBinary(binary, {&packed, 1}, {3, 41})); }),
            (ByteWork{.copies = 6 + 13 + 1 + 2 * 3 + 1 + 2 * 3,
                      .copiedBytes = 198 - 3,
                      .scans = 4,
                      .scannedBytes = 10 + 12 + 6 + 24}));
}

// The fleet's 400 policies have 87091 bytes, 16 of them the header and 1200 the tail.

TEST_F(FleetBytes, check) {
  // What the header says, asked for more than once; and of the policies sizes, counts, comparisons and flags.
  EXPECT_EQ(byteWorkOf([&] { EXPECT_TRUE(vqs::checkBinary(file(), versions)); }),
            (ByteWork{.copies = 17 + 3050, .copiedBytes = 38 + 11825}));
}

TEST_F(FleetBytes, read_into_bodies) {
  std::vector<VqsPolicyV2> bodies(400);
  const auto bytes = std::as_writable_bytes(std::span{bodies});
  // The revision, three times; and every byte of the policies once, but the comparisons of their 800 conditions twice.
  EXPECT_EQ(byteWorkOf([&] { vqs::readBodies(file(), VQS_STRUCTURE_VERSION_2, bytes, kNoText); }),
            (ByteWork{.copies = 3 + 11550, .copiedBytes = 6 + 87091 - 16 - 1200 + 4 * 800}));
}

TEST_F(FleetBytes, read_into_packed_policies) {
  std::vector<vqs::PackedPolicy> policies(400);
  EXPECT_EQ(byteWorkOf([&] { EXPECT_TRUE(vqs::readBinary(file(), policies, versions)); }),
            (ByteWork{.copies = 3067 + 11553, .copiedBytes = 11863 + 89081}));
}

TEST_F(FleetBytes, registry_text) {
  const vqs::TextSink sink{.take = [](void* /*target*/, std::string_view /*piece*/) {}, .target = nullptr};
  // Two digits and a separator for each byte, which are copied as four.
  EXPECT_EQ(byteWorkOf([&] { vqs::writeRegistryText(sink, "Name", file()); }),
            (ByteWork{.copies = 87091, .copiedBytes = 4 * 87091}));
}

}  // namespace
}  // namespace test
