// SPDX-License-Identifier: Apache-2.0
#include "tool/driver/telemetry_log.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "tool/terminal/errors.h"

namespace tool {

struct LogCalls {
  vqsStatus(VQS_CALL* start)(QtfSession* session, QtfLogKV** log);
  vqsStatus (*stop)(QtfSession* session, QtfLogKV* log);
  decltype(&vqsCreateQTFLogKVIter) create;
  decltype(&vqsDestroyQTFLogKVIter) destroy;
  decltype(&vqsResetQTFLogKVIter) reset;
  decltype(&vqsNextQTFLogKVIter) next;
  decltype(&vqsDoneQTFLogKVIter) isDone;
  decltype(&vqsGetQTFLogKVIterData) data;
};

namespace {

vqsStatus stopPlainLog(QtfSession* session, QtfLogKV* log) { return vqsStopQTFLogKV(session, log); }
vqsStatus stopExLog(QtfSession* session, QtfLogKV* /*log*/) { return vqsExStopQTFLogExKV(session); }

const LogCalls kPlainLogCalls = {.start = vqsStartQTFLogKV,
                                 .stop = stopPlainLog,
                                 .create = vqsCreateQTFLogKVIter,
                                 .destroy = vqsDestroyQTFLogKVIter,
                                 .reset = vqsResetQTFLogKVIter,
                                 .next = vqsNextQTFLogKVIter,
                                 .isDone = vqsDoneQTFLogKVIter,
                                 .data = vqsGetQTFLogKVIterData};
const LogCalls kExLogCalls = {.start = vqsExStartQTFLogExKV,
                              .stop = stopExLog,
                              .create = vqsExCreateQTFLogExKVIter,
                              .destroy = vqsExDestroyQTFLogExKVIter,
                              .reset = vqsExResetQTFLogExKVIter,
                              .next = vqsExNextQTFLogExKVIter,
                              .isDone = vqsExDoneQTFLogExKVIter,
                              .data = vqsExGetQTFLogExKVIterData};

const LogCalls& callsOf(LogGeneration generation) {
  return generation == LogGeneration::ex ? kExLogCalls : kPlainLogCalls;
}

std::string describeKey(const vqs::KeyRow& key) { return fmt::format("{} ({})", key.name, key.id); }

/// A walk stops after as many records as there are keys. The log area is at least that long, but the iterator does not
/// know where it ends and would go on behind it.
class LogWalk {
 public:
  LogWalk(const LogCalls& calls, const KeyTable& table, QtfLogKVIter* iterator)
      : calls_{calls}, table_{table}, iterator_{iterator} {}

  Reading run() && {
    while (reading_.fault.empty() && !isAtEnd()) takeRecord();
    return std::move(reading_);
  }

 private:
  [[nodiscard]] bool isAtEnd() const {
    std::uint8_t done = 0;
    return calls_.isDone(iterator_, &done) == VQS_SUCCESS && done != 0;
  }

  void takeRecord() {
    std::uint32_t id = 0;
    std::uint64_t address = 0;
    if (calls_.data(iterator_, &id, &address) != VQS_SUCCESS) {
      reading_.fault = describePlace() + " has an unknown key id";
    } else if (reading_.values.size() == table_.keys().size()) {
      reading_.fault = fmt::format("it does not end behind all of its {} keys", table_.keys().size());
    } else if (reading_.find(id) != nullptr) {
      reading_.fault = fmt::format("key {} is in it more than once", describeKey(table_.withId(id)));
    } else {
      reading_.values.emplace_back(table_.withId(id), address);
      require(calls_.next(iterator_), "a record of the driver's log cannot be passed");
    }
  }

  [[nodiscard]] std::string describePlace() const {
    if (reading_.values.empty()) return "its first record";
    return fmt::format("the record behind key {}", describeKey(reading_.values.back().key()));
  }

  const LogCalls& calls_;
  const KeyTable& table_;
  QtfLogKVIter* iterator_;
  Reading reading_;
};

}  // namespace

const KeyValue* Reading::find(std::uint32_t key) const {
  const auto found = std::ranges::find_if(values, [&](const auto& value) { return value.key().id == key; });
  return found != values.end() ? &*found : nullptr;
}

std::int64_t Reading::number(const vqs::KeyRow& key) const {
  const auto* value = find(key.id);
  if (value != nullptr) return value->number();
  requireWhole();
  throw Failure{fmt::format("the driver's log does not hold key {}", describeKey(key))};
}

void Reading::requireWhole() const {
  if (!fault.empty()) throw Failure{"the driver's log cannot be read to its end: " + fault};
}

void TelemetryLog::Stopper::operator()(QtfLogKV* log) const { static_cast<void>(calls->stop(session, log)); }

void TelemetryLog::Destroyer::operator()(QtfLogKVIter* iterator) const { static_cast<void>(calls->destroy(iterator)); }

TelemetryLog::TelemetryLog(const Session& session, LogGeneration generation, const KeyTable& table)
    : calls_{callsOf(generation)},
      table_{table},
      log_{nullptr, Stopper{.calls = &calls_, .session = session.get()}},
      iterator_{nullptr, Destroyer{.calls = &calls_}} {
  QtfLogKV* log = nullptr;
  require(calls_.start(session.get(), &log), "the driver's log cannot be started");
  log_.reset(log);
  QtfLogKVIter* iterator = nullptr;
  require(calls_.create(log, &iterator), "the driver's log cannot be walked");
  iterator_.reset(iterator);
}

Reading TelemetryLog::read() const {
  require(calls_.reset(log_.get(), iterator_.get()), "the driver's log cannot be walked again");
  return LogWalk{calls_, table_, iterator_.get()}.run();
}

}  // namespace tool
