// SPDX-License-Identifier: Apache-2.0
#include "format/binary/registry_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/bytes.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

using Kind = vqs::RegistryDefectKind;

constexpr std::string_view kHead =
    "Windows Registry Editor Version 5.00\n\n"
    "[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\vexoqtf\\Parameters]\n";

struct Value {
  std::string name;
  Bytes bytes;

  bool operator==(const Value&) const = default;
};

struct Read {
  std::vector<Value> values;
  vqs::RegistryDefect defect;
  bool hasLineEnd = true;
};

Read read(std::string_view text) {
  vqs::RegistryReader reader{text};
  Read result;
  for (vqs::RegistryBinary value{}; reader.next(value);) {
    Bytes bytes(value.size);
    vqs::takeBytes(value, std::as_writable_bytes(std::span{bytes}));
    result.values.push_back({std::string{value.name}, bytes});
    result.hasLineEnd = result.hasLineEnd && value.hasLineEnd;
  }
  result.defect = reader.defect();
  return result;
}

Read readBelowKey(std::string_view lines) { return read(std::string{kHead} + std::string{lines}); }

/// Where a defect is behind the key's line.
std::size_t placeBelowKey(const Read& read) { return read.defect.offset - kHead.size(); }

std::string textOf(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }

const std::vector<Value> kTwoBytes = {{"AsmCurrentRegkeyPolicy", {0x01, 0xAB}}};

TEST(RegistryReader, takes_the_bytes_of_a_value_and_its_name) {
  const auto [values, defect, hasLineEnd] = readBelowKey("\"AsmCurrentRegkeyPolicy\"=hex:01,ab\n");
  EXPECT_EQ(values, kTwoBytes);
  EXPECT_EQ(defect.kind, Kind::kNone);
  EXPECT_TRUE(hasLineEnd);
}

TEST(RegistryReader, takes_the_values_of_both_stores_and_one_without_a_name) {
  const auto result = readBelowKey(
      "\"BalanceProfileCurrentRegkeyPolicy\"=hex:02\n"
      "\"AsmCurrentRegkeyPolicy\"=hex:01\n"
      "\"\"=hex:03\n"
      "@=hex:04\n");
  EXPECT_EQ(result.values,
            (std::vector<Value>{
                {"BalanceProfileCurrentRegkeyPolicy", {2}}, {"AsmCurrentRegkeyPolicy", {1}}, {"", {3}}, {"", {4}}}));
}

TEST(RegistryReader, takes_what_registry_editors_write) {
  EXPECT_EQ(read("Windows Registry Editor Version 5.00\r\n\r\n"
                 "[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\vexoqtf\\Parameters]\r\n"
                 "\"AsmCurrentRegkeyPolicy\"=hex:\\\r\n  01,\\\r\n  AB\r\n\r\n")
                .values,
            kTwoBytes);
}

TEST(RegistryReader, takes_the_older_heading_and_a_byte_order_mark) {
  EXPECT_EQ(read("\xEF\xBB\xBFREGEDIT4\n\n"
                 "[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\vexoqtf\\Parameters]\n"
                 "\"AsmCurrentRegkeyPolicy\"=hex:01,ab\n")
                .values,
            kTwoBytes);
}

TEST(RegistryReader, takes_any_case_of_heading_key_name_type_and_digits) {
  EXPECT_EQ(read("WINDOWS registry editor version 5.00\n"
                 "[hkey_local_machine\\System\\currentcontrolset\\services\\VEXOQTF\\parameters]\n"
                 "\"asmCURRENTregkeypolicy\"=HEX:01,aB\n")
                .values,
            (std::vector<Value>{{"asmCURRENTregkeypolicy", {0x01, 0xAB}}}));
}

TEST(RegistryReader, takes_the_type_of_binary_values_by_its_number) {
  EXPECT_EQ(readBelowKey("\"AsmCurrentRegkeyPolicy\"=hex(3):01,ab\n").values, kTwoBytes);
}

TEST(RegistryReader, takes_a_control_set_by_its_number) {
  EXPECT_EQ(read("Windows Registry Editor Version 5.00\n"
                 "[HKEY_LOCAL_MACHINE\\SYSTEM\\ControlSet001\\Services\\vexoqtf\\Parameters]\n"
                 "\"AsmCurrentRegkeyPolicy\"=hex:01,ab\n")
                .values,
            kTwoBytes);
}

TEST(RegistryReader, takes_blanks_between_the_bytes) {
  EXPECT_EQ(readBelowKey("  \"AsmCurrentRegkeyPolicy\" = hex: 01 ,\t\\ \n\\\n\t ab \t\n").values, kTwoBytes);
}

TEST(RegistryReader, takes_a_value_without_bytes) {
  EXPECT_EQ(readBelowKey("\"AsmCurrentRegkeyPolicy\"=hex:\n").values,
            (std::vector<Value>{{"AsmCurrentRegkeyPolicy", {}}}));
}

TEST(RegistryReader, tells_a_value_that_the_text_ends_with) {
  const auto result = readBelowKey("\"AsmCurrentRegkeyPolicy\"=hex:01,ab");
  EXPECT_EQ(result.values, kTwoBytes);
  EXPECT_FALSE(result.hasLineEnd);
}

TEST(RegistryReader, passes_by_comments_other_values_and_other_keys) {
  const auto [values, defect, hasLineEnd] = read(
      "Windows Registry Editor Version 5.00\n"
      "; a comment\n"
      "[HKEY_CURRENT_USER\\Software]\n"
      "\"AsmCurrentRegkeyPolicy\"=hex:07\n"
      "[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\vexoqtf\\Parameters]\n"
      "\"a \\\" quote\"=\"text with \\\\ and \\\"\n and a second line\"  ; a comment\n"
      "\"Number\"=dword:0000000f\n"
      "\"List\"=hex(7):61,00,\\\n  00,00\n"
      "\"Gone\"=-\n"
      "  ; another comment\n"
      "\"AsmCurrentRegkeyPolicy\"=hex:01,ab\n"
      "[-HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\vexoqtf\\Parameters]\n"
      "[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\vexoqtf\\Parameters\\More]\n"
      "\"AsmCurrentRegkeyPolicy\"=hex:08\n"
      "[HKEY_LOCAL_MACHINE\\SYSTEM\\ControlSetX\\Services\\vexoqtf\\Parameters]\n"
      "\"AsmCurrentRegkeyPolicy\"=hex:09\n");
  EXPECT_EQ(values, kTwoBytes);
  EXPECT_EQ(defect.kind, Kind::kNone);
  EXPECT_TRUE(hasLineEnd);
}

TEST(RegistryReader, refuses_another_first_line) {
  for (const std::string_view first : {"", "Windows Registry Editor Version 4.00", "x", "REGEDIT", "[HKEY]"}) {
    const auto [values, defect, hasLineEnd] = read(std::string{first} + "\r\n[HKEY]\n");
    EXPECT_TRUE(values.empty());
    EXPECT_EQ(defect.kind, Kind::kNoHeading) << first;
    EXPECT_EQ(defect.offset, 0U);
    EXPECT_EQ(defect.length, first.size());
  }
}

struct Broken {
  const char* lines;
  Kind kind;
  std::size_t offset;
  std::size_t length;
};

void PrintTo(const Broken& broken, std::ostream* stream) { *stream << broken.lines; }

class BrokenLines : public testing::TestWithParam<Broken> {};

TEST_P(BrokenLines, are_named_with_their_place) {
  const auto& [lines, kind, offset, length] = GetParam();
  const auto result = readBelowKey(lines);
  EXPECT_EQ(result.defect.kind, kind);
  EXPECT_EQ(placeBelowKey(result), offset);
  EXPECT_EQ(result.defect.length, length);
}

constexpr Broken kBroken[] = {
    {"\nnonsense\r\n", Kind::kUnknownLine, 1, 8},
    {"[HKEY\n", Kind::kUnknownLine, 0, 5},
    {"[HKEY", Kind::kCut, 5, 0},
    {"\"a\"\n", Kind::kUnknownLine, 0, 3},
    {"\"a\n\"=1\n", Kind::kUnknownLine, 0, 2},
    {"\"a", Kind::kCut, 2, 0},
    {"\"a\\", Kind::kCut, 3, 0},
    {"\"a\"", Kind::kCut, 3, 0},
    {"\"a\"=", Kind::kCut, 4, 0},
    {"\"a\"=\n", Kind::kUnknownLine, 0, 4},
    {"\"a\"=\"b", Kind::kCut, 6, 0},
    {"\"a\"=\"b\" c\n", Kind::kUnknownLine, 0, 9},
    {"\"a\"=hex(2):00,\\\n", Kind::kCut, 16, 0},
    {"@=dword:1\n", Kind::kNotBinary, 2, 7},
    {"@=-\r\n", Kind::kNotBinary, 2, 1},
    {"@=hex(2):00\n", Kind::kNotBinary, 2, 9},
    {"@=he", Kind::kCut, 4, 0},
    {"@=hex", Kind::kCut, 5, 0},
    {"@=hex:", Kind::kCut, 6, 0},
    {"@=hex:0", Kind::kCut, 7, 0},
    {"@=hex:00,", Kind::kCut, 9, 0},
    {"@=hex:00,\\", Kind::kCut, 10, 0},
    {"@=hex:00,\\\r\n", Kind::kCut, 12, 0},
    {"@=hex:0\n", Kind::kNoDigits, 6, 1},
    {"@=hex:00,1,02\n", Kind::kNoDigits, 9, 1},
    {"@=hex:0x,1\n", Kind::kNoDigits, 6, 1},
    {"@=hex:,\n", Kind::kNoDigits, 6, 1},
    {"@=hex:00,\r\n", Kind::kNoDigits, 10, 0},
    {"@=hex:00,\\\n\n", Kind::kNoDigits, 11, 0},
    {"@=hex:000\n", Kind::kNoComma, 8, 1},
    {"@=hex:00;\n", Kind::kNoComma, 8, 1},
    {"@=hex:00,\\01\n", Kind::kNoComma, 9, 1},
};
INSTANTIATE_TEST_SUITE_P(RegistryReader, BrokenLines, testing::ValuesIn(kBroken));

TEST(RegistryReader, refuses_a_value_before_the_first_key) {
  const auto result = read("Windows Registry Editor Version 5.00\n@=hex:00\n");
  EXPECT_EQ(result.defect.kind, Kind::kUnknownLine);
  EXPECT_EQ(result.defect.offset, 37U);
  EXPECT_TRUE(result.values.empty());
}

TEST(RegistryReader, goes_on_to_a_defect_behind_a_value) {
  const auto result = readBelowKey("@=hex:01\nnonsense\n");
  EXPECT_EQ(result.values.size(), 1U);
  EXPECT_EQ(result.defect.kind, Kind::kUnknownLine);
  EXPECT_EQ(placeBelowKey(result), 9U);
}

TEST(RegistryReader, says_of_a_text_cut_anywhere_that_it_is_not_whole) {
  const auto whole = textOf(sample("laptop-asm.reg"));
  const Bytes binary = sample("laptop-r5.bin");
  ASSERT_EQ(read(whole).values, (std::vector<Value>{{"AsmCurrentRegkeyPolicy", binary}}));
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const auto result = read(std::string(whole, 0, size));
    const bool isWhole = result.defect.kind == Kind::kNone && result.hasLineEnd && !result.values.empty();
    EXPECT_FALSE(isWhole) << size;
  }
}

TEST(RegistryReader, tells_a_damaged_byte_or_takes_another_value) {
  const auto whole = textOf(sample("laptop-asm.reg"));
  const auto value = whole.find("hex:");
  for (std::size_t place = 0; place < whole.size(); ++place) {
    auto damaged = whole;
    damaged[place] = '\x01';
    const auto result = read(damaged);
    EXPECT_TRUE(result.defect.kind != Kind::kNone || (place < value && result.values.empty())) << place;
  }
}

TEST(IsRegistryText, looks_at_the_first_line) {
  EXPECT_TRUE(vqs::isRegistryText("Windows Registry Editor Version 5.00\n"));
  EXPECT_TRUE(vqs::isRegistryText("\xEF\xBB\xBFwindows registry editor"));
  EXPECT_TRUE(vqs::isRegistryText("REGEDIT4\r\n"));
  EXPECT_FALSE(vqs::isRegistryText(""));
  EXPECT_FALSE(vqs::isRegistryText("{ \"policies\": [] }"));
  EXPECT_FALSE(vqs::isRegistryText("\nREGEDIT4\n"));
}

}  // namespace
}  // namespace test
