// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "tool/context.h"
#include "tool/driver/key_table.h"

namespace tool {

/// The STORE argument.
CLI::Option* addStoreArgument(CLI::App& command, std::string& store);

/// The --ex flag of telemetry commands.
CLI::Option* addExFlag(CLI::App& command, LogGeneration& generation);

/// The --output option of a command whose output programs read.
CLI::Option* addOutputOption(CLI::App& command, Context& context);

// What each command has beside its name: one function a command, each in the file of its name.
void setUpBattery(CLI::App& command, Context& context);
void setUpBinaryShow(CLI::App& command, Context& context);
void setUpCatalogueActions(CLI::App& command, Context& context);
void setUpCatalogueConditions(CLI::App& command, Context& context);
void setUpFeatures(CLI::App& command, Context& context);
void setUpIo(CLI::App& command, Context& context);
void setUpOverride(CLI::App& command, Context& context);
void setUpSensors(CLI::App& command, Context& context);
void setUpStoreList(CLI::App& command, Context& context);
void setUpStoreLoad(CLI::App& command, Context& context);
void setUpStoreReset(CLI::App& command, Context& context);
void setUpStoreSave(CLI::App& command, Context& context);
void setUpTelemetryKeys(CLI::App& command, Context& context);
void setUpTelemetryShow(CLI::App& command, Context& context);
void setUpTelemetryWatch(CLI::App& command, Context& context);
void setUpVersion(CLI::App& command, Context& context);

}  // namespace tool
