// SPDX-License-Identifier: Apache-2.0
#include "format/binary/builder.h"

#include <algorithm>

#include "format/binary/record_view.h"
#include "format/cursor.h"

namespace vqs {
namespace {

// The fixed fields of an entry take 39 bytes, and the file's size is computed with 42: every file ends in three zero
// bytes for each policy. Readers ignore them, but the length is part of the format (compatibility.md: binary-tail).
constexpr std::uint64_t kCountedScalars = 38;
constexpr std::uint64_t kCountedActionCount = 4;

constexpr std::size_t kTextOverhead = 5;
constexpr std::size_t kActionSize = 23;

/// False when a list is longer than a policy can hold, or when a text has no zero up to the end of the record. Other
/// things that readers refuse are written (compatibility.md: unreadable-binary).
bool canBeWritten(const VqsPackedPolicy& policy, const PackedPolicyView& view) {
  if (policy.conditionCount > VQS_POLICY_MAX_CONDITIONS || policy.textCount > VQS_POLICY_MAX_TEXTS ||
      policy.actionCount > VQS_POLICY_MAX_ACTIONS)
    return false;
  if (view.name().empty() || view.description().empty()) return false;
  for (std::size_t i = 0; i < policy.textCount; ++i)
    if (view.text(i).empty()) return false;
  return true;
}

std::uint64_t countedEntrySize(const VqsPackedPolicy& policy, const PackedPolicyView& view) {
  std::uint64_t size = view.name().size() + view.description().size() + kCountedScalars + kCountedActionCount;
  size += sizeof(VqsPolicyCondition) * std::uint64_t{policy.conditionCount};
  for (std::size_t i = 0; i < policy.textCount; ++i) size += view.text(i).size() + kTextOverhead;
  return size + kActionSize * std::uint64_t{policy.actionCount};
}

bool putText(ByteWriter& writer, std::span<const std::byte> text) {
  return writer.put(static_cast<std::uint32_t>(text.size())) && writer.put(text);
}

bool putScalars(ByteWriter& writer, const VqsPackedPolicy& policy) {
  return writer.put(policy.flag0) && writer.put(policy.id) && writer.put(policy.param0) && writer.put(policy.flag1) &&
         writer.put(policy.flag2) && writer.put(policy.param1) && writer.put(policy.param2) &&
         writer.put(policy.conditionCount) && writer.put(policy.textCount);
}

bool putConditions(ByteWriter& writer, const VqsPackedPolicy& policy) {
  return writer.put(std::as_bytes(std::span{policy.conditions}.first(policy.conditionCount)));
}

bool putTexts(ByteWriter& writer, const VqsPackedPolicy& policy, const PackedPolicyView& view) {
  for (std::size_t i = 0; i < policy.textCount; ++i)
    if (!putText(writer, view.text(i)) || !writer.put(policy.texts[i].flag)) return false;
  return true;
}

bool putAction(ByteWriter& writer, const VqsPolicyAction& action) {
  return writer.put(action.actionId) && writer.put(action.value) && writer.put(action.value2) &&
         writer.put(action.option1) && writer.put(action.option2) && writer.put(action.value3) &&
         writer.put(action.option3) && writer.put(action.value4);
}

bool putActions(ByteWriter& writer, const VqsPackedPolicy& policy) {
  return std::ranges::all_of(std::span{policy.actions}.first(policy.actionCount),
                             [&](const auto& action) { return putAction(writer, action); });
}

bool putPolicy(ByteWriter& writer, const VqsPackedPolicy& policy) {
  const PackedPolicyView view{policy};
  return canBeWritten(policy, view) && putText(writer, view.name()) && putText(writer, view.description()) &&
         putScalars(writer, policy) && putConditions(writer, policy) && putTexts(writer, policy, view) &&
         writer.put(policy.actionCount) && putActions(writer, policy);
}

bool putHeader(ByteWriter& writer, std::uint32_t policyCount, BinaryVersions versions) {
  return writer.put(kFormatVersion) && writer.put(kRevision5) && writer.put(versions.first) &&
         writer.put(versions.second) && writer.put(std::as_bytes(std::span{kMagic})) && writer.put(policyCount);
}

}  // namespace

std::uint64_t policyBinarySize(std::span<const VqsPackedPolicy> policies) {
  std::uint64_t size = policies.empty() ? 0 : kHeaderSize;
  for (const auto& policy : policies) {
    const PackedPolicyView view{policy};
    if (!canBeWritten(policy, view)) return 0;
    size += countedEntrySize(policy, view);
  }
  return size;
}

bool buildPolicyBinary(std::span<std::byte> buffer, std::span<const VqsPackedPolicy> policies,
                       BinaryVersions versions) {
  if (buffer.data() == nullptr || policies.empty()) return false;
  ByteWriter writer{buffer};
  if (!putHeader(writer, static_cast<std::uint32_t>(policies.size()), versions)) return false;
  for (const auto& policy : policies)
    if (!putPolicy(writer, policy)) return false;
  return true;
}

}  // namespace vqs
