// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "tests/support/bytes.h"
#include "tests/support/policy_model.h"

namespace test {

/// Fields put one after the other, little-endian, without padding.
class Assembly {
 public:
  Assembly& u8(std::uint8_t value) { return little(value, 1); }
  Assembly& u16(std::uint16_t value) { return little(value, 2); }
  Assembly& u32(std::uint32_t value) { return little(value, 4); }
  Assembly& bytes(const Bytes& bytes);
  Assembly& zeros(std::size_t count) { return bytes(Bytes(count, 0)); }

  operator const Bytes&() const { return bytes_; }  // NOLINT(google-explicit-constructor): stands for its bytes

 private:
  Assembly& little(std::uint64_t value, std::size_t width);

  Bytes bytes_;
};

Bytes units(std::u16string_view text);
Bytes characters(std::string_view text);

/// A text of a file. The size word says how long it is unless told otherwise; without a flag there is none.
struct EntryText {
  Bytes text;
  std::optional<std::uint8_t> flag;
  std::optional<std::uint32_t> size = {};
};

/// A policy of a file, as raw as a test needs it. By default it is as small as a valid one of revision 5 can be:
/// name "A", empty description, one condition, no texts, no actions. Sizes and counts say the truth unless told.
struct Entry {
  Bytes name = units({u"A\0", 2});
  std::optional<std::uint32_t> nameSize = {};
  Bytes description = {0};
  std::optional<std::uint32_t> descriptionSize = {};
  std::uint8_t flag0 = 0;
  std::uint32_t id = 0;
  std::uint32_t param0 = 0;
  std::uint8_t flag1 = 0;
  std::uint8_t flag2 = 0;
  std::uint32_t param1 = 0;
  std::uint32_t param2 = 0;
  std::vector<Condition> conditions = {{}};
  std::optional<std::uint32_t> conditionCount = {};
  std::vector<EntryText> texts = {};
  std::optional<std::uint32_t> textCount = {};
  std::vector<Action> actions = {};
  std::optional<std::uint32_t> actionCount = {};
  /// actions of 8 bytes, as in revision 3
  bool shortActions = false;
};

/// The same in 8-bit characters, for the older revisions: the name "A" without a terminator.
inline Entry narrowEntry() { return {.name = characters("A")}; }

Bytes entryBytes(const Entry& entry);

/// A policy as an entry of revision 5.
Entry wideEntry(const Policy& policy);

struct FileHead {
  std::uint16_t formatVersion = 1;
  std::uint16_t revision = 5;
  std::uint16_t version1 = 1;
  std::uint16_t version2 = 2;
  std::string_view magic = "$QTF";
  std::optional<std::uint32_t> policyCount = {};
};

/// The limits that a file of an older revision states; by default what a policy can hold.
struct OldLimits {
  std::uint32_t name = 63;
  std::uint32_t description = 32;
  std::uint32_t conditions = 15;
  std::uint32_t texts = 5;
  std::uint32_t textSize = 256;
  std::uint32_t actions = 32;
};

/// A file of revision 5 that ends with its last entry.
Bytes fileOf(const std::vector<Entry>& entries, const FileHead& head = {});
/// A file of revision 3 or 4.
Bytes oldFileOf(std::uint16_t revision, const std::vector<Entry>& entries, const OldLimits& limits = {},
                const FileHead& head = {});

/// What the writer makes of policies: revision 5 with three zero bytes a policy at the end.
Bytes writtenFile(const std::vector<Policy>& policies, std::uint16_t version1, std::uint16_t version2);

}  // namespace test
