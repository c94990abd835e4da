// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstring>
#include <vector>

#include "format/policy/packed_policy.h"
#include "tests/support/bytes.h"

namespace test {

/// The driver's records, of their bytes.
inline std::vector<vqs::PackedPolicy> packedRecords(const std::vector<Bytes>& records) {
  std::vector<vqs::PackedPolicy> policies(records.size());
  for (std::size_t i = 0; i < records.size(); ++i) std::memcpy(&policies[i], records[i].data(), sizeof(policies[i]));
  return policies;
}

inline vqs::PackedPolicy packedRecord(const Bytes& record) { return packedRecords({record}).front(); }

}  // namespace test
