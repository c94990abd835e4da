// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vqs {

/// Raises the C runtime's invalid-parameter condition for the handler that the program, or its thread, has installed.
/// Nothing happens in a program without one, where the runtime would end the process: its users did nothing wrong.
void raiseInvalidParameter();

}  // namespace vqs
