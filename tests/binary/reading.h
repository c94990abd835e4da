// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <vqs/policy_binary.h>
#include "tests/support/policy_file.h"
#include "tests/support/session_test.h"
#include "tests/support/temporary_folder.h"

namespace test {

/// What a read left behind. The buffer is 64 bytes longer than the reader was told, all poison beforehand.
struct ReadOutcome {
  vqsStatus status;
  std::uint64_t size;
  Bytes buffer;
};

/// Gives a summary back the way a caller must.
struct SummaryRelease {
  void operator()(VqsPolicyBinaryV0* summary) const;
};

struct SummaryOutcome {
  vqsStatus status;
  /// the out pointer still is what it was
  bool untouched;
  std::unique_ptr<VqsPolicyBinaryV0, SummaryRelease> summary;
};

/// The first 200 bytes of what vqsPbReadBinaryV2 returns.
Bytes headOf(std::uint16_t version1, std::uint16_t version2, std::uint32_t policyCount, std::uint32_t structureVersion);

/// Reads files with a session whose driver expects no traffic.
class BinaryReading : public SessionTest {
 protected:
  static constexpr std::uint64_t kRoom = 200 + 3 * 3916;

  std::string file(const Bytes& content) { return folder_.write("policies.bin", content); }

  ReadOutcome read(const std::string& path, std::uint32_t structureVersion, std::uint64_t room = kRoom);
  static SummaryOutcome readSummary(const std::string& path);

  /// Both readers take the file; version 2 gives exactly these bodies.
  void expectBodies(const Bytes& content, const std::vector<Bytes>& bodies);
  /// Both readers take the file; the one body of it in structure version 2.
  Bytes onlyBody(const Bytes& content);
  /// Both readers refuse the file and touch nothing.
  void expectRefused(const Bytes& content);

  TemporaryFolder folder_;
};

}  // namespace test
