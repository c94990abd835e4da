// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/policy_component.h"

#include "simulator/model/policy_check.h"
#include "simulator/model/policy_status.h"

namespace simulator {
namespace {

constexpr std::size_t kPolicyOffset = offsetof(PolicyModifyRecord, policy);
constexpr std::size_t kIdOffset = kPolicyOffset + offsetof(PackedPolicy, id);
constexpr std::size_t kTailOffset = offsetof(PolicyModifyRecord, tail);
constexpr std::size_t kResultOffset = offsetof(PolicyModifyRecord, tail.result);
constexpr std::size_t kModifySize = sizeof(PolicyModifyRecord);

bool isPolicyZero(const Request& request) {
  return isZero(request.buffer.subspan(kPolicyOffset, sizeof(PackedPolicy)));
}

bool isTailZero(const Request& request) {
  return isZero(request.buffer.subspan(kTailOffset, sizeof(PolicyModifyTail)));
}

bool isAllButIdZero(const Request& request) {
  constexpr std::size_t kBehindId = kIdOffset + sizeof(PackedPolicy::id);
  return isZero(request.buffer.subspan(kPolicyOffset, kIdOffset - kPolicyOffset)) &&
         isZero(request.buffer.subspan(kBehindId, kModifySize - kBehindId));
}

/// Answers with the request's own record, in which the result is filled in.
Answer answerResult(const Request& request, StoreResult result) {
  request.store(kResultOffset, result);
  return succeeded(kModifySize);
}

Answer remove(PolicyStore& store, const Request& request) {
  if (!request.hasLengths(kModifySize, sizeof(StoreResult))) return failed(Outcome::wrongLength);
  if (!isAllButIdZero(request)) return failed(Outcome::malformed);
  request.store(0, store.remove(request.load<std::uint32_t>(kIdOffset)));
  return succeeded(sizeof(StoreResult));
}

Answer reset(PolicyStore& store, const Request& request) {
  if (!request.hasLengths(kModifySize, kModifySize)) return failed(Outcome::wrongLength);
  if (!isPolicyZero(request) || !isTailZero(request)) return failed(Outcome::malformed);
  store.reset();
  return answerResult(request, StoreResult::done);
}

/// Answers with one chunk. Places beyond the store's end are zeroed: the buffer holds what the caller sent.
void writeChunk(const PolicyStore& store, std::uint64_t firstPolicy, const Request& request) {
  auto slots = request.buffer.subspan(offsetof(PolicyReadRecord, policies), sizeof(PolicyReadRecord::policies));
  for (std::uint64_t i = firstPolicy; i < store.count() && !slots.empty(); ++i) {
    std::memcpy(slots.data(), &store.policy(static_cast<std::uint32_t>(i)), sizeof(PackedPolicy));
    slots = slots.subspan(sizeof(PackedPolicy));
  }
  std::ranges::fill(slots, std::byte{});
}

}  // namespace

Answer PolicyComponent::read(StoreIndex index, const Request& request) const {
  if (!request.hasLengths(sizeof(PolicyReadRecord), sizeof(PolicyReadRecord))) return failed(Outcome::wrongLength);
  auto head = request.load<PolicyReadHead>(0);
  if (head.countQuery > 1 || !isZeroFilled(head.reserved0)) return failed(Outcome::malformed);
  // Callers send one buffer again and again: what earlier answers left in the rest of it means nothing.
  head.policyCount = stores_[index].count();
  request.store(0, head);
  if (head.countQuery == 0) writeChunk(stores_[index], kPoliciesPerChunk * std::uint64_t{head.chunkIndex}, request);
  return succeeded(sizeof(PolicyReadRecord));
}

Answer PolicyComponent::modify(StoreIndex index, const Request& request) {
  if (request.inputLength < sizeof(PolicyModifyRecord::operation)) return failed(Outcome::wrongLength);
  switch (request.load<std::uint32_t>(0)) {
    case kPolicyAdd:
      return add(stores_[index], request);
    case kPolicyReset:
      return reset(stores_[index], request);
    case kPolicyStatus:
      return answerPolicyStatus(stores_[index], request);
    case kPolicyDelete:
      return remove(stores_[index], request);
    case kPolicySetVersion:
      return index == kStoreAsm ? setVersion(request) : failed(Outcome::unknownRequest);
    case kPolicyGetVersion:
      return index == kStoreAsm ? getVersion(request) : failed(Outcome::unknownRequest);
    default:
      return failed(Outcome::unknownRequest);
  }
}

Answer PolicyComponent::lookup(const Request& request) const {
  if (!request.hasLengths(sizeof(PolicyLookupRecord), sizeof(PackedPolicy))) return failed(Outcome::wrongLength);
  const auto store = request.load<std::uint32_t>(offsetof(PolicyLookupRecord, store));
  const bool reservedIsZero =
      request.load<std::uint32_t>(offsetof(PolicyLookupRecord, reserved0)) == 0 &&
      isZero(request.buffer.subspan(offsetof(PolicyLookupRecord, reserved1), sizeof(PolicyLookupRecord::reserved1)));
  if (store >= kStoreCount || !reservedIsZero) return failed(Outcome::malformed);
  const PackedPolicy* found = stores_[store].find(request.load<std::uint32_t>(offsetof(PolicyLookupRecord, key)));
  if (found == nullptr) return failed(Outcome::refused);
  request.store(0, *found);
  return succeeded(sizeof(PackedPolicy));
}

bool PolicyComponent::isSound() const {
  return asmVersion_.word1 <= kHighestVersionWord && asmVersion_.word2 <= kHighestVersionWord &&
         std::ranges::all_of(stores_, &PolicyStore::isSound);
}

Answer PolicyComponent::add(PolicyStore& store, const Request& request) {
  if (!request.hasLengths(kModifySize, kModifySize)) return failed(Outcome::wrongLength);
  std::memcpy(&arriving_, request.buffer.data() + kPolicyOffset, sizeof(arriving_));
  if (!isTailZero(request) || !isWellFormed(arriving_)) return failed(Outcome::malformed);
  return answerResult(request, store.add(arriving_));
}

Answer PolicyComponent::setVersion(const Request& request) {
  if (!request.hasLengths(kModifySize, kModifySize)) return failed(Outcome::wrongLength);
  auto tail = request.load<PolicyModifyTail>(kTailOffset);
  const BinaryVersion version{tail.versionWord1, tail.versionWord2};
  tail.versionWord1 = 0;
  tail.versionWord2 = 0;
  if (version.word1 > kHighestVersionWord || version.word2 > kHighestVersionWord || !isZeroFilled(tail) ||
      !isPolicyZero(request))
    return failed(Outcome::malformed);
  asmVersion_ = version;
  return answerResult(request, StoreResult::done);
}

Answer PolicyComponent::getVersion(const Request& request) const {
  if (!request.hasLengths(kModifySize, kModifySize)) return failed(Outcome::wrongLength);
  if (!isPolicyZero(request) || !isTailZero(request)) return failed(Outcome::malformed);
  request.store(offsetof(PolicyModifyRecord, tail.versionWord1), asmVersion_);
  return answerResult(request, StoreResult::done);
}

}  // namespace simulator
