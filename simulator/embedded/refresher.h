// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <mutex>

#include "host/mutex.h"
#include "simulator/embedded/system.h"

namespace simulator {

/// Keeps the mapped logs up to date: calls a function once a second, on a thread that runs only while there is need.
class Refresher {
 public:
  using Question = bool (*)(void* context);

  /// `isWanted` tells whether the thread is needed; while it runs, `refresh` is called once a second. Both get
  /// `context`.
  Refresher(system::Metronome::Work refresh, Question isWanted, void* context)
      : refresh_(refresh), isWanted_(isWanted), context_(context) {}

  /// Asks `isWanted`, then starts or ends the thread accordingly; concurrent calls wait for each other. The caller must
  /// hold no lock that `refresh` takes, because ending waits for it. When the system has no thread to give, the logs
  /// are brought up to date by requests only.
  void update() {
    const std::lock_guard lock{mutex_};
    const bool isWanted = isWanted_(context_);
    if (isWanted == metronome_.isRunning()) return;
    if (isWanted)
      metronome_.start(refresh_, context_);
    else
      metronome_.stop();
  }

 private:
  const system::Metronome::Work refresh_;
  const Question isWanted_;
  void* const context_;
  host::Mutex mutex_;
  system::Metronome metronome_;
};

}  // namespace simulator
