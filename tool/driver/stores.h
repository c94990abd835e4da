// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>

#include <vqs/policy.h>
#include "tool/driver/driver_session.h"

namespace tool {

/// One of the driver's policy stores.
struct Store {
  /// as typed: "asm"
  const char* name;
  /// as printed: "Asm"
  const char* title;
  VqsPolicyStore id;
  vqsStatus(VQS_CALL* reset)(QtfSession* session);
  vqsStatus(VQS_CALL* remove)(QtfSession* session, std::uint32_t id, std::uint32_t* driverResult);
};

/// Policies where the library has put them, behind the head of their list. What they do not use of their entries holds
/// anything.
class StoredPolicies {
 public:
  explicit StoredPolicies(std::size_t count);

  [[nodiscard]] VqsPolicyListV2* list() const { return reinterpret_cast<VqsPolicyListV2*>(memory_.get()); }
  [[nodiscard]] std::span<const VqsPolicyV2> policies() const {
    return {reinterpret_cast<const VqsPolicyV2*>(memory_.get() + sizeof(VqsPolicyListV2)), count_};
  }

 private:
  std::size_t count_;
  std::unique_ptr<std::byte[]> memory_;
};

/// The store of that name. Throws a UsageError that suggests the nearest name.
const Store& storeNamed(const std::string& name);

/// "pb, asm or balance-profile".
std::string storeNames();

std::size_t countPolicies(const Session& session, const Store& store);
StoredPolicies readPolicies(const Session& session, const Store& store);
void resetStore(const Session& session, const Store& store);

/// What the driver says about a policy that it did not take, as the end of a sentence.
std::string describeVerdict(std::uint32_t driverResult);

/// `"Quiet on battery" (id 10)`.
std::string designate(const VqsPolicyV2& policy);

}  // namespace tool
