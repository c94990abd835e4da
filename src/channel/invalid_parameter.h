// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vqs {

/// Raises the C runtime's invalid-parameter condition for the handler that the program, or its thread, has installed.
/// In a program without a handler nothing happens, although the runtime would end the process: a notification is no
/// reason for a program to end (compatibility.md: no-handler-goes-on).
void raiseInvalidParameter();

}  // namespace vqs
