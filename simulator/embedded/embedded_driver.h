// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>

#include "host/device.h"
#include "host/list.h"
#include "host/mutex.h"
#include "simulator/embedded/kept_driver.h"
#include "simulator/embedded/options.h"
#include "simulator/embedded/process_surroundings.h"
#include "simulator/embedded/refresher.h"

namespace simulator {

/// Where a driver keeps its state, and its options.
struct Configuration {
  static constexpr std::size_t kLongestText = 4096;

  /// path of the state file; empty for none
  char stateFile[kLongestText];
  /// words for parseOptions
  char options[kLongestText];
};

/// The simulated driver as a device of this process. Any thread may call it; its requests run one after the other.
///
/// Handles belong to the process that opened them. One that is forked from it meanwhile shares memory with it, but no
/// locks and no threads: there its handles fail, and no others are opened.
///
/// With a state file, the driver holds the file from the first handle that is opened to the last that is closed, and
/// what it is told is in the file at once. Without one, the state lives as long as this object. What goes wrong with
/// the file is told on stderr, in one line. While a log is mapped, a thread brings it up to date once a second.
class EmbeddedDriver final : public host::Device {
 public:
  /// Asked whenever a first handle is opened. A reason ends the open.
  using ConfigurationSource = Reason (*)(void* context, Configuration& configuration);

  /// How long an open waits for another process to close the file, in milliseconds.
  static constexpr std::uint32_t kLongestWait = 10'000;

  explicit EmbeddedDriver(ConfigurationSource source, void* context = nullptr, std::uint32_t longestWait = kLongestWait)
      : source_(source), sourceContext_(context), longestWait_(longestWait) {}
  /// Detaches.
  ~EmbeddedDriver();
  EmbeddedDriver(EmbeddedDriver&&) = delete;

  /// Makes the device present in this process, and publishes the file versions of the library and the driver. False
  /// when there is no memory for it.
  bool attach();
  /// Takes both back. Handles that are still open are closed, as far as the state is concerned.
  void detach();

  /// Makes the clock stand at a moment, in milliseconds.
  void setTime(std::uint64_t milliseconds);

  bool open(HANDLE handle) override;
  bool control(HANDLE handle, const host::DeviceRequest& request) override;
  void close(HANDLE handle) override;

 private:
  [[nodiscard]] bool isOfAnotherProcess() const;
  bool openFirst();
  Reason useState(const char* path);
  void closeLast();
  static void refresh(void* self);
  static bool hasMappedLogs(void* self);

  const ConfigurationSource source_;
  void* const sourceContext_;
  const std::uint32_t longestWait_;
  host::Mutex mutex_;
  ProcessSurroundings surroundings_;
  KeptDriver kept_;
  /// what lives without a file, from its first use on
  Driver* own_ = nullptr;
  /// the driver of the handles that are open
  Driver* model_ = nullptr;
  /// whose they are; none when it is zero
  std::atomic<std::uint32_t> owner_ = 0;
  /// each as often as it was opened
  host::List<HANDLE> openHandles_;
  bool attached_ = false;
  Refresher refresher_{&refresh, &hasMappedLogs, this};
};

}  // namespace simulator
