// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <set>

#include "simulator/installer/child_process.h"
#include "simulator/installer/problem.h"

namespace test {
namespace {

using setup::adviceOn;
using setup::commandLine;
using setup::describeProblem;

TEST(InstallerProblem, has_words_for_every_documented_code) {
  std::set<unsigned> known = {1, 3, 9, 10, 12, 14, 16, 18, 19, 21, 22, 24, 28, 29};
  for (unsigned code = 31; code <= 57; ++code) known.insert(code);
  const std::string unknown = "which this program does not know";
  for (unsigned code = 0; code < 200; ++code)
    EXPECT_EQ(describeProblem(code).find(unknown) == std::string::npos, known.contains(code)) << code;
}

TEST(InstallerProblem, is_told_with_its_number_and_what_helps) {
  EXPECT_EQ(describeProblem(10), "code 10, its driver refused to start");
  EXPECT_EQ(describeProblem(22), "code 22, it is disabled; enable it in Device Manager");
  EXPECT_EQ(describeProblem(38), "code 38, an earlier instance of its driver is still loaded; restart Windows");
  EXPECT_EQ(
      describeProblem(52),
      "code 52, Windows does not trust the signature of its driver; allow test signing (\"bcdedit /set testsigning "
      "on\"), restart Windows, and use \"install --test-sign\"");
  EXPECT_EQ(describeProblem(99), "code 99, which this program does not know");
}

TEST(InstallerAdvice, is_given_on_signatures_alone) {
  const std::string signedOnly =
      "; Windows installs drivers of trusted signers only: on a test PC, use \"install --test-sign\"";
  for (const std::uint32_t error : {577U, 0xE000022FU, 0xE0000242U, 0xE0000243U, 0x800B0109U, 0x800B0100U})
    EXPECT_EQ(adviceOn(error), signedOnly) << std::hex << error;
  for (const std::uint32_t error : {0U, 2U, 5U, 0xE000023DU}) EXPECT_EQ(adviceOn(error), "") << std::hex << error;
}

TEST(InstallerCommandLine, keeps_every_argument_as_it_is) {
  EXPECT_EQ(commandLine(L"C:\\a b\\c.exe", {}), L"\"C:\\a b\\c.exe\"");
  EXPECT_EQ(commandLine(L"c.exe", {L"plain", L"", L"with space"}), L"\"c.exe\" \"plain\" \"\" \"with space\"");
  EXPECT_EQ(commandLine(L"c.exe", {L"C:\\folder\\"}), L"\"c.exe\" \"C:\\folder\\\\\"");
  EXPECT_EQ(commandLine(L"c.exe", {L"a\"b", L"a\\\"b", L"\\\\server\\x"}),
            L"\"c.exe\" \"a\\\"b\" \"a\\\\\\\"b\" \"\\\\server\\x\"");
}

}  // namespace
}  // namespace test
