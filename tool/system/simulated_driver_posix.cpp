// SPDX-License-Identifier: Apache-2.0
#include "tool/system/simulated_driver.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "tool/terminal/errors.h"

namespace tool::platform {
namespace {

constexpr const char* kStateVariable = "VEXOQTF_SIMULATOR_STATE";

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::filesystem::path stateHome() {
  std::filesystem::path chosen = environment("XDG_STATE_HOME");
  if (chosen.is_absolute()) return chosen;
  const std::filesystem::path home = environment("HOME");
  if (home.empty())
    throw NoDriver{
        "there is no place for the simulated driver's state, HOME is not set: name a file with --driver-state"};
  return home / ".local" / "state";
}

std::string defaultStateFile() {
  const auto directory = stateHome() / "vqs";
  std::error_code error;
  std::filesystem::create_directories(directory, error);
  if (error)
    throw NoDriver{
        fmt::format("{}: {}: the simulated driver's state needs this directory, or name a file with "
                    "--driver-state",
                    directory.string(), error.message())};
  return (directory / "simulator.state").string();
}

/// Leads standard error into a pipe for a while. What does not fit into the pipe is lost.
class StandardErrorCapture {
 public:
  StandardErrorCapture() {
    if (pipe2(ends_.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    saved_ = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0);
    if (saved_ != -1) ::dup2(ends_[1], STDERR_FILENO);
  }
  ~StandardErrorCapture() {
    if (saved_ != -1) ::dup2(saved_, STDERR_FILENO);
    for (const int descriptor : {saved_, ends_[0], ends_[1]})
      if (descriptor != -1) ::close(descriptor);
  }
  StandardErrorCapture(const StandardErrorCapture&) = delete;
  StandardErrorCapture& operator=(const StandardErrorCapture&) = delete;

  /// What has come so far, up to the end of its last line.
  std::string text() const {
    std::array<char, 4096> buffer{};
    const ssize_t length = ends_[0] == -1 ? 0 : ::read(ends_[0], buffer.data(), buffer.size());
    std::string text{buffer.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
    text.erase(text.find_last_not_of('\n') + 1);
    return text;
  }

 private:
  std::array<int, 2> ends_ = {-1, -1};
  int saved_ = -1;
};

}  // namespace

void loadLibrary(bool /*withSimulatedDriver*/) {}

bool isDriverSimulated() { return true; }

void useDriverState(const std::optional<std::string>& file) {
  if (file && file->empty()) throw UsageError{"--driver-state: the file's name is empty"};
  if (!file && !environment(kStateVariable).empty()) return;
  const std::string path = file ? *file : defaultStateFile();
  if (setenv(kStateVariable, path.c_str(), 1) != 0) throw Failure{systemMessage(errno)};
}

std::string driverMessagesDuring(const std::function<void()>& action) {
  const StandardErrorCapture capture;
  action();
  return capture.text();
}

std::string driverHint() { return "install and start \"vexoqtf.sys\" first"; }
std::string deviceHint() { return "it gives no reason"; }

}  // namespace tool::platform
