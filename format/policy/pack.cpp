// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "format/policy/conversion.h"

namespace vqs {
namespace {

bool packName(std::span<VqsChar16> destination, std::span<const char> name, const TextConversion& text) {
  return text.widenTerminated(destination, name);
}
bool packUnits(std::span<VqsChar16> destination, std::span<const char> field, const TextConversion& text) {
  return text.widenField(destination, field);
}

bool packUnits(std::span<VqsChar16> destination, std::span<const VqsChar16> field, NoConversion /*text*/) {
  std::ranges::copy(field, destination.begin());
  return true;
}
bool packName(std::span<VqsChar16> destination, std::span<const VqsChar16> name, NoConversion text) {
  return packUnits(destination, name, text);
}

int packCondition(const VqsPolicyCondition& source, VqsPolicyCondition& destination) {
  if (source.op > VQS_POLICY_MAX_OPERATOR) return kMalformed;
  destination = source;
  return kConverted;
}

template <class Text, class Conversion>
int packText(const Text& source, PackedText& destination, const Conversion& text) {
  if (source.flag > VQS_POLICY_MAX_TEXT_FLAG) return kMalformed;
  destination.flag = source.flag;
  if (!packUnits(destination.text, source.text, text)) return kNotConverted;
  const std::size_t length = unitsBeforeZero(std::span<const VqsChar16>{destination.text}) + 1;
  if (length > VQS_POLICY_TEXT_UNITS) return kMalformed;
  destination.length = static_cast<std::uint16_t>(length);
  return kConverted;
}

void packAction(const VqsPolicyActionV0& source, VqsPolicyAction& destination) {
  destination.actionId = source.actionId;
  destination.value = source.value;
}

void packAction(const VqsPolicyAction& source, VqsPolicyAction& destination) {
  destination.actionId = source.actionId;
  destination.value = source.value;
  destination.value2 = source.value2;
  destination.option1 = source.option1;
  destination.option2 = source.option2;
  destination.value3 = source.value3;
  destination.option3 = source.option3;
  destination.value4 = source.value4;
}

template <class Policy>
void packScalars(const Policy& source, PackedPolicy& destination) {
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
int packPolicy(const Policy* source, PackedPolicy* destination, const Conversion& text) {
  if (source == nullptr || destination == nullptr) return kNullPointer;
  if (!packName(destination->name, source->name, text)) return kNotConverted;
  packScalars(*source, *destination);
  for (std::size_t i = 0; i < std::min<std::size_t>(source->conditionCount, VQS_POLICY_MAX_CONDITIONS); ++i)
    if (const int result = packCondition(source->conditions[i], destination->conditions[i])) return result;
  for (std::size_t i = 0; i < std::min<std::size_t>(source->textCount, VQS_POLICY_MAX_TEXTS); ++i)
    if (const int result = packText(source->texts[i], destination->texts[i], text)) return result;
  for (std::size_t i = 0; i < std::min<std::size_t>(source->actionCount, VQS_POLICY_MAX_ACTIONS); ++i)
    packAction(source->actions[i], destination->actions[i]);
  return kConverted;
}

}  // namespace

int packPolicyV0(const VqsPolicyV0* source, PackedPolicy* destination, const TextConversion& text) {
  return packPolicy(source, destination, text);
}
int packPolicyV1(const VqsPolicyV1* source, PackedPolicy* destination, const TextConversion& text) {
  return packPolicy(source, destination, text);
}
int packPolicyV2(const VqsPolicyV2* source, PackedPolicy* destination) {
  return packPolicy(source, destination, NoConversion{});
}

int packPolicyBody(std::uint32_t structureVersion, const void* body, PackedPolicy* destination,
                   const TextConversion& text) {
  switch (structureVersion) {
    case 0:
      return packPolicyV0(static_cast<const VqsPolicyV0*>(body), destination, text);
    case 1:
      return packPolicyV1(static_cast<const VqsPolicyV1*>(body), destination, text);
    case 2:
      return packPolicyV2(static_cast<const VqsPolicyV2*>(body), destination);
    default:
      return kMalformed;
  }
}

}  // namespace vqs
