// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

#include "format/binary/layout.h"
#include "tool/driver/driver_session.h"
#include "tool/driver/stores.h"

namespace tool {

/// What a file holds that was written.
struct SavedStore {
  std::size_t count;
  vqs::BinaryVersions versions;
};

/// Writes a store's policies into a file, as a policy binary or as registry text that holds one, and reads it back. An
/// existing file is replaced, whole or not at all. The versions 0.0 stand for those that the driver keeps, if it keeps
/// any of the store. Throws a Failure when the store is empty, or the file cannot be had.
SavedStore saveStore(const Session& session, const Store& store, vqs::BinaryVersions versions,
                     const std::string& target, bool asRegistryText);

}  // namespace tool
