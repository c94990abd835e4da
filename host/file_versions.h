// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "host/types.h"

namespace host {

/// Publishes the version of a file, as its version resource would. False when there is no room for it: on Windows the
/// names must live on, and there are two at most.
bool setFileVersion(std::string_view name, const VS_FIXEDFILEINFO& version);
void removeFileVersion(std::string_view name);

}  // namespace host
