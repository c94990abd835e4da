// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace setup {

/// Why Windows does not start a device, by the numbers of its Device Manager; what to do, where something can be done.
/// "code 99, which this program does not know" for a number that is not documented.
std::string describeProblem(std::uint32_t code);

/// What to do about an error of an installation, to be put behind its text; empty where nobody knows.
std::string adviceOn(std::uint32_t error);

}  // namespace setup
