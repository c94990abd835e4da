// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "format/binary/layout.h"
#include "tool/driver/driver_session.h"
#include "tool/driver/stores.h"

namespace tool {

/// The version that the driver keeps of a store that is not empty; nothing for the stores that it keeps none of. Throws
/// a Failure when it cannot be had.
std::optional<vqs::BinaryVersions> readStoreVersion(const Session& session, const Store& store);

}  // namespace tool
