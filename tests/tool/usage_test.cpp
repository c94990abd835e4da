// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <set>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

ToolRun run(const std::vector<std::string>& arguments) { return Tool{}.run(arguments); }

TEST(Usage, help_of_the_program) {
  const auto expected = done(R"(Works with the VexoQTF power-management driver and its policies.
Usage: vqs [OPTIONS] SUBCOMMAND

Options:
  -h,--help                   Print this help
  --version                   Display program version information and exit
  --simulated                 Use the driver that is simulated in the tool's process; elsewhere than on Windows it always is
  --driver-state FILE         The simulated driver's state file

Subcommands:
  policy                      Write, check and compare policies in words; no driver is needed.
  binary                      Work with policy binary files.
  store                       Work with the driver's policy stores: pb, asm and balance-profile.
  catalogue                   Look up what policies are made of.
  telemetry                   Look into the driver's telemetry logs.
  features                    Show which of the driver's features are supported and active.
  sensors                     Show the status and the data words of the four sensors.
  battery                     Show the battery's charge, temperature and limits.
  io                          Show application inputs and outputs, taskbar icon and debug output.
  override                    List the driver's inputs that can be set by hand, set or clear one.
  version                     Show the versions of this tool, the library and the driver.

STORE is pb (Policy Builder), asm or balance-profile.

Exit codes:
  0  done, the same, met
  1  the answer is no: there are findings, or differences
  2  the command line is wrong, or the command could not be carried out
  3  there is no driver, or none that can be used
  4  it took too long

Examples:
  vqs policy new -o quiet.json
  vqs policy check quiet.json
  vqs binary show laptop-r5.bin
  vqs store load asm laptop-r5.bin
  vqs store list asm
  vqs store save asm copy.bin
  vqs catalogue conditions battery
  vqs telemetry watch PowerSource BatteryChargeLevel
  vqs override PowerSource 1

"vqs COMMAND --help" tells more about a command.
)");
  EXPECT_EQ(run({"--help"}), expected);
  EXPECT_EQ(run({"-h"}), expected);
}

/// The commands that write for programs, but no JSON on demand.
const std::set<std::string> kWriters = {"watch", "new", "check", "compile", "decompile", "schema"};

struct HelpCase {
  std::vector<std::string> command;
  std::string usage;
  std::vector<std::string> phrases;
};

TEST(Usage, help_of_every_command) {
  const std::vector<HelpCase> cases = {
      {{"policy"},
       "Usage: vqs policy [OPTIONS] SUBCOMMAND\n",
       {"new ", "check ", "fmt ", "compile ", "decompile ", "show ", "diff ", "schema ", "explain ", "lsp "}},
      {{"policy", "new"}, "Usage: vqs policy new [OPTIONS]\n", {"--force", "Examples:"}},
      {{"policy", "check"},
       "Usage: vqs policy check [OPTIONS] DOC...\n",
       {"--format", "--fix", "--fail-on", "--structure-version", "--allow-unknown", "Examples:"}},
      {{"policy", "fmt"}, "Usage: vqs policy fmt [OPTIONS] DOC...\n", {"--check", "Examples:"}},
      {{"policy", "compile"},
       "Usage: vqs policy compile [OPTIONS] DOC\n",
       {"--registry", "--encoding", "--structure-version", "--allow-unknown", "Examples:"}},
      {{"policy", "decompile"}, "Usage: vqs policy decompile [OPTIONS] FILE\n", {"Examples:"}},
      {{"policy", "show"}, "Usage: vqs policy show [OPTIONS] FILE\n", {"--json", "store:asm", "Examples:"}},
      {{"policy", "diff"}, "Usage: vqs policy diff [OPTIONS] A B\n", {"--json", "store:asm", "Examples:"}},
      {{"policy", "schema"}, "Usage: vqs policy schema [OPTIONS]\n", {"Examples:"}},
      {{"policy", "explain"}, "Usage: vqs policy explain [OPTIONS] WORD...\n", {"P0012", "Examples:"}},
      {{"policy", "lsp"}, "Usage: vqs policy lsp [OPTIONS]\n", {"--stdio", "--allow-unknown", "Examples:"}},
      {{"binary"}, "Usage: vqs binary [OPTIONS] SUBCOMMAND\n", {"show "}},
      {{"binary", "show"}, "Usage: vqs binary show [OPTIONS] FILE\n", {"--json", "vqs binary show laptop-r5.bin"}},
      {{"store"},
       "Usage: vqs store [OPTIONS] SUBCOMMAND\n",
       {"list ", "show ", "load ", "save ", "reset ", "verify ", "apply "}},
      {{"store", "show"}, "Usage: vqs store show [OPTIONS] STORE [ID]\n", {"--json", "Examples:"}},
      {{"store", "list"}, "Usage: vqs store list [OPTIONS] STORE\n", {"--json", "pb, asm or balance-profile"}},
      {{"store", "load"}, "Usage: vqs store load [OPTIONS] STORE FILE\n", {"--replace", "--reset", "Examples:"}},
      {{"store", "save"}, "Usage: vqs store save [OPTIONS] STORE FILE\n", {"--registry", "--version A.B", "Examples:"}},
      {{"store", "reset"}, "Usage: vqs store reset [OPTIONS] STORE\n", {"Remove every policy", "Examples:"}},
      {{"store", "verify"}, "Usage: vqs store verify [OPTIONS] STORE FILE\n", {"--order", "--json", "Examples:"}},
      {{"store", "apply"},
       "Usage: vqs store apply [OPTIONS] STORE FILE\n",
       {"--dry-run", "--yes", "--order", "--allow-unknown", "--json", "Examples:"}},
      {{"catalogue"}, "Usage: vqs catalogue [OPTIONS] SUBCOMMAND\n", {"conditions ", "actions "}},
      {{"catalogue", "conditions"}, "Usage: vqs catalogue conditions [OPTIONS] [FILTER]\n", {"--json", "Examples:"}},
      {{"catalogue", "actions"}, "Usage: vqs catalogue actions [OPTIONS] [FILTER]\n", {"--json", "Examples:"}},
      {{"telemetry"}, "Usage: vqs telemetry [OPTIONS] SUBCOMMAND\n", {"keys ", "show ", "watch "}},
      {{"telemetry", "keys"}, "Usage: vqs telemetry keys [OPTIONS]\n", {"--ex", "--json", "Examples:"}},
      {{"telemetry", "show"}, "Usage: vqs telemetry show [OPTIONS]\n", {"--ex", "--json", "Examples:"}},
      {{"telemetry", "watch"},
       "Usage: vqs telemetry watch [OPTIONS] [KEY...]\n",
       {"--ex", "--every MS", "--count N", "10 to 3600000", "Examples:"}},
      {{"features"}, "Usage: vqs features [OPTIONS]\n", {"--json"}},
      {{"sensors"}, "Usage: vqs sensors [OPTIONS]\n", {"--json"}},
      {{"battery"}, "Usage: vqs battery [OPTIONS]\n", {"--json", "hundredths of a degree"}},
      {{"io"}, "Usage: vqs io [OPTIONS]\n", {"--json", "Reading the outputs resets the event"}},
      {{"override"}, "Usage: vqs override [OPTIONS] [KEY] [VALUE]\n", {"--clear", "--json", "Examples:"}},
      {{"version"}, "Usage: vqs version [OPTIONS]\n", {"major.minor.third.fourth"}}};
  for (const auto& [command, usage, phrases] : cases) {
    auto arguments = command;
    arguments.emplace_back("--help");
    const auto shown = run(arguments);
    EXPECT_EQ(shown.exitCode, 0);
    EXPECT_EQ(shown.err, "");
    EXPECT_NE(shown.out.find(usage), std::string::npos) << shown.out;
    for (const auto& phrase : phrases) EXPECT_NE(shown.out.find(phrase), std::string::npos) << phrase << shown.out;
    // What programs can read, they can have in a file.
    const bool isForPrograms = shown.out.find("--json") != std::string::npos || kWriters.contains(command.back());
    EXPECT_EQ(shown.out.find("-o,--output FILE") != std::string::npos, isForPrograms) << shown.out;
  }
}

TEST(Usage, version) { EXPECT_EQ(run({"--version"}), done("vqs " VQS_VERSION "\n")); }

TEST(Usage, missing_command) {
  EXPECT_EQ(run({}),
            wrongUsage("vqs: a command is missing, one of policy, binary, store, catalogue, telemetry, features, "
                       "sensors, battery, io, override, version (see \"vqs --help\")\n"));
  EXPECT_EQ(run({"binary"}), wrongUsage("vqs: a command is missing, one of show (see \"vqs binary --help\")\n"));
  EXPECT_EQ(run({"store"}), wrongUsage("vqs: a command is missing, one of list, show, load, save, reset, verify, apply "
                                       "(see \"vqs store --help\")\n"));
}

TEST(Usage, unknown_command) {
  EXPECT_EQ(run({"stroe"}),
            wrongUsage("vqs: \"stroe\" is not a command; did you mean \"store\"? (see \"vqs --help\")\n"));
  EXPECT_EQ(run({"store", "lst", "asm"}),
            wrongUsage("vqs: \"lst\" is not a command; did you mean \"list\"? (see \"vqs store --help\")\n"));
  EXPECT_EQ(run({"fetch"}), wrongUsage("vqs: \"fetch\" is not a command (see \"vqs --help\")\n"));
  EXPECT_EQ(run({""}), wrongUsage("vqs: \"\" is not a command (see \"vqs --help\")\n"));
}

TEST(Usage, unknown_store) {
  const std::string refusal = " is not a store, the stores are pb, asm or balance-profile";
  EXPECT_EQ(run({"store", "list", "asn"}), wrongUsage("vqs: \"asn\"" + refusal + "; did you mean \"asm\"?\n"));
  EXPECT_EQ(run({"store", "reset", "ASM"}), wrongUsage("vqs: \"ASM\"" + refusal + "; did you mean \"asm\"?\n"));
  EXPECT_EQ(run({"store", "load", "balance_profile", "x"}),
            wrongUsage("vqs: \"balance_profile\"" + refusal + "; did you mean \"balance-profile\"?\n"));
  EXPECT_EQ(run({"store", "save", "BalanceProfile", "x"}),
            wrongUsage("vqs: \"BalanceProfile\"" + refusal + "; did you mean \"balance-profile\"?\n"));
  EXPECT_EQ(run({"store", "list", "registry"}), wrongUsage("vqs: \"registry\"" + refusal + "\n"));
  EXPECT_EQ(run({"store", "list", ""}), wrongUsage("vqs: \"\"" + refusal + "\n"));
  EXPECT_EQ(run({"store", "list", "a\x1b\n"}), wrongUsage("vqs: \"a\\u001b\\n\"" + refusal + "\n"));
}

TEST(Usage, missing_argument) {
  EXPECT_EQ(run({"binary", "show"}), wrongUsage("vqs: FILE is required (see \"vqs binary show --help\")\n"));
  EXPECT_EQ(run({"store", "list"}), wrongUsage("vqs: STORE is required (see \"vqs store list --help\")\n"));
  EXPECT_EQ(run({"store", "load", "asm"}), wrongUsage("vqs: FILE is required (see \"vqs store load --help\")\n"));
  EXPECT_EQ(run({"store", "save", "asm"}), wrongUsage("vqs: FILE is required (see \"vqs store save --help\")\n"));
  EXPECT_EQ(run({"store", "reset"}), wrongUsage("vqs: STORE is required (see \"vqs store reset --help\")\n"));
  EXPECT_EQ(run({"store", "verify", "asm"}), wrongUsage("vqs: FILE is required (see \"vqs store verify --help\")\n"));
  EXPECT_EQ(run({"store", "apply", "asm"}), wrongUsage("vqs: FILE is required (see \"vqs store apply --help\")\n"));
  EXPECT_EQ(run({"version", "--driver-state"}),
            wrongUsage("vqs: --driver-state needs a value (see \"vqs version --help\")\n"));
}

TEST(Usage, argument_too_many) {
  EXPECT_EQ(run({"store", "list", "asm", "pb"}),
            wrongUsage("vqs: \"pb\" is not expected (see \"vqs store list --help\")\n"));
  EXPECT_EQ(run({"version", "--all"}), wrongUsage("vqs: \"--all\" is not expected (see \"vqs version --help\")\n"));
  EXPECT_EQ(run({"store", "reset", "asm", "--json"}),
            wrongUsage("vqs: \"--json\" is not expected (see \"vqs store reset --help\")\n"));
}

TEST(Usage, words_with_quotes_and_backslashes) {
  const std::string refusal = " is not a store, the stores are pb, asm or balance-profile\n";
  EXPECT_EQ(run({"store", "list", R"(say "pb")"}), wrongUsage(R"(vqs: "say \"pb\"")" + refusal));
  EXPECT_EQ(run({"store", "list", R"(C:\stores\)"}), wrongUsage(R"(vqs: "C:\\stores\\")" + refusal));
}

TEST(Usage, path_from_the_root_is_no_option) {
  EXPECT_EQ(run({"binary", "show", "/no-such-file.bin"}),
            failed("vqs: /no-such-file.bin cannot be read: No such file or directory\n"));
  EXPECT_EQ(run({"binary", "show", "/json"}), failed("vqs: /json cannot be read: No such file or directory\n"));
}

TEST(Usage, file_named_like_a_command) {
  EXPECT_EQ(run({"binary", "show", "store"}), failed("vqs: store cannot be read: No such file or directory\n"));
  EXPECT_EQ(run({"binary", "show", "--", "--json"}), failed("vqs: --json cannot be read: No such file or directory\n"));
}

TEST(Usage, words_that_are_also_names_of_other_commands) {
  EXPECT_EQ(run({"binary", "show", "store", "list"}),
            wrongUsage("vqs: \"list\" is not expected (see \"vqs binary show --help\")\n"));
  EXPECT_EQ(run({"store", "list", "version"}),
            wrongUsage("vqs: \"version\" is not a store, the stores are pb, asm or balance-profile\n"));
  EXPECT_EQ(run({"store", "binary"}), wrongUsage("vqs: \"binary\" is not a command (see \"vqs store --help\")\n"));
  EXPECT_EQ(run({"show"}), wrongUsage("vqs: \"show\" is not a command (see \"vqs --help\")\n"));
  EXPECT_EQ(run({"--version", "store"}), done("vqs " VQS_VERSION "\n"));
}

}  // namespace
}  // namespace test
