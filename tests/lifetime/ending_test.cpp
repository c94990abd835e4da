// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <csignal>

#include "tests/lifetime/program.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

/// Ends clients in a way, one that loads the library and one that has its parts linked in, and looks at what the next
/// process finds in the store.
void expectKept(const std::string& ids, const std::string& way, int status = 0) {
  for (const std::string client : {VQS_ENDING_CLIENT, VQS_ENDING_CLIENT_STATIC}) {
    const TemporaryFolder folder;
    const std::string state = folder.path("state");
    const Ended ended = runOn(state, std::string{client}.append(" ").append(way));
    EXPECT_EQ(ended.status, status) << client << ' ' << way;
    EXPECT_EQ(ended.output, "") << client << ' ' << way;
    const Ended next = runOn(state, client + " list");
    EXPECT_EQ(next.status, 0) << client << ' ' << way;
    EXPECT_EQ(next.output, ids) << client << ' ' << way;
  }
}

TEST(EndingProgram, closes_its_session_in_an_exit_handler) {
  expectKept("7 8 ", "exit_handler_before_the_first_call");
  expectKept("7 8 ", "exit_handler_after_the_first_call");
}

TEST(EndingProgram, closes_its_session_in_a_static_object) {
  expectKept("7 8 ", "static_object");
  expectKept("7 8 ", "static_object_after_the_first_call");
}

TEST(EndingProgram, closes_its_session_in_a_thread_while_it_exits) { expectKept("7 8 ", "thread_at_exit"); }

TEST(EndingProgram, exits_while_a_thread_is_at_work) {
  const TemporaryFolder folder;
  EXPECT_EQ(runOn(folder.path("state"), VQS_ENDING_CLIENT " thread_at_work").status, 0);
  // The thread may have been at its own policy.
  EXPECT_EQ(runOn(folder.path("state"), VQS_ENDING_CLIENT " list").output.substr(0, 2), "7 ");
}

TEST(EndingProgram, leaves_its_session_open) { expectKept("7 ", "session_open"); }

TEST(EndingProgram, leaves_a_log_running) { expectKept("7 ", "log_running"); }

TEST(EndingProgram, keeps_its_changes_after_an_ovl_call) { expectKept("7 8 ", "ovl_call"); }

TEST(EndingProgram, keeps_its_changes_with_an_ovl_log_mapped) { expectKept("7 8 ", "ovl_log_mapped"); }

TEST(EndingProgram, keeps_its_changes_without_exit_handlers) { expectKept("7 ", "_exit"); }

TEST(EndingProgram, keeps_its_changes_when_it_aborts) { expectKept("7 ", "abort", -SIGABRT); }

TEST(EndingProgram, keeps_its_changes_when_it_is_killed) { expectKept("7 ", "kill", -SIGKILL); }

}  // namespace
}  // namespace test
