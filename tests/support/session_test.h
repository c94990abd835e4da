// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/support/faults.h"
#include "tests/support/locale.h"
#include "tests/support/scripted_driver.h"

namespace test {

/// An open session on a scripted driver, and a session that was never opened. Whatever a test calls, the session's
/// handle stays the only one, and nothing would end the process on Windows.
class SessionTest : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(driver.openHandles(), 1); }

  ScriptedDriver driver;
  OpenSession session{driver};
  QtfSession closed{};
  NoInvalidParameter strict;
};

/// The same for calls that leave no memory behind.
class TidySessionTest : public SessionTest {
 protected:
  void TearDown() override {
    EXPECT_EQ(faults.outstanding(), 0);
    SessionTest::TearDown();
  }

  Faults faults;
};

/// The same for calls that take no memory at all.
class FrugalSessionTest : public TidySessionTest {
 protected:
  void TearDown() override {
    EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
    TidySessionTest::TearDown();
  }
};

/// Names the cases of a test that runs once for each row of a list.
inline constexpr auto caseName = [](const auto& instance) { return std::string{instance.param.name}; };

}  // namespace test
