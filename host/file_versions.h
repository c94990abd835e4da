// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string_view>

#include "host/types.h"

namespace host {

/// Publishes the version of a file, as its version resource would. False when there is no room for it, or for the name.
bool setFileVersion(std::string_view name, const VS_FIXEDFILEINFO& version);
void removeFileVersion(std::string_view name);
/// The published version of a file, if there is one.
std::optional<VS_FIXEDFILEINFO> fileVersion(std::string_view name);

}  // namespace host
