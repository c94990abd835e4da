// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

// Records of the wire that more than one family sends.

namespace vqs {

enum : std::uint32_t {
  QTF_IO_GET_OUTPUT = 0,
  QTF_IO_SET_INPUT_A = 1,
  QTF_IO_SET_INPUT_B = 2,
  QTF_IO_OPEN = 3,
  QTF_IO_SET_INPUTS = 4
};

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

enum : std::uint32_t {
  kLogStart = 0,
  kLogStop = 1,
  kLogStartEx = 2,
  kLogStopEx = 3,
  kLogGetVersion = 4,
  kLogGetVersionEx = 5,
  kLogForceUpdate = 6,
  kLogStartKV = 7,
  kLogStopKV = 8,
  kLogStartExKV = 10,
  kLogStopExKV = 11,
  kLogGetInterfaceVersion = 13
};

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

enum : std::uint16_t { kPollingStart = 0, kPollingStop = 1 };

/// Polling, and the filling of the log for clients without a session.
struct PollingRecord {
  std::uint16_t operation;
  std::uint8_t client;
  std::uint8_t reserved0;
  std::uint32_t value;
  std::uint8_t reserved1[16];
};
static_assert(sizeof(PollingRecord) == 24);
static_assert(offsetof(PollingRecord, client) == 2);
static_assert(offsetof(PollingRecord, value) == 4);

}  // namespace vqs
