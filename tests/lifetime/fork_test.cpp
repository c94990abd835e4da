// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "tests/lifetime/client.h"
#include "tests/support/results.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

/// Ends a forked process with 9 where an expectation does not hold.
void demandResult(vqsStatus result, vqsStatus expected, const char* what) { demand(result == expected, what); }

void add(QtfSession* session, std::uint32_t id, vqsStatus expected = kDone) {
  const VqsPolicyV0 policy = policyOf(id);
  std::uint32_t verdict = 1;
  demandResult(vqsPbAddPolicy(session, &policy, nullptr, &verdict), expected, "a policy is sent as expected");
}

QtfSession* open() {
  QtfSession* session = nullptr;
  demandResult(vqsInitialize(&session), kDone, "a session opens");
  return session;
}

/// Runs `body` in a forked process and waits for its end; its exit code, or minus the signal that ended it.
template <class Body>
int inChild(const Body& body) {
  const pid_t child = fork();
  if (child == 0) {
    body();
    _exit(0);
  }
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

/// What memory is mapped at an address, as the system numbers it.
unsigned long memoryAt(std::uint64_t address) {
  std::ifstream maps{"/proc/self/maps"};
  for (std::string line; std::getline(maps, line);) {
    unsigned long start = 0;
    unsigned long number = 0;
    const int found = std::sscanf(line.c_str(), "%lx-%*x %*s %*x %*s %lu", &start, &number);
    if (found == 2 && start == address) return number;
  }
  return 0;
}

/// Starts and stops a log; what memory it was in.
unsigned long memoryOfALog() {
  QtfSession* const session = open();
  std::uint64_t log = 0;
  demandResult(vqsStartQTFLog(session, &log), kDone, "a log starts");
  const unsigned long memory = memoryAt(log);
  demandResult(vqsUninitialize(session), kDone, "a session closes");
  return memory;
}

/// A program with a state file, or with the state in its memory.
class ForkingProgram : public ::testing::TestWithParam<bool> {
 protected:
  ForkingProgram() {
    GetParam() ? setenv("VEXOQTF_SIMULATOR_STATE", folder_.path("state").c_str(), 1)
               : unsetenv("VEXOQTF_SIMULATOR_STATE");
  }
  ~ForkingProgram() override { unsetenv("VEXOQTF_SIMULATOR_STATE"); }

  static std::vector<std::uint32_t> idsIn(QtfSession* session) {
    std::vector<VqsPolicyV0> policies(8);
    VqsPolicyList list{};
    list.count = 8;
    list.policies = policies.data();
    EXPECT_EQ(vqsPbGetPolicies(session, &list), kDone);
    std::vector<std::uint32_t> ids(list.count);
    for (std::size_t i = 0; i < ids.size(); ++i) ids[i] = policies[i].id;
    return ids;
  }

 private:
  TemporaryFolder folder_;
};

using Ids = std::vector<std::uint32_t>;

TEST_P(ForkingProgram, without_sessions_leaves_the_driver_to_its_child) {
  EXPECT_EQ(vqsUninitialize(open()), kDone);
  EXPECT_EQ(inChild([] {
              QtfSession* const own = open();
              add(own, 8);
              demandResult(vqsUninitialize(own), kDone, "a session closes");
            }),
            0);
  QtfSession* const session = open();
  EXPECT_EQ(idsIn(session), GetParam() ? Ids{8} : Ids{}) << "without a file, each has its own";
  EXPECT_EQ(vqsPbReset(session), kDone);
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

TEST_P(ForkingProgram, shares_no_log_with_its_child) {
  const unsigned long memory = memoryOfALog();
  ASSERT_NE(memory, 0U);
  EXPECT_EQ(memoryOfALog(), memory) << "the same area again";
  EXPECT_EQ(inChild([&] {
              const unsigned long own = memoryOfALog();
              demand(own != 0 && own != memory, "the child's log is another");
            }),
            0);
}

TEST_P(ForkingProgram, keeps_its_sessions_and_logs_to_itself) {
  QtfSession* const session = open();
  std::uint64_t log = 0;
  EXPECT_EQ(vqsPbReset(session), kDone);
  EXPECT_EQ(vqsStartQTFLog(session, &log), kDone);
  add(session, 7);
  EXPECT_EQ(inChild([&] {
              add(session, 8, kFailed);
              demandResult(vqsStopQTFLog(session), kFailed, "the log cannot be stopped");
              demandResult(vqsUninitialize(session), kDone, "the session's memory is given back");
            }),
            0);
  EXPECT_EQ(idsIn(session), Ids{7});
  add(session, 9);
  EXPECT_EQ(vqsSetAppInputs(session, 1001, 0), kDone);
  EXPECT_EQ(vqsStopQTFLog(session), kDone) << "it is still there";
  EXPECT_EQ(vqsPbReset(session), kDone);
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

TEST_P(ForkingProgram, with_sessions_has_the_driver_for_itself) {
  QtfSession* const session = open();
  testing::internal::CaptureStderr();
  EXPECT_EQ(inChild([] {
              QtfSession* own = nullptr;
              demandResult(vqsInitialize(&own), kFailed, "no session opens");
            }),
            0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vexoqtf simulator: the driver is in use by the process that this one was forked from\n");
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

TEST_P(ForkingProgram, gets_its_file_back_while_the_child_lives) {
  QtfSession* const session = open();
  int ends[2] = {};
  ASSERT_EQ(pipe(ends), 0);
  const pid_t child = fork();
  char byte = 0;
  if (child == 0) {
    close(ends[1]);
    _exit(read(ends[0], &byte, 1) == 0 ? 0 : 9);
  }
  close(ends[0]);
  EXPECT_EQ(vqsUninitialize(session), kDone);
  QtfSession* again = nullptr;
  EXPECT_EQ(vqsInitialize(&again), kDone) << "the child has kept the lock";
  EXPECT_EQ(vqsUninitialize(again), kDone);
  close(ends[1]);
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

INSTANTIATE_TEST_SUITE_P(State, ForkingProgram, ::testing::Bool(),
                         [](const auto& kept) { return kept.param ? "in_a_file" : "in_memory"; });

}  // namespace
}  // namespace test
