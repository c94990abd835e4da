// SPDX-License-Identifier: Apache-2.0
#include "tool/driver/stores.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <new>
#include <vector>

#include "tool/terminal/errors.h"
#include "tool/terminal/nearest.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

// Not constexpr: on Windows the address of an imported function is known at run time.
const std::array<Store, 3> kStores = {
    Store{.name = "pb",
          .title = "Policy Builder",
          .id = VQS_POLICY_STORE_PB,
          .reset = vqsPbReset,
          .remove = vqsPbDeletePolicy},
    {.name = "asm", .title = "Asm", .id = VQS_POLICY_STORE_ASM, .reset = vqsAsmReset, .remove = vqsAsmDeletePolicy},
    {.name = "balance-profile",
     .title = "BalanceProfile",
     .id = VQS_POLICY_STORE_BALANCE_PROFILE,
     .reset = vqsBalanceProfileReset,
     .remove = vqsBalanceProfileDeletePolicy}};

void requireRead(vqsStatus status, const Store& store) {
  require(status, fmt::format("the {} store cannot be read", store.title));
}

}  // namespace

StoredPolicies::StoredPolicies(std::size_t count)
    : count_{count},
      memory_{std::make_unique_for_overwrite<std::byte[]>(sizeof(VqsPolicyListV2) + count * sizeof(VqsPolicyV2))} {
  new (memory_.get()) VqsPolicyListV2{
      .structureVersion = 2, .count = static_cast<std::uint32_t>(count), .size = policies().size_bytes()};
}

const Store& storeNamed(const std::string& name) {
  const auto found = std::ranges::find(kStores, name, &Store::name);
  if (found != kStores.end()) return *found;
  const std::vector<std::string> names = {kStores[0].name, kStores[1].name, kStores[2].name};
  throw UsageError{
      fmt::format("{} is not a store, the stores are {}{}", inQuotes(name), storeNames(), didYouMean(name, names))};
}

std::string storeNames() { return fmt::format("{}, {} or {}", kStores[0].name, kStores[1].name, kStores[2].name); }

std::size_t countPolicies(const Session& session, const Store& store) {
  VqsPolicyListV2 list{.structureVersion = 2, .count = 0, .size = 0};
  requireRead(vqsPbGetPoliciesV2(session.get(), &list, store.id), store);
  return list.count;
}

StoredPolicies readPolicies(const Session& session, const Store& store) {
  StoredPolicies stored{countPolicies(session, store)};
  if (stored.policies().empty()) return stored;
  const vqsStatus status = vqsPbGetPoliciesV2(session.get(), stored.list(), store.id);
  // When the store has grown since it was counted, the library refuses the capacity.
  if (status == VQS_INVALID_PARAMETER)
    throw Failure{fmt::format("the {} store changed while it was read: try again", store.title)};
  requireRead(status, store);
  return stored;
}

void resetStore(const Session& session, const Store& store) {
  require(store.reset(session.get()), fmt::format("the {} store cannot be emptied", store.title));
}

std::string describeVerdict(std::uint32_t driverResult) {
  switch (driverResult) {
    case 2:
      return "its id is in the store already";
    case 3:
      return "the store is full, it takes 400 policies";
    case 4:
      return "the store has no policy of this id";
    default:
      return fmt::format("it answered {}", driverResult);
  }
}

std::string designate(const VqsPolicyV2& policy) {
  return fmt::format("{} (id {})", inQuotes(fromUtf16(policy.name)), policy.id);
}

}  // namespace tool
