// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>

/// The copy of the driver's file that vqsGetDriverVersion finds. The library asks for the file by its name alone, and
/// Windows looks in its system folder then, not where drivers are kept.
namespace setup {

void putSystemCopy(const std::filesystem::path& driver);
void removeSystemCopy();

}  // namespace setup
