// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace simulator {

/// Gives the library's and the driver's file the version of this project, as their version resources would.
void publishFileVersions();
void withdrawFileVersions();

}  // namespace simulator
