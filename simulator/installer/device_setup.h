// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
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

/// Creates the device unless there is one, and gives it the driver of the INF file. Packages of earlier drivers are
/// removed.
Installation install(const std::filesystem::path& inf);

struct Removal {
  bool needsRestart;
  /// A package is still in use: it can be removed after the restart.
  bool isPackageLeft;
};

/// Removes the devices, and then all packages of the driver. Throws when there is neither.
Removal remove();

enum class State { kNotInstalled, kNotRunning, kRunning };

struct Device {
  State state;
  /// Of a device that is not running: the number and the reason that Windows has for it, or 0.
  std::uint32_t problem;
  std::uint32_t problemStatus;
};

Device lookAtDevice();

}  // namespace setup
