// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "format/bytes.h"
#include "format/policy/conversion.h"
#include "format/policy/fields.h"

namespace vqs {
namespace {

bool unpackUnits(std::span<char> destination, std::span<const VqsChar16> units, const TextConversion& text) {
  return text.narrowField(destination, units);
}
bool unpackName(std::span<char> destination, std::span<const VqsChar16> name, const TextConversion& text) {
  if (!unpackUnits(destination, name, text)) return false;
  destination.back() = '\0';
  return true;
}

bool unpackUnits(std::span<VqsChar16> destination, std::span<const VqsChar16> units, NoConversion /*text*/) {
  copyBytes(destination.data(), units.data(), units.size_bytes());
  return true;
}
bool unpackName(std::span<VqsChar16> destination, std::span<const VqsChar16> name, NoConversion text) {
  return unpackUnits(destination, name, text);
}

/// Version 0 refuses a text that is too long for it, which version 1 cuts (compatibility.md: text-cut). A text without
/// any zero unit is not refused: it is cut in both (compatibility.md: endless-text).
bool fitsVersion0(std::span<const VqsChar16> text) {
  const std::size_t length = unitsBeforeZero(text);
  return length == text.size() || length < VQS_POLICY_TEXT_SIZE;
}

template <class Text, class Conversion>
bool unpackText(const PackedText& source, Text& destination, const Conversion& text) {
  if (source.flag > VQS_POLICY_MAX_TEXT_FLAG) return false;
  destination.flag = source.flag;
  return unpackUnits(destination.text, source.text, text);
}

/// Of the fields that version 0 lacks only option1 must be zero; the others are dropped (compatibility.md:
/// version-0-option1).
bool unpackAction(const VqsPolicyAction& source, VqsPolicyActionV0& destination) {
  if (source.option1 != 0) return false;
  copyAction(source, destination);
  return true;
}

bool unpackAction(const VqsPolicyAction& source, VqsPolicyAction& destination) {
  copyAction(source, destination);
  return true;
}

template <class Policy, class Conversion>
bool unpackTexts(const PackedPolicy& source, Policy& destination, const Conversion& text) {
  for (std::size_t i = 0; i < source.textCount; ++i) {
    if constexpr (std::is_same_v<Policy, VqsPolicyV0>)
      if (!fitsVersion0(source.texts[i].text)) return false;
    if (!unpackText(source.texts[i], destination.texts[i], text)) return false;
  }
  return true;
}

template <class Policy, class Conversion>
bool unpackPolicy(const PackedPolicy* source, Policy* destination, const Conversion& text) {
  if (source == nullptr || destination == nullptr) return false;
  if (!unpackName(destination->name, source->name, text)) return false;
  copyScalars(*source, *destination);
  if (source->conditionCount > VQS_POLICY_MAX_CONDITIONS) return false;
  for (std::size_t i = 0; i < source->conditionCount; ++i)
    if (!copyCondition(source->conditions[i], destination->conditions[i])) return false;
  if (source->textCount > VQS_POLICY_MAX_TEXTS) return false;
  if (!unpackTexts(*source, *destination, text)) return false;
  if (source->actionCount > VQS_POLICY_MAX_ACTIONS) return false;
  for (std::size_t i = 0; i < source->actionCount; ++i)
    if (!unpackAction(source->actions[i], destination->actions[i])) return false;
  return true;
}

}  // namespace

bool unpackPolicyV0(const PackedPolicy* source, VqsPolicyV0* destination, const TextConversion& text) {
  return unpackPolicy(source, destination, text);
}
bool unpackPolicyV1(const PackedPolicy* source, VqsPolicyV1* destination, const TextConversion& text) {
  return unpackPolicy(source, destination, text);
}
bool unpackPolicyV2(const PackedPolicy* source, VqsPolicyV2* destination) {
  return unpackPolicy(source, destination, NoConversion{});
}

bool unpackPolicyBody(std::uint32_t structureVersion, const PackedPolicy* source, void* body,
                      const TextConversion& text) {
  switch (structureVersion) {
    case 0:
      return unpackPolicyV0(source, static_cast<VqsPolicyV0*>(body), text);
    case 1:
      return unpackPolicyV1(source, static_cast<VqsPolicyV1*>(body), text);
    case 2:
      return unpackPolicyV2(source, static_cast<VqsPolicyV2*>(body));
    default:
      return false;
  }
}

bool unpackPolicyArray(void* destination, std::uint64_t destinationSize, std::uint32_t structureVersion,
                       const PackedPolicy* policies, std::uint32_t count, const TextConversion& text) {
  if (destination == nullptr || destinationSize == 0) return false;
  const auto bodySize = policyBodySize(structureVersion);
  if (!bodySize || count == 0 || destinationSize < std::uint64_t{count} * *bodySize) return false;
  auto* body = static_cast<std::byte*>(destination);
  for (std::size_t i = 0; i < count; ++i)
    if (!unpackPolicyBody(structureVersion, policies + i, body + i * *bodySize, text)) return false;
  return true;
}

}  // namespace vqs
