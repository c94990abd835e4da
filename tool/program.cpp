// SPDX-License-Identifier: Apache-2.0
#include "tool/program.h"

#include <fmt/format.h>

#include <span>

#include "tool/commands/command.h"
#include "tool/terminal/nearest.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

struct CommandRow {
  const char* name;
  const char* description;
  void (*setUp)(CLI::App& command, Context& context);
};

struct GroupRow {
  const char* name;
  const char* description;
  std::span<const CommandRow> commands;
};

// clang-format off
constexpr CommandRow kBinaryCommands[] = {
    {"show", "Show what a policy binary holds.", setUpBinaryShow},
};

constexpr CommandRow kPolicyCommands[] = {
    {"new", "Begin a document, with comments that explain it.", setUpPolicyNew},
    {"check", "Say everything that is wrong with documents.", setUpPolicyCheck},
    {"fmt", "Lay documents out in the one way, comments kept.", setUpPolicyFmt},
    {"compile", "Make a policy binary or registry text of a document.", setUpPolicyCompile},
    {"decompile", "Make a document of a policy binary or registry text.", setUpPolicyDecompile},
    {"show", "Show policies of any form in words.", setUpPolicyShow},
    {"diff", "Say in what policies of any two forms differ.", setUpPolicyDiff},
    {"schema", "Print the JSON Schema of documents, for editors.", setUpPolicySchema},
    {"explain", "Explain a condition, an action, an option or a finding's code.", setUpPolicyExplain},
    {"lsp", "Serve an editor that documents are written in.", setUpPolicyLsp},
};

constexpr CommandRow kStoreCommands[] = {
    {"list", "List the policies of a store, in the store's order.", setUpStoreList},
    {"show", "Show a policy of a store, or all of them, in words.", setUpStoreShow},
    {"load", "Add the policies of a policy binary to a store.", setUpStoreLoad},
    {"save", "Save the policies of a store in a policy binary.", setUpStoreSave},
    {"reset", "Remove every policy of a store.", setUpStoreReset},
    {"verify", "Tell whether a store holds what a file says.", setUpStoreVerify},
    {"apply", "Bring a store to what a file says, with the fewest requests.", setUpStoreApply},
};

constexpr CommandRow kCatalogueCommands[] = {
    {"conditions", "List the condition types that policies may have.", setUpCatalogueConditions},
    {"actions", "List the action types that policies may have.", setUpCatalogueActions},
};

constexpr CommandRow kTelemetryCommands[] = {
    {"keys", "List the keys of a telemetry log, in the library's order.", setUpTelemetryKeys},
    {"show", "Show what a telemetry log holds, once.", setUpTelemetryShow},
    {"watch", "Keep showing keys of a telemetry log, until Ctrl-C.", setUpTelemetryWatch},
};

constexpr GroupRow kGroups[] = {
    {"policy", "Write, check and compare policies in words; no driver is needed.", kPolicyCommands},
    {"binary", "Work with policy binary files.", kBinaryCommands},
    {"store", "Work with the driver's policy stores: pb, asm and balance-profile.", kStoreCommands},
    {"catalogue", "Look up what policies are made of.", kCatalogueCommands},
    {"telemetry", "Look into the driver's telemetry logs.", kTelemetryCommands},
};

constexpr CommandRow kCommands[] = {
    {"features", "Show which of the driver's features are supported and active.", setUpFeatures},
    {"sensors", "Show the status and the data words of the four sensors.", setUpSensors},
    {"battery", "Show the battery's charge, temperature and limits.", setUpBattery},
    {"io", "Show application inputs and outputs, taskbar icon and debug output.", setUpIo},
    {"override", "List the driver's inputs that can be set by hand, set or clear one.", setUpOverride},
    {"version", "Show the versions of this tool, the library and the driver.", setUpVersion},
};
// clang-format on

/// A command, or a group of commands, with what all have in common.
CLI::App& add(CLI::App& parent, const char* name, const char* description) {
  // Options of the whole program may stand behind the command too.
  return *parent.add_subcommand(name, description)->fallthrough();
}

void addCommands(CLI::App& parent, Context& context, std::span<const CommandRow> rows, const Selection& isWanted) {
  for (const auto& row : rows)
    if (isWanted(row.name)) row.setUp(add(parent, row.name, row.description), context);
}

void addGroups(CLI::App& program, Context& context, const Selection& isWanted) {
  for (const auto& row : kGroups)
    if (isWanted(row.name))
      addCommands(*add(program, row.name, row.description).require_subcommand(1), context, row.commands, isWanted);
}

/// The innermost command that was understood.
const CLI::App& innermost(const CLI::App& program) {
  const CLI::App* command = &program;
  while (!command->get_subcommands().empty()) command = command->get_subcommands().back();
  return *command;
}

std::string commandLineOf(const CLI::App& command) {
  const std::string& name = command.get_name();
  return command.get_parent() != nullptr ? commandLineOf(*command.get_parent()) + ' ' + name : name;
}

std::vector<std::string> subcommandNames(const CLI::App& command) {
  std::vector<std::string> names;
  for (const auto* subcommand : command.get_subcommands([](const CLI::App*) { return true; }))
    names.push_back(subcommand->get_name());
  return names;
}

std::string describeMissingCommand(const CLI::App& program, const CLI::App& command) {
  const auto rest = program.remaining(true);
  const auto names = subcommandNames(command);
  if (rest.empty()) return fmt::format("a command is missing, one of {}", fmt::join(names, ", "));
  return fmt::format("{} is not a command{}", inQuotes(rest.front()), didYouMean(rest.front(), names));
}

/// "--version: 1 required A.B missing" is all that there is to go by.
std::string describeMismatch(const CLI::ParseError& error) {
  const std::string_view message = error.what();
  return fmt::format("{} needs a value", message.substr(0, message.find(':')));
}

std::string describeProblem(const CLI::App& program, const CLI::App& command, const CLI::ParseError& error) {
  const bool lacksCommand = !subcommandNames(command).empty();
  if (lacksCommand && dynamic_cast<const CLI::RequiredError*>(&error) != nullptr)
    return describeMissingCommand(program, command);
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr)
    return fmt::format("{} is not expected", inQuotes(program.remaining(true).front()));
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) return describeMismatch(error);
  return error.what();
}

std::string describeExitCodes() {
  std::string text = "Exit codes:\n";
  for (const auto& row : kExitCodes) text += fmt::format("  {}  {}\n", static_cast<int>(row.code), row.meaning);
  return text;
}

void addDriverOptions(CLI::App& program, Context& context) {
  program.add_flag("--simulated", context.isDriverSimulated,
                   "Use the driver that is simulated in the tool's process; elsewhere than on Windows it always is");
  program.add_option("--driver-state", context.driverState, "The simulated driver's state file")->type_name("FILE");
}

}  // namespace

void buildProgram(CLI::App& program, Context& context, const Selection& isWanted) {
  program.require_subcommand(1);
  // The default of Windows would take a path from the root for an option.
  program.allow_windows_style_options(false);
  program.set_help_flag("-h,--help", "Print this help");
  program.set_version_flag(kVersionOption, kVersionText);
  addDriverOptions(program, context);
  program.footer("STORE is pb (Policy Builder), asm or balance-profile.\n\n" + describeExitCodes() +
                 "\nExamples:\n"
                 "  vqs policy new -o quiet.json\n"
                 "  vqs policy check quiet.json\n"
                 "  vqs binary show laptop-r5.bin\n"
                 "  vqs store load asm laptop-r5.bin\n"
                 "  vqs store list asm\n"
                 "  vqs store save asm copy.bin\n"
                 "  vqs catalogue conditions battery\n"
                 "  vqs telemetry watch PowerSource BatteryChargeLevel\n"
                 "  vqs override PowerSource 1\n\n"
                 "\"vqs COMMAND --help\" tells more about a command.");
  addGroups(program, context, isWanted);
  addCommands(program, context, kCommands, isWanted);
}

std::string describeUsage(const CLI::App& program, const CLI::ParseError& error) {
  const auto& command = innermost(program);
  return fmt::format("{} (see \"{} --help\")", describeProblem(program, command, error), commandLineOf(command));
}

}  // namespace tool
