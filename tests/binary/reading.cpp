// SPDX-License-Identifier: Apache-2.0
#include "tests/binary/reading.h"
#include "tests/support/results.h"

namespace test {

void SummaryRelease::operator()(VqsPolicyBinaryV0* summary) const { HeapFree(GetProcessHeap(), 0, summary); }

Bytes headOf(std::uint16_t version1, std::uint16_t version2, std::uint32_t policyCount,
             std::uint32_t structureVersion) {
  return Record{200}.u16(4, version1).u16(6, version2).u32(48, policyCount).u32(184, structureVersion).bytes();
}

ReadOutcome BinaryReading::read(const std::string& path, std::uint32_t structureVersion, std::uint64_t room) {
  ReadOutcome outcome{.status = 99, .size = room, .buffer = Bytes(room + 64, kPoison)};
  outcome.status = vqsPbReadBinaryV2(session, path.c_str(), reinterpret_cast<VqsPolicyBinary*>(outcome.buffer.data()),
                                     &outcome.size, structureVersion);
  return outcome;
}

SummaryOutcome BinaryReading::readSummary(const std::string& path) {
  VqsPolicyBinaryV0 before;
  VqsPolicyBinaryV0* out = &before;
  const vqsStatus status = vqsPbReadBinary(nullptr, path.c_str(), &out);
  const bool untouched = out == &before;
  return {.status = status,
          .untouched = untouched,
          .summary = std::unique_ptr<VqsPolicyBinaryV0, SummaryRelease>{untouched ? nullptr : out}};
}

void BinaryReading::expectBodies(const Bytes& content, const std::vector<Bytes>& bodies) {
  const auto path = file(content);
  const auto outcome = read(path, 2);
  EXPECT_EQ(outcome.status, kDone);
  EXPECT_EQ(outcome.size, kRoom);
  Bytes expected = joined({headOf(1, 2, static_cast<std::uint32_t>(bodies.size()), 2), joined(bodies)});
  expected.resize(outcome.buffer.size(), kPoison);
  EXPECT_EQ(difference(outcome.buffer, expected), "");
  EXPECT_EQ(readSummary(path).status, kDone);
}

Bytes BinaryReading::onlyBody(const Bytes& content) {
  const auto path = file(content);
  const auto outcome = read(path, 2);
  EXPECT_EQ(outcome.status, kDone);
  EXPECT_EQ(difference(Bytes(outcome.buffer.begin(), outcome.buffer.begin() + 200), headOf(1, 2, 1, 2)), "");
  EXPECT_EQ(readSummary(path).status, kDone);
  return {outcome.buffer.begin() + 200, outcome.buffer.begin() + 200 + 3916};
}

void BinaryReading::expectRefused(const Bytes& content) {
  const auto path = file(content);
  const auto outcome = read(path, 2);
  EXPECT_EQ(outcome.status, kFailed);
  EXPECT_EQ(outcome.size, kRoom);
  EXPECT_EQ(difference(outcome.buffer, Bytes(outcome.buffer.size(), kPoison)), "");
  const auto summary = readSummary(path);
  EXPECT_EQ(summary.status, kFailed);
  EXPECT_TRUE(summary.untouched);
}

}  // namespace test
