// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "format/policy/packed_policy.h"
#include "tests/support/bytes.h"

namespace test {

/// The driver's record, of its bytes.
inline vqs::PackedPolicy packedRecord(const Bytes& record) { return recordOf<vqs::PackedPolicy>(record); }

inline std::vector<vqs::PackedPolicy> packedRecords(const std::vector<Bytes>& records) {
  std::vector<vqs::PackedPolicy> policies;
  policies.reserve(records.size());
  for (const auto& record : records) policies.push_back(packedRecord(record));
  return policies;
}

}  // namespace test
