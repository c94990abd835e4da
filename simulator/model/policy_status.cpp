// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/policy_status.h"

namespace simulator {
namespace {

constexpr std::size_t kPolicyOffset = offsetof(PolicyModifyRecord, policy);
constexpr std::size_t kTailOffset = offsetof(PolicyModifyRecord, tail);
constexpr std::size_t kEntriesOffset = offsetof(PolicyModifyRecord, tail.statusEntries);

/// Whether everything but the operation, the count and the flag is zero.
bool isRestZero(const Request& request, PolicyModifyTail tail) {
  tail.policyCount = 0;
  tail.countOnly = 0;
  const std::span<const std::byte> bytes = request.buffer.first(request.inputLength);
  return isZeroFilled(tail) && isZero(bytes.subspan(kPolicyOffset, sizeof(PackedPolicy))) &&
         isZero(bytes.subspan(kEntriesOffset));
}

Answer answerCount(const PolicyStore& store, const Request& request, PolicyModifyTail tail) {
  if (request.inputLength != sizeof(PolicyModifyRecord)) return failed(Outcome::wrongLength);
  if (tail.policyCount != 0 || !isRestZero(request, tail)) return failed(Outcome::malformed);
  tail.policyCount = store.count();
  request.store(kTailOffset, tail);
  return succeeded(request.outputLength);
}

PolicyStatusEntry describe(const PackedPolicy& policy, std::uint32_t position) {
  PolicyStatusEntry entry{};
  entry.statusValue = policy.id;
  entry.statusFlagA = policy.flag0;
  entry.statusValue2 = position;
  for (std::size_t i = 0; i < std::size(policy.name) && policy.name[i] != 0; ++i)
    entry.name[i] = policy.name[i] > 0xFF ? std::uint8_t{'?'} : static_cast<std::uint8_t>(policy.name[i]);
  return entry;
}

Answer answerEntries(const PolicyStore& store, const Request& request, const PolicyModifyTail& tail) {
  const std::uint64_t length = sizeof(PolicyModifyRecord) + sizeof(PolicyStatusEntry) * std::uint64_t{tail.policyCount};
  if (request.inputLength != length) return failed(Outcome::wrongLength);
  if (!isRestZero(request, tail)) return failed(Outcome::malformed);
  if (tail.policyCount != store.count()) return failed(Outcome::refused);
  for (std::uint32_t i = 0; i < store.count(); ++i)
    request.store(kEntriesOffset + i * sizeof(PolicyStatusEntry), describe(store.policy(i), i));
  return succeeded(request.outputLength);
}

}  // namespace

Answer answerPolicyStatus(const PolicyStore& store, const Request& request) {
  if (request.inputLength < sizeof(PolicyModifyRecord) || request.inputLength != request.outputLength)
    return failed(Outcome::wrongLength);
  const auto tail = request.load<PolicyModifyTail>(kTailOffset);
  switch (tail.countOnly) {
    case 0:
      return answerEntries(store, request, tail);
    case 1:
      return answerCount(store, request, tail);
    default:
      return failed(Outcome::malformed);
  }
}

}  // namespace simulator
