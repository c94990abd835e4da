// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

// The records of the wire that opening and closing a session sends; their families use them too.

namespace vqs {

enum : std::uint32_t { QTF_IO_OPEN = 3 };

/// Application inputs and outputs, and the announcement of a new session.
struct QtfAppIoRecord {
  std::uint32_t operation;
  std::uint32_t valueA;
  std::uint32_t valueB;
};
static_assert(sizeof(QtfAppIoRecord) == 12);
static_assert(offsetof(QtfAppIoRecord, operation) == 0);
static_assert(offsetof(QtfAppIoRecord, valueA) == 4);
static_assert(offsetof(QtfAppIoRecord, valueB) == 8);

enum : std::uint32_t { kLogStop = 1, kLogStopEx = 3 };

/// Everything about telemetry logs.
struct QtfLogRequest {
  std::uint32_t LogId;
  std::uint32_t Operation;
  std::uint64_t Address;
  std::uint64_t reserved0;
  std::uint32_t Value;
  std::uint32_t reserved1;
};
static_assert(sizeof(QtfLogRequest) == 32);
static_assert(offsetof(QtfLogRequest, LogId) == 0);
static_assert(offsetof(QtfLogRequest, Operation) == 4);
static_assert(offsetof(QtfLogRequest, Address) == 8);
static_assert(offsetof(QtfLogRequest, Value) == 24);

}  // namespace vqs
