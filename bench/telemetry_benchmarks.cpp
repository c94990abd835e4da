// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include <vqs/vqs.h>

// Against the simulated driver in process. Compare ratios within one run: a walk against a copy of the area that it
// goes through, a request of the library against the smallest one.

namespace {

constexpr std::size_t kRunSize = 6144;

/// A session with a running key/value log.
class Log {
 public:
  explicit Log(benchmark::State& state) {
    if (vqsInitialize(&session_) != VQS_SUCCESS || vqsStartQTFLogKV(session_, &log_) != VQS_SUCCESS ||
        vqsCreateQTFLogKVIter(log_, &iterator_) != VQS_SUCCESS)
      state.SkipWithError("the driver cannot be reached");
  }
  ~Log() {
    vqsDestroyQTFLogKVIter(iterator_);
    vqsStopQTFLogKV(session_, log_);
    vqsUninitialize(session_);
  }
  Log(Log&&) = delete;

  [[nodiscard]] QtfSession* session() const { return session_; }
  [[nodiscard]] QtfLogKVIter* iterator() const { return iterator_; }
  void rewind() const { vqsResetQTFLogKVIter(log_, iterator_); }

 private:
  QtfSession* session_ = nullptr;
  QtfLogKV* log_ = nullptr;
  QtfLogKVIter* iterator_ = nullptr;
};

void copyArea(benchmark::State& state) {
  const Log log{state};
  std::uint32_t key = 0;
  std::uint64_t address = 0;
  vqsGetQTFLogKVIterData(log.iterator(), &key, &address);
  std::vector<char> copy(kRunSize);
  for (auto _ : state) {
    std::memcpy(copy.data(), reinterpret_cast<const char*>(address), copy.size());
    benchmark::DoNotOptimize(copy.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(copyArea);

void walkKeys(benchmark::State& state) {
  const Log log{state};
  std::int64_t keys = 0;
  for (auto _ : state) {
    std::uint8_t done = 0;
    for (log.rewind(); vqsDoneQTFLogKVIter(log.iterator(), &done) == VQS_SUCCESS && done == 0; ++keys) {
      std::uint32_t key = 0;
      std::uint64_t address = 0;
      vqsGetQTFLogKVIterData(log.iterator(), &key, &address);
      benchmark::DoNotOptimize(address);
      vqsNextQTFLogKVIter(log.iterator());
    }
  }
  state.SetItemsProcessed(keys);
}
BENCHMARK(walkKeys);

void smallestRequest(benchmark::State& state) {
  QtfSession* session = nullptr;
  if (vqsInitialize(&session) != VQS_SUCCESS) state.SkipWithError("the driver cannot be reached");
  std::uint32_t value = 0;
  for (auto _ : state) benchmark::DoNotOptimize(vqsGetDebugOutput(session, &value));
  vqsUninitialize(session);
}
BENCHMARK(smallestRequest);

void readConditions(benchmark::State& state) {
  QtfSession* session = nullptr;
  if (vqsInitialize(&session) != VQS_SUCCESS) state.SkipWithError("the driver cannot be reached");
  const QtfConditionInfo* table = nullptr;
  std::uint32_t count = 0;
  for (auto _ : state) benchmark::DoNotOptimize(vqsPbGetConditions(session, &table, &count));
  vqsUninitialize(session);
}
BENCHMARK(readConditions);

/// With a log running, every request brings its area up to date.
void requestBesideALog(benchmark::State& state) {
  const Log log{state};
  std::uint32_t value = 0;
  for (auto _ : state) benchmark::DoNotOptimize(vqsGetDebugOutput(log.session(), &value));
}
BENCHMARK(requestBesideALog);

}  // namespace
