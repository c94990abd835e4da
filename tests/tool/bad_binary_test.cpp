// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

/// The line about a file of these bytes, without its beginning.
std::string complaint(const Bytes& content) {
  const Tool tool;
  tool.write("bad.bin", content);
  const auto run = tool.run({"binary", "show", "bad.bin"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.out, "");
  const std::string start = "vqs: bad.bin is not a valid policy binary: ";
  EXPECT_EQ(run.err.substr(0, start.size()), start);
  return run.err.substr(std::min(start.size(), run.err.size()));
}

Bytes cut(Bytes bytes, std::size_t size) {
  bytes.resize(size);
  return bytes;
}

TEST(BadBinary, missing) {
  EXPECT_EQ(Tool{}.run({"binary", "show", "no.bin"}),
            failed("vqs: no.bin cannot be read: No such file or directory\n"));
}

TEST(BadBinary, folder) {
  EXPECT_EQ(Tool{}.run({"binary", "show", "."}), failed("vqs: . cannot be read: Is a directory\n"));
}

TEST(BadBinary, empty) {
  const Tool tool;
  tool.write("empty.bin", {});
  EXPECT_EQ(tool.run({"binary", "show", "empty.bin"}), failed("vqs: empty.bin is empty, a policy binary is not\n"));
}

TEST(BadBinary, empty_name) {
  EXPECT_EQ(Tool{}.run({"binary", "show", ""}), wrongUsage("vqs: FILE: the file's name is empty\n"));
}

TEST(BadBinary, registry_text_is_no_binary) {
  EXPECT_EQ(complaint(sample("laptop-asm.reg")), "offset 0: the format version is 26967, only 1 is known\n");
}

TEST(BadBinary, shorter_than_a_header) {
  EXPECT_EQ(complaint(hex("01 00 05")), "offset 3: the file ends inside its header\n");
  EXPECT_EQ(complaint(cut(smallBinary(), 15)), "offset 15: the file ends inside its header\n");
  EXPECT_EQ(complaint(cut(sample("laptop-r4.bin"), 63)), "offset 63: the file ends inside its header\n");
}

TEST(BadBinary, unknown_revision) {
  EXPECT_EQ(complaint(patched(smallBinary(), 2, "06 00")), "offset 2: the revision is 6, only 3, 4 and 5 are known\n");
}

TEST(BadBinary, missing_magic) {
  EXPECT_EQ(complaint(patched(smallBinary(), 8, "00")), "offset 8: the magic \"$QTF\" is missing\n");
}

TEST(BadBinary, no_policies) {
  EXPECT_EQ(complaint(patched(smallBinary(), 12, "00")), "offset 12: the file announces no policies\n");
}

TEST(BadBinary, more_policies_than_fit) {
  EXPECT_EQ(complaint(patched(sample("laptop-r5.bin"), 12, "70 11 01 00")),
            "offset 12: the file announces 70000 policies but has room for at most 58\n");
  EXPECT_EQ(complaint(patched(sample("laptop-r3.bin"), 8, "ff ff ff ff")),
            "offset 8: the file announces 4294967295 policies but has room for at most 38\n");
}

TEST(BadBinary, more_policies_than_possible) {
  const Bytes fleet = sample("fleet-r5.bin");
  EXPECT_EQ(complaint(patched(joined({fleet, plainEntry(9999, u"one more")}), 12, "91 01 00 00")),
            "offset 12: the file announces 401 policies, at most 400 are possible\n");
}

TEST(BadBinary, too_short_for_any_policy) {
  EXPECT_EQ(complaint(cut(smallBinary(), 72)), "offset 12: the file announces 1 policies but has room for at most 0\n");
}

TEST(BadBinary, cut_short_in_its_last_policy) {
  EXPECT_EQ(complaint(cut(smallBinary(), 100)), "offset 100: policy 1 of 1: the file ends inside it\n");
}

TEST(BadBinary, field_beyond_its_limit) {
  const std::string place = "policy 1 of 1: ";
  EXPECT_EQ(complaint(patched(smallBinary(), 16, "81")),
            "offset 16: " + place + "the length of its name is 129, 1 to 128 are possible\n");
  EXPECT_EQ(complaint(patched(smallBinary(), 32, "21")),
            "offset 32: " + place + "the length of its description is 33, 1 to 32 are possible\n");
  EXPECT_EQ(complaint(patched(smallBinary(), 61, "00")),
            "offset 61: " + place + "its number of conditions is 0, 1 to 15 are possible\n");
  EXPECT_EQ(complaint(patched(smallBinary(), 65, "06")),
            "offset 65: " + place + "its number of texts is 6, 0 to 5 are possible\n");
  EXPECT_EQ(complaint(patched(smallBinary(), 85, "01 02")),
            "offset 85: " + place + "the length of a text is 513, 0 to 512 are possible\n");
  EXPECT_EQ(complaint(patched(smallBinary(), 111, "21")),
            "offset 111: " + place + "its number of actions is 33, 0 to 32 are possible\n");
}

// The library reads such files, and leaves out what follows the value.
TEST(BadBinary, comparison_that_does_not_exist) {
  EXPECT_EQ(complaint(patched(smallBinary(), 73, "05")),
            "offset 73: policy 1 of 1: a comparison is 5, 0 to 4 are possible\n");
}

TEST(BadBinary, text_flag_that_does_not_exist) {
  EXPECT_EQ(complaint(patched(smallBinary(), 103, "02")),
            "offset 103: policy 1 of 1: a text's flag is 2, 0 and 1 are possible\n");
}

TEST(BadBinary, old_revision_beyond_a_limit_of_its_own) {
  EXPECT_EQ(complaint(patched(sample("laptop-r4.bin"), 36, "05 00 00 00")),
            "offset 64: policy 1 of 16: the length of its name is 16, 1 to 5 are possible\n");
}

TEST(BadBinary, every_cut_is_reported_with_its_place) {
  for (const std::size_t size : {73U, 84U, 90U, 103U, 112U, 130U, 137U}) {
    SCOPED_TRACE(size);
    EXPECT_EQ(complaint(cut(smallBinary(), size)),
              "offset " + std::to_string(size) + ": policy 1 of 1: the file ends inside it\n");
  }
}

}  // namespace
}  // namespace test
