// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "host/host.h"

namespace test {

/// Another locale for the texts of one test.
class Locale {
 public:
  explicit Locale(const char* name) : previous_(std::setlocale(LC_ALL, nullptr)) {
    EXPECT_NE(std::setlocale(LC_ALL, name), nullptr) << "no locale " << name;
  }
  ~Locale() { std::setlocale(LC_ALL, previous_.c_str()); }
  Locale(const Locale&) = delete;
  Locale& operator=(const Locale&) = delete;

 private:
  std::string previous_;
};

/// Fails the test on what would end a process on Windows.
class NoInvalidParameter {
 public:
  NoInvalidParameter() : previous_(host::setInvalidParameterHandler([] { ADD_FAILURE() << "invalid parameter"; })) {}
  ~NoInvalidParameter() { host::setInvalidParameterHandler(previous_); }
  NoInvalidParameter(const NoInvalidParameter&) = delete;
  NoInvalidParameter& operator=(const NoInvalidParameter&) = delete;

 private:
  host::InvalidParameterHandler previous_;
};

}  // namespace test
