// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include "tests/support/faults.h"
#include "tests/support/scripted_driver.h"

namespace test {

/// An open session on the scripted driver, and one without a handle; none of these services allocates.
struct Sessions {
  ScriptedDriver driver;
  OpenSession session{driver};
  QtfSession closed{};
  Faults faults;

  void expectNoAllocation() const { EXPECT_EQ(faults.calls(Fault::kAllocation), 0); }
};

class FeatureTest : public ::testing::Test, protected Sessions {
 protected:
  void TearDown() override { expectNoAllocation(); }
};

/// Tests that run once for each name an export or a family goes by.
template <class Case>
class FeatureTestOf : public ::testing::TestWithParam<Case>, protected Sessions {
 protected:
  void TearDown() override { expectNoAllocation(); }
};

inline constexpr auto caseName = [](const auto& info) { return std::string{info.param.name}; };

/// Two names of one routine share its address.
template <class Function>
void expectOneRoutine(Function* one, Function* other) {
  Function* volatile first = one;
  Function* volatile second = other;
  EXPECT_EQ(reinterpret_cast<void*>(first), reinterpret_cast<void*>(second));
}

}  // namespace test
