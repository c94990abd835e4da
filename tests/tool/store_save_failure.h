// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include "tests/tool/run_tool.h"

namespace test {

/// A tool with the laptop's policies in its Asm store, and a file that must stay as it is.
class StoreSaveFailure : public testing::Test {
 protected:
  void SetUp() override {
    tool.writeText("keep.bin", "precious");
    ASSERT_EQ(tool.run({"store", "load", "asm", samplePath("laptop-r5.bin")}).exitCode, 0);
  }

  void expectKept() const {
    EXPECT_EQ(tool.readText("keep.bin"), "precious");
    EXPECT_EQ(tool.files(), std::vector<std::string>{"keep.bin"});
  }

  Tool tool;
};

}  // namespace test
