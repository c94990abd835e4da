// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "host/host.h"

namespace test {
namespace {

TEST(FileVersion, is_found_by_name_and_queried_from_its_block) {
  VS_FIXEDFILEINFO version{};
  version.dwFileVersionMS = 0x00030004;
  host::setFileVersion("some.dll", version);
  ASSERT_EQ(GetFileVersionInfoSizeA("some.dll", nullptr), 52U);
  VS_FIXEDFILEINFO block{};
  EXPECT_FALSE(GetFileVersionInfoA("some.dll", 0, 51, &block));
  ASSERT_TRUE(GetFileVersionInfoA("some.dll", 0, 52, &block));
  void* value = nullptr;
  UINT length = 0;
  EXPECT_FALSE(VerQueryValueA(&block, "\\VarFileInfo", &value, &length));
  ASSERT_TRUE(VerQueryValueA(&block, "\\", &value, &length));
  EXPECT_EQ(length, 52U);
  EXPECT_EQ(static_cast<VS_FIXEDFILEINFO*>(value)->dwFileVersionMS, 0x00030004U);
  host::removeFileVersion("some.dll");
  EXPECT_EQ(GetFileVersionInfoSizeA("some.dll", nullptr), 0U);
  EXPECT_FALSE(GetFileVersionInfoA("some.dll", 0, 52, &block));
}

}  // namespace
}  // namespace test
