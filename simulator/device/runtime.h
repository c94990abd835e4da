// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Code that is needed once, when the driver is loaded; the system takes its memory back then.
#define VQS_LOAD_CODE [[gnu::section("INIT"), gnu::noinline]]

namespace device::runtime {

/// To be called before any function that has the cookie on its stack, and by one that has not.
void chooseStackCookie();

}  // namespace device::runtime
