// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include <vqs/features_records.h>
#include "src/channel/request.h"
#include "src/channel/session_record.h"

namespace vqs {

/// A piece of a table: its offsets in the request record and in the caller's structure, and its bytes.
struct FieldPlace {
  std::size_t record;
  std::size_t caller;
  std::size_t size;
};

/// Operations that do not exist are turned into this one.
inline constexpr std::uint32_t kTableUnsupported = 5;

constexpr std::uint32_t foldTableOperation(std::int32_t operation) {
  return operation >= 0 && operation < static_cast<std::int32_t>(kTableUnsupported)
             ? static_cast<std::uint32_t>(operation)
             : kTableUnsupported;
}

/// The checks that the tables share: VQS_SUCCESS, or the result of the call.
inline vqsStatus checkTableCall(const QtfSession* session, std::int32_t operation, const void* table) {
  if (!isOpen(session) || table == nullptr) return VQS_INVALID_PARAMETER;
  if (operation >= static_cast<std::int32_t>(kTableUnsupported)) return VQS_INVALID_PARAMETER;
  return foldTableOperation(operation) == kTableUnsupported ? VQS_NOT_SUPPORTED : VQS_SUCCESS;
}

inline void copyToRecord(std::span<const FieldPlace> places, void* record, const void* table) {
  for (const auto& place : places)
    std::memcpy(static_cast<std::byte*>(record) + place.record, static_cast<const std::byte*>(table) + place.caller,
                place.size);
}

inline void copyToTable(std::span<const FieldPlace> places, void* table, const void* record) {
  for (const auto& place : places)
    std::memcpy(static_cast<std::byte*>(table) + place.caller, static_cast<const std::byte*>(record) + place.record,
                place.size);
}

/// Carries out the record's operation: a set sends the caller's table, a read copies the answer to it.
template <WireRecord Record>
vqsStatus exchangeTable(HANDLE handle, std::uint32_t code, Record& record, std::span<const FieldPlace> places,
                        void* table) {
  const bool set = record.operation == VQS_TABLE_SET;
  if (set) copyToRecord(places, &record, table);
  if (sendSame(handle, code, record) != VQS_SUCCESS) return VQS_REQUEST_FAILED;
  if (!set) copyToTable(places, table, &record);
  return VQS_SUCCESS;
}

/// The body of a table export: checks its arguments, fills a record and sends it.
template <WireRecord Record>
vqsStatus controlTable(QtfSession* session, std::int32_t operation, std::uint32_t code,
                       std::span<const FieldPlace> places, void* table) {
  const vqsStatus checked = checkTableCall(session, operation, table);
  if (checked != VQS_SUCCESS) return checked;
  Record record{};
  record.operation = foldTableOperation(operation);
  return exchangeTable(session->handle, code, record, places, table);
}

}  // namespace vqs
