// SPDX-License-Identifier: Apache-2.0
#include "tests/support/faults.h"

#include <pthread.h>
#include <sys/mman.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <new>
#include <utility>

extern "C" {
void* __real_calloc(std::size_t, std::size_t);
void* __real_malloc(std::size_t);
void* __real_realloc(void*, std::size_t);
void __real_free(void*);
void* __real_mmap(void*, std::size_t, int, int, int, off_t);
int __real_memfd_create(const char*, unsigned);
int __real_pthread_create(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
std::FILE* __real_fopen(const char*, const char*);
int __real_fclose(std::FILE*);
int __real_fseek(std::FILE*, long, int);
long __real_ftell(std::FILE*);
std::size_t __real_fread(void*, std::size_t, std::size_t, std::FILE*);
std::size_t __real_fwrite(const void*, std::size_t, std::size_t, std::FILE*);
}

namespace {

/// In every byte of memory that nobody has written.
constexpr int kUnwritten = 0xA5;

struct Watch {
  int calls = 0;
  int failFirst = 0;
  int failLast = 0;
};

struct State {
  std::array<Watch, 10> watches{};
  std::map<void*, std::size_t> allocations;
  unsigned long long bytes = 0;
  unsigned long long peak = 0;
  int streams = 0;
  test::Fault actionBefore{};
  int actionAt = 0;
  std::function<void()> action;
};

State state;

/// True in the thread whose calls are watched, while they are.
thread_local bool isWatched = false;

/// The calls of its own work are not watched.
class Pause {
 public:
  Pause() { isWatched = false; }
  ~Pause() { isWatched = true; }
  Pause(Pause&&) = delete;
};

void runAction() {
  const Pause pause;
  std::exchange(state.action, nullptr)();
}

/// Counts a call; true when it is to fail.
bool strikes(test::Fault what) {
  if (!isWatched) return false;
  auto& watch = state.watches[static_cast<std::size_t>(what)];
  ++watch.calls;
  if (state.action && state.actionBefore == what && watch.calls == state.actionAt) runAction();
  return watch.calls >= watch.failFirst && watch.calls <= watch.failLast;
}

void* remember(void* memory, std::size_t size) {
  if (!isWatched || memory == nullptr) return memory;
  const Pause pause;
  state.allocations.emplace(memory, size);
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
  void* const memory = remember(__real_malloc(size), size);
  // Not what was there before, which often is zero.
  if (isWatched && memory != nullptr) std::memset(memory, kUnwritten, size);
  return memory;
}

void* __wrap_realloc(void* memory, std::size_t size) {
  return strikes(test::Fault::kGrowth) ? nullptr : __real_realloc(memory, size);
}

void* __wrap_mmap(void* address, std::size_t size, int protection, int flags, int file, off_t offset) {
  if (!strikes(test::Fault::kMap)) return __real_mmap(address, size, protection, flags, file, offset);
  errno = ENOMEM;
  return MAP_FAILED;
}

int __wrap_memfd_create(const char* name, unsigned flags) {
  if (!strikes(test::Fault::kMap)) return __real_memfd_create(name, flags);
  errno = ENOMEM;
  return -1;
}

int __wrap_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*), void* argument) {
  return strikes(test::Fault::kThread) ? EAGAIN : __real_pthread_create(thread, attributes, start, argument);
}

void __wrap_free(void* memory) {
  forget(memory);
  __real_free(memory);
}

std::FILE* __wrap_fopen(const char* path, const char* mode) {
  if (strikes(test::Fault::kOpen)) return nullptr;
  std::FILE* stream = __real_fopen(path, mode);
  if (isWatched && stream != nullptr) ++state.streams;
  return stream;
}

int __wrap_fclose(std::FILE* stream) {
  if (isWatched) --state.streams;
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

namespace {

void* newMemory(std::size_t size) noexcept {
  return strikes(test::Fault::kNew) ? nullptr : __real_malloc(size == 0 ? 1 : size);
}

void* newMemoryOrThrow(std::size_t size) {
  if (void* const memory = newMemory(size)) return memory;
  throw std::bad_alloc{};
}

}  // namespace

// Of the whole program, its libraries included.
void* operator new(std::size_t size) { return newMemoryOrThrow(size); }
void* operator new[](std::size_t size) { return newMemoryOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept { return newMemory(size); }
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept { return newMemory(size); }
void operator delete(void* memory) noexcept { __real_free(memory); }
void operator delete[](void* memory) noexcept { __real_free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { __real_free(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { __real_free(memory); }

namespace test {

Faults::Faults() {
  state = State{};
  isWatched = true;
}

Faults::~Faults() {
  isWatched = false;
  state = State{};
}

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
