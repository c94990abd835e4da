// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <chrono>

#include "documents/documents.h"
#include "tests/documents/policies/models.h"
#include "tests/support/policy_file.h"
#include "tests/support/temporary_folder.h"

namespace documents {
namespace {

using test::Bytes;
using test::sample;
using Form = ReadResult::Form;

constexpr std::string_view kHead =
    "Windows Registry Editor Version 5.00\n\n"
    "[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\vexoqtf\\Parameters]\n";

ReadResult read(const Bytes& bytes) { return readPolicies(std::as_bytes(std::span{bytes})); }
ReadResult readText(std::string_view text) { return readPolicies(std::as_bytes(std::span{text})); }
ReadResult readBelowKey(std::string_view lines) { return readText(std::string{kHead} + std::string{lines}); }

std::string textOf(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }

/// "01,ab,00"
std::string digitsOf(const Bytes& bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string digits;
  for (const auto byte : bytes) {
    if (!digits.empty()) digits += ',';
    digits += kDigits[byte >> 4];
    digits += kDigits[byte & 0xF];
  }
  return digits;
}

/// ASCII in two bytes each.
std::string wide(std::string_view text, bool isBigEndian) {
  std::string bytes;
  for (const char character : text) {
    if (isBigEndian) bytes += '\0';
    bytes += character;
    if (!isBigEndian) bytes += '\0';
  }
  return bytes;
}

struct Told {
  Rule rule;
  std::string sentence;

  bool operator==(const Told&) const = default;
};
void PrintTo(const Told& told, std::ostream* stream) {
  *stream << static_cast<unsigned>(told.rule) << ' ' << told.sentence;
}

std::vector<Told> toldBy(const ReadResult& result) {
  std::vector<Told> told;
  for (const auto& finding : result.findings) told.push_back({finding.rule, finding.sentence});
  return told;
}

struct Sample {
  const char* binary;
  const char* content;
  std::uint16_t revision;
};
constexpr Sample kSamples[] = {
    {"laptop-r5.bin", "laptop-r5.json", 5}, {"laptop-r4.bin", "laptop-r4.json", 4},
    {"laptop-r3.bin", "laptop-r3.json", 3}, {"limits-r5.bin", "limits-r5.json", 5},
    {"wide-r5.bin", "wide-r5.json", 5},
};

TEST(ReadPolicies, reads_binaries_of_every_revision) {
  for (const auto& [binary, content, revision] : kSamples) {
    const auto result = read(sample(binary));
    EXPECT_EQ(result.form, Form::kBinary) << binary;
    EXPECT_EQ(result.revision, revision) << binary;
    EXPECT_TRUE(result.findings.empty()) << binary;
    ASSERT_TRUE(result.policies) << binary;
    EXPECT_EQ(*result.policies, sampleSet(content)) << binary;
  }
}

TEST(ReadPolicies, reads_registry_text_of_both_stores) {
  for (const char* text : {"laptop-asm.reg", "laptop-balanceprofile.reg"}) {
    const auto result = read(sample(text));
    EXPECT_EQ(result.form, Form::kRegistryText);
    EXPECT_EQ(result.revision, 5);
    EXPECT_TRUE(result.findings.empty());
    EXPECT_FALSE(result.converted);
    ASSERT_TRUE(result.policies);
    EXPECT_EQ(*result.policies, sampleSet("laptop-r5.json"));
  }
}

TEST(ReadPolicies, reads_registry_text_in_utf_16_of_either_byte_order) {
  const auto text = textOf(sample("laptop-asm.reg"));
  for (const auto& bytes :
       {"\xFF\xFE" + wide(text, false), wide(text, false), "\xFE\xFF" + wide(text, true), wide(text, true)}) {
    const auto result = readText(bytes);
    EXPECT_EQ(result.form, Form::kRegistryText);
    EXPECT_TRUE(result.findings.empty());
    ASSERT_TRUE(result.policies);
    EXPECT_EQ(*result.policies, sampleSet("laptop-r5.json"));
  }
}

TEST(ReadPolicies, has_the_places_of_utf_16_in_the_text_that_it_was_converted_to) {
  const auto result = readText("\xFF\xFE" + wide(kHead, false) + wide("nonsense\r\n", false));
  ASSERT_TRUE(result.converted);
  EXPECT_EQ(*result.converted, "\xEF\xBB\xBF" + std::string{kHead} + "nonsense\r\n");
  ASSERT_EQ(result.findings.size(), 1U);
  EXPECT_EQ(result.converted->substr(result.findings[0].span.offset, result.findings[0].span.length), "nonsense");
}

TEST(ReadPolicies, tells_half_a_unit_at_the_end) {
  const auto text = "\xFF\xFE" + wide(textOf(sample("laptop-asm.reg")), false);
  const auto result = readText(text + "x");
  EXPECT_FALSE(result.policies);
  ASSERT_EQ(result.findings.size(), 1U);
  EXPECT_EQ(result.findings[0].rule, Rule::kRegistryLine);
}

TEST(ReadPolicies, takes_everything_else_for_a_document) {
  for (const std::string_view text : {"", "{", "Windows", "\x01", "\xFF\xFE{", "\x02\x00", "nonsense"}) {
    const auto result = readText(text);
    EXPECT_EQ(result.form, Form::kDocument);
    EXPECT_EQ(result.revision, 0);
    EXPECT_TRUE(hasErrors(result.findings)) << text;
  }
  const auto result = readText(R"({ "policies": [{ "id": 7, "when": [{ "Power Source": "DC Power" }] }] })");
  EXPECT_EQ(result.form, Form::kDocument);
  ASSERT_TRUE(result.policies);
  EXPECT_EQ(result.policies->policies.at(0).id, 7U);
}

TEST(ReadPolicies, takes_the_named_value_that_stands_first_and_says_what_it_leaves_out) {
  const auto one = digitsOf(test::fileOf({{.id = 1}}));
  const auto two = digitsOf(test::fileOf({{.id = 2}}));
  const auto three = digitsOf(test::fileOf({{.id = 3}}));
  const auto result = readBelowKey("\"\"=hex:" + three + "\n\"BalanceProfileCurrentRegkeyPolicy\"=hex:" + two +
                                   "\n\"AsmCurrentRegkeyPolicy\"=hex:" + one + "\n");
  ASSERT_TRUE(result.policies);
  EXPECT_EQ(result.policies->policies.at(0).id, 2U);
  EXPECT_EQ(toldBy(result),
            (std::vector<Told>{{Rule::kRegistryLine,
                                R"("" is left out: only the policies of "BalanceProfileCurrentRegkeyPolicy" are read)"},
                               {Rule::kRegistryLine, R"("AsmCurrentRegkeyPolicy" is left out: only the policies of )"
                                                     R"("BalanceProfileCurrentRegkeyPolicy" are read)"}}));
  EXPECT_FALSE(hasErrors(result.findings));
}

TEST(ReadPolicies, takes_a_value_without_a_name_where_there_is_no_other) {
  const auto result = readBelowKey("\"\"=hex:" + digitsOf(test::fileOf({{.id = 3}})) + "\n");
  EXPECT_TRUE(result.findings.empty());
  ASSERT_TRUE(result.policies);
  EXPECT_EQ(result.policies->policies.at(0).id, 3U);
}

TEST(ReadPolicies, says_where_registry_text_is_broken) {
  const std::string value = "\"AsmCurrentRegkeyPolicy\"=hex:";
  const struct {
    std::string lines;
    std::size_t offset;
    Told told;
  } cases[] = {
      {"oops\n",
       0,
       {Rule::kRegistryLine, "a key in brackets, a value under a key, or a comment behind \";\" is expected"}},
      {value + "0,01\n", value.size(), {Rule::kMalformedHex, "two hexadecimal digits are expected"}},
      {value + "00 01\n",
       value.size() + 3,
       {Rule::kMalformedHex,
        "a comma, the end of the line, or \"\\\" at its end is expected behind a byte's two digits"}},
      {"\"AsmCurrentRegkeyPolicy\"=dword:00000001\n",
       25,
       {Rule::kMalformedHex, "a policy binary is expected here, as \"hex:\" and its bytes in hexadecimal"}},
      {value + "00,", value.size() + 3, {Rule::kRegistryTextCut, "the text ends inside a key or a value"}},
      {"\"Other\"=hex:00\n",
       15,
       {Rule::kNoRegistryValue,
        "no policy binary is in the text: a value \"AsmCurrentRegkeyPolicy\" or "
        "\"BalanceProfileCurrentRegkeyPolicy\" is expected under "
        "[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\vexoqtf\\Parameters]"}},
  };
  for (const auto& [lines, offset, told] : cases) {
    const auto result = readBelowKey(lines);
    EXPECT_EQ(result.form, Form::kRegistryText);
    EXPECT_FALSE(result.policies) << lines;
    EXPECT_EQ(toldBy(result), std::vector<Told>{told});
    EXPECT_EQ(result.findings.at(0).span.offset, kHead.size() + offset) << lines;
    EXPECT_TRUE(hasErrors(result.findings)) << lines;
  }
}

TEST(ReadPolicies, says_that_the_version_of_registry_text_is_unknown) {
  EXPECT_EQ(toldBy(readText("Windows Registry Editor Version 6.00\n")),
            (std::vector<Told>{
                {Rule::kNoRegistryText, "\"Windows Registry Editor Version 5.00\" is expected as the first line"}}));
}

TEST(ReadPolicies, warns_of_registry_text_without_its_last_line_end) {
  auto text = textOf(sample("laptop-asm.reg"));
  text.pop_back();
  const auto result = readText(text);
  ASSERT_TRUE(result.policies);
  EXPECT_EQ(toldBy(result),
            (std::vector<Told>{{Rule::kRegistryTextCut,
                                "the text ends without the end of its last line: some of it may be missing"}}));
  EXPECT_FALSE(hasErrors(result.findings));
}

TEST(ReadPolicies, says_of_registry_text_cut_anywhere_that_it_is_not_whole) {
  const auto whole = textOf(sample("laptop-asm.reg"));
  for (std::size_t size = 0; size < whole.size(); size += size < 200 ? 1 : 7)
    EXPECT_FALSE(readText(whole.substr(0, size)).findings.empty()) << size;
}

TEST(ReadPolicies, says_of_a_binary_in_registry_text_that_it_is_broken) {
  const auto file = test::fileOf({{.conditionCount = 0}});
  const auto result = readBelowKey("\"AsmCurrentRegkeyPolicy\"=hex:" + digitsOf(file) + "\n");
  EXPECT_FALSE(result.policies);
  EXPECT_EQ(toldBy(result), (std::vector<Told>{{Rule::kBadBinary,
                                                "not a valid policy binary: offset 48: policy 1 of 1: its number of "
                                                "conditions is 0, 1 to 15 are possible"}}));
  EXPECT_EQ(result.findings[0].path, "policies[0]");
  EXPECT_EQ(result.findings[0].span.offset, kHead.size());
  EXPECT_EQ(result.findings[0].span.length, 29 + 3 * file.size() - 1);
}

TEST(ReadPolicies, says_where_a_binary_is_broken) {
  const auto result = read(test::fileOf({{}, {.conditionCount = 16}}));
  EXPECT_EQ(result.form, Form::kBinary);
  EXPECT_FALSE(result.policies);
  EXPECT_EQ(toldBy(result), (std::vector<Told>{{Rule::kBadBinary,
                                                "not a valid policy binary: offset 108: policy 2 of 2: its number of "
                                                "conditions is 16, 1 to 15 are possible"}}));
  EXPECT_EQ(result.findings[0].span.offset, 108U);
  EXPECT_EQ(result.findings[0].path, "policies[1]");
}

TEST(ReadPolicies, knows_a_damaged_binary_by_its_magic) {
  auto file = test::fileOf({{}});
  file[0] = 2;
  const auto result = read(file);
  EXPECT_EQ(result.form, Form::kBinary);
  EXPECT_EQ(toldBy(result),
            (std::vector<Told>{
                {Rule::kBadBinary, "not a valid policy binary: offset 0: the format version is 2, only 1 is known"}}));
}

TEST(ReadPolicies, refuses_a_binary_of_an_older_revision_without_policies) {
  const auto result = read(test::oldFileOf(3, {}));
  EXPECT_FALSE(result.policies);
  EXPECT_EQ(
      toldBy(result),
      (std::vector<Told>{{Rule::kBadBinary, "not a valid policy binary: offset 8: the file announces no policies"}}));
}

TEST(ReadPolicies, reads_more_policies_of_an_older_revision_than_a_new_one_has) {
  std::vector<test::Entry> entries(1000, test::narrowEntry());
  for (std::uint32_t i = 0; i < entries.size(); ++i) entries[i].id = i;
  const auto result = read(test::oldFileOf(4, entries));
  ASSERT_TRUE(result.policies);
  ASSERT_EQ(result.policies->policies.size(), 1000U);
  EXPECT_EQ(result.policies->policies[999].id, 999U);
  EXPECT_EQ(result.policies->policies[999].name, u"A");
}

TEST(ReadPolicies, cuts_texts_without_an_end_and_says_so) {
  test::Entry entry;
  entry.name = test::units(std::u16string(64, u'n'));
  entry.description = Bytes(32, 'd');
  entry.texts = {{.text = test::units(std::u16string(256, u't')), .flag = 1}};
  const auto result = read(test::fileOf({{}, entry}));
  ASSERT_TRUE(result.policies);
  const auto& policy = result.policies->policies.at(1);
  EXPECT_EQ(policy.name, std::u16string(63, u'n'));
  EXPECT_EQ(policy.description, std::string(31, 'd'));
  EXPECT_EQ(policy.texts.at(0).text, std::u16string(255, u't'));
  EXPECT_EQ(toldBy(result),
            (std::vector<Told>{
                {Rule::kNameTooLong, "fills all 64 units of its field and is cut to 63, so that it has an end"},
                {Rule::kDescriptionCut, "fills all 32 bytes of its field and is cut to 31, so that it has an end"},
                {Rule::kTextTooLong, "fills all 256 units of its field and is cut to 255, so that it has an end"}}));
  EXPECT_EQ(result.findings[0].path, "policies[1].name");
  EXPECT_EQ(result.findings[1].path, "policies[1].description");
  EXPECT_EQ(result.findings[2].path, "policies[1].texts[0]");
  EXPECT_FALSE(hasErrors(result.findings));
}

TEST(ReadPolicies, refuses_a_damaged_binary_or_reads_another_one) {
  const auto whole = sample("limits-r5.bin");
  const auto expected = sampleSet("limits-r5.json");
  for (std::size_t place = 0; place < whole.size(); ++place) {
    auto damaged = whole;
    damaged[place] ^= 0xFF;
    const auto result = read(damaged);
    EXPECT_TRUE(result.policies || hasErrors(result.findings)) << place;
  }
}

TEST(ReadPolicies, ends_soon_on_one_line_of_50_megabytes) {
  constexpr std::size_t kSize = std::size_t{50} << 20;
  const auto start = std::chrono::steady_clock::now();
  for (const char filler : {'0', ',', '\\', '"', ' ', '['}) {
    const auto result = readBelowKey("\"AsmCurrentRegkeyPolicy\"=hex:00," + std::string(kSize, filler));
    EXPECT_FALSE(result.policies);
    EXPECT_EQ(result.findings.size(), 1U);
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds{10});
}

}  // namespace
}  // namespace documents
