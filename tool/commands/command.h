// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "tool/context.h"
#include "tool/driver/key_table.h"

namespace tool {

/// A command, or a group of commands, with what all have in common.
inline CLI::App& addCommand(CLI::App& parent, const std::string& name, const std::string& description) {
  // Options of the whole program may stand behind the command too.
  return *parent.add_subcommand(name, description)->fallthrough();
}

/// The STORE argument.
CLI::Option* addStoreArgument(CLI::App& command, std::string& store);

/// The --ex flag of telemetry commands.
CLI::Option* addExFlag(CLI::App& command, LogGeneration& generation);

/// The --output option of a command whose output programs read.
CLI::Option* addOutputOption(CLI::App& command, Context& context);

// One function a command, each in the file of its name.
void addBattery(CLI::App& parent, Context& context);
void addBinaryShow(CLI::App& group, Context& context);
void addCatalogueActions(CLI::App& group, Context& context);
void addCatalogueConditions(CLI::App& group, Context& context);
void addFeatures(CLI::App& parent, Context& context);
void addIo(CLI::App& parent, Context& context);
void addOverride(CLI::App& parent, Context& context);
void addSensors(CLI::App& parent, Context& context);
void addStoreList(CLI::App& group, Context& context);
void addStoreLoad(CLI::App& group, Context& context);
void addStoreReset(CLI::App& group, Context& context);
void addStoreSave(CLI::App& group, Context& context);
void addTelemetryKeys(CLI::App& group, Context& context);
void addTelemetryShow(CLI::App& group, Context& context);
void addTelemetryWatch(CLI::App& group, Context& context);
void addVersion(CLI::App& parent, Context& context);

}  // namespace tool
