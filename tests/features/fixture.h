// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include "support/scripted_driver.h"

namespace test {

/// An open session on the scripted driver, and one without a handle.
struct Sessions {
  ScriptedDriver driver;
  OpenSession session{driver};
  QtfSession closed{};
};

class FeatureTest : public ::testing::Test, protected Sessions {};

/// Tests that run once for each name an export or a family goes by.
template <class Case>
class FeatureTestOf : public ::testing::TestWithParam<Case>, protected Sessions {};

inline constexpr auto caseName = [](const auto& info) { return std::string{info.param.name}; };

/// Two names of one routine share its address.
template <class Function>
void expectOneRoutine(Function* one, Function* other) {
  Function* volatile first = one;
  Function* volatile second = other;
  EXPECT_EQ(reinterpret_cast<void*>(first), reinterpret_cast<void*>(second));
}

}  // namespace test
