// SPDX-License-Identifier: Apache-2.0
#include "support/faults.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <utility>

extern "C" {
void* __real_calloc(std::size_t, std::size_t);
void* __real_malloc(std::size_t);
void __real_free(void*);
std::FILE* __real_fopen(const char*, const char*);
int __real_fclose(std::FILE*);
int __real_fseek(std::FILE*, long, int);
long __real_ftell(std::FILE*);
std::size_t __real_fread(void*, std::size_t, std::size_t, std::FILE*);
std::size_t __real_fwrite(const void*, std::size_t, std::size_t, std::FILE*);
}

namespace {

struct Watch {
  int calls = 0;
  int failFirst = 0;
  int failLast = 0;
};

struct State {
  bool active = false;
  std::array<Watch, 6> watches{};
  std::map<void*, std::size_t> allocations;
  unsigned long long bytes = 0;
  unsigned long long peak = 0;
  int streams = 0;
  test::Fault actionBefore{};
  int actionAt = 0;
  std::function<void()> action;
};

State state;

void runAction() {
  state.active = false;
  std::exchange(state.action, nullptr)();
  state.active = true;
}

/// Counts a call; true when it is to fail.
bool strikes(test::Fault what) {
  if (!state.active) return false;
  auto& watch = state.watches[static_cast<std::size_t>(what)];
  ++watch.calls;
  if (state.action && state.actionBefore == what && watch.calls == state.actionAt) runAction();
  return watch.calls >= watch.failFirst && watch.calls <= watch.failLast;
}

void* remember(void* memory, std::size_t size) {
  if (!state.active || memory == nullptr) return memory;
  state.active = false;
  state.allocations.emplace(memory, size);
  state.active = true;
  state.bytes += size;
  state.peak = state.bytes > state.peak ? state.bytes : state.peak;
  return memory;
}

void forget(void* memory) {
  const auto found = state.allocations.find(memory);
  if (found == state.allocations.end()) return;
  state.bytes -= found->second;
  state.allocations.erase(found);
}

}  // namespace

extern "C" {

void* __wrap_calloc(std::size_t count, std::size_t size) {
  if (strikes(test::Fault::kAllocation)) return nullptr;
  return remember(__real_calloc(count, size), count * size);
}

void* __wrap_malloc(std::size_t size) {
  if (strikes(test::Fault::kAllocation)) return nullptr;
  return remember(__real_malloc(size), size);
}

void __wrap_free(void* memory) {
  forget(memory);
  __real_free(memory);
}

std::FILE* __wrap_fopen(const char* path, const char* mode) {
  if (strikes(test::Fault::kOpen)) return nullptr;
  std::FILE* stream = __real_fopen(path, mode);
  if (state.active && stream != nullptr) ++state.streams;
  return stream;
}

int __wrap_fclose(std::FILE* stream) {
  if (state.active) --state.streams;
  return __real_fclose(stream);
}

int __wrap_fseek(std::FILE* stream, long offset, int origin) {
  return strikes(test::Fault::kSeek) ? -1 : __real_fseek(stream, offset, origin);
}

long __wrap_ftell(std::FILE* stream) { return strikes(test::Fault::kTell) ? -1 : __real_ftell(stream); }

std::size_t __wrap_fread(void* buffer, std::size_t size, std::size_t count, std::FILE* stream) {
  return strikes(test::Fault::kRead) ? 0 : __real_fread(buffer, size, count, stream);
}

std::size_t __wrap_fwrite(const void* buffer, std::size_t size, std::size_t count, std::FILE* stream) {
  return strikes(test::Fault::kWrite) ? 0 : __real_fwrite(buffer, size, count, stream);
}
}

namespace test {

Faults::Faults() {
  state = State{};
  state.active = true;
}

Faults::~Faults() { state = State{}; }

void Faults::fail(Fault what, int nth) {
  auto& watch = state.watches[static_cast<std::size_t>(what)];
  watch.failFirst = watch.failLast = watch.calls + nth;
}

void Faults::failFrom(Fault what, int nth) {
  fail(what, nth);
  state.watches[static_cast<std::size_t>(what)].failLast = 1 << 30;
}

void Faults::before(Fault what, int nth, std::function<void()> action) {
  state.actionBefore = what;
  state.actionAt = calls(what) + nth;
  state.action = std::move(action);
}

int Faults::calls(Fault what) const { return state.watches[static_cast<std::size_t>(what)].calls; }

int Faults::outstanding() const { return static_cast<int>(state.allocations.size()); }

int Faults::openStreams() const { return state.streams; }

unsigned long long Faults::peakBytes() const { return state.peak; }

}  // namespace test
