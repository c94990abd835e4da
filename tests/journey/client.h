// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <vqs/vqs.h>

#include "tests/support/results.h"

namespace test {

/// A policy binary as vqsPbReadBinaryV2 gives it, structure version 2.
class PolicyFile {
 public:
  PolicyFile(QtfSession* session, const std::string& path) {
    VqsPolicyBinary none{};
    std::uint64_t size = 0;
    EXPECT_EQ(vqsPbReadBinaryV2(session, path.c_str(), &none, &size, 2), kDone) << path;
    memory_ = std::make_unique<std::uint64_t[]>(size / 8 + 1);
    EXPECT_EQ(vqsPbReadBinaryV2(session, path.c_str(), &head(), &size, 2), kDone) << path;
  }

  VqsPolicyBinary& head() { return *reinterpret_cast<VqsPolicyBinary*>(memory_.get()); }
  VqsPolicyV2* policies() { return reinterpret_cast<VqsPolicyV2*>(&head() + 1); }

 private:
  std::unique_ptr<std::uint64_t[]> memory_;
};

/// Policies of structure version 2 behind the head of a list, as the V2 functions take and fill them.
class PolicyListV2 {
 public:
  explicit PolicyListV2(std::uint32_t count)
      : memory_(std::make_unique<std::uint64_t[]>((sizeof(VqsPolicyListV2) + count * sizeof(VqsPolicyV2)) / 8 + 1)) {
    head().structureVersion = 2;
    head().count = count;
    head().size = std::uint64_t{count} * sizeof(VqsPolicyV2);
  }

  VqsPolicyListV2& head() { return *reinterpret_cast<VqsPolicyListV2*>(memory_.get()); }
  VqsPolicyV2* policies() { return reinterpret_cast<VqsPolicyV2*>(&head() + 1); }

 private:
  std::unique_ptr<std::uint64_t[]> memory_;
};

}  // namespace test
