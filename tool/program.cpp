// SPDX-License-Identifier: Apache-2.0
#include "tool/program.h"

#include <fmt/format.h>

#include "tool/commands/command.h"
#include "tool/terminal/nearest.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

CLI::App& addGroup(CLI::App& program, const std::string& name, const std::string& description) {
  auto& group = addCommand(program, name, description);
  group.require_subcommand(1);
  return group;
}

void addBinaryCommands(CLI::App& program, Context& context) {
  auto& group = addGroup(program, "binary", "Work with policy binary files.");
  addBinaryShow(group, context);
}

void addStoreCommands(CLI::App& program, Context& context) {
  auto& group = addGroup(program, "store", "Work with the driver's policy stores: pb, asm and balance-profile.");
  addStoreList(group, context);
  addStoreLoad(group, context);
  addStoreSave(group, context);
  addStoreReset(group, context);
}

void addCatalogueCommands(CLI::App& program, Context& context) {
  auto& group = addGroup(program, "catalogue", "Look up what policies are made of.");
  addCatalogueConditions(group, context);
  addCatalogueActions(group, context);
}

void addTelemetryCommands(CLI::App& program, Context& context) {
  auto& group = addGroup(program, "telemetry", "Look into the driver's telemetry logs.");
  addTelemetryKeys(group, context);
  addTelemetryShow(group, context);
  addTelemetryWatch(group, context);
}

void addPlatformCommands(CLI::App& program, Context& context) {
  addFeatures(program, context);
  addSensors(program, context);
  addBattery(program, context);
  addIo(program, context);
  addOverride(program, context);
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

void addDriverOptions(CLI::App& program, Context& context) {
  program.add_flag("--simulated", context.isDriverSimulated,
                   "Use the driver that is simulated in the tool's process; elsewhere than on Windows it always is");
  program.add_option("--driver-state", context.driverState, "The simulated driver's state file")->type_name("FILE");
}

}  // namespace

void buildProgram(CLI::App& program, Context& context) {
  program.require_subcommand(1);
  // The default of Windows would take a path from the root for an option.
  program.allow_windows_style_options(false);
  program.set_help_flag("-h,--help", "Print this help");
  program.set_version_flag("--version", "vqs " VQS_TOOL_VERSION);
  addDriverOptions(program, context);
  program.footer(
      "STORE is pb (Policy Builder), asm or balance-profile.\n"
      "Exit codes: 0 done, 1 the operation failed, 2 the command line is wrong.\n\n"
      "Examples:\n"
      "  vqs binary show laptop-r5.bin\n"
      "  vqs store load asm laptop-r5.bin\n"
      "  vqs store list asm\n"
      "  vqs store save asm copy.bin\n"
      "  vqs catalogue conditions battery\n"
      "  vqs telemetry watch PowerSource BatteryChargeLevel\n"
      "  vqs override PowerSource 1\n\n"
      "\"vqs COMMAND --help\" tells more about a command.");
  addBinaryCommands(program, context);
  addStoreCommands(program, context);
  addCatalogueCommands(program, context);
  addTelemetryCommands(program, context);
  addPlatformCommands(program, context);
  addVersion(program, context);
}

std::string describeUsage(const CLI::App& program, const CLI::ParseError& error) {
  const auto& command = innermost(program);
  return fmt::format("{} (see \"{} --help\")", describeProblem(program, command, error), commandLineOf(command));
}

}  // namespace tool
