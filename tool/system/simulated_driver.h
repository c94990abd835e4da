// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <string>

/// The driver as part of this process, which the library has on POSIX systems, and another library of the same name on
/// Windows: simulated_driver_posix.cpp and simulated_driver_windows.cpp hold the same functions.
namespace tool::platform {

/// Makes the functions of the library ready to be called: on Windows those of the usual one, or of the one that has a
/// simulated driver in it. Throws a NoDriver when it cannot be loaded.
void loadLibrary(bool withSimulatedDriver);

/// True when the driver is part of the library that was loaded.
bool isDriverSimulated();

/// Chooses where the simulated driver keeps its state: the given file, or else one in the user's own directory. Throws
/// a NoDriver when there is no such place, and a UsageError when a file is given and the driver is not simulated.
void useDriverState(const std::optional<std::string>& file);

/// What the simulated driver says on standard error while an action runs: one line, without its end. Empty when the
/// driver is not simulated.
std::string driverMessagesDuring(const std::function<void()>& action);

/// What to do when there is no driver, or to look at when its device cannot be opened and gives no reason.
std::string driverHint();
std::string deviceHint();

}  // namespace tool::platform
