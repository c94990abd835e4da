// SPDX-License-Identifier: Apache-2.0
#pragma once

// The kernel's functions are defined by those who include this, not imported.
#define _NTOSKRNL_
#define _NTSYSTEM_
#include <ntifs.h>
// after ntifs.h, which defines what they use
#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <thread>

#include "tests/windows/scripted_kernel.h"

namespace test {

/// The one that there is.
extern ScriptedKernel* running;

/// What handles of the kernel stand for.
enum : std::uintptr_t { kThreadHandle = 0x10, kEventHandle = 0x20, kProcessHandle = 0x30, kSectionHandle = 0x40 };

struct ScriptedKernel::State {
  std::mutex mutex;
  std::condition_variable changed;
  Calls log;
  std::thread thread;
  std::thread::id threadId;
  int seconds = 0;
  bool isThreadWaiting = false;
  bool hasThreadEnded = true;
  int inCriticalRegions = 0;
  std::mutex fastMutex;
  int uses = 0;
  bool isRemoved = false;

  DRIVER_OBJECT driver{};
  DRIVER_EXTENSION driverExtension{};
  DEVICE_OBJECT lower{};
  DEVICE_OBJECT device{};
  std::vector<std::max_align_t> extension;
  /// The event of application outputs.
  KEVENT outputEvent{};
  std::vector<std::thread> lateCompletions;

  void record(const std::string& call) {
    const std::lock_guard lock{mutex};
    log.push_back(call);
  }

  template <class Condition>
  void await(std::unique_lock<std::mutex>& lock, Condition condition) {
    EXPECT_TRUE(changed.wait_for(lock, std::chrono::seconds{30}, condition)) << "for ever";
  }
};

std::string hexOf(std::uint8_t value);

}  // namespace test
