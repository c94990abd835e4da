// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/embedded/client.h"
#include "tests/simulator/model/settings_view.h"
#include "tests/support/listings.h"

namespace test {
namespace {

/// A driver whose options and state file can be changed between its handles.
class OptionsTest : public testing::Test {
 protected:
  bool open(const std::string& words) {
    driver.options = words;
    return driver.open(handle(1));
  }

  /// Opens, asks for the seconds simulated, and closes.
  std::uint32_t secondsWith(const std::string& words) {
    EXPECT_TRUE(open(words));
    Bytes answer(4);
    DWORD returned = 0;
    EXPECT_TRUE(driver.control(handle(1), {kDebugOutput, nullptr, 0, answer.data(), 4, &returned, nullptr}));
    driver.close(handle(1));
    return word(answer, 0);
  }

  /// The key/value area of a driver of its own.
  static Bytes areaWith(const std::string& words, std::uint32_t operation = 7) {
    TestDriver other;
    other.options = words;
    EXPECT_TRUE(other.open(handle(1)));
    const auto answer = request(other, kLog, logRequest(operation));
    EXPECT_EQ(answer.size(), 32U);
    const auto* first = reinterpret_cast<const std::uint8_t*>(word(answer, 8) | std::uint64_t{word(answer, 12)} << 32);
    Bytes area(first, first + (operation == 7 ? 16384 : 4096));
    other.close(handle(1));
    return area;
  }

  std::string refusal(const std::string& words) {
    Errors errors;
    EXPECT_FALSE(open(words)) << words;
    return errors.take();
  }

  const TemporaryFolder folder;
  TestDriver driver;
  std::string& file = driver.stateFile;
};

TEST_F(OptionsTest, none_are_needed) {
  EXPECT_TRUE(open(""));
  driver.close(handle(1));
}

TEST_F(OptionsTest, word_that_is_not_understood_fails_the_open_with_one_line) {
  for (const char* word : {"x=1",        "seed",    "seed=",     "seed=-1",
                           "seed=+1",    "seed=1x", "seed=0x10", "seed=18446744073709551616",
                           "seed=1=2",   " seed=1", "seed=1 ",   "Seed=1",
                           "time",       "time=",   "time=1.5",  "time=-1",
                           "log",        "log=",    "log=none",  "log=No-End",
                           "log=empty ", "=",       "=1",        "-",
                           "seeds=1"})
    EXPECT_EQ(refusal(word),
              "vexoqtf simulator: VEXOQTF_SIMULATOR_OPTIONS: \"" + std::string{word} + "\" is not understood\n");
}

TEST_F(OptionsTest, the_word_is_named_among_others) {
  for (const char* words : {"x=1,seed=7", "seed=7,x=1", "seed=7,x=1,log=empty"})
    EXPECT_EQ(refusal(words), "vexoqtf simulator: VEXOQTF_SIMULATOR_OPTIONS: \"x=1\" is not understood\n");
}

TEST_F(OptionsTest, word_with_a_line_break_still_gives_one_line) {
  const auto text = refusal("x\n\x1b[31m");
  EXPECT_EQ(std::ranges::count(text, '\n'), 1) << text;
  EXPECT_EQ(text.find('\x1b'), std::string::npos);
}

TEST_F(OptionsTest, refused_open_keeps_nothing_locked_and_can_be_repeated) {
  file = folder.write("state", smallState());
  EXPECT_NE(refusal("x=1"), "");
  EXPECT_EQ(readFile(file), smallState());
  {
    OpenDriver other{file};
    EXPECT_TRUE(other.isOpen());
  }
  ASSERT_TRUE(open("seed=1"));
  EXPECT_EQ(ids(driver, kReadAsm), Ids{7});
  driver.close(handle(1));
}

TEST_F(OptionsTest, refused_open_keeps_what_the_driver_has) {
  ASSERT_TRUE(open(""));
  ASSERT_EQ(add(driver, kModifyPb, 1), 0);
  driver.close(handle(1));
  file = folder.write("state", smallState());
  EXPECT_NE(refusal("x=1"), "");
  file.clear();
  ASSERT_TRUE(open(""));
  EXPECT_EQ(ids(driver, kReadPb), Ids{1});
  EXPECT_EQ(ids(driver, kReadAsm), Ids{});
  driver.close(handle(1));
}

TEST_F(OptionsTest, requests_fail_after_a_refused_open) {
  EXPECT_NE(refusal("x=1"), "");
  EXPECT_EQ(request(driver, kReadPb, countQuery()), Bytes{});
}

TEST_F(OptionsTest, are_looked_at_by_first_handles_only) {
  ASSERT_TRUE(open("time=1000"));
  driver.options = "x=1";
  EXPECT_TRUE(driver.open(handle(2)));
  driver.close(handle(2));
  driver.close(handle(1));
  EXPECT_NE(refusal("x=1"), "");
}

TEST_F(OptionsTest, time_makes_the_clock_stand) {
  EXPECT_EQ(secondsWith("time=1000"), 0);
  EXPECT_EQ(secondsWith("time=1000"), 0);
  EXPECT_EQ(secondsWith("time=61000"), 60);
  EXPECT_EQ(secondsWith("time=61999"), 60);
  EXPECT_EQ(secondsWith("time=62000"), 61);
  EXPECT_EQ(secondsWith("time=0"), 61);
}

TEST_F(OptionsTest, time_may_be_any_number) {
  EXPECT_EQ(secondsWith("time=18446744073709551615"), 0);
  EXPECT_EQ(secondsWith("time=18446744073709551615"), 0);
}

TEST_F(OptionsTest, time_steps_a_driver_from_process_to_process) {
  file = folder.path("state");
  EXPECT_EQ(secondsWith("time=5000"), 0);
  ASSERT_TRUE(open("time=65000"));
  ASSERT_EQ(add(driver, kModifyPb, 7), 0);
  driver.close(handle(1));
  TestDriver other{file};
  other.options = "time=75000";
  ASSERT_TRUE(other.open(handle(1)));
  Bytes answer(4);
  DWORD returned = 0;
  ASSERT_TRUE(other.control(handle(1), {kDebugOutput, nullptr, 0, answer.data(), 4, &returned, nullptr}));
  EXPECT_EQ(word(answer, 0), 70);
  other.close(handle(1));
}

TEST_F(OptionsTest, seed_decides_the_course) {
  EXPECT_EQ(areaWith("seed=7,time=1000"), areaWith("time=1000,seed=7"));
  EXPECT_NE(areaWith("seed=7,time=1000"), areaWith("seed=8,time=1000"));
  EXPECT_EQ(areaWith("seed=0,time=1000"), areaWith("time=99"));
  EXPECT_NE(areaWith("seed=18446744073709551615,time=1000"), areaWith("time=1000"));
}

TEST_F(OptionsTest, seed_is_for_fresh_drivers_only) {
  const auto areaOf = [this](const std::string& words) {
    EXPECT_TRUE(open(words));
    const auto answer = request(driver, kLog, logRequest(7));
    const auto* first = reinterpret_cast<const std::uint8_t*>(word(answer, 8) | std::uint64_t{word(answer, 12)} << 32);
    Bytes area(first, first + 16384);
    driver.close(handle(1));
    return area;
  };
  file = folder.path("state");
  const Bytes seven = areaOf("seed=7,time=1000");
  EXPECT_EQ(areaOf("seed=8,time=1000"), seven);
  EXPECT_EQ(areaOf("time=1000"), seven);
  std::filesystem::remove(file);
  EXPECT_NE(areaOf("seed=8,time=1000"), seven);
}

TEST_F(OptionsTest, log_faults_show_in_both_generations) {
  EXPECT_EQ(word(areaWith("log=unknown-key"), 0), listedIn(kKeyListing) + 1);
  EXPECT_EQ(word(areaWith("log=unknown-key", 10), 0), listedIn(kExKeyListing) + 1);
  EXPECT_EQ(word(areaWith("log=negative-key"), 0), 0x80000001);
  EXPECT_EQ(word(areaWith("log=negative-key", 10), 0), 0x80000001);
  EXPECT_EQ(word(areaWith("log=empty"), 0), 0);
  EXPECT_EQ(word(areaWith("log=empty", 10), 0), 0);
  EXPECT_EQ(word(areaWith("log=repeated-key"), 16376), 25);
  EXPECT_EQ(word(areaWith("log=repeated-key", 10), 4088), 1);
  EXPECT_NE(faultOfArea(areaWith("log=no-end"), kvRows()), "");
  EXPECT_NE(faultOfArea(areaWith("log=no-end", 10), exKVRows()), "");
  EXPECT_EQ(faultOfArea(areaWith("log=version"), kvRows()), "");
}

TEST_F(OptionsTest, log_version_is_answered_to_a_start) {
  ASSERT_TRUE(open("log=version"));
  EXPECT_EQ(word(request(driver, kLog, logRequest(7)), 24), 2);
  EXPECT_EQ(word(request(driver, kLog, logRequest(10)), 24), 2);
  driver.close(handle(1));
  ASSERT_TRUE(open(""));
  EXPECT_EQ(word(request(driver, kLog, logRequest(7)), 24), 1);
  driver.close(handle(1));
}

}  // namespace
}  // namespace test
