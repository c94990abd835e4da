// SPDX-License-Identifier: Apache-2.0
#include "format/binary/header.h"

#include <algorithm>

#include <vqs/policy_binary_records.h>
#include "format/cursor.h"
#include "format/policy/packed_policy.h"

namespace vqs {
namespace {

template <class T>
bool at(std::span<const std::byte> file, std::size_t offset, T& value) {
  std::span<const std::byte> skipped;
  ByteReader reader{file};
  return reader.take(offset, skipped) && reader.take(value);
}

template <class T>
T valueAt(std::span<const std::byte> file, std::size_t offset) {
  T value = 0;
  static_cast<void>(at(file, offset, value));
  return value;
}

bool hasMagic(std::span<const std::byte> file) {
  return file.size() >= kMagicOffset + kMagic.size() &&
         std::ranges::equal(file.subspan(kMagicOffset, kMagic.size()), std::as_bytes(std::span{kMagic}));
}

bool isRevision5(std::span<const std::byte> file) { return revisionOf(file) == kRevision5; }

bool isKnown(std::uint16_t revision) {
  return revision == kRevision3 || revision == kRevision4 || revision == kRevision5;
}

std::size_t countOffsetOf(std::span<const std::byte> file) {
  return isRevision5(file) ? kCountOffset : kOldCountOffset;
}

Defect countDefect(std::span<const std::byte> file) {
  const std::size_t offset = countOffsetOf(file);
  const auto count = valueAt<std::uint32_t>(file, offset);
  const std::uint64_t room = (file.size() - headerSizeOf(file)) / kSmallestEntry;
  if (count == 0) return {.kind = DefectKind::kNoPolicies, .offset = offset, .least = 1, .most = room};
  if (count > room) return {.kind = DefectKind::kNoRoom, .offset = offset, .value = count, .least = 1, .most = room};
  if (isRevision5(file) && count > VQS_POLICY_BINARY_MAX_POLICIES)
    return {.kind = DefectKind::kTooManyPolicies,
            .offset = offset,
            .value = count,
            .least = 1,
            .most = VQS_POLICY_BINARY_MAX_POLICIES};
  return {};
}

constexpr EntryLimits kRevision5Limits = {.name = sizeof(PackedPolicy::name),
                                          .description = VQS_POLICY_DESCRIPTION_SIZE,
                                          .conditions = VQS_POLICY_MAX_CONDITIONS,
                                          .texts = VQS_POLICY_MAX_TEXTS,
                                          .textSize = sizeof(PackedText::text),
                                          .actions = VQS_POLICY_MAX_ACTIONS};

/// In the older revisions a name is stored without its terminator, and a text's last stored byte counts as one.
constexpr EntryLimits kOldLimits = {.name = VQS_POLICY_NAME_UNITS - 1,
                                    .description = VQS_POLICY_DESCRIPTION_SIZE,
                                    .conditions = VQS_POLICY_MAX_CONDITIONS,
                                    .texts = VQS_POLICY_MAX_TEXTS,
                                    .textSize = VQS_POLICY_TEXT_UNITS,
                                    .actions = VQS_POLICY_MAX_ACTIONS};

}  // namespace

std::uint16_t revisionOf(std::span<const std::byte> file) { return valueAt<std::uint16_t>(file, kRevisionOffset); }

std::size_t headerSizeOf(std::span<const std::byte> file) { return isRevision5(file) ? kHeaderSize : kOldHeaderSize; }

void takeVersions(std::span<const std::byte> file, BinaryVersions& versions) {
  static_cast<void>(at(file, kVersionsOffset, versions.first));
  static_cast<void>(at(file, kVersionsOffset + sizeof(versions.first), versions.second));
}

EntryLimits entryLimitsOf(std::span<const std::byte> file) {
  if (isRevision5(file)) return kRevision5Limits;
  const auto limit = [&](std::size_t offset, std::uint32_t most) {
    return std::min(valueAt<std::uint32_t>(file, offset), most);
  };
  return {.name = limit(36, kOldLimits.name),
          .description = limit(40, kOldLimits.description),
          .conditions = limit(44, kOldLimits.conditions),
          .texts = limit(48, kOldLimits.texts),
          .textSize = limit(52, kOldLimits.textSize),
          .actions = limit(60, kOldLimits.actions)};
}

std::uint32_t announcedPolicyCount(std::span<const std::byte> file) {
  const bool isBinary = valueAt<std::uint16_t>(file, 0) == kFormatVersion && isKnown(revisionOf(file)) &&
                        (!isRevision5(file) || hasMagic(file));
  return isBinary ? valueAt<std::uint32_t>(file, countOffsetOf(file)) : 0;
}

std::uint64_t mostUsefulBytes(std::span<const std::byte> head) {
  std::uint32_t count = announcedPolicyCount(head);
  if (count == 0) return 0;
  // A file of revision 5 with more policies is refused before the first of them is looked at; older files may have more
  // (compatibility.md: old-policy-count).
  if (isRevision5(head)) count = std::min<std::uint32_t>(count, VQS_POLICY_BINARY_MAX_POLICIES);
  return kOldHeaderSize + std::uint64_t{count} * kLargestEntry;
}

Defect headerDefect(std::span<const std::byte> file) {
  const auto version = valueAt<std::uint16_t>(file, 0);
  const std::uint16_t revision = revisionOf(file);
  if (file.size() < kSmallestHead) return {.kind = DefectKind::kHeaderCut, .offset = file.size()};
  if (version != kFormatVersion)
    return {
        .kind = DefectKind::kUnknownFormatVersion, .value = version, .least = kFormatVersion, .most = kFormatVersion};
  if (!isKnown(revision))
    return {.kind = DefectKind::kUnknownRevision,
            .offset = kRevisionOffset,
            .value = revision,
            .least = kRevision3,
            .most = kRevision5};
  if (revision == kRevision5 && !hasMagic(file)) return {.kind = DefectKind::kNoMagic, .offset = kMagicOffset};
  if (file.size() < headerSizeOf(file)) return {.kind = DefectKind::kHeaderCut, .offset = file.size()};
  return countDefect(file);
}

}  // namespace vqs
