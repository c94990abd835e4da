// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>

#include "simulator/embedded/embedded_driver.h"
#include "tests/simulator/embedded/state_bytes.h"
#include "tests/simulator/model/client.h"
#include "tests/support/temporary_folder.h"

namespace test {

using simulator::EmbeddedDriver;
using std::chrono::milliseconds;

/// A driver whose state file and options can be changed between its handles.
class TestDriver {
 public:
  explicit TestDriver(std::string file = {}, milliseconds longestWait = milliseconds{0})
      : stateFile(std::move(file)), driver_{&configure, this, static_cast<std::uint32_t>(longestWait.count())} {}
  operator EmbeddedDriver&() { return driver_; }  // NOLINT(google-explicit-constructor): stands for its driver

  void attach() { EXPECT_TRUE(driver_.attach()); }
  bool tryAttach() { return driver_.attach(); }
  void detach() { driver_.detach(); }
  bool open(HANDLE handle) { return driver_.open(handle); }
  bool control(HANDLE handle, const host::DeviceRequest& request) { return driver_.control(handle, request); }
  void close(HANDLE handle) { driver_.close(handle); }
  void setTime(std::uint64_t moment) { driver_.setTime(moment); }

  std::string stateFile;
  std::string options;

 private:
  static simulator::Reason configure(void* self, simulator::Configuration& configuration) {
    const auto& given = *static_cast<const TestDriver*>(self);
    EXPECT_LT(given.stateFile.size(), sizeof(configuration.stateFile));
    EXPECT_LT(given.options.size(), sizeof(configuration.options));
    given.stateFile.copy(configuration.stateFile, given.stateFile.size());
    given.options.copy(configuration.options, given.options.size());
    return {};
  }

  EmbeddedDriver driver_;
};

inline HANDLE handle(std::uintptr_t number) { return reinterpret_cast<HANDLE>(number); }

/// One request, same buffer in and out; empty when it failed.
inline Bytes request(EmbeddedDriver& driver, std::uint32_t code, Bytes record) {
  DWORD returned = 0;
  const auto length = static_cast<DWORD>(record.size());
  if (!driver.control(handle(1), {code, record.data(), length, record.data(), length, &returned, nullptr})) return {};
  EXPECT_EQ(returned, length);
  return record;
}

inline std::uint32_t add(EmbeddedDriver& driver, std::uint32_t code, std::uint32_t id) {
  const auto answer = request(driver, code, addRequest(simplePolicy(id)));
  return answer.empty() ? 1 : word(answer, 3980);
}

/// The ids of a store of up to five policies.
inline Ids ids(EmbeddedDriver& driver, std::uint32_t code) {
  const auto answer = request(driver, code, chunkQuery(0));
  Ids all;
  for (std::uint32_t i = 0; !answer.empty() && i < word(answer, 4); ++i)
    all.push_back(word(answer, 12 + 3972 * std::size_t{i} + 164));
  return all;
}

/// Opens a driver on a state file, if the driver lets it.
class OpenDriver {
 public:
  explicit OpenDriver(const std::string& stateFile, milliseconds longestWait = milliseconds{0})
      : driver_(stateFile, longestWait), isOpen_(driver_.open(handle(1))) {}
  ~OpenDriver() {
    if (isOpen_) driver_.close(handle(1));
  }
  OpenDriver(OpenDriver&&) = delete;

  [[nodiscard]] bool isOpen() const { return isOpen_; }
  EmbeddedDriver& operator*() { return driver_; }

 private:
  TestDriver driver_;
  bool isOpen_;
};

/// What is written to stderr while it lives.
class Errors {
 public:
  Errors() { testing::internal::CaptureStderr(); }
  ~Errors() {
    if (!taken_) testing::internal::GetCapturedStderr();
  }
  Errors(Errors&&) = delete;
  std::string take() {
    taken_ = true;
    return testing::internal::GetCapturedStderr();
  }

 private:
  bool taken_ = false;
};

/// Names in a folder, sorted.
inline std::vector<std::string> namesIn(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator{folder}) names.push_back(entry.path().filename());
  std::ranges::sort(names);
  return names;
}

/// Runs `body` in another process; its result is the exit status.
template <class Body>
pid_t inProcess(Body body) {
  const pid_t process = fork();
  if (process == 0) _exit(body());
  EXPECT_GT(process, 0);
  return process;
}

inline int exitStatus(pid_t process) {
  int status = 0;
  EXPECT_EQ(waitpid(process, &status, 0), process);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Each store of a state file has 400 places and two lists of them.
inline constexpr std::size_t kStoreSize = 400 * 3972 + 2 * (4 + 400 * 2) + 4;

}  // namespace test
