// SPDX-License-Identifier: Apache-2.0
#include "binary/parser.h"

#include <algorithm>

#include "binary/cursor.h"
#include "vqs/policy_binary.h"

namespace vqs {
namespace {

/// Upper bounds of what an entry may hold.
struct EntryLimits {
  std::uint32_t name;
  std::uint32_t description;
  std::uint32_t conditions;
  std::uint32_t texts;
  std::uint32_t textSize;
  std::uint32_t actions;
};

constexpr EntryLimits kRevision5Limits = {.name = sizeof(VqsPackedPolicy::name),
                                          .description = VQS_POLICY_DESCRIPTION_SIZE,
                                          .conditions = VQS_POLICY_MAX_CONDITIONS,
                                          .texts = VQS_POLICY_MAX_TEXTS,
                                          .textSize = sizeof(VqsPackedText::text),
                                          .actions = VQS_POLICY_MAX_ACTIONS};

/// In the older revisions the terminator is added while widening, and a text's stored last byte becomes it.
constexpr EntryLimits kOldLimits = {.name = VQS_POLICY_NAME_UNITS - 1,
                                    .description = VQS_POLICY_DESCRIPTION_SIZE,
                                    .conditions = VQS_POLICY_MAX_CONDITIONS,
                                    .texts = VQS_POLICY_MAX_TEXTS,
                                    .textSize = VQS_POLICY_TEXT_UNITS,
                                    .actions = VQS_POLICY_MAX_ACTIONS};

/// What differs between the revisions.
struct EntryFormat {
  EntryLimits limits;
  bool (*takeName)(ByteReader&, const EntryLimits&, VqsPackedPolicy&);
  bool (*takeText)(ByteReader&, const EntryLimits&, VqsPackedText&);
  bool (*takeAction)(ByteReader&, VqsPolicyAction&);
};

template <class T>
bool at(std::span<const std::byte> file, std::size_t offset, T& value) {
  std::span<const std::byte> skipped;
  ByteReader reader{file};
  return reader.take(offset, skipped) && reader.take(value);
}

bool hasMagic(std::span<const std::byte> file) {
  constexpr std::size_t kMagicOffset = 8;
  return file.size() >= kMagicOffset + kMagic.size() &&
         std::ranges::equal(file.subspan(kMagicOffset, kMagic.size()), std::as_bytes(std::span{kMagic}));
}

/// The versions are handed out before anything else is checked.
bool takeVersions(std::span<const std::byte> file, BinaryVersions& versions) {
  static_cast<void>(at(file, 4, versions.first));
  static_cast<void>(at(file, 6, versions.second));
  return file.size() >= 12;
}

bool takeWideName(ByteReader& reader, const EntryLimits& limits, VqsPackedPolicy& policy) {
  std::uint32_t size = 0;
  return reader.take(size) && size >= 1 && size <= limits.name && reader.take(size, policy.name);
}

void widen(std::span<const std::byte> characters, std::span<VqsChar16> units) {
  std::ranges::transform(characters, units.begin(), [](std::byte character) { return VqsChar16(character); });
}

bool takeNarrowName(ByteReader& reader, const EntryLimits& limits, VqsPackedPolicy& policy) {
  std::uint32_t length = 0;
  std::span<const std::byte> characters;
  if (!reader.take(length) || length < 1 || length > limits.name || !reader.take(length, characters)) return false;
  widen(characters, policy.name);
  return true;
}

/// An empty text has no flag.
bool takeWideText(ByteReader& reader, const EntryLimits& limits, VqsPackedText& text) {
  std::uint32_t size = 0;
  if (!reader.take(size) || size > limits.textSize) return false;
  return size == 0 || (reader.take(size, text.text) && reader.take(text.flag));
}

/// The stored last character is dropped, whatever it is.
bool takeNarrowCharacters(ByteReader& reader, std::uint32_t size, VqsPackedText& text) {
  std::span<const std::byte> characters;
  if (size < 2 || !reader.take(size, characters)) return false;
  widen(characters.first(size - 1), text.text);
  return true;
}

/// In revision 3 an empty text has no flag.
bool takeNarrowText(ByteReader& reader, const EntryLimits& limits, VqsPackedText& text) {
  std::uint32_t size = 0;
  if (!reader.take(size) || size > limits.textSize) return false;
  return size == 0 || (takeNarrowCharacters(reader, size, text) && reader.take(text.flag));
}

/// In revision 4 an empty text has its flag all the same.
bool takeNarrowFlaggedText(ByteReader& reader, const EntryLimits& limits, VqsPackedText& text) {
  std::uint32_t size = 0;
  if (!reader.take(size) || size > limits.textSize) return false;
  return (size == 0 || takeNarrowCharacters(reader, size, text)) && reader.take(text.flag);
}

bool takeShortAction(ByteReader& reader, VqsPolicyAction& action) {
  return reader.take(action.actionId) && reader.take(action.value);
}

bool takeFullAction(ByteReader& reader, VqsPolicyAction& action) {
  return takeShortAction(reader, action) && reader.take(action.value2) && reader.take(action.option1) &&
         reader.take(action.option2) && reader.take(action.value3) && reader.take(action.option3) &&
         reader.take(action.value4);
}

bool takeDescription(ByteReader& reader, const EntryLimits& limits, VqsPackedPolicy& policy) {
  std::uint32_t size = 0;
  return reader.take(size) && size >= 1 && size <= limits.description && reader.take(size, policy.description);
}

bool takeScalars(ByteReader& reader, VqsPackedPolicy& policy) {
  return reader.take(policy.flag0) && reader.take(policy.id) && reader.take(policy.param0) &&
         reader.take(policy.flag1) && reader.take(policy.flag2) && reader.take(policy.param1) &&
         reader.take(policy.param2);
}

bool takeCounts(ByteReader& reader, const EntryLimits& limits, VqsPackedPolicy& policy) {
  return reader.take(policy.conditionCount) && reader.take(policy.textCount) && policy.conditionCount >= 1 &&
         policy.conditionCount <= limits.conditions && policy.textCount <= limits.texts;
}

bool takeTexts(ByteReader& reader, const EntryFormat& format, VqsPackedPolicy& policy) {
  return std::ranges::all_of(std::span{policy.texts}.first(policy.textCount),
                             [&](auto& text) { return format.takeText(reader, format.limits, text); });
}

bool takeActions(ByteReader& reader, const EntryFormat& format, VqsPackedPolicy& policy) {
  if (!reader.take(policy.actionCount) || policy.actionCount > format.limits.actions) return false;
  return std::ranges::all_of(std::span{policy.actions}.first(policy.actionCount),
                             [&](auto& action) { return format.takeAction(reader, action); });
}

bool takePolicy(ByteReader& reader, const EntryFormat& format, VqsPackedPolicy& policy) {
  return format.takeName(reader, format.limits, policy) && takeDescription(reader, format.limits, policy) &&
         takeScalars(reader, policy) && takeCounts(reader, format.limits, policy) &&
         reader.take(policy.conditionCount * sizeof(VqsPolicyCondition), policy.conditions) &&
         takeTexts(reader, format, policy) && takeActions(reader, format, policy);
}

bool takePolicies(std::span<const std::byte> entries, const EntryFormat& format, std::span<VqsPackedPolicy> policies) {
  ByteReader reader{entries};
  return std::ranges::all_of(policies, [&](auto& policy) { return takePolicy(reader, format, policy); });
}

/// The limits that the file states for itself, within those of the packed policy.
EntryLimits oldFileLimits(std::span<const std::byte> file) {
  const auto limit = [&](std::size_t offset, std::uint32_t most) {
    std::uint32_t stated = 0;
    static_cast<void>(at(file, offset, stated));
    return std::min(stated, most);
  };
  return {.name = limit(36, kOldLimits.name),
          .description = limit(40, kOldLimits.description),
          .conditions = limit(44, kOldLimits.conditions),
          .texts = limit(48, kOldLimits.texts),
          .textSize = limit(52, kOldLimits.textSize),
          .actions = limit(60, kOldLimits.actions)};
}

}  // namespace

std::uint32_t announcedPolicyCount(std::span<const std::byte> file) {
  std::uint16_t version = 0;
  std::uint16_t revision = 0;
  std::uint32_t count = 0;
  if (!at(file, 0, version) || version != kFormatVersion || !at(file, 2, revision)) return 0;
  switch (revision) {
    case kRevision5:
      return hasMagic(file) && at(file, 12, count) ? count : 0;
    case kRevision3:
    case kRevision4:
      return at(file, 8, count) ? count : 0;
    default:
      return 0;
  }
}

std::uint64_t mostUsefulBytes(std::span<const std::byte> head) {
  std::uint32_t count = announcedPolicyCount(head);
  std::uint16_t revision = 0;
  if (count == 0 || !at(head, 2, revision)) return 0;
  // With more policies, a file of revision 5 is refused before the first of them is looked at.
  if (revision == kRevision5) count = std::min<std::uint32_t>(count, VQS_POLICY_BINARY_MAX_POLICIES);
  return kOldHeaderSize + std::uint64_t{count} * kLargestEntry;
}

bool mayHold(std::span<const std::byte> file, std::uint32_t policyCount) {
  return policyCount <= file.size() / kSmallestEntry;
}

bool parsePolicyBinaryRev3(std::span<const std::byte> file, std::span<VqsPackedPolicy> policies,
                           BinaryVersions& versions) {
  if (!takeVersions(file, versions) || file.size() < kOldHeaderSize) return false;
  return takePolicies(file.subspan(kOldHeaderSize),
                      {.limits = oldFileLimits(file),
                       .takeName = takeNarrowName,
                       .takeText = takeNarrowText,
                       .takeAction = takeShortAction},
                      policies);
}

bool parsePolicyBinaryRev4(std::span<const std::byte> file, std::span<VqsPackedPolicy> policies,
                           BinaryVersions& versions) {
  if (!takeVersions(file, versions) || file.size() < kOldHeaderSize) return false;
  return takePolicies(file.subspan(kOldHeaderSize),
                      {.limits = oldFileLimits(file),
                       .takeName = takeNarrowName,
                       .takeText = takeNarrowFlaggedText,
                       .takeAction = takeFullAction},
                      policies);
}

bool parsePolicyBinaryRev5(std::span<const std::byte> file, std::span<VqsPackedPolicy> policies,
                           BinaryVersions& versions) {
  if (!takeVersions(file, versions) || !hasMagic(file) || file.size() < kHeaderSize) return false;
  if (policies.empty() || policies.size() > VQS_POLICY_BINARY_MAX_POLICIES) return false;
  return takePolicies(
      file.subspan(kHeaderSize),
      {.limits = kRevision5Limits, .takeName = takeWideName, .takeText = takeWideText, .takeAction = takeFullAction},
      policies);
}

bool parsePolicyBinary(std::span<const std::byte> file, std::span<VqsPackedPolicy> policies, BinaryVersions& versions) {
  std::uint16_t revision = 0;
  if (!at(file, 2, revision)) return false;
  switch (revision) {
    case kRevision3:
      return parsePolicyBinaryRev3(file, policies, versions);
    case kRevision4:
      return parsePolicyBinaryRev4(file, policies, versions);
    case kRevision5:
      return parsePolicyBinaryRev5(file, policies, versions);
    default:
      return false;
  }
}

}  // namespace vqs
