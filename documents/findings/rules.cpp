// SPDX-License-Identifier: Apache-2.0
#include "documents/findings/rules.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace documents {
namespace {

constexpr RuleRow kRows[] = {
    {.rule = Rule::kUnexpected,
     .severity = Severity::kError,
     .title = "not JSON",
     .explanation =
         "Something stands where JSON with comments has something else: a comma or a colon is missing, a "
         "bracket is not closed, a word stands without quotes. Reading goes on behind it, so that the rest of "
         "the document is checked too.",
     .example = R"({ "policies": [{ "id": 1 "when": [{ "Power Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kStringWithoutEnd,
     .severity = Severity::kError,
     .title = "string without an end",
     .explanation = R"(A string ends in the line that it begins in. A line's end inside of a string is written \n.)",
     .example =
         "{ \"policies\": [{ \"id\": 1, \"name\": \"Quiet,\n  \"when\": [{ \"Power Source\": \"DC Power\" }] }] }",
     .mended =
         "{ \"policies\": [{ \"id\": 1, \"name\": \"Quiet\",\n  \"when\": [{ \"Power Source\": \"DC Power\" }] }] }"},
    {.rule = Rule::kCommentWithoutEnd,
     .severity = Severity::kError,
     .title = "comment without an end",
     .explanation =
         "A comment that begins with /* ends with */, and not with the line. Without the end all that follows "
         "would be comment.",
     .example = "{ \"policies\": [{ \"id\": 1, \"when\": [{ \"Power Source\": \"DC Power\" }] }] }\n/* the end",
     .mended = "{ \"policies\": [{ \"id\": 1, \"when\": [{ \"Power Source\": \"DC Power\" }] }] }\n/* the end */"},
    {.rule = Rule::kBrokenUtf8,
     .severity = Severity::kError,
     .title = "no UTF-8",
     .explanation =
         "Documents are UTF-8. A document of another encoding has to be converted; a description with single "
         R"(bytes of another encoding is written with \udc80 to \udcff, one for each byte.)",
     .example =
         "{ \"policies\": [{ \"id\": 1, \"name\": \"Caf\xE9\", \"when\": [{ \"Power Source\": \"DC Power\" }] }] }",
     .mended = R"({ "policies": [{ "id": 1, "name": "Café", "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kControlCharacter,
     .severity = Severity::kError,
     .title = "control character in a string",
     .explanation =
         R"(Control characters, tabs and line ends among them, are written as escapes inside of strings: \t, )"
         R"(\n, \u001b. Outside of strings only spaces, tabs and line ends separate what is there.)",
     .example = "{ \"policies\": [{ \"id\": 1, \"name\": \"Quiet\tnight\", \"when\": [{ \"Power Source\": \"DC Power\" "
                "}] }] }",
     .mended = R"({ "policies": [{ "id": 1, "name": "Quiet\tnight", "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kUnknownEscape,
     .severity = Severity::kError,
     .title = "unknown escape",
     .explanation = R"(Behind a backslash in a string stands one of the characters " \ / b f n r t, or u and four )"
                    "hexadecimal digits. A backslash itself is written twice.",
     .example = R"({ "policies": [{ "id": 1, "name": "C:\Games", "when": [{ "Power Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "name": "C:\\Games", "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kMalformedNumber,
     .severity = Severity::kError,
     .title = "malformed number",
     .explanation = "Numbers are decimal, as JSON has them: no leading zeros or plus, no hexadecimal digits, no digits "
                    "left out beside a point.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Display Type": 0x10 }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Display Type": 16 }] }] })"},
    {.rule = Rule::kTooDeep,
     .severity = Severity::kError,
     .title = "nested too deeply",
     .explanation = "A document has few levels of lists and objects. What has more than 32 is no document, and is not "
                    "read further inside.",
     .example =
         R"({ "$schema": [[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]], "policies": [{ "id": )"
         R"(1, "when": [{ "Power Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kTooLarge,
     .severity = Severity::kError,
     .title = "document too large",
     .explanation = "More than 16 MB are not read: 400 policies with everything that a record holds take a few of them "
                    "at most. No part of the document is looked at."},
    {.rule = Rule::kDuplicateMember,
     .severity = Severity::kError,
     .title = "member twice",
     .explanation = "An object has one member of a name. JSON readers differ in which of two they take, so that a "
                    "document with both would mean different things to different people.",
     .example = R"({ "policies": [{ "id": 1, "id": 2, "when": [{ "Power Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kBehindTheEnd,
     .severity = Severity::kError,
     .title = "something behind the end",
     .explanation = "A document is one object. Behind its closing bracket only comments follow.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] } })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kNoSuchOption,
     .severity = Severity::kError,
     .title = "no such option",
     .explanation =
         "The condition or action takes one of the options that the catalogue lists for it, and this text or "
         "number is none of them, even where a range would admit the number. A number that is no option is a "
         "warning with --allow-unknown, for drivers that are newer than the catalogue.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": 77 }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kWrongKind,
     .severity = Severity::kError,
     .title = "wrong kind",
     .explanation =
         "The value is of another kind than it has to be: a string where a number belongs, an object where a "
         "list belongs. Numbers stand without quotes.",
     .example = R"({ "policies": [{ "id": "1", "when": [{ "Power Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kMissingMember,
     .severity = Severity::kError,
     .title = "member missing",
     .explanation =
         R"(A document has to have "policies", and each of them an "id", by which the driver's stores find it. )"
         "Nothing else has to be there.",
     .example = R"({ "policies": [{ "when": [{ "Power Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kUnknownMember,
     .severity = Severity::kError,
     .title = "unknown member",
     .explanation =
         "The object has no member of that name, and nothing would come of it. A condition's and an action's "
         "own fields stand one level deeper, in the object that is its value.",
     .example = R"({ "policies": [{ "id": 1, "naem": "Quiet", "when": [{ "Power Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "name": "Quiet", "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kOutOfField,
     .severity = Severity::kError,
     .title = "number out of its field",
     .explanation = "The field of the record that the number goes to cannot hold it: 8, 16 or 32 bits, without a sign "
                    "but for the values of signed kinds.",
     .example = R"({ "policies": [{ "id": 4294967296, "when": [{ "Power Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kNotWhole,
     .severity = Severity::kError,
     .title = "not a whole number",
     .explanation = "All numbers of a policy are whole, and written with digits and at most a minus: no point and no "
                    "exponent, even where nothing is behind the point.",
     .example = R"({ "policies": [{ "id": 1.0, "when": [{ "Power Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kMalformedVersion,
     .severity = Severity::kError,
     .title = "malformed version",
     .explanation = "The version is a string of two numbers from 0 to 65535 with a point between them and no leading "
                    R"(zeros: "3.41" is version 3, 41.)",
     .example = R"({ "version": "3", "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })",
     .mended = R"({ "version": "3.0", "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kUnknownName,
     .severity = Severity::kError,
     .title = "unknown name",
     .explanation = R"(No condition, in "when", or action, in "do", of the catalogue has that name. A type that the )"
                    R"(catalogue does not know is written as its number: "#77".)",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Power Sorce": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kOtherCase,
     .severity = Severity::kError,
     .title = "other case",
     .explanation = "Names and options are written as the catalogue has them, capital and small letters too, so that "
                    "searching for one finds all places. What was meant is clear, and can be mended without asking.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Power source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kUnknownNumber,
     .severity = Severity::kError,
     .title = "unknown number",
     .explanation =
         "The catalogue has no condition or action of that number. A driver that is newer than the catalogue "
         "may have one: with --allow-unknown this is a warning.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "#77": { "op": 2, "value": 1 } }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kNotOneMember,
     .severity = Severity::kError,
     .title = "not one member",
     .explanation = "A condition or an action is an object of one member, its name with its value, because their order "
                    "counts and one may occur twice. Fields beside the value go into an object that is the value: { "
                    R"("Skin Temperature": { "op": 3, "value": 4600 } }.)",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power", "Lid State": "Closed" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }, { "Lid State": "Closed" }] }] })"},
    {.rule = Rule::kOutOfRange,
     .severity = Severity::kError,
     .title = "out of range",
     .explanation = "The catalogue gives the condition or action a range, and the number is outside of it.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }], "do": [{ "Display Brightness": )"
                "101 }] }] }",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }], "do": [{ "Display Brightness": )"
               "100 }] }] }"},
    {.rule = Rule::kComparisonNotAdmitted,
     .severity = Severity::kError,
     .title = "comparison not admitted",
     .explanation = "The catalogue says which of the comparisons 0 to 4 a condition may be used with, and this is none "
                    "of them. Where there is one only, it may be left out.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": { "op": 3, "value": "DC Power" } }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kMissingComparison,
     .severity = Severity::kError,
     .title = "comparison missing",
     .explanation =
         "The condition may be used with several comparisons, so that which one is meant has to be written: { "
         R"("op": 3, "value": 4600 }.)",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Skin Temperature": 4600 }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Skin Temperature": { "op": 3, "value": 4600 } }] }] })"},
    {.rule = Rule::kForeignBit,
     .severity = Severity::kError,
     .title = "foreign bit",
     .explanation =
         "The number is a set of the options' bits, and has a bit that none of them has. With --allow-unknown "
         "this is a warning, for drivers that are newer than the catalogue.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "App State": { "op": 2, "value": 65 } }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "App State": { "op": 2, "value": ["Foreground"] } }] }] })"},
    {.rule = Rule::kTooManyConditions,
     .severity = Severity::kError,
     .title = "too many conditions",
     .explanation = "A record has room for 15 conditions.",
     .example =
         R"({ "policies": [{ "id": 1, "when": [{ "Lid State": 0 }, { "Lid State": 0 }, { "Lid State": 0 }, { )"
         R"("Lid State": 0 }, { "Lid State": 0 }, { "Lid State": 0 }, { "Lid State": 0 }, { "Lid State": 0 }, { )"
         R"("Lid State": 0 }, { "Lid State": 0 }, { "Lid State": 0 }, { "Lid State": 0 }, { "Lid State": 0 }, { )"
         R"("Lid State": 0 }, { "Lid State": 0 }, { "Lid State": 0 }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Lid State": 0 }, { "Lid State": 0 }, { "Lid State": 0 }, { )"
               R"("Lid State": 0 }, { "Lid State": 0 }, { "Lid State": 0 }, { "Lid State": 0 }, { "Lid State": 0 }, { )"
               R"("Lid State": 0 }, { "Lid State": 0 }, { "Lid State": 0 }, { "Lid State": 0 }, { "Lid State": 0 }, { )"
               R"("Lid State": 0 }, { "Lid State": 0 }] }] })"},
    {.rule = Rule::kTooManyTexts,
     .severity = Severity::kError,
     .title = "too many texts",
     .explanation = "A record has room for 5 texts.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }], "texts": ["a", "b", "c", "d", )"
                R"("e", "f"] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }], "texts": ["a", "b", "c", "d", )"
               R"("e"] }] })"},
    {.rule = Rule::kTooManyActions,
     .severity = Severity::kError,
     .title = "too many actions",
     .explanation = "A record has room for 32 actions.",
     .example =
         R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }], "do": [{ "SPL": 0 }, { "SPPT": )"
         R"(0 }, { "FPPT": 0 }, { "P3T": 0 }, { "STT Min": 0 }, { "Bios Output 1": 0 }, { "Bios Output 2": 0 }, )"
         R"({ "Bios Output 3": 0 }, { "Bios Output 4": 0 }, { "Bios Output 5": 0 }, { "Bios Output 6": 0 }, { )"
         R"("Bios Output 7": 0 }, { "Bios Output 8": 0 }, { "Bios Output 9": 0 }, { "Bios Output 10": 0 }, { )"
         R"("Sensor 1 Config 1": 0 }, { "Sensor 1 Config 2": 0 }, { "Sensor 1 Config 3": 0 }, { "Sensor 2 )"
         R"(Config 1": 0 }, { "Sensor 2 Config 2": 0 }, { "Sensor 2 Config 3": 0 }, { "Sensor 3 Config 1": 0 }, )"
         R"({ "Sensor 3 Config 2": 0 }, { "Sensor 3 Config 3": 0 }, { "Sensor 4 Config 1": 0 }, { "Sensor 4 )"
         R"(Config 2": 0 }, { "Sensor 4 Config 3": 0 }, { "App Output 1": 0 }, { "App Output 2": 0 }, { "Debug )"
         R"(Output": 0 }, { "Indirect Policy": 0 }, { "PPM CPHEADROOM": 0 }, { "PPM IDLECHECK": 0 }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }], "do": [{ "SPL": 0 }, { "SPPT": )"
               R"(0 }, { "FPPT": 0 }, { "P3T": 0 }, { "STT Min": 0 }, { "Bios Output 1": 0 }, { "Bios Output 2": 0 }, )"
               R"({ "Bios Output 3": 0 }, { "Bios Output 4": 0 }, { "Bios Output 5": 0 }, { "Bios Output 6": 0 }, { )"
               R"("Bios Output 7": 0 }, { "Bios Output 8": 0 }, { "Bios Output 9": 0 }, { "Bios Output 10": 0 }, { )"
               R"("Sensor 1 Config 1": 0 }, { "Sensor 1 Config 2": 0 }, { "Sensor 1 Config 3": 0 }, { "Sensor 2 )"
               R"(Config 1": 0 }, { "Sensor 2 Config 2": 0 }, { "Sensor 2 Config 3": 0 }, { "Sensor 3 Config 1": 0 }, )"
               R"({ "Sensor 3 Config 2": 0 }, { "Sensor 3 Config 3": 0 }, { "Sensor 4 Config 1": 0 }, { "Sensor 4 )"
               R"(Config 2": 0 }, { "Sensor 4 Config 3": 0 }, { "App Output 1": 0 }, { "App Output 2": 0 }, { "Debug )"
               R"(Output": 0 }, { "Indirect Policy": 0 }, { "PPM CPHEADROOM": 0 }] }] })"},
    {.rule = Rule::kNoConditions,
     .severity = Severity::kError,
     .title = "no conditions",
     .explanation = "A policy binary with a policy without conditions is refused as a whole by those who read it, so "
                    "that none is written.",
     .example = R"({ "policies": [{ "id": 1, "when": [] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kNoPolicies,
     .severity = Severity::kError,
     .title = "no policies",
     .explanation = "There is no policy binary without policies. To empty a store, reset it.",
     .example = R"({ "policies": [] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kTooManyPolicies,
     .severity = Severity::kError,
     .title = "too many policies",
     .explanation = "A policy binary has 400 policies at most. It is said about the 401st."},
    {.rule = Rule::kDuplicateId,
     .severity = Severity::kError,
     .title = "id twice",
     .explanation =
         "The driver's stores find a policy by its id: of two with one id, the second would take the place of "
         "the first or be refused.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }, { "id": 1, "when": [{ "Power )"
                R"(Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }, { "id": 2, "when": [{ "Power )"
               R"(Source": "DC Power" }] }] })"},
    {.rule = Rule::kNameTooLong,
     .severity = Severity::kError,
     .title = "name too long",
     .explanation = "A record holds a name of 63 units of UTF-16; a record of structure version 0 or 1 holds 63 bytes. "
                    "Most characters are one unit, those beyond U+FFFF are two.",
     .example = R"({ "policies": [{ "id": 1, "name": )"
                R"("nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn", "when": [{ "Power Source": "DC )"
                R"(Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "name": )"
               R"("nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn", "when": [{ "Power Source": "DC )"
               R"(Power" }] }] })"},
    {.rule = Rule::kTextTooLong,
     .severity = Severity::kError,
     .title = "text too long",
     .explanation = "A record holds texts of 255 units of UTF-16 each; a record of structure version 0 or 1 holds 32 "
                    "bytes.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }], "texts": )"
                R"(["ttttttttttttttttttttttttttttttttt"] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }], "texts": )"
               R"(["tttttttttttttttttttttttttttttttt"] }] })",
     .structureVersion = 0},
    {.rule = Rule::kNotIn8Bit,
     .severity = Severity::kError,
     .title = "not in 8-bit text",
     .explanation = "A surrogate without its partner is no character and has no bytes. Records of structure version 2 "
                    "keep it in names and texts; 8-bit text, which every description is, and names and texts of "
                    "structure version 0 and 1 are, cannot.",
     .example = R"({ "policies": [{ "id": 1, "name": "\ud800", "when": [{ "Power Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "name": "\ud83d\ude00", "when": [{ "Power Source": "DC Power" }] }] })",
     .structureVersion = 1},
    {.rule = Rule::kZeroCharacter,
     .severity = Severity::kError,
     .title = "zero character",
     .explanation = "A record's text ends at its first zero character, so that no text can hold one.",
     .example =
         R"({ "policies": [{ "id": 1, "name": "Quiet\u0000night", "when": [{ "Power Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "name": "Quiet night", "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kUnknownComparison,
     .severity = Severity::kError,
     .title = "unknown comparison",
     .explanation = "Comparisons are numbered 0 to 4. With any other the library and the driver refuse the policy.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Skin Temperature": { "op": 5, "value": 4600 } }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Skin Temperature": { "op": 3, "value": 4600 } }] }] })"},
    {.rule = Rule::kUnknownTextFlag,
     .severity = Severity::kError,
     .title = "unknown flag of a text",
     .explanation = "A text's flag is 0 or 1. With any other the library and the driver refuse the policy.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }], "texts": [{ "text": )"
                R"("obs64.exe", "flag": 2 }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }], "texts": [{ "text": )"
               R"("obs64.exe", "flag": 1 }] }] })"},
    {.rule = Rule::kTooManyFindings,
     .severity = Severity::kError,
     .title = "too many findings",
     .explanation = "More than 999 findings are not listed. It is the last one, and says that there are more."},
    {.rule = Rule::kFieldNotInLayout,
     .severity = Severity::kError,
     .title = "field not in this layout",
     .explanation = "An action of structure version 0 is a number and a value. The other fields of an action need "
                    "structure version 1 or 2.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }], "do": [{ "Fan Table Index": { )"
                R"("value": 3, "option1": 1 } }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }], "do": [{ "Fan Table Index": 3 )"
               "}] }] }",
     .structureVersion = 0},
    {.rule = Rule::kOptionTwice,
     .severity = Severity::kError,
     .title = "option twice",
     .explanation = "The list of options is a set of bits, in which one more of the same says nothing. Perhaps another "
                    "one was meant.",
     .example =
         R"({ "policies": [{ "id": 1, "when": [{ "App State": { "op": 2, "value": ["Encode", "Encode"] } }] }] })",
     .mended =
         R"({ "policies": [{ "id": 1, "when": [{ "App State": { "op": 2, "value": ["Encode", "Decode"] } }] }] })"},
    {.rule = Rule::kNoRegistryText,
     .severity = Severity::kError,
     .title = "no registry text",
     .explanation =
         "Registry text begins with the heading that registry editors write, and this has another one or none."},
    {.rule = Rule::kNoRegistryValue,
     .severity = Severity::kError,
     .title = "no policies in the registry text",
     .explanation = "The registry text is readable, but none of its values is one that holds policies."},
    {.rule = Rule::kMalformedHex,
     .severity = Severity::kError,
     .title = "malformed bytes in registry text",
     .explanation =
         "The bytes of a registry value are pairs of hexadecimal digits with commas between them; a line that "
         "goes on ends in a backslash."},
    {.rule = Rule::kRegistryTextCut,
     .severity = Severity::kError,
     .title = "registry text cut",
     .explanation = "The registry text ends inside of a key or a value: a part of the file is missing."},
    {.rule = Rule::kRegistryLine,
     .severity = Severity::kError,
     .title = "unknown line in registry text",
     .explanation = "A line is neither a key, nor a value, nor a comment, nor empty; or it is a value that has nothing "
                    "to do with policies, which is passed over with a warning."},
    {.rule = Rule::kBadBinary,
     .severity = Severity::kError,
     .title = "bad policy binary",
     .explanation = "The policy binary cannot be read: it is cut, or has numbers that its revision does not admit. The "
                    "sentence says which, and at which byte."},
    {.rule = Rule::kContradiction,
     .severity = Severity::kWarning,
     .title = "contradiction",
     .explanation = "A policy asks for two different options of one enumeration. All conditions of a policy have to "
                    "hold, and these two never do together, so that the policy never takes effect.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Lid State": "Open" }, { "Lid State": "Closed" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Lid State": "Open" }] }] })"},
    {.rule = Rule::kActionTwice,
     .severity = Severity::kWarning,
     .title = "action twice",
     .explanation = "A policy sets one thing twice. Which of the two values holds is the driver's affair.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }], "do": [{ "SPL": 15000 }, { )"
                R"("SPL": 18000 }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }], "do": [{ "SPL": 15000 }, { )"
               R"("SPPT": 18000 }] }] })"},
    {.rule = Rule::kDuplicateName,
     .severity = Severity::kWarning,
     .title = "name twice",
     .explanation =
         "Two policies have one name. The driver does not mind, but people who read lists of policies cannot "
         "tell them apart.",
     .example = R"({ "policies": [{ "id": 1, "name": "Quiet", "when": [{ "Power Source": "DC Power" }] }, { "id": 2, )"
                R"("name": "Quiet", "when": [{ "Power Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "name": "Quiet", "when": [{ "Power Source": "DC Power" }] }, { "id": 2, )"
               R"("name": "Silent", "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kNotEnabled,
     .severity = Severity::kWarning,
     .title = "not enabled",
     .explanation = "The catalogue has this type, but it is not enabled there: most drivers do not have it. What the "
                    "driver of a machine says, `vqs catalogue` shows.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "Docking State": "Docked" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Lid State": "Closed" }] }] })"},
    {.rule = Rule::kIdZero,
     .severity = Severity::kWarning,
     .title = "id 0",
     .explanation = "A record that nobody gave an id has id 0, and so has hardly one that was meant.",
     .example = R"({ "policies": [{ "id": 0, "when": [{ "Power Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kDescriptionCut,
     .severity = Severity::kWarning,
     .title = "description cut",
     .explanation = "A record has 32 bytes for the description, the last of which ends it. What is longer is cut, at a "
                    "character.",
     .example = R"({ "policies": [{ "id": 1, "description": "low power and low noise all night", "when": [{ "Power )"
                R"(Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "description": "low power, low noise all night", "when": [{ "Power )"
               R"(Source": "DC Power" }] }] })"},
    {.rule = Rule::kDescriptionBytes,
     .severity = Severity::kWarning,
     .title = "bytes of no character",
     .explanation =
         "A description is bytes in every record, whatever its encoding. Those that are no UTF-8 are written "
         R"(\udc80 to \udcff, one for each byte, and are kept. Where a document was made of a record this is as )"
         "it should be; who writes one uses characters.",
     .example =
         R"({ "policies": [{ "id": 1, "description": "Caf\udce9", "when": [{ "Power Source": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "description": "Café", "when": [{ "Power Source": "DC Power" }] }] })"},
    {.rule = Rule::kNumberOfKnownName,
     .severity = Severity::kWarning,
     .title = "number of a known name",
     .explanation = "The catalogue has a name for this number, and names are what people can review.",
     .example = R"({ "policies": [{ "id": 1, "when": [{ "#0": "DC Power" }] }] })",
     .mended = R"({ "policies": [{ "id": 1, "when": [{ "Power Source": "DC Power" }] }] })"},
};

constexpr bool areNumbersInOrder() {
  for (std::size_t i = 1; i < std::size(kRows); ++i)
    if (kRows[i - 1].rule >= kRows[i].rule) return false;
  return true;
}
static_assert(areNumbersInOrder(), "numbers occur once, in their order");

constexpr std::size_t kDigits = 4;

}  // namespace

std::span<const RuleRow> allRules() { return kRows; }

const RuleRow& rowOf(Rule rule) { return *std::ranges::lower_bound(kRows, rule, {}, &RuleRow::rule); }

std::string codeOf(Rule rule) {
  const std::string number = std::to_string(static_cast<unsigned>(rule));
  return 'P' + std::string(kDigits - number.size(), '0') + number;
}

std::optional<Rule> ruleOf(std::string_view code) {
  if (code.size() != kDigits + 1 || (code[0] != 'P' && code[0] != 'p')) return std::nullopt;
  std::uint16_t number = 0;
  const auto [end, error] = std::from_chars(code.data() + 1, code.data() + code.size(), number);
  const bool isNumber = error == std::errc{} && end == code.data() + code.size();
  const auto row = std::ranges::find(kRows, static_cast<Rule>(number), &RuleRow::rule);
  if (!isNumber || row == std::end(kRows)) return std::nullopt;
  return row->rule;
}

}  // namespace documents
