// SPDX-License-Identifier: Apache-2.0
#include <vqs/telemetry.h>
#include "bench/families.h"
#include "bench/harness/quiet_device.h"
#include "simulator/embedded/embedded_driver.h"

namespace bench {
namespace {

/// The simulated driver, without a state file.
class Simulator {
 public:
  Simulator() { require(driver_.attach(), "the simulated driver"); }

 private:
  static simulator::Reason configure(void* /*context*/, simulator::Configuration& configuration) {
    configuration.stateFile[0] = '\0';
    configuration.options[0] = '\0';
    return {};
  }

  simulator::EmbeddedDriver driver_{&configure};
};

/// A running key/value log with an iterator.
class Log {
 public:
  Log() {
    require(vqsStartQTFLogKV(session_.get(), &log_) == VQS_SUCCESS, "a log");
    require(vqsCreateQTFLogKVIter(log_, &iterator_) == VQS_SUCCESS, "an iterator");
  }
  ~Log() {
    vqsDestroyQTFLogKVIter(iterator_);
    vqsStopQTFLogKV(session_.get(), log_);
  }
  Log(Log&&) = delete;

  /// As clients do it; how many records there were.
  std::size_t walk() {
    std::size_t records = 0;
    std::uint8_t isDone = 0;
    vqsResetQTFLogKVIter(log_, iterator_);
    while (vqsDoneQTFLogKVIter(iterator_, &isDone) == VQS_SUCCESS && isDone == 0) {
      std::uint32_t key = 0;
      std::uint64_t address = 0;
      vqsGetQTFLogKVIterData(iterator_, &key, &address);
      keep(&address);
      vqsNextQTFLogKVIter(iterator_);
      ++records;
    }
    return records;
  }

 private:
  Session session_;
  QtfLogKV* log_ = nullptr;
  QtfLogKVIter* iterator_ = nullptr;
};

}  // namespace

void measureTelemetry(Report& report) {
  const Simulator simulator;
  Log log;
  const std::size_t records = log.walk();
  require(records > 100, "records of telemetry");
  const auto walk = [&] { log.walk(); };
  const double nanoseconds = compare(walk, walk).first;
  report.add(Item::kTelemetryWalk, nanoseconds / static_cast<double>(records), std::to_string(records) + " records");
}

}  // namespace bench
