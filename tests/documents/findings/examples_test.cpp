// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "tests/documents/findings/said.h"

namespace documents {
namespace {

struct Example {
  Rule rule;
  std::string_view said;
};

/// All that is said about the example of each rule.
constexpr Example kExamples[] = {
    {Rule::kUnexpected, R"(P0001 error 1:26-32 a comma or "}" is expected)"
                        "\n"
                        "  certain: insert a comma\n"},
    {Rule::kStringWithoutEnd, "P0002 error 1:35-42 the string has no end: a quote is expected before the line's end\n"},
    {Rule::kCommentWithoutEnd, R"(P0003 error 2:1-3 the comment has no end: "*/" is expected)"
                               "\n"},
    {Rule::kBrokenUtf8, "P0004 error 1:39-40 these bytes are no UTF-8, in which documents are written\n"},
    {Rule::kControlCharacter,
     R"(P0005 error 1:41-42 a control character stands in a string as an escape: \t is expected)"
     "\n"
     R"(  certain: write \t)"
     "\n"},
    {Rule::kUnknownEscape,
     R"(P0006 error 1:38-40 there is no such escape: \", \\, \/, \b, \f, \n, \r, \t or \u with four )"
     "digits is expected\n"
     R"(  maybe: write "\\" for a backslash)"
     "\n"},
    {Rule::kMalformedNumber, R"(P0007 error 1:54-58 "0x10" is no number: numbers are decimal)"
                             "\n"
                             "  certain: write 16\n"},
    {Rule::kTooDeep, "P0008 error 1:45-46 lists and objects are nested too deeply: 32 levels are read\n"},
    {Rule::kDuplicateMember,
     R"(P0010 error 1:27-31 the object already has a member "id", in line 1, column 18: one of each )"
     "name is expected\n"},
    {Rule::kBehindTheEnd, R"(P0011 error 1:73-74 the document ends before "}": nothing is expected here)"
                          "\n"},
    {Rule::kNoSuchOption,
     R"(P0012 error 1:54-56 policies[0].when[0].value: 77 is no option of "Power Source": "AC Power" )"
     R"((0) or "DC Power" (1) is expected)"
     "\n"
     "013 wrong kind\n"
     R"(P0013 error 1:24-27 policies[0].id: "id" cannot be a string: a number from 0 to 4294967295 is )"
     "expected\n"
     "  certain: write 1\n"},
    {Rule::kMissingMember,
     R"(P0014 error 1:16-17 policies[0]: the policy has no "id": a number from 0 to 4294967295 is )"
     "expected\n"},
    {Rule::kUnknownMember,
     R"(P0015 error 1:27-33 policies[0]: "naem" is no member of a policy: perhaps "name" is meant)"
     "\n"
     R"(  maybe: write "name")"
     "\n"},
    {Rule::kOutOfField,
     R"(P0016 error 1:24-34 policies[0].id: "id" cannot be 4294967296: a number from 0 to 4294967295 is )"
     "expected\n"},
    {Rule::kNotWhole,
     "P0017 error 1:24-27 policies[0].id: 1.0 is not written as a whole number: digits alone are "
     "expected\n"
     "  certain: write 1\n"},
    {Rule::kMalformedVersion,
     R"(P0018 error 1:14-17 version: "3" is no version: two numbers from 0 to 65535 with a point )"
     "between them are expected\n"},
    {Rule::kUnknownName,
     R"(P0019 error 1:38-51 policies[0].when[0]: "Power Sorce" is no condition: perhaps "Power Source" )"
     "is meant\n"
     R"(  maybe: write "Power Source")"
     "\n"},
    {Rule::kOtherCase, R"(P0020 error 1:38-52 policies[0].when[0]: "Power source" is written "Power Source")"
                       "\n"
                       R"(  certain: write "Power Source")"
                       "\n"},
    {Rule::kUnknownNumber,
     "P0021 error 1:38-43 policies[0].when[0]: no condition has the number 77: 0 to 72 are known\n"},
    {Rule::kNotOneMember,
     "P0022 error 1:66-77 policies[0].when[0]: a condition is an object of one member: this one has 2\n"
     "  certain: write an object for each\n"},
    {Rule::kOutOfRange,
     R"(P0023 error 1:100-103 policies[0].do[0].value: 101 is out of the range of "Display Brightness": )"
     "a number from 0 to 100, in %, is expected\n"},
    {Rule::kComparisonNotAdmitted,
     R"(P0024 error 1:62-63 policies[0].when[0].op: "Power Source" does not admit comparison 3: 2 is )"
     "expected\n"
     "  maybe: write 2\n"},
    {Rule::kMissingComparison,
     R"(P0025 error 1:58-62 policies[0].when[0].op: the comparison of "Skin Temperature" is missing: )"
     R"("op" of 0, 1, 2, 3 or 4 is expected)"
     "\n"},
    {Rule::kForeignBit,
     R"(P0026 error 1:71-73 policies[0].when[0].value: 65 has bits that no option of "App State" has: a )"
     R"(list of "Foreground" (1), "Background" (2), "Full Screen" (4), "Windowed" (8), "Encode" (16) or )"
     R"("Decode" (32) is expected)"
     "\n"},
    {Rule::kTooManyConditions, "P0027 error 1:336-354 policies[0].when[15]: 16 conditions: a policy has 15 at most\n"},
    {Rule::kTooManyTexts, "P0028 error 1:104-107 policies[0].texts[5]: 6 texts: a policy has 5 at most\n"},
    {Rule::kTooManyActions, "P0029 error 1:849-871 policies[0].do[32]: 33 actions: a policy has 32 at most\n"},
    {Rule::kNoConditions, "P0030 error 1:35-37 policies[0].when: the policy has no conditions: 1 to 15 are expected\n"},
    {Rule::kNoPolicies, "P0031 error 1:15-17 policies: the document has no policies: 1 to 400 are expected\n"},
    {Rule::kDuplicateId,
     "P0033 error 1:79-80 policies[1].id: 1 is the id of policies[0] already: one that no other "
     "policy has is expected\n"},
    {Rule::kNameTooLong,
     R"(P0034 error 1:35-101 policies[0].name: "name" cannot be 64 units of UTF-16 long: a record holds )"
     "63\n"},
    {Rule::kTextTooLong,
     "P0035 error 1:79-114 policies[0].texts[0]: a text cannot be 33 bytes long: a record of this "
     "structure version holds 32\n"},
    {Rule::kNotIn8Bit,
     R"(P0036 error 1:35-43 policies[0].name: "name" holds a surrogate without its partner: no 8-bit )"
     "text can\n"},
    {Rule::kZeroCharacter,
     R"(P0037 error 1:35-53 policies[0].name: "name" holds a zero character, which ends a record's text)"
     "\n"},
    {Rule::kUnknownComparison,
     "P0039 error 1:66-67 policies[0].when[0].op: 5 is no comparison: 0, 1, 2, 3 or 4 is expected\n"},
    {Rule::kUnknownTextFlag,
     "P0040 error 1:110-111 policies[0].texts[0].flag: 2 is no text's flag: 0 or 1 is expected\n"},
    {Rule::kFieldNotInLayout,
     "P0042 error 1:122-123 policies[0].do[0].option1: an action of structure version 0 has no "
     R"("option1": 0 is expected, or nothing)"
     "\n"},
    {Rule::kOptionTwice, R"(P0043 error 1:82-90 policies[0].when[0].value[1]: "Encode" is in the list already)"
                         "\n"},
    {Rule::kContradiction,
     R"(P0101 warning 1:63-74 policies[0].when[1]: "Lid State" cannot be "Open", as in when[0], and )"
     R"("Closed" at once)"
     "\n"},
    {Rule::kActionTwice, R"(P0102 warning 1:96-101 policies[0].do[1]: "SPL" is set twice: by do[0] already)"
                         "\n"},
    {Rule::kDuplicateName, R"(P0103 warning 1:107-114 policies[1].name: "Quiet" is the name of policies[0] already)"
                           "\n"},
    {Rule::kNotEnabled, R"(P0104 warning 1:38-53 policies[0].when[0]: "Docking State" is not enabled in the catalogue)"
                        "\n"},
    {Rule::kIdZero,
     "P0105 warning 1:24-25 policies[0].id: the id 0 is that of records that were given none: a "
     "number from 1 to 4294967295 is expected\n"},
    {Rule::kDescriptionCut,
     R"(P0106 warning 1:42-77 policies[0].description: "description" is cut from 33 to 31 bytes: a )"
     "record holds 31\n"},
    {Rule::kDescriptionBytes,
     R"(P0107 warning 1:42-53 policies[0].description: "description" holds 1 byte of no character: )"
     "UTF-8 is expected\n"},
    {Rule::kNumberOfKnownName,
     R"(P0108 warning 1:38-42 policies[0].when[0]: condition 0 has a name: "Power Source" is expected)"
     "\n"
     R"(  certain: write "Power Source")"
     "\n"},
};

TEST(RuleExamples, are_each_said_to_be_just_that_wrong) {
  for (const auto& [rule, expected] : kExamples) {
    const RuleRow& row = rowOf(rule);
    EXPECT_EQ(said(row.example, {.structureVersion = row.structureVersion}), expected) << codeOf(rule);
  }
}

TEST(RuleExamples, have_nothing_wrong_when_mended) {
  for (const auto& [rule, expected] : kExamples) {
    const RuleRow& row = rowOf(rule);
    EXPECT_EQ(said(row.mended, {.structureVersion = row.structureVersion}), "") << codeOf(rule);
  }
}

TEST(RuleExamples, are_in_the_list_above) {
  for (const RuleRow& row : allRules()) {
    const bool isListed = std::ranges::find(kExamples, row.rule, &Example::rule) != std::end(kExamples);
    EXPECT_EQ(isListed, !row.example.empty()) << codeOf(row.rule);
    EXPECT_EQ(row.example.empty(), row.mended.empty()) << codeOf(row.rule);
  }
}

TEST(RuleExamples, are_mended_by_their_certain_suggestions) {
  for (const auto& [rule, expected] : kExamples) {
    if (expected.find("  certain: ") == std::string_view::npos) continue;
    const RuleRow& row = rowOf(rule);
    const auto result = readDocument(row.example, {.structureVersion = row.structureVersion});
    std::string text{row.example};
    const auto& edits = result.findings.at(0).suggestions.at(0).edits;
    // From the end on, so that the places of the others stay as they are.
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit)
      text.replace(edit->span.offset, edit->span.length, edit->replacement);
    EXPECT_EQ(said(text, {.structureVersion = row.structureVersion}), "") << codeOf(rule) << ": " << text;
  }
}

}  // namespace
}  // namespace documents
