// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>

/// Puts the simulated driver's device into the system and takes it out again, as a setup program does. All functions
/// throw a Failure with the system's reason.
namespace setup {

struct Installation {
  /// there was no device before
  bool isNew;
  bool needsRestart;
};

/// Creates the device unless there is one, and gives it the driver of the INF file.
Installation install(const std::filesystem::path& inf);

/// Removes the devices and the driver packages that they used. Throws when there is no device.
/// True when Windows has to be restarted first.
bool remove();

enum class State { notInstalled, notRunning, running };

State state();

}  // namespace setup
