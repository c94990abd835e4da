// SPDX-License-Identifier: Apache-2.0
#include "format/binary/reader.h"

#include <algorithm>

#include <vqs/policy_binary_records.h>
#include "format/bytes.h"
#include "format/cursor.h"
#include "format/policy/conversion.h"
#include "format/policy/fields.h"

namespace vqs {
namespace {

/// The fields of an entry between its description and its two counts.
constexpr std::size_t kScalarsSize = 19;
constexpr std::size_t kShortActionSize = 8;
constexpr std::size_t kFullActionSize = 23;

/// Where a policy goes that is only checked.
struct Unkept {
  void name(std::span<const std::byte> /*units*/) const {}
  void narrowName(std::span<const std::byte> /*characters*/) const {}
  void description(std::span<const std::byte> /*characters*/) const {}
  void scalars(const FixedBytes<kScalarsSize>& /*fields*/) const {}
  void conditionCount(std::uint32_t /*count*/) const {}
  void condition(std::size_t /*index*/, const FixedBytes<sizeof(VqsPolicyCondition)>& /*fields*/) const {}
  void textCount(std::uint32_t /*count*/) const {}
  void text(std::size_t /*index*/, std::span<const std::byte> /*units*/) const {}
  void narrowText(std::size_t /*index*/, std::span<const std::byte> /*characters*/) const {}
  void textFlag(std::size_t /*index*/, std::uint8_t /*flag*/) const {}
  void actionCount(std::uint32_t /*count*/) const {}
  void action(std::size_t /*index*/, const FixedBytes<kShortActionSize>& /*fields*/) const {}
  void action(std::size_t /*index*/, const FixedBytes<kFullActionSize>& /*fields*/) const {}
};

/// Fills the front of an array, and never more than it holds.
template <class T, std::size_t N>
void fill(T (&array)[N], std::span<const std::byte> bytes) {
  copyBytes(array, bytes.data(), std::min(bytes.size(), sizeof(array)));
}

/// Fills the front of an array with 8-bit characters, as the older revisions have them.
template <std::size_t N>
void widen(VqsChar16 (&array)[N], std::span<const std::byte> characters) {
  std::ranges::transform(characters.first(std::min(characters.size(), N)), array,
                         [](std::byte character) { return VqsChar16(character); });
}

/// Where a policy is kept: a zero-filled record with 16-bit texts and whole actions.
template <class Policy>
struct Kept {
  Policy& policy;

  void name(std::span<const std::byte> units) const { fill(policy.name, units); }
  void narrowName(std::span<const std::byte> characters) const { widen(policy.name, characters); }
  void description(std::span<const std::byte> characters) const { fill(policy.description, characters); }
  void scalars(const FixedBytes<kScalarsSize>& fields) const {
    fields.read<0>(policy.flag0);
    fields.read<1>(policy.id);
    fields.read<5>(policy.param0);
    fields.read<9>(policy.flag1);
    fields.read<10>(policy.flag2);
    fields.read<11>(policy.param1);
    fields.read<15>(policy.param2);
  }
  void conditionCount(std::uint32_t count) const { policy.conditionCount = count; }
  void condition(std::size_t index, const FixedBytes<sizeof(VqsPolicyCondition)>& fields) const {
    copyBytes(&policy.conditions[index], fields.bytes().data(), sizeof(VqsPolicyCondition));
  }
  void textCount(std::uint32_t count) const { policy.textCount = count; }
  void text(std::size_t index, std::span<const std::byte> units) const { fill(policy.texts[index].text, units); }
  void narrowText(std::size_t index, std::span<const std::byte> characters) const {
    widen(policy.texts[index].text, characters);
  }
  void textFlag(std::size_t index, std::uint8_t flag) const { policy.texts[index].flag = flag; }
  void actionCount(std::uint32_t count) const { policy.actionCount = count; }
  void action(std::size_t index, const FixedBytes<kShortActionSize>& fields) const {
    fields.read<0>(policy.actions[index].actionId);
    fields.read<4>(policy.actions[index].value);
  }
  void action(std::size_t index, const FixedBytes<kFullActionSize>& fields) const {
    auto* const to = reinterpret_cast<std::byte*>(&policy.actions[index]);
    const std::byte* from = fields.bytes().data();
    forEachActionRun([&](std::size_t offset, std::size_t size) {
      copyBytes(to + offset, from, size);
      from += size;
    });
  }
};

/// Keeps the first defect.
class FirstDefect {
 public:
  void note(const Defect& defect) {
    if (defect_.kind == DefectKind::kNone) defect_ = defect;
  }
  [[nodiscard]] const Defect& defect() const { return defect_; }

 private:
  Defect defect_{};
};

/// Keeps that there was one.
class AnyDefect {
 public:
  void note(const Defect& /*defect*/) { isThere_ = true; }
  [[nodiscard]] bool isThere() const { return isThere_; }

 private:
  bool isThere_ = false;
};

/// Takes the entries of a file one by one, each field only when it lies inside the file and within its limits. `Notes`
/// is a FirstDefect or, for what must be fast, an AnyDefect.
template <class Notes>
class EntryReader {
 public:
  explicit EntryReader(std::span<const std::byte> file)
      : file_(file),
        reader_(file.subspan(headerSizeOf(file))),
        limits_(entryLimitsOf(file)),
        revision_(revisionOf(file)) {}

  /// Into an Unkept or a Kept.
  template <class Destination>
  bool takePolicy(Destination to) {
    if (!takeName(to) || !takeDescription(to) || !takeScalars(to)) return false;
    std::uint32_t conditions = 0;
    std::uint32_t texts = 0;
    if (!takeWithin(conditions, 1, limits_.conditions, DefectKind::kConditionCount) ||
        !takeWithin(texts, 0, limits_.texts, DefectKind::kTextCount))
      return false;
    if (!takeConditions(to, conditions) || !takeTexts(to, texts) || !takeActions(to)) return false;
    ++policy_;
    return true;
  }

  [[nodiscard]] const Notes& notes() const { return notes_; }

 private:
  [[nodiscard]] bool isWide() const { return revision_ == kRevision5; }
  [[nodiscard]] std::uint64_t offset() const { return file_.size() - reader_.size(); }

  void note(DefectKind kind, std::uint64_t offset, std::uint64_t value = 0, std::uint64_t least = 0,
            std::uint64_t most = 0) {
    notes_.note({.kind = kind,
                 .offset = offset,
                 .policy = policy_,
                 .entry = entry_,
                 .value = value,
                 .least = least,
                 .most = most});
  }

  bool endsInPolicy() {
    note(DefectKind::kPolicyCut, file_.size());
    return false;
  }

  template <class Field>
  bool take(Field& field) {
    return reader_.take(field) || endsInPolicy();
  }
  bool take(std::size_t size, std::span<const std::byte>& field) { return reader_.take(size, field) || endsInPolicy(); }

  bool takeWithin(std::uint32_t& value, std::uint32_t least, std::uint32_t most, DefectKind kind) {
    const std::uint64_t place = offset();
    if (!take(value)) return false;
    if (value >= least && value <= most) return true;
    note(kind, place, value, least, most);
    return false;
  }

  /// Takes a field that stands behind its own size.
  bool takeSized(std::span<const std::byte>& field, std::uint32_t most, DefectKind kind) {
    std::uint32_t size = 0;
    return takeWithin(size, 1, most, kind) && take(size, field);
  }

  template <class Destination>
  bool takeName(const Destination& to) {
    std::span<const std::byte> name;
    if (!takeSized(name, limits_.name, DefectKind::kNameLength)) return false;
    isWide() ? to.name(name) : to.narrowName(name);
    return true;
  }

  template <class Destination>
  bool takeDescription(const Destination& to) {
    std::span<const std::byte> description;
    if (!takeSized(description, limits_.description, DefectKind::kDescriptionLength)) return false;
    to.description(description);
    return true;
  }

  template <class Destination>
  bool takeScalars(const Destination& to) {
    FixedBytes<kScalarsSize> scalars;
    if (!take(scalars)) return false;
    to.scalars(scalars);
    return true;
  }

  template <class Destination>
  bool takeConditions(const Destination& to, std::uint32_t count) {
    if (reader_.size() < count * sizeof(VqsPolicyCondition)) return endsInPolicy();
    to.conditionCount(count);
    FixedBytes<sizeof(VqsPolicyCondition)> condition;
    for (entry_ = 0; entry_ < count; ++entry_) {
      static_cast<void>(take(condition));
      std::uint32_t op = 0;
      condition.template read<offsetof(VqsPolicyCondition, op)>(op);
      if (op > VQS_POLICY_MAX_OPERATOR)
        note(DefectKind::kUnknownComparison, offset() - sizeof(VqsPolicyCondition) + offsetof(VqsPolicyCondition, op),
             op, 0, VQS_POLICY_MAX_OPERATOR);
      to.condition(entry_, condition);
    }
    entry_ = 0;
    return true;
  }

  /// In the older revisions the last stored character is dropped, whatever it is: it stands for the terminator
  /// (compatibility.md: old-text-end).
  template <class Destination>
  bool takeUnits(const Destination& to, std::uint32_t size) {
    std::span<const std::byte> stored;
    if (!isWide() && size < 2) {
      note(DefectKind::kTextWithoutCharacters, offset() - sizeof(size), size, 0, limits_.textSize);
      return false;
    }
    if (!take(size, stored)) return false;
    isWide() ? to.text(entry_, stored) : to.narrowText(entry_, stored.first(size - 1));
    return true;
  }

  template <class Destination>
  bool takeText(const Destination& to) {
    std::uint32_t size = 0;
    if (!takeWithin(size, 0, limits_.textSize, DefectKind::kTextLength)) return false;
    // Only revision 4 has a flag behind an empty text (compatibility.md: empty-text-flag).
    if (size == 0 && revision_ != kRevision4) return true;
    if (size != 0 && !takeUnits(to, size)) return false;
    std::uint8_t flag = 0;
    if (!take(flag)) return false;
    if (flag > VQS_POLICY_MAX_TEXT_FLAG)
      note(DefectKind::kUnknownTextFlag, offset() - sizeof(flag), flag, 0, VQS_POLICY_MAX_TEXT_FLAG);
    to.textFlag(entry_, flag);
    return true;
  }

  template <class Destination>
  bool takeTexts(const Destination& to, std::uint32_t count) {
    to.textCount(count);
    for (entry_ = 0; entry_ < count; ++entry_)
      if (!takeText(to)) return false;
    entry_ = 0;
    return true;
  }

  /// One by one: processors guess how often a loop goes round, and look at the next policy before they know how many
  /// actions this one has. A product of number and size would have to be waited for.
  template <std::size_t size, class Destination>
  bool takeActionsOf(const Destination& to, std::uint32_t count) {
    FixedBytes<size> action;
    for (entry_ = 0; entry_ < count; ++entry_) {
      if (!take(action)) return false;
      to.action(entry_, action);
    }
    entry_ = 0;
    return true;
  }

  template <class Destination>
  bool takeActions(const Destination& to) {
    std::uint32_t count = 0;
    if (!takeWithin(count, 0, limits_.actions, DefectKind::kActionCount)) return false;
    to.actionCount(count);
    return revision_ == kRevision3 ? takeActionsOf<kShortActionSize>(to, count)
                                   : takeActionsOf<kFullActionSize>(to, count);
  }

  std::span<const std::byte> file_;
  ByteReader reader_;
  EntryLimits limits_;
  std::uint16_t revision_;
  Notes notes_;
  std::uint32_t policy_ = 0;
  std::uint32_t entry_ = 0;
};

using FastReader = EntryReader<AnyDefect>;

/// Takes the next policy and converts it into a zero-filled body; false when it does not fit the structure version.
bool convertNext(FastReader& reader, std::uint32_t structureVersion, std::byte* body, const TextConversion& text) {
  PackedPolicy packed{};
  return reader.takePolicy(Kept{packed}) && unpackPolicyBody(structureVersion, &packed, body, text);
}

/// Takes the next policy into a zero-filled body of version 2, which has all that a file has in the same form.
bool keepNext(FastReader& reader, VqsPolicyV2& body, const TextConversion& text) {
  const FastReader start = reader;
  if (reader.takePolicy(Kept{body}) && !reader.notes().isThere()) return true;
  reader = start;
  body = {};
  return convertNext(reader, VQS_STRUCTURE_VERSION_2, reinterpret_cast<std::byte*>(&body), text);
}

/// Every version's records need the same alignment, and their sizes are multiples of it.
bool isAligned(std::span<const std::byte> bodies) {
  return reinterpret_cast<std::uintptr_t>(bodies.data()) % alignof(VqsPolicyV2) == 0;
}
static_assert(alignof(VqsPolicyV0) == alignof(VqsPolicyV2) && alignof(VqsPolicyV1) == alignof(VqsPolicyV2));

template <class Notes>
bool checkPolicies(EntryReader<Notes>& reader, std::uint32_t count) {
  for (; count != 0; --count)
    if (!reader.takePolicy(Unkept{})) return false;
  return true;
}

}  // namespace

bool checkBinary(std::span<const std::byte> file, BinaryVersions& versions, Defect* defect) {
  takeVersions(file, versions);
  Defect found = headerDefect(file);
  // A file of the older revisions may have no policies at all.
  bool isTaken = found.kind == DefectKind::kNoPolicies && revisionOf(file) != kRevision5;
  if (found.kind == DefectKind::kNone && defect == nullptr) {
    FastReader reader{file};
    return checkPolicies(reader, announcedPolicyCount(file));
  }
  if (found.kind == DefectKind::kNone) {
    EntryReader<FirstDefect> reader{file};
    isTaken = checkPolicies(reader, announcedPolicyCount(file));
    found = reader.notes().defect();
  }
  if (defect != nullptr) *defect = found;
  return isTaken;
}

bool readBinary(std::span<const std::byte> file, std::span<PackedPolicy> policies, BinaryVersions& versions,
                Defect* defect) {
  if (!checkBinary(file, versions, defect)) return false;
  if (policies.empty()) return true;
  FastReader reader{file};
  for (auto& policy : policies) {
    policy = {};
    if (!reader.takePolicy(Kept{policy})) return false;
  }
  return true;
}

void readEach(std::span<const std::byte> file, const PolicySink& sink) {
  FastReader reader{file};
  for (std::uint32_t count = announcedPolicyCount(file); count != 0; --count) {
    PackedPolicy policy{};
    if (!reader.takePolicy(Kept{policy})) return;
    sink.take(sink.target, policy);
  }
}

void readBodies(std::span<const std::byte> file, std::uint32_t structureVersion, std::span<std::byte> bodies,
                const TextConversion& text) {
  const std::size_t stride = policyBodySize(structureVersion).value_or(bodies.size() + 1);
  FastReader reader{file};
  // Where bodies may not be written as what they are. Those of every version fit into it.
  VqsPolicyV2 aligned;
  for (bool isGoingOn = true; bodies.size() >= stride; bodies = bodies.subspan(stride)) {
    auto* const body = isAligned(bodies) ? bodies.data() : reinterpret_cast<std::byte*>(&aligned);
    std::memset(body, 0, stride);
    if (isGoingOn)
      isGoingOn = structureVersion == VQS_STRUCTURE_VERSION_2
                      ? keepNext(reader, *reinterpret_cast<VqsPolicyV2*>(body), text)
                      : convertNext(reader, structureVersion, body, text);
    if (body != bodies.data()) copyBytes(bodies.data(), body, stride);
  }
}

}  // namespace vqs
