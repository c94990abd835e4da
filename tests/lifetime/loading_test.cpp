// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/lifetime/program.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

void expectKept(const std::string& way) {
  const TemporaryFolder folder;
  const Ended ended = runOn(folder.path("state"), VQS_LOADING_CLIENT " " VQS_LIBRARY " " + way);
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.output, "");
  EXPECT_EQ(runOn(folder.path("state"), VQS_ENDING_CLIENT " list").output, "7 8 ");
}

TEST(LoadingProgram, unloads_the_library_and_loads_it_again) { expectKept("nothing_open"); }

TEST(LoadingProgram, unloads_the_library_with_a_session_open) { expectKept("session_open"); }

TEST(LoadingProgram, unloads_the_library_while_a_log_is_running) { expectKept("log_running"); }

}  // namespace
}  // namespace test
