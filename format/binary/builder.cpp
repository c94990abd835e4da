// SPDX-License-Identifier: Apache-2.0
#include "format/binary/builder.h"

#include <algorithm>

#include "format/binary/record_view.h"
#include "format/bytes.h"
#include "format/cursor.h"
#include "format/policy/fields.h"

namespace vqs {
namespace {

// The fixed fields of an entry take 39 bytes, and the file's size is computed with 42: every file ends in three zero
// bytes for each policy. Readers ignore them, but the length is part of the format (compatibility.md: binary-tail).
constexpr std::uint64_t kCountedScalars = 38;
constexpr std::uint64_t kCountedActionCount = 4;

constexpr std::size_t kTextOverhead = 5;
constexpr std::size_t kActionSize = 23;

/// Readers refuse other things too, which are written (compatibility.md: unreadable-binary).
bool hasPossibleCounts(const PackedPolicy& policy) {
  return policy.conditionCount <= VQS_POLICY_MAX_CONDITIONS && policy.textCount <= VQS_POLICY_MAX_TEXTS &&
         policy.actionCount <= VQS_POLICY_MAX_ACTIONS;
}

/// Adds the size of a text with its terminating zero; false when it has none.
template <class Unit>
bool addTerminated(std::uint64_t& size, std::span<const std::byte> text) {
  const std::size_t terminated = (unitsBeforeZero<Unit>(text) + 1) * sizeof(Unit);
  size += terminated;
  return terminated <= text.size();
}

/// Adds what a policy counts for in the file's size; false when it cannot be written.
bool addCounted(std::uint64_t& size, const PackedPolicy& policy) {
  const PackedPolicyView view{policy};
  if (!hasPossibleCounts(policy) || !addTerminated<VqsChar16>(size, view.name()) ||
      !addTerminated<char>(size, view.description()))
    return false;
  for (std::size_t i = 0; i < policy.textCount; ++i)
    if (!addTerminated<VqsChar16>(size, view.text(i))) return false;
  size += kCountedScalars + kCountedActionCount + sizeof(VqsPolicyCondition) * policy.conditionCount +
          kTextOverhead * policy.textCount + kActionSize * policy.actionCount;
  return true;
}

bool putScalars(ByteWriter& writer, const PackedPolicy& policy) {
  return writer.put(policy.flag0) && writer.put(policy.id) && writer.put(policy.param0) && writer.put(policy.flag1) &&
         writer.put(policy.flag2) && writer.put(policy.param1) && writer.put(policy.param2) &&
         writer.put(policy.conditionCount) && writer.put(policy.textCount);
}

bool putConditions(ByteWriter& writer, const PackedPolicy& policy) {
  return writer.put(std::as_bytes(std::span{policy.conditions}.first(policy.conditionCount)));
}

bool putTexts(ByteWriter& writer, const PackedPolicy& policy, const PackedPolicyView& view) {
  for (std::size_t i = 0; i < policy.textCount; ++i)
    if (!writer.putTerminated<VqsChar16>(view.text(i)) || !writer.put(policy.texts[i].flag)) return false;
  return true;
}

bool putAction(ByteWriter& writer, const VqsPolicyAction& action) {
  const auto bytes = std::as_bytes(std::span{&action, 1});
  bool isPut = true;
  forEachActionRun(
      [&](std::size_t offset, std::size_t size) { isPut = isPut && writer.put(bytes.subspan(offset, size)); });
  return isPut;
}

bool putActions(ByteWriter& writer, const PackedPolicy& policy) {
  return std::ranges::all_of(std::span{policy.actions}.first(policy.actionCount),
                             [&](const auto& action) { return putAction(writer, action); });
}

bool putPolicy(ByteWriter& writer, const PackedPolicy& policy) {
  const PackedPolicyView view{policy};
  return hasPossibleCounts(policy) && writer.putTerminated<VqsChar16>(view.name()) &&
         writer.putTerminated<char>(view.description()) && putScalars(writer, policy) &&
         putConditions(writer, policy) && putTexts(writer, policy, view) && writer.put(policy.actionCount) &&
         putActions(writer, policy);
}

bool putHeader(ByteWriter& writer, std::uint32_t policyCount, BinaryVersions versions) {
  return writer.put(kFormatVersion) && writer.put(kRevision5) && writer.put(versions.first) &&
         writer.put(versions.second) && writer.put(std::as_bytes(std::span{kMagic})) && writer.put(policyCount);
}

}  // namespace

std::uint64_t policyBinarySize(std::span<const PackedPolicy> policies) {
  std::uint64_t size = policies.empty() ? 0 : kHeaderSize;
  for (const auto& policy : policies)
    if (!addCounted(size, policy)) return 0;
  return size;
}

bool buildPolicyBinary(std::span<std::byte> buffer, std::span<const PackedPolicy> policies, BinaryVersions versions) {
  if (buffer.data() == nullptr || policies.empty()) return false;
  ByteWriter writer{buffer};
  if (!putHeader(writer, static_cast<std::uint32_t>(policies.size()), versions)) return false;
  for (const auto& policy : policies)
    if (!putPolicy(writer, policy)) return false;
  return true;
}

}  // namespace vqs
