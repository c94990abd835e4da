// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <thread>

#include "tests/simulator/embedded/attached_device.h"

namespace test {
namespace {

std::u16string devices() {
  GUID interfaceClass = {0x9DC9718B, 0x59BF, 0x43EE, {0x94, 0xED, 0x34, 0xBB, 0x82, 0x3D, 0xCE, 0xDF}};
  ULONG length = 0;
  EXPECT_EQ(CM_Get_Device_Interface_List_SizeA(&length, &interfaceClass, nullptr, 0), CR_SUCCESS);
  std::u16string list(length, u'\0');
  EXPECT_EQ(CM_Get_Device_Interface_ListW(&interfaceClass, nullptr, list.data(), length, 0), CR_SUCCESS);
  return list;
}

TEST(EmbeddedDevice, is_found_by_its_interface_class_while_attached) {
  TestDriver driver;
  EXPECT_EQ(devices(), std::u16string(1, u'\0'));
  driver.attach();
  EXPECT_EQ(devices(), std::u16string{kPath} + u'\0' + u'\0');
  driver.attach();
  EXPECT_EQ(devices(), std::u16string{kPath} + u'\0' + u'\0');
  driver.detach();
  EXPECT_EQ(devices(), std::u16string(1, u'\0'));
  driver.detach();
  driver.attach();
  EXPECT_EQ(devices(), std::u16string{kPath} + u'\0' + u'\0');
}

TEST(EmbeddedDevice, is_gone_with_its_object) {
  std::make_unique<TestDriver>()->attach();
  EXPECT_EQ(devices(), std::u16string(1, u'\0'));
  EXPECT_EQ(openDevice(), INVALID_HANDLE_VALUE);
  DWORD unused = 0;
  EXPECT_EQ(GetFileVersionInfoSizeA("vexoqtf.sys", &unused), 0);
}

TEST(EmbeddedDevice, sessions_see_the_same_stores) {
  TestDriver driver;
  driver.attach();
  const HANDLE first = openDevice();
  const HANDLE second = openDevice();
  ASSERT_NE(first, INVALID_HANDLE_VALUE);
  ASSERT_NE(second, INVALID_HANDLE_VALUE);
  EXPECT_EQ(addThrough(first, 7), 0);
  EXPECT_EQ(addThrough(second, 7), 2);
  EXPECT_TRUE(CloseHandle(first));
  EXPECT_EQ(addThrough(second, 8), 0);
  EXPECT_TRUE(CloseHandle(second));
}

TEST(EmbeddedDevice, without_a_file_the_state_outlives_its_handles) {
  TestDriver driver;
  driver.attach();
  const HANDLE first = openDevice();
  EXPECT_EQ(addThrough(first, 7), 0);
  EXPECT_TRUE(CloseHandle(first));
  const HANDLE second = openDevice();
  EXPECT_EQ(addThrough(second, 7), 2);
  EXPECT_TRUE(CloseHandle(second));
}

TEST(EmbeddedDevice, requests_fail_without_an_open_handle) {
  TestDriver driver;
  EXPECT_EQ(request(driver, kReadPb, countQuery()), Bytes{});
  ASSERT_TRUE(driver.open(handle(1)));
  EXPECT_EQ(request(driver, kReadPb, countQuery()), countQuery().bytes());
  driver.close(handle(1));
  EXPECT_EQ(request(driver, kReadPb, countQuery()), Bytes{});
  driver.close(handle(1));
  EXPECT_EQ(request(driver, kReadPb, countQuery()), Bytes{});
}

TEST(EmbeddedDevice, both_files_have_the_version_of_the_project) {
  TestDriver driver;
  driver.attach();
  for (const char* name : {"VexoQTFServices.dll", "vexoqtf.sys"}) {
    DWORD unused = 0;
    ASSERT_EQ(GetFileVersionInfoSizeA(name, &unused), sizeof(VS_FIXEDFILEINFO));
    VS_FIXEDFILEINFO info{};
    ASSERT_TRUE(GetFileVersionInfoA(name, 0, sizeof(info), &info));
    EXPECT_EQ(info.dwSignature, 0xFEEF04BD);
    EXPECT_EQ(info.dwFileVersionMS, PROJECT_MAJOR << 16 | PROJECT_MINOR) << name;
    EXPECT_EQ(info.dwFileVersionLS, PROJECT_PATCH << 16) << name;
    EXPECT_EQ(info.dwProductVersionMS, PROJECT_MAJOR << 16 | PROJECT_MINOR) << name;
    EXPECT_EQ(info.dwProductVersionLS, PROJECT_PATCH << 16) << name;
  }
}

TEST(EmbeddedDevice, threads_take_turns) {
  TestDriver driver;
  driver.attach();
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (std::uint32_t thread = 0; thread < 4; ++thread)
    threads.emplace_back([thread] {
      for (std::uint32_t i = 0; i < 50; ++i) {
        const HANDLE device = openDevice();
        EXPECT_EQ(addThrough(device, 100 * thread + i), 0);
        EXPECT_TRUE(CloseHandle(device));
      }
    });
  for (auto& thread : threads) thread.join();
  ASSERT_TRUE(driver.open(handle(1)));
  EXPECT_EQ(word(request(driver, kReadPb, countQuery()), 4), 200);
  driver.close(handle(1));
}

TEST(EmbeddedDevice, detach_gives_the_state_file_back) {
  const TemporaryFolder folder;
  TestDriver driver{folder.path("state")};
  driver.attach();
  const HANDLE device = openDevice();
  ASSERT_EQ(addThrough(device, 7), 0);
  driver.detach();
  EXPECT_EQ(addThrough(device, 8), 1);
  EXPECT_TRUE(CloseHandle(device));
  OpenDriver other{folder.path("state")};
  ASSERT_TRUE(other.isOpen());
  EXPECT_EQ(ids(*other, kReadPb), Ids{7});
}

}  // namespace
}  // namespace test
