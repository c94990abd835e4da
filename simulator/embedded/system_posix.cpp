// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/system.h"

#include <pthread.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <new>

#include "host/host.h"

namespace simulator::system {
namespace {

constexpr const char16_t* kOutputEventName = u"Global\\VexoQtfAppOutputEvent";

timespec now(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return time;
}

}  // namespace

/// Linked so, as a shared object that is never unloaded.
void stayLoaded() {}

std::uint64_t milliseconds() {
  const timespec time = now(CLOCK_REALTIME);
  return static_cast<std::uint64_t>(time.tv_sec) * 1000 + static_cast<std::uint64_t>(time.tv_nsec) / 1'000'000;
}

std::uint32_t processId() { return static_cast<std::uint32_t>(getpid()); }

bool readMemory(std::uint64_t address, std::span<std::byte> destination) {
  // The system answers for addresses that cannot be read.
  const iovec local = {.iov_base = destination.data(), .iov_len = destination.size()};
  const iovec remote = {.iov_base = reinterpret_cast<void*>(address), .iov_len = destination.size()};
  return process_vm_readv(getpid(), &local, 1, &remote, 1, 0) == static_cast<ssize_t>(destination.size());
}

bool environment(const char* name, std::span<char> value) {
  const char* found = secure_getenv(name);
  const std::size_t length = found == nullptr ? 0 : std::strlen(found);
  if (length >= value.size()) return false;
  std::memcpy(value.data(), found == nullptr ? "" : found, length + 1);
  return true;
}

void writeError(const char* text) { static_cast<void>(std::fputs(text, stderr)); }

Reason failure(const char* what) {
  char text[128] = {};
  return Reason{"%s: %s", what, strerror_r(errno, text, sizeof(text))};
}

void createOutputEvent() { host::createEvent(kOutputEventName); }
void removeOutputEvent() { host::removeEvent(kOutputEventName); }
void setOutputEvent(bool signalled) {
  signalled ? host::signalEvent(kOutputEventName) : host::resetEvent(kOutputEventName);
}

/// Every handle is kept as it is: signalling one that is no event does nothing.
std::uint64_t retainEvent(std::uint64_t handle) { return handle; }
void releaseEvent(std::uint64_t /*event*/) {}
void signalEvent(std::uint64_t event) { host::signalHandle(reinterpret_cast<HANDLE>(event)); }

/// The thread, and how it is told to end.
struct MetronomeThread {
  pthread_t thread;
  pthread_mutex_t mutex;
  pthread_cond_t changed;
  bool isStopping;

  static MetronomeThread& of(Metronome& metronome) { return *reinterpret_cast<MetronomeThread*>(metronome.state_); }

  /// False when it is time to end.
  bool waitForASecond() {
    timespec until = now(CLOCK_MONOTONIC);
    ++until.tv_sec;
    pthread_mutex_lock(&mutex);
    while (!isStopping && pthread_cond_clockwait(&changed, &mutex, CLOCK_MONOTONIC, &until) != ETIMEDOUT) {
    }
    const bool goesOn = !isStopping;
    pthread_mutex_unlock(&mutex);
    return goesOn;
  }

  static void* run(void* argument) {
    auto& metronome = *static_cast<Metronome*>(argument);
    while (of(metronome).waitForASecond()) metronome.work_(metronome.context_);
    return nullptr;
  }
};

bool Metronome::start(Work work, void* context) {
  static_assert(sizeof(state_) >= sizeof(MetronomeThread));
  work_ = work;
  context_ = context;
  auto& native = *new (state_) MetronomeThread{
      .thread = {}, .mutex = PTHREAD_MUTEX_INITIALIZER, .changed = PTHREAD_COND_INITIALIZER, .isStopping = false};
  isRunning_ = pthread_create(&native.thread, nullptr, &MetronomeThread::run, this) == 0;
  return isRunning_;
}

void Metronome::stop() {
  auto& native = MetronomeThread::of(*this);
  pthread_mutex_lock(&native.mutex);
  native.isStopping = true;
  pthread_mutex_unlock(&native.mutex);
  pthread_cond_signal(&native.changed);
  pthread_join(native.thread, nullptr);
  isRunning_ = false;
}

}  // namespace simulator::system
