// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

TEST(BinaryShow, escapes_the_file_name) {
  const Tool tool;
  tool.write("a\x1b[1m\nb.bin", smallBinary());
  EXPECT_EQ(tool.run({"binary", "show", "a\x1b[1m\nb.bin"}).out.substr(0, 20), "a\\u001b[1m\\nb.bin: 1");
}

TEST(BinaryShow, needs_no_state_of_the_driver) {
  const Tool tool;
  tool.write("small.bin", smallBinary());
  const RunOptions homeless{.environment = {{"VEXOQTF_SIMULATOR_STATE", ""}, {"HOME", ""}, {"XDG_STATE_HOME", ""}},
                            .output = {},
                            .longestFile = {}};
  EXPECT_EQ(tool.run({"binary", "show", "small.bin"}, homeless).exitCode, 0);
  EXPECT_EQ(tool.files(), std::vector<std::string>{"small.bin"});
}

TEST(BinaryShow, reports_an_output_that_cannot_take_the_text) {
  const Tool tool;
  tool.write("small.bin", smallBinary());
  const auto writeTo = [&](const std::string& output) {
    return tool.run({"binary", "show", "small.bin"}, {.environment = {}, .output = output, .longestFile = {}});
  };
  EXPECT_EQ(writeTo("/dev/full"), failed("vqs: standard output cannot be written: No space left on device\n"));
  EXPECT_EQ(writeTo("-"), failed("vqs: standard output cannot be written: Bad file descriptor\n"));
}

}  // namespace
}  // namespace test
