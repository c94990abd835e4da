// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace setup {

/// Throws a Failure that says what to do when this program may not change drivers.
void requireAdministrator();

}  // namespace setup
