// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "format/bytes.h"
#include "format/policy/conversion.h"
#include "format/policy/fields.h"

namespace vqs {
namespace {

bool packName(std::span<VqsChar16> destination, std::span<const char> name, const TextConversion& text) {
  return text.widenTerminated(destination, name);
}
bool packUnits(std::span<VqsChar16> destination, std::span<const char> field, const TextConversion& text) {
  return text.widenField(destination, field);
}

bool packUnits(std::span<VqsChar16> destination, std::span<const VqsChar16> field, NoConversion /*text*/) {
  copyBytes(destination.data(), field.data(), field.size_bytes());
  return true;
}
bool packName(std::span<VqsChar16> destination, std::span<const VqsChar16> name, NoConversion text) {
  return packUnits(destination, name, text);
}

template <class Text, class Conversion>
bool packText(const Text& source, PackedText& destination, const Conversion& text) {
  if (source.flag > VQS_POLICY_MAX_TEXT_FLAG) return false;
  destination.flag = source.flag;
  if (!packUnits(destination.text, source.text, text)) return false;
  const std::size_t length = unitsBeforeZero(std::span<const VqsChar16>{destination.text}) + 1;
  if (length > VQS_POLICY_TEXT_UNITS) return false;
  destination.length = static_cast<std::uint16_t>(length);
  return true;
}

template <class Policy, class Conversion>
bool packPolicy(const Policy* source, PackedPolicy* destination, const Conversion& text) {
  if (source == nullptr || destination == nullptr) return false;
  if (!packName(destination->name, source->name, text)) return false;
  copyScalars(*source, *destination);
  for (std::size_t i = 0; i < std::min<std::size_t>(source->conditionCount, VQS_POLICY_MAX_CONDITIONS); ++i)
    if (!copyCondition(source->conditions[i], destination->conditions[i])) return false;
  for (std::size_t i = 0; i < std::min<std::size_t>(source->textCount, VQS_POLICY_MAX_TEXTS); ++i)
    if (!packText(source->texts[i], destination->texts[i], text)) return false;
  for (std::size_t i = 0; i < std::min<std::size_t>(source->actionCount, VQS_POLICY_MAX_ACTIONS); ++i)
    copyAction(source->actions[i], destination->actions[i]);
  return true;
}

}  // namespace

bool packPolicyV0(const VqsPolicyV0* source, PackedPolicy* destination, const TextConversion& text) {
  return packPolicy(source, destination, text);
}
bool packPolicyV1(const VqsPolicyV1* source, PackedPolicy* destination, const TextConversion& text) {
  return packPolicy(source, destination, text);
}
bool packPolicyV2(const VqsPolicyV2* source, PackedPolicy* destination) {
  return packPolicy(source, destination, NoConversion{});
}

bool packPolicyBody(std::uint32_t structureVersion, const void* body, PackedPolicy* destination,
                    const TextConversion& text) {
  switch (structureVersion) {
    case 0:
      return packPolicyV0(static_cast<const VqsPolicyV0*>(body), destination, text);
    case 1:
      return packPolicyV1(static_cast<const VqsPolicyV1*>(body), destination, text);
    case 2:
      return packPolicyV2(static_cast<const VqsPolicyV2*>(body), destination);
    default:
      return false;
  }
}

}  // namespace vqs
