// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <source_location>
#include <string>
#include <vector>

#include <vqs/policy.h>
#include "tests/support/policy_model.h"
#include "tests/support/scripted_driver.h"
#include "tests/support/session_test.h"

namespace test {

/// A store: its number, its codes, and its exports.
struct Store {
  std::string title;
  VqsPolicyStore number;
  std::uint32_t readCode;
  std::uint32_t modifyCode;
  decltype(&vqsPbAddPolicy) add;
  decltype(&vqsPbGetPolicies) getPolicies;
  decltype(&vqsPbReset) reset;
  decltype(&vqsPbGetPoliciesStatus) getStatus;
  decltype(&vqsPbDeletePolicy) remove;
  decltype(&vqsPbReplacePolicy) replace;
};

const std::vector<Store>& allStores();
std::string storeName(const ::testing::TestParamInfo<Store>& instance);

/// What holds for each store.
class EveryStore : public TidySessionTest, public ::testing::WithParamInterface<Store> {
 protected:
  static const Store& store() { return GetParam(); }
};

// Requests on a modify code: 4000 bytes, operation at 0, policy at 4 and its id at 168.
Record modifyRequest(std::uint32_t operation);
Record addRequest(const Bytes& packed);
Record deleteRequest(std::uint32_t id);

// Requests on a read code: 19872 bytes, count query at 0, policy count at 4, chunk at 8, five policies from 12 on.
Record countRequest();
/// `before` is the answer that the record still holds from the chunk before, or nothing.
Record chunkRequest(std::uint32_t total, std::uint32_t chunk, const Bytes& before);

/// Policies of the driver, for ids from 100 on.
std::vector<Bytes> packedPolicies(std::uint32_t count);
/// The driver answers how many policies there are.
void expectCount(ScriptedDriver& driver, std::uint32_t readCode, std::uint32_t total,
                 std::source_location where = std::source_location::current());
/// The driver answers with each chunk in turn; what a chunk has no policy for comes as garbage.
void expectChunks(ScriptedDriver& driver, std::uint32_t readCode, const std::vector<Bytes>& policies,
                  std::source_location where = std::source_location::current());

/// A versioned record as a caller has it, in exactly as many bytes as it takes.
class VersionedBytes {
 public:
  VersionedBytes(std::uint32_t version, const Bytes& body)
      : bytes_(Record{4 + body.size()}.u32(0, version).put(4, body)) {}
  operator VqsVersionedPolicy*() {  // NOLINT(google-explicit-constructor): stands for the pointer
    return reinterpret_cast<VqsVersionedPolicy*>(bytes_.data());
  }
  [[nodiscard]] std::uint64_t size() const { return bytes_.size(); }
  [[nodiscard]] const Bytes& bytes() const { return bytes_; }

 private:
  Bytes bytes_;
};

}  // namespace test
