// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "format/policy/conversion.h"

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
  std::ranges::copy(units, destination.begin());
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
int unpackText(const VqsPackedText& source, Text& destination, const Conversion& text) {
  if (source.flag > VQS_POLICY_MAX_TEXT_FLAG) return kMalformed;
  destination.flag = source.flag;
  return unpackUnits(destination.text, source.text, text) ? kConverted : kNotConverted;
}

int unpackCondition(const VqsPolicyCondition& source, VqsPolicyCondition& destination) {
  if (source.op > VQS_POLICY_MAX_OPERATOR) return kMalformed;
  destination = source;
  return kConverted;
}

/// Of the fields that version 0 lacks only option1 must be zero; the others are dropped (compatibility.md:
/// version-0-option1).
int unpackAction(const VqsPolicyAction& source, VqsPolicyActionV0& destination) {
  if (source.option1 != 0) return kMalformed;
  destination.actionId = source.actionId;
  destination.value = source.value;
  return kConverted;
}

int unpackAction(const VqsPolicyAction& source, VqsPolicyAction& destination) {
  destination.actionId = source.actionId;
  destination.value = source.value;
  destination.value2 = source.value2;
  destination.option1 = source.option1;
  destination.option2 = source.option2;
  destination.value3 = source.value3;
  destination.option3 = source.option3;
  destination.value4 = source.value4;
  return kConverted;
}

template <class Policy>
void unpackScalars(const VqsPackedPolicy& source, Policy& destination) {
  std::ranges::copy(source.description, destination.description);
  destination.flag0 = source.flag0;
  destination.id = source.id;
  destination.param0 = source.param0;
  destination.flag1 = source.flag1;
  destination.flag2 = source.flag2;
  destination.param1 = source.param1;
  destination.param2 = source.param2;
  destination.conditionCount = source.conditionCount;
  destination.actionCount = source.actionCount;
  destination.textCount = source.textCount;
}

template <class Policy, class Conversion>
int unpackTexts(const VqsPackedPolicy& source, Policy& destination, const Conversion& text) {
  for (std::size_t i = 0; i < source.textCount; ++i) {
    if constexpr (std::is_same_v<Policy, VqsPolicyV0>)
      if (!fitsVersion0(source.texts[i].text)) return kMalformed;
    if (const int result = unpackText(source.texts[i], destination.texts[i], text)) return result;
  }
  return kConverted;
}

template <class Policy, class Conversion>
int unpackPolicy(const VqsPackedPolicy* source, Policy* destination, const Conversion& text) {
  if (source == nullptr || destination == nullptr) return kNullPointer;
  if (!unpackName(destination->name, source->name, text)) return kNotConverted;
  unpackScalars(*source, *destination);
  if (source->conditionCount > VQS_POLICY_MAX_CONDITIONS) return kMalformed;
  for (std::size_t i = 0; i < source->conditionCount; ++i)
    if (const int result = unpackCondition(source->conditions[i], destination->conditions[i])) return result;
  if (source->textCount > VQS_POLICY_MAX_TEXTS) return kMalformed;
  if (const int result = unpackTexts(*source, *destination, text)) return result;
  if (source->actionCount > VQS_POLICY_MAX_ACTIONS) return kMalformed;
  for (std::size_t i = 0; i < source->actionCount; ++i)
    if (const int result = unpackAction(source->actions[i], destination->actions[i])) return result;
  return kConverted;
}

}  // namespace

int unpackPolicyV0(const VqsPackedPolicy* source, VqsPolicyV0* destination, const TextConversion& text) {
  return unpackPolicy(source, destination, text);
}
int unpackPolicyV1(const VqsPackedPolicy* source, VqsPolicyV1* destination, const TextConversion& text) {
  return unpackPolicy(source, destination, text);
}
int unpackPolicyV2(const VqsPackedPolicy* source, VqsPolicyV2* destination) {
  return unpackPolicy(source, destination, NoConversion{});
}

int unpackPolicyBody(std::uint32_t structureVersion, const VqsPackedPolicy* source, void* body,
                     const TextConversion& text) {
  switch (structureVersion) {
    case 0:
      return unpackPolicyV0(source, static_cast<VqsPolicyV0*>(body), text);
    case 1:
      return unpackPolicyV1(source, static_cast<VqsPolicyV1*>(body), text);
    case 2:
      return unpackPolicyV2(source, static_cast<VqsPolicyV2*>(body));
    default:
      return kMalformed;
  }
}

int unpackPolicyArray(void* destination, std::uint64_t destinationSize, std::uint32_t structureVersion,
                      const VqsPackedPolicy* policies, std::uint32_t count, const TextConversion& text) {
  if (destination == nullptr || destinationSize == 0) return kNullPointer;
  const auto bodySize = policyBodySize(structureVersion);
  if (!bodySize) return kMalformed;
  if (destinationSize < std::uint64_t{count} * *bodySize) return kTooSmall;
  if (count == 0) return kNotConverted;
  auto* body = static_cast<std::byte*>(destination);
  for (std::size_t i = 0; i < count; ++i)
    if (const int result = unpackPolicyBody(structureVersion, policies + i, body + i * *bodySize, text)) return result;
  return kConverted;
}

}  // namespace vqs
