// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <mutex>

#include "host/mutex.h"
#include "simulator/embedded/system.h"

namespace simulator {

/// Runs a metronome for as long as it is wanted.
class Refresher {
 public:
  using Question = bool (*)(void* context);

  /// Both are called with `context` from then on, `refresh` once a second while `isWanted` is true.
  Refresher(system::Metronome::Work refresh, Question isWanted, void* context)
      : refresh_(refresh), isWanted_(isWanted), context_(context) {}

  /// Starts or ends the thread, as it is wanted once no other caller is at it. Nothing that `refresh` waits for may be
  /// held. Where there is no thread to be had, requests alone bring the logs up to date.
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
