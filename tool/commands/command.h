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

/// An option that takes one of some words.
CLI::Option* addChoice(CLI::App& command, const char* name, std::string& value, const std::vector<std::string>& choices,
                       const char* description);

/// The options of commands that check documents, and what the first of them says.
void addReadOptions(CLI::App& command, std::string& structureVersion, bool& allowUnknown);
std::uint32_t structureVersionOf(const std::string& word);

// What each command has beside its name: one function a command, each in the file of its name.
void setUpBattery(CLI::App& command, Context& context);
void setUpBinaryShow(CLI::App& command, Context& context);
void setUpCatalogueActions(CLI::App& command, Context& context);
void setUpCatalogueConditions(CLI::App& command, Context& context);
void setUpFeatures(CLI::App& command, Context& context);
void setUpIo(CLI::App& command, Context& context);
void setUpOverride(CLI::App& command, Context& context);
void setUpPolicyCheck(CLI::App& command, Context& context);
void setUpPolicyCompile(CLI::App& command, Context& context);
void setUpPolicyDecompile(CLI::App& command, Context& context);
void setUpPolicyDiff(CLI::App& command, Context& context);
void setUpPolicyExplain(CLI::App& command, Context& context);
void setUpPolicyFmt(CLI::App& command, Context& context);
void setUpPolicyLsp(CLI::App& command, Context& context);
void setUpPolicyNew(CLI::App& command, Context& context);
void setUpPolicySchema(CLI::App& command, Context& context);
void setUpPolicyShow(CLI::App& command, Context& context);
void setUpSensors(CLI::App& command, Context& context);
void setUpStoreApply(CLI::App& command, Context& context);
void setUpStoreList(CLI::App& command, Context& context);
void setUpStoreLoad(CLI::App& command, Context& context);
void setUpStoreReset(CLI::App& command, Context& context);
void setUpStoreSave(CLI::App& command, Context& context);
void setUpStoreShow(CLI::App& command, Context& context);
void setUpStoreVerify(CLI::App& command, Context& context);
void setUpTelemetryKeys(CLI::App& command, Context& context);
void setUpTelemetryShow(CLI::App& command, Context& context);
void setUpTelemetryWatch(CLI::App& command, Context& context);
void setUpVersion(CLI::App& command, Context& context);

}  // namespace tool
