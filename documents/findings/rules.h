// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace documents {

enum class Severity : std::uint8_t { kError, kWarning };

/// "error" or "warning".
constexpr std::string_view nameOf(Severity severity) { return severity == Severity::kError ? "error" : "warning"; }

/// Everything that can be said about a document. The numbers are those of the codes and never change.
enum class Rule : std::uint16_t {
  // Not JSON with comments.
  kUnexpected = 1,
  kStringWithoutEnd = 2,
  kCommentWithoutEnd = 3,
  kBrokenUtf8 = 4,
  kControlCharacter = 5,
  kUnknownEscape = 6,
  kMalformedNumber = 7,
  kTooDeep = 8,
  kTooLarge = 9,
  kDuplicateMember = 10,
  kBehindTheEnd = 11,
  // Against the catalogue, and what no record can hold.
  kNoSuchOption = 12,
  kWrongKind = 13,
  kMissingMember = 14,
  kUnknownMember = 15,
  kOutOfField = 16,
  kNotWhole = 17,
  kMalformedVersion = 18,
  kUnknownName = 19,
  kOtherCase = 20,
  kUnknownNumber = 21,
  kNotOneMember = 22,
  kOutOfRange = 23,
  kComparisonNotAdmitted = 24,
  kMissingComparison = 25,
  kForeignBit = 26,
  kTooManyConditions = 27,
  kTooManyTexts = 28,
  kTooManyActions = 29,
  kNoConditions = 30,
  kNoPolicies = 31,
  kTooManyPolicies = 32,
  kDuplicateId = 33,
  kNameTooLong = 34,
  kTextTooLong = 35,
  kNotIn8Bit = 36,
  kZeroCharacter = 37,
  kUnknownComparison = 39,
  kUnknownTextFlag = 40,
  kTooManyFindings = 41,
  kFieldNotInLayout = 42,
  kOptionTwice = 43,
  // Registry text.
  kNoRegistryText = 60,
  kNoRegistryValue = 61,
  kMalformedHex = 62,
  kRegistryTextCut = 63,
  kRegistryLine = 64,
  // Policy binaries.
  kBadBinary = 70,
  // Can be kept, but is hardly meant.
  kContradiction = 101,
  kActionTwice = 102,
  kDuplicateName = 103,
  kNotEnabled = 104,
  kIdZero = 105,
  kDescriptionCut = 106,
  kDescriptionBytes = 107,
  kNumberOfKnownName = 108
};

/// A row of what can be said.
struct RuleRow {
  Rule rule;
  Severity severity;
  /// its short name: "no such option"
  std::string_view title;
  /// what it means, why it is said and what to do: a few sentences
  std::string_view explanation;
  /// a document that it is said about, as short as possible, and the same document mended; empty where the explanation
  /// has to do
  std::string_view example = {};
  std::string_view mended = {};
  /// the layout that both are for
  std::uint32_t structureVersion = 2;
};

/// All rules, by their numbers.
std::span<const RuleRow> allRules();

const RuleRow& rowOf(Rule rule);

/// A rule as people see and write it: "P0012". The other way any case is taken, and nothing comes back for what is no
/// rule's code.
std::string codeOf(Rule rule);
std::optional<Rule> ruleOf(std::string_view code);

}  // namespace documents
