// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/tool/policy_document.h"
#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

const std::string kSmallDocument = R"({
  "version": "3.41",
  "policies": [
    {
      "id": 1,
      "name": "one",
      "description": "d",
      "when": [
        { "Power Mode": "Best Performance" }
      ],
      "flag0": 1
    }
  ]
}
)";

/// A written file ends in three zeros for each policy.
Bytes smallFile() { return joined({header(1), plainEntry(1, u"one"), hex("00 00 00")}); }

TEST(PolicyCompile, makes_a_policy_binary_byte_for_byte) {
  const Tool tool;
  tool.writeText("one.json", kSmallDocument);
  EXPECT_EQ(tool.run({"policy", "compile", "one.json", "-o", "one.bin"}),
            done("1 policy from one.json is in one.bin now (revision 5, version 3.41).\n"));
  EXPECT_EQ(difference(readFile(tool.path("one.bin")), smallFile()), "");
  EXPECT_EQ(tool.files(), (std::vector<std::string>{"one.bin", "one.json"}));
}

TEST(PolicyCompile, brings_back_what_was_made_of_a_sample) {
  for (const std::string name : {"laptop-r5.bin", "wide-r5.bin", "fleet-r5.bin"}) {
    const Tool tool;
    ASSERT_EQ(tool.run({"policy", "decompile", samplePath(name), "-o", "sample.json"}).exitCode, 0);
    ASSERT_EQ(tool.run({"policy", "compile", "sample.json", "-o", "again.bin"}).exitCode, 0);
    EXPECT_EQ(difference(readFile(tool.path("again.bin")), sample(name)), "");
  }
}

TEST(PolicyCompile, makes_the_registry_text_that_an_export_makes) {
  const Tool tool;
  for (const auto& [store, name] : {std::pair<std::string, std::string>{"asm", "laptop-asm.reg"},
                                    {"balance-profile", "laptop-balanceprofile.reg"}}) {
    ASSERT_EQ(tool.run({"policy", "decompile", samplePath(name), "-o", "sample.json"}).exitCode, 0);
    const auto run = tool.run({"policy", "compile", "sample.json", "-o", "again.reg", "--registry", store});
    EXPECT_EQ(run.exitCode, 0) << run;
    EXPECT_TRUE(run.out.ends_with("in again.reg now (registry text, revision 5, version 3.41).\n")) << run;
    EXPECT_EQ(difference(readFile(tool.path("again.reg")), sample(name)), "") << name;
  }
}

TEST(PolicyCompile, makes_registry_text_as_registry_editors_write_it) {
  const Tool tool;
  tool.writeText("one.json", kSmallDocument);
  ASSERT_EQ(tool.run({"policy", "compile", "one.json", "-o", "one.reg", "--registry", "asm", "--encoding", "utf-16"})
                .exitCode,
            0);
  const auto text = readFile(tool.path("one.reg"));
  EXPECT_EQ(difference(Bytes(text.begin(), text.begin() + 6), hex("ff fe 57 00 69 00")), "");
  EXPECT_EQ(difference(Bytes(text.end() - 4, text.end()), hex("0d 00 0a 00")), "");
  ASSERT_EQ(tool.run({"policy", "decompile", "one.reg", "-o", "back.json"}).exitCode, 0);
  EXPECT_EQ(tool.readText("back.json"), kSmallDocument);
}

TEST(PolicyCompile, is_stopped_by_an_error) {
  const Tool tool;
  tool.writeText("quiet.json", quietBut("\"DC Power\"", "77"));
  tool.writeText("keep.bin", "precious");
  EXPECT_EQ(tool.run({"policy", "compile", "quiet.json", "-o", "keep.bin"}),
            (ToolRun{.exitCode = 1,
                     .out = "",
                     .err = "quiet.json:10:27: error P0012: 77 is no option of \"Power Source\": \"AC Power\" (0) or "
                            "\"DC Power\" (1) is expected\n"
                            "   10 |         { \"Power Source\": 77 },\n"
                            "      |                           ^^\n"
                            "vqs: quiet.json was not compiled: 1 error in 1 policy\n"}));
  EXPECT_EQ(tool.readText("keep.bin"), "precious");
  const auto run = tool.run({"policy", "compile", "quiet.json", "-o", "keep.bin", "--allow-unknown"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(run.err.starts_with("quiet.json:10:27: warning P0012: ")) << run;
  EXPECT_EQ(run.out, "1 policy from quiet.json is in keep.bin now (revision 5, version 3.41).\n");
}

TEST(PolicyCompile, refuses_what_does_not_go_together) {
  const Tool tool;
  tool.writeText("one.json", kSmallDocument);
  EXPECT_EQ(tool.run({"policy", "compile", "one.json"}),
            wrongUsage("vqs: --output is required (see \"vqs policy compile --help\")\n"));
  EXPECT_EQ(tool.run({"policy", "compile", "one.json", "-o", "one.reg"}),
            wrongUsage("vqs: registry text is for one of the driver's stores: use --registry asm or --registry "
                       "balance-profile\n"));
  EXPECT_EQ(tool.run({"policy", "compile", "one.json", "-o", "one.bin", "--encoding", "utf-8"}),
            wrongUsage("vqs: --encoding is for registry text, which --registry asks for\n"));
  EXPECT_EQ(
      tool.run({"policy", "compile", "one.json", "-o", "one.reg", "--registry", "pb"}),
      wrongUsage("vqs: --registry: \"pb\" is none of asm, balance-profile (see \"vqs policy compile --help\")\n"));
  EXPECT_EQ(tool.files(), std::vector<std::string>{"one.json"});
}

TEST(PolicyCompile, does_not_write_over_what_it_reads) {
  const Tool tool;
  tool.writeText("one.json", kSmallDocument);
  EXPECT_EQ(tool.run({"policy", "compile", "one.json", "-o", "./one.json"}),
            wrongUsage("vqs: ./one.json is the file that is read, and would be lost: name another one to write\n"));
  EXPECT_EQ(tool.readText("one.json"), kSmallDocument);
  tool.write("one.bin", smallFile());
  EXPECT_EQ(tool.run({"policy", "decompile", "one.bin", "-o", "one.bin"}),
            wrongUsage("vqs: one.bin is the file that is read, and would be lost: name another one to write\n"));
  EXPECT_EQ(difference(readFile(tool.path("one.bin")), smallFile()), "");
}

TEST(PolicyCompile, place_where_no_file_can_be) {
  const Tool tool;
  tool.writeText("one.json", kSmallDocument);
  EXPECT_EQ(tool.run({"policy", "compile", "one.json", "-o", "."}),
            failed("vqs: . cannot be written: Is a directory\n"));
  EXPECT_EQ(tool.run({"policy", "compile", "no.json", "-o", "one.bin"}),
            failed("vqs: no.json cannot be read: No such file or directory\n"));
  EXPECT_EQ(tool.files(), std::vector<std::string>{"one.json"});
}

TEST(PolicyDecompile, makes_a_document) {
  const Tool tool;
  tool.write("one.bin", smallFile());
  EXPECT_EQ(tool.run({"policy", "decompile", "one.bin"}), done(kSmallDocument));
}

TEST(PolicyDecompile, makes_the_same_document_of_every_form) {
  const auto document = Tool{}.run({"policy", "decompile", samplePath("laptop-r5.bin")});
  EXPECT_EQ(document.exitCode, 0);
  EXPECT_EQ(Tool{}.run({"policy", "decompile", samplePath("laptop-asm.reg")}), document);
  // The samples of the older revisions have versions of their own, and revision 3 has no options.
  const std::string revision4 = documentBut(document.out, "3.41", "2.7");
  EXPECT_EQ(Tool{}.run({"policy", "decompile", samplePath("laptop-r4.bin")}), done(revision4));
  const std::string revision3 = documentBut(documentBut(document.out, "3.41", "1.2"),
                                            "{ \"value\": \"Enabled\", \"option1\": 1 }", "\"Enabled\"");
  EXPECT_EQ(Tool{}.run({"policy", "decompile", samplePath("laptop-r3.bin")}), done(revision3));
}

TEST(PolicyDecompile, of_damaged_registry_text_names_its_line) {
  const Tool tool;
  tool.writeText("bad.reg",
                 "Windows Registry Editor Version "
                 "5.00\n\n[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\vexoqtf\\Parameters]"
                 "\n\"AsmCurrentRegkeyPolicy\"="
                 "hex:01,0\n");
  const auto run = tool.run({"policy", "decompile", "bad.reg"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_TRUE(run.err.starts_with("bad.reg:4:")) << run;
  EXPECT_NE(run.err.find(" error P0062: "), std::string::npos) << run;
  EXPECT_TRUE(run.err.ends_with("\nvqs: bad.reg cannot be read: 1 error\n")) << run;
}

TEST(PolicyDecompile, of_a_damaged_binary_leaves_a_file_alone) {
  const Tool tool;
  tool.write("bad.bin", patched(smallFile(), 8, "00"));
  tool.writeText("keep.json", "precious");
  EXPECT_EQ(tool.run({"policy", "decompile", "bad.bin", "-o", "keep.json"}),
            failed("bad.bin: error P0070: not a valid policy binary: offset 8: the magic \"$QTF\" is missing\n"
                   "vqs: bad.bin cannot be read: 1 error\n"));
  EXPECT_EQ(tool.readText("keep.json"), "precious");
}

}  // namespace
}  // namespace test
