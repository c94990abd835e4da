// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/host.h"
#include "simulator/embedded/options.h"
#include "simulator/embedded/process_surroundings.h"
#include "simulator/embedded/refresher.h"
#include "simulator/embedded/state_file.h"
#include "simulator/model/driver.h"

namespace simulator {

/// The simulated driver as a device of this process. Any thread may call it; its requests run one after the other.
///
/// With a state file, the driver holds the file and its lock from the first handle that is opened to the last that is
/// closed: the state is read at the former and, if it has changed, written at the latter. Without one, the state lives
/// as long as this object. What goes wrong with the file is told on stderr, in one line. While a log is mapped, a
/// thread brings it up to date once a second.
class EmbeddedDriver final : public host::Device {
 public:
  /// Names the state file, or nothing for none. Asked whenever a first handle is opened.
  using StateFileSource = std::function<std::string()>;
  /// The words of the options, asked at the same moment.
  using OptionsSource = std::function<std::string()>;

  static constexpr std::chrono::milliseconds kLockTimeout{10000};

  explicit EmbeddedDriver(StateFileSource stateFile, std::chrono::milliseconds lockTimeout = kLockTimeout,
                          OptionsSource options = {});
  explicit EmbeddedDriver(std::string stateFile = {}, std::chrono::milliseconds lockTimeout = kLockTimeout);
  /// Detaches.
  ~EmbeddedDriver() override;
  EmbeddedDriver(EmbeddedDriver&&) = delete;

  /// Makes the device present in this process, and publishes the file versions of the library and the driver.
  void attach();
  /// Takes both back. Handles that are still open are closed, as far as the state file is concerned.
  void detach();

  /// Makes the clock stand at a moment, in milliseconds.
  void setTime(std::uint64_t milliseconds);

  bool open(HANDLE handle) override;
  bool control(HANDLE handle, const host::DeviceRequest& request) override;
  void close(HANDLE handle) override;

 private:
  /// The state file of the handles that are open, and what it held when the first of them was opened.
  struct Persistence {
    StateFile file;
    std::string name;
    std::vector<std::byte> image;
  };

  bool openFirst();
  void apply(const Options& options);
  void loadState(const std::string& name);
  void closeLast();
  void refresh();
  /// Keeps the thread running while there is something for it to do. Called without the lock.
  void manageRefresher();

  const StateFileSource stateFile_;
  const OptionsSource options_;
  const std::chrono::milliseconds lockTimeout_;
  std::mutex mutex_;
  ProcessSurroundings surroundings_;
  std::unique_ptr<Driver> model_;
  std::optional<Persistence> persistence_;
  std::multiset<HANDLE> openHandles_;
  bool attached_ = false;
  /// Last, so that its thread ends before what it works on.
  Refresher refresher_{[this] { refresh(); }};
};

}  // namespace simulator
