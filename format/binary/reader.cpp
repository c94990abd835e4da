// SPDX-License-Identifier: Apache-2.0
#include "format/binary/reader.h"

#include <algorithm>
#include <optional>

#include <vqs/policy_binary_records.h>
#include "format/cursor.h"

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

/// In the older revisions a name is stored without its terminator, and a text's last stored byte counts as one.
constexpr EntryLimits kOldLimits = {.name = VQS_POLICY_NAME_UNITS - 1,
                                    .description = VQS_POLICY_DESCRIPTION_SIZE,
                                    .conditions = VQS_POLICY_MAX_CONDITIONS,
                                    .texts = VQS_POLICY_MAX_TEXTS,
                                    .textSize = VQS_POLICY_TEXT_UNITS,
                                    .actions = VQS_POLICY_MAX_ACTIONS};

/// What differs between the revisions.
struct EntryFormat {
  EntryLimits limits;
  /// names and texts in units of 16 bits
  bool isWide;
  /// only revision 4 has a flag behind an empty text (compatibility.md: empty-text-flag)
  bool hasEmptyTextFlag;
  bool hasFullActions;
};

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

std::uint16_t revisionOf(std::span<const std::byte> file) { return valueAt<std::uint16_t>(file, kRevisionOffset); }

bool isRevision5(std::span<const std::byte> file) { return revisionOf(file) == kRevision5; }

bool isKnown(std::uint16_t revision) {
  return revision == kRevision3 || revision == kRevision4 || revision == kRevision5;
}

std::size_t headerSizeOf(std::span<const std::byte> file) { return isRevision5(file) ? kHeaderSize : kOldHeaderSize; }
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

/// The limits that the file states for itself, within those of the packed policy.
EntryLimits oldLimitsOf(std::span<const std::byte> file) {
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

EntryFormat formatOf(std::span<const std::byte> file) {
  switch (revisionOf(file)) {
    case kRevision3:
      return {.limits = oldLimitsOf(file), .isWide = false, .hasEmptyTextFlag = false, .hasFullActions = false};
    case kRevision4:
      return {.limits = oldLimitsOf(file), .isWide = false, .hasEmptyTextFlag = true, .hasFullActions = true};
    default:
      return {.limits = kRevision5Limits, .isWide = true, .hasEmptyTextFlag = false, .hasFullActions = true};
  }
}

/// Reads the entries of a file one by one, and keeps the first defect.
class EntryReader {
 public:
  explicit EntryReader(std::span<const std::byte> file) : file_(file), reader_(file), format_(formatOf(file)) {
    std::span<const std::byte> header;
    static_cast<void>(reader_.take(headerSizeOf(file), header));
  }

  bool takePolicies(std::span<VqsPackedPolicy> policies) {
    for (auto& policy : policies) {
      if (!takePolicy(policy)) return false;
      ++policy_;
    }
    return true;
  }

  [[nodiscard]] const Defect& defect() const { return defect_; }

 private:
  [[nodiscard]] std::uint64_t offset() const { return file_.size() - reader_.size(); }

  void note(DefectKind kind, std::uint64_t offset, std::uint64_t value = 0, std::uint64_t least = 0,
            std::uint64_t most = 0) {
    if (defect_.kind == DefectKind::kNone)
      defect_ = {.kind = kind,
                 .offset = offset,
                 .policy = policy_,
                 .entry = entry_,
                 .value = value,
                 .least = least,
                 .most = most};
  }

  bool endsInPolicy() {
    note(DefectKind::kPolicyCut, file_.size());
    return false;
  }

  template <class T>
  bool take(T& value) {
    return reader_.take(value) || endsInPolicy();
  }
  bool take(std::uint32_t size, std::span<const std::byte>& field) {
    return reader_.take(size, field) || endsInPolicy();
  }
  template <class T, std::size_t N>
  bool take(std::uint32_t size, T (&array)[N]) {
    return reader_.take(size, array) || endsInPolicy();
  }

  bool takeWithin(std::uint32_t& value, std::uint32_t least, std::uint32_t most, DefectKind kind) {
    const std::uint64_t place = offset();
    if (!take(value)) return false;
    if (value >= least && value <= most) return true;
    note(kind, place, value, least, most);
    return false;
  }

  bool takeName(VqsPackedPolicy& policy) {
    std::uint32_t size = 0;
    if (!takeWithin(size, 1, format_.limits.name, DefectKind::kNameLength)) return false;
    return format_.isWide ? take(size, policy.name) : takeCharacters(size, size, policy.name);
  }

  /// Takes 8-bit characters, as the older revisions have them, and keeps the first `kept` of them.
  bool takeCharacters(std::uint32_t size, std::uint32_t kept, std::span<VqsChar16> units) {
    std::span<const std::byte> characters;
    if (!take(size, characters)) return false;
    std::ranges::transform(characters.first(kept), units.begin(),
                           [](std::byte character) { return VqsChar16(character); });
    return true;
  }

  bool takeDescription(VqsPackedPolicy& policy) {
    std::uint32_t size = 0;
    return takeWithin(size, 1, format_.limits.description, DefectKind::kDescriptionLength) &&
           take(size, policy.description);
  }

  bool takeScalars(VqsPackedPolicy& policy) {
    FixedBytes<19> scalars;
    if (!take(scalars)) return false;
    scalars.read<0>(policy.flag0);
    scalars.read<1>(policy.id);
    scalars.read<5>(policy.param0);
    scalars.read<9>(policy.flag1);
    scalars.read<10>(policy.flag2);
    scalars.read<11>(policy.param1);
    scalars.read<15>(policy.param2);
    return true;
  }

  bool takeConditions(VqsPackedPolicy& policy) {
    const std::uint64_t place = offset();
    if (!take(static_cast<std::uint32_t>(policy.conditionCount * sizeof(VqsPolicyCondition)), policy.conditions))
      return false;
    for (entry_ = 0; entry_ < policy.conditionCount; ++entry_) checkCondition(policy.conditions[entry_], place);
    entry_ = 0;
    return true;
  }

  void checkCondition(const VqsPolicyCondition& condition, std::uint64_t place) {
    if (condition.op > VQS_POLICY_MAX_OPERATOR)
      note(DefectKind::kUnknownComparison,
           place + entry_ * sizeof(VqsPolicyCondition) + offsetof(VqsPolicyCondition, op), condition.op, 0,
           VQS_POLICY_MAX_OPERATOR);
  }

  /// In the older revisions the last stored character is dropped, whatever it is: it stands for the terminator
  /// (compatibility.md: old-text-end).
  bool takeUnits(std::uint32_t size, VqsPackedText& text) {
    if (format_.isWide) return take(size, text.text);
    if (size >= 2) return takeCharacters(size, size - 1, text.text);
    note(DefectKind::kTextWithoutCharacters, offset() - sizeof(size), size, 0, format_.limits.textSize);
    return false;
  }

  bool takeText(VqsPackedText& text) {
    std::uint32_t size = 0;
    if (!takeWithin(size, 0, format_.limits.textSize, DefectKind::kTextLength)) return false;
    if (size == 0 && !format_.hasEmptyTextFlag) return true;
    if (size != 0 && !takeUnits(size, text)) return false;
    if (!take(text.flag)) return false;
    if (text.flag > VQS_POLICY_MAX_TEXT_FLAG)
      note(DefectKind::kUnknownTextFlag, offset() - sizeof(text.flag), text.flag, 0, VQS_POLICY_MAX_TEXT_FLAG);
    return true;
  }

  bool takeTexts(VqsPackedPolicy& policy) {
    for (entry_ = 0; entry_ < policy.textCount; ++entry_)
      if (!takeText(policy.texts[entry_])) return false;
    entry_ = 0;
    return true;
  }

  bool takeShortAction(VqsPolicyAction& action) {
    FixedBytes<8> fields;
    if (!take(fields)) return false;
    fields.read<0>(action.actionId);
    fields.read<4>(action.value);
    return true;
  }

  bool takeFullAction(VqsPolicyAction& action) {
    FixedBytes<23> fields;
    if (!take(fields)) return false;
    fields.read<0>(action.actionId);
    fields.read<4>(action.value);
    fields.read<8>(action.value2);
    fields.read<12>(action.option1);
    fields.read<13>(action.option2);
    fields.read<14>(action.value3);
    fields.read<18>(action.option3);
    fields.read<19>(action.value4);
    return true;
  }

  bool takeActions(VqsPackedPolicy& policy) {
    if (!takeWithin(policy.actionCount, 0, format_.limits.actions, DefectKind::kActionCount)) return false;
    for (entry_ = 0; entry_ < policy.actionCount; ++entry_)
      if (!(format_.hasFullActions ? takeFullAction(policy.actions[entry_]) : takeShortAction(policy.actions[entry_])))
        return false;
    entry_ = 0;
    return true;
  }

  bool takePolicy(VqsPackedPolicy& policy) {
    return takeName(policy) && takeDescription(policy) && takeScalars(policy) &&
           takeWithin(policy.conditionCount, 1, format_.limits.conditions, DefectKind::kConditionCount) &&
           takeWithin(policy.textCount, 0, format_.limits.texts, DefectKind::kTextCount) && takeConditions(policy) &&
           takeTexts(policy) && takeActions(policy);
  }

  std::span<const std::byte> file_;
  ByteReader reader_;
  EntryFormat format_;
  Defect defect_{};
  std::uint32_t policy_ = 0;
  std::uint32_t entry_ = 0;
};

}  // namespace

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

bool readBinary(std::span<const std::byte> file, std::span<VqsPackedPolicy> policies, BinaryVersions& versions,
                Defect* defect) {
  static_cast<void>(at(file, kVersionsOffset, versions.first));
  static_cast<void>(at(file, kVersionsOffset + sizeof(versions.first), versions.second));
  Defect found = headerDefect(file);
  // A file of the older revisions may have no policies at all.
  bool isRead = found.kind == DefectKind::kNoPolicies && !isRevision5(file);
  if (found.kind == DefectKind::kNone) {
    EntryReader reader{file};
    isRead = reader.takePolicies(policies);
    found = reader.defect();
  }
  if (defect != nullptr) *defect = found;
  return isRead;
}

}  // namespace vqs
