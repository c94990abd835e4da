// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>

#include <vqs/vqs.h>
#include "tests/simulator/embedded/client.h"
#include "tests/support/faults.h"
#include "tests/support/results.h"

namespace test {
namespace {

constexpr Fault kMemory[] = {Fault::kAllocation, Fault::kGrowth, Fault::kNew, Fault::kMap};

/// True when no driver has the file.
bool isFree(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
  const bool isLocked = file != -1 && flock(file, LOCK_EX | LOCK_NB) == 0;
  ::close(file);
  return isLocked;
}

/// Opens a session on a state file without the nth of a kind of memory, and closes it; false when it had no nth.
bool openWithout(Fault what, int nth, vqsStatus& result) {
  QtfSession* session = nullptr;
  bool hasStruck = false;
  {
    Faults faults;
    faults.fail(what, nth);
    result = vqsInitialize(&session);
    hasStruck = faults.calls(what) >= nth;
  }
  EXPECT_EQ(vqsUninitialize(session), session == nullptr ? kInvalid : kDone);
  return hasStruck;
}

class StateFileWithoutMemory : public ::testing::Test {
 protected:
  StateFileWithoutMemory() { driver_.attach(); }
  ~StateFileWithoutMemory() override { driver_.detach(); }

  /// Every open without some memory fails or goes well, and lets go of the file.
  void sweep(const Bytes& content) {
    const Errors errors;
    int struck = 0;
    for (const Fault what : kMemory)
      for (int nth = 1; strike(content, what, nth); ++nth) ++struck;
    EXPECT_GE(struck, 4);
  }

  TemporaryFolder folder_;
  TestDriver driver_{folder_.path("state")};

 private:
  bool strike(const Bytes& content, Fault what, int nth) {
    folder_.write("state", content);
    vqsStatus result = kDone;
    const bool hasStruck = openWithout(what, nth, result);
    EXPECT_TRUE(result == kDone || (hasStruck && (result == kFailed || result == kNoMemory))) << result;
    EXPECT_TRUE(isFree(driver_.stateFile));
    EXPECT_EQ(namesIn(folder_.path("")), std::vector<std::string>{"state"});
    const OpenDriver next{driver_.stateFile};
    EXPECT_TRUE(next.isOpen());
    return hasStruck;
  }
};

TEST_F(StateFileWithoutMemory, is_let_go_of_when_memory_runs_out) { sweep({}); }

TEST_F(StateFileWithoutMemory, of_an_older_format_is_converted_or_stays) { sweep(smallState()); }

TEST_F(StateFileWithoutMemory, of_an_older_layout_is_converted_or_stays) {
  const std::string path = folder_.path("state");
  ASSERT_TRUE(OpenDriver{path}.isOpen());
  sweep(withoutLastBlock(readFile(path)));
}

}  // namespace
}  // namespace test
