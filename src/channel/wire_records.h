// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

// Records of the wire that more than one family sends.

namespace vqs {

enum AppIoOperation : std::uint32_t {
  kAppIoGetOutput = 0,
  kAppIoSetInputA = 1,
  kAppIoSetInputB = 2,
  kAppIoOpen = 3,
  kAppIoSetInputs = 4
};

/// Application inputs and outputs, and the announcement of a new session.
struct AppIoRecord {
  std::uint32_t operation;
  std::uint32_t valueA;
  std::uint32_t valueB;
};
static_assert(sizeof(AppIoRecord) == 12);
static_assert(offsetof(AppIoRecord, operation) == 0);
static_assert(offsetof(AppIoRecord, valueA) == 4);
static_assert(offsetof(AppIoRecord, valueB) == 8);

enum LogOperation : std::uint32_t {
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
struct LogRequest {
  std::uint32_t LogId;
  std::uint32_t Operation;
  std::uint64_t Address;
  std::uint64_t reserved0;
  std::uint32_t Value;
  std::uint32_t reserved1;
};
static_assert(sizeof(LogRequest) == 32);
static_assert(offsetof(LogRequest, LogId) == 0);
static_assert(offsetof(LogRequest, Operation) == 4);
static_assert(offsetof(LogRequest, Address) == 8);
static_assert(offsetof(LogRequest, Value) == 24);

enum PollingOperation : std::uint16_t { kPollingStart = 0, kPollingStop = 1 };

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
