// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include <vqs/telemetry.h>

/// What a key/value log's handle points to.
struct QtfLogKV {
  /// address of the log area in this process
  std::uint64_t area;
};
static_assert(sizeof(QtfLogKV) == 8);

/// What an iterator's pointer points to.
struct QtfLogKVIter {
  /// the current record, in the log area
  const std::uint8_t* cursor;
};
static_assert(sizeof(QtfLogKVIter) == 8);
