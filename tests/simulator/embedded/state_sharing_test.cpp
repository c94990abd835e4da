// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>

#include "tests/simulator/embedded/client.h"

namespace test {
namespace {

using std::chrono::steady_clock;

/// Two ends of a pipe: one process waits for the other.
class Signal {
 public:
  Signal() { EXPECT_EQ(pipe(ends_.data()), 0); }
  ~Signal() {
    close(ends_[0]);
    close(ends_[1]);
  }
  Signal(Signal&&) = delete;
  void send() const { EXPECT_EQ(write(ends_[1], "", 1), 1); }
  void wait() const {
    char byte = 0;
    EXPECT_EQ(read(ends_[0], &byte, 1), 1);
  }

 private:
  std::array<int, 2> ends_{};
};

TEST(StateSharing, open_file_is_refused_to_another_process_after_the_time_to_wait) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  const Signal held;
  const Signal finish;
  const pid_t other = inProcess([&] {
    OpenDriver driver{path};
    if (!driver.isOpen() || add(*driver, kModifyPb, 7) != 0) return 1;
    held.send();
    finish.wait();
    return 0;
  });
  held.wait();
  Errors errors;
  const auto start = steady_clock::now();
  EXPECT_FALSE((OpenDriver{path, milliseconds{80}}.isOpen()));
  EXPECT_GE(steady_clock::now() - start, milliseconds{80});
  EXPECT_EQ(errors.take(), "vexoqtf simulator: " + path + " is in use by another driver; waited 80 ms for its lock\n");
  finish.send();
  ASSERT_EQ(exitStatus(other), 0);
  OpenDriver next{path};
  ASSERT_TRUE(next.isOpen());
  EXPECT_EQ(ids(*next, kReadPb), Ids{7});
}

TEST(StateSharing, open_waits_for_another_process_to_finish) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  const Signal held;
  const pid_t other = inProcess([&] {
    OpenDriver driver{path};
    if (!driver.isOpen() || add(*driver, kModifyPb, 7) != 0) return 1;
    held.send();
    usleep(50000);
    return 0;
  });
  held.wait();
  OpenDriver next{path, milliseconds{10000}};
  ASSERT_TRUE(next.isOpen());
  EXPECT_EQ(ids(*next, kReadPb), Ids{7});
  EXPECT_EQ(exitStatus(other), 0);
}

TEST(StateSharing, the_default_wait_is_ten_seconds) { EXPECT_EQ(EmbeddedDriver::kLongestWait, 10000U); }

TEST(StateSharing, two_drivers_of_one_process_exclude_each_other_too) {
  const TemporaryFolder folder;
  const OpenDriver first{folder.path("state")};
  ASSERT_TRUE(first.isOpen());
  const Errors errors;
  EXPECT_FALSE((OpenDriver{folder.path("state"), milliseconds{20}}.isOpen()));
  EXPECT_TRUE((OpenDriver{folder.path("other"), milliseconds{20}}.isOpen()));
}

TEST(StateSharing, two_names_of_one_file_exclude_each_other) {
  const TemporaryFolder folder;
  folder.write("state", smallState());
  std::filesystem::create_symlink("state", folder.path("link"));
  const OpenDriver first{folder.path("state")};
  ASSERT_TRUE(first.isOpen());
  const Errors errors;
  EXPECT_FALSE((OpenDriver{folder.path("link"), milliseconds{20}}.isOpen()));
}

TEST(StateSharing, lock_of_a_process_that_died_is_free) {
  const TemporaryFolder folder;
  const std::string path = folder.write("state", smallState());
  const pid_t other = inProcess([&path] {
    // Never closed.
    auto* driver = new OpenDriver{path};
    return driver->isOpen() ? 0 : 1;
  });
  ASSERT_EQ(exitStatus(other), 0);
  OpenDriver next{path};
  ASSERT_TRUE(next.isOpen());
  EXPECT_EQ(ids(*next, kReadAsm), Ids{7});
}

TEST(StateSharing, old_file_is_converted_by_one_of_many) {
  const TemporaryFolder folder;
  const std::string path = folder.write("state", smallState());
  std::vector<pid_t> processes;
  processes.reserve(4);
  for (std::uint32_t process = 0; process < 4; ++process)
    processes.push_back(inProcess([&path, process] {
      OpenDriver driver{path, milliseconds{60000}};
      return driver.isOpen() && add(*driver, kModifyPb, process) == 0 ? 0 : 1;
    }));
  for (const pid_t process : processes) EXPECT_EQ(exitStatus(process), 0);
  OpenDriver driver{path};
  ASSERT_TRUE(driver.isOpen());
  EXPECT_EQ(ids(*driver, kReadAsm), Ids{7});
  EXPECT_EQ(word(request(*driver, kReadPb, countQuery()), 4), 4);
}

TEST(StateSharing, contending_processes_lose_nothing) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  std::vector<pid_t> processes;
  processes.reserve(3);
  for (std::uint32_t process = 0; process < 3; ++process)
    processes.push_back(inProcess([&path, process] {
      for (std::uint32_t i = 0; i < 15; ++i) {
        OpenDriver driver{path, milliseconds{60000}};
        if (!driver.isOpen() || add(*driver, kModifyPb, 100 * process + i) != 0) return 1;
      }
      return 0;
    }));
  for (const pid_t process : processes) EXPECT_EQ(exitStatus(process), 0);
  OpenDriver driver{path};
  ASSERT_TRUE(driver.isOpen());
  EXPECT_EQ(word(request(*driver, kReadPb, countQuery()), 4), 45);
  EXPECT_EQ(namesIn(folder.path("")), std::vector<std::string>{"state"});
}

}  // namespace
}  // namespace test
