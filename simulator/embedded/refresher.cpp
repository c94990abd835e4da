// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/refresher.h"

#include <chrono>
#include <condition_variable>
#include <system_error>

namespace simulator {
namespace {

constexpr std::chrono::seconds kInterval{1};

void refreshUntilStopped(const std::stop_token& stop, const std::function<void()>& refresh) {
  std::mutex mutex;
  std::condition_variable_any stopped;
  std::unique_lock lock{mutex};
  while (!stopped.wait_for(lock, stop, kInterval, [&] { return stop.stop_requested(); })) refresh();
}

}  // namespace

void Refresher::runWhile(const std::function<bool()>& isWanted) {
  const std::lock_guard lock{mutex_};
  const bool wanted = isWanted();
  if (wanted == thread_.joinable()) return;
  if (!wanted) {
    thread_ = {};
    return;
  }
  try {
    thread_ = std::jthread{[this](const std::stop_token& stop) { refreshUntilStopped(stop, refresh_); }};
  } catch (const std::system_error&) {
    // Without a thread, requests alone bring the logs up to date.
  }
}

}  // namespace simulator
