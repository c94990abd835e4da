// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tool/driver/driver_session.h"
#include "tool/driver/key_table.h"
#include "tool/driver/key_value.h"

namespace tool {

/// What one walk over a log found.
struct Reading {
  /// in the log's order
  std::vector<KeyValue> values;
  /// why the walk did not come to the log's end; empty when it did
  std::string fault;

  /// Null when the log does not hold the key.
  [[nodiscard]] const KeyValue* find(std::uint32_t key) const;
  /// The number that a key holds. Throws a Failure when the log does not hold the key.
  [[nodiscard]] std::int64_t number(const vqs::KeyRow& key) const;
  /// Throws a Failure when the log was not read to its end.
  void requireWhole() const;
};

/// The exports of one generation.
struct LogCalls;

/// A running key/value log; stopped with its scope.
class TelemetryLog {
 public:
  /// The table has to outlive the log. Throws a Failure when the driver does not start it.
  TelemetryLog(const Session& session, LogGeneration generation, const KeyTable& table);

  /// What the log holds now. The driver keeps refreshing it.
  [[nodiscard]] Reading read() const;

 private:
  struct Stopper {
    const LogCalls* calls;
    QtfSession* session;
    void operator()(QtfLogKV* log) const;
  };
  struct Destroyer {
    const LogCalls* calls;
    void operator()(QtfLogKVIter* iterator) const;
  };

  const LogCalls& calls_;
  const KeyTable& table_;
  std::unique_ptr<QtfLogKV, Stopper> log_;
  std::unique_ptr<QtfLogKVIter, Destroyer> iterator_;
};

}  // namespace tool
