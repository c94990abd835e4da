// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <vqs/vqs.h>
#include "tests/simulator/embedded/client.h"
#include "tests/support/faults.h"
#include "tests/support/results.h"

// What a process does when the library is loaded, with memory running out: this program attaches the driver by itself.

namespace test {
namespace {

/// Of a process of its own: what it finds when the driver attaches without the nth of a kind of memory.
enum Findings { kAllIsWell = 0, kSomethingFailed = 1, kWrong = 2 };

bool isThere(vqsStatus result, vqsStatus otherwise) {
  if (result != kDone && result != otherwise) _exit(kWrong);
  return result == kDone;
}

/// Each part works, or the library says that it is not there.
bool isComplete(bool isAttached) {
  std::uint32_t words[4];
  QtfSession* session = nullptr;
  bool isWhole = isThere(vqsGetVersion(words), kFailed);
  isWhole = isThere(vqsGetDriverVersion(words), kFailed) && isWhole;
  if (isThere(vqsInitialize(&session), kNoDriver) != isAttached) _exit(kWrong);
  if (session == nullptr) return false;
  if (vqsSetAppInputs(session, 1, 2) != kDone) _exit(kWrong);
  isWhole = isThere(vqsWaitAppOutput(session, 0), kInvalid) && isWhole;
  if (vqsUninitialize(session) != kDone) _exit(kWrong);
  return isWhole;
}

Findings attachWithout(Fault what, int nth, bool forGood) {
  TestDriver driver;
  bool hasStruck = false;
  bool isAttached = false;
  {
    Faults faults;
    forGood ? faults.failFrom(what, nth) : faults.fail(what, nth);
    isAttached = driver.tryAttach();
    hasStruck = faults.calls(what) >= nth;
  }
  // Every allocation is for something that the library can do without.
  if (isComplete(isAttached) == hasStruck) return kWrong;
  if (!isAttached && !driver.tryAttach()) return kWrong;
  return hasStruck ? kSomethingFailed : kAllIsWell;
}

/// How many allocations of a kind there are, if the driver can do without each; otherwise minus the one it cannot.
int allocationsIn(Fault what, bool forGood) {
  for (int nth = 1;; ++nth) {
    const int findings = exitStatus(inProcess([&] { return attachWithout(what, nth, forGood); }));
    if (findings != kSomethingFailed) return findings == kAllIsWell ? nth - 1 : -nth;
  }
}

// The tables that grow here are those of this process: nothing may have been attached before.
TEST(AttachingDriver, leaves_out_what_there_is_no_memory_for) {
  const std::pair<Fault, int> cases[] = {{Fault::kAllocation, 0},
                                         {Fault::kGrowth, 5},  // event, device, and tables of both and of versions
                                         {Fault::kNew, 0},
                                         {Fault::kMap, 0},
                                         {Fault::kThread, 0}};
  for (const auto& [what, count] : cases)
    for (const bool forGood : {false, true})
      EXPECT_EQ(allocationsIn(what, forGood), count) << static_cast<int>(what) << ' ' << forGood;
}

}  // namespace
}  // namespace test
