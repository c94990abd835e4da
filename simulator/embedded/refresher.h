// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <mutex>
#include <thread>

namespace simulator {

/// Does something once a second for as long as it is wanted, on a thread of its own.
class Refresher {
 public:
  explicit Refresher(std::function<void()> refresh) : refresh_(std::move(refresh)) {}

  /// Starts or ends the thread, as it is wanted once no other caller is at it. Nothing that `refresh` waits for may be
  /// held.
  void runWhile(const std::function<bool()>& isWanted);

 private:
  std::function<void()> refresh_;
  std::mutex mutex_;
  std::jthread thread_;
};

}  // namespace simulator
