// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// The driver packages that Windows keeps, under the names that it has given their INF files, such as "oem3.inf".
namespace setup {

/// Those of the simulated driver, whether or not a device uses them.
std::vector<std::wstring> ourPackages();

/// Removes a package that no device uses. False when one still does, as while a restart is due; throws a Failure when
/// it cannot be removed for another reason.
bool removePackage(const std::wstring& name);

}  // namespace setup
