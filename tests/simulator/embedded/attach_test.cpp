// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/simulator/embedded/attached_device.h"

// The driver of this program was attached before main, as it is in a process that loads the library.

namespace test {
namespace {

TEST(AttachedDriver, is_there_without_being_asked_for) {
  GUID interfaceClass = {0x9DC9718B, 0x59BF, 0x43EE, {0x94, 0xED, 0x34, 0xBB, 0x82, 0x3D, 0xCE, 0xDF}};
  std::u16string list(100, u'x');
  ASSERT_EQ(CM_Get_Device_Interface_ListW(&interfaceClass, nullptr, list.data(), 100, 0), CR_SUCCESS);
  EXPECT_EQ(list.substr(0, list.find(u'\0')), kPath);
  DWORD unused = 0;
  EXPECT_EQ(GetFileVersionInfoSizeA("VexoQTFServices.dll", &unused), sizeof(VS_FIXEDFILEINFO));
  EXPECT_EQ(GetFileVersionInfoSizeA("vexoqtf.sys", &unused), sizeof(VS_FIXEDFILEINFO));
}

TEST(AttachedDriver, takes_its_state_file_from_the_environment_at_the_first_open) {
  const TemporaryFolder folder;
  const std::string path = folder.write("state", smallState());
  ASSERT_EQ(setenv("VEXOQTF_SIMULATOR_STATE", path.c_str(), 1), 0);
  const HANDLE device = openDevice();
  ASSERT_NE(device, INVALID_HANDLE_VALUE);
  EXPECT_EQ(addThrough(device, 9), 0);
  EXPECT_TRUE(CloseHandle(device));
  unsetenv("VEXOQTF_SIMULATOR_STATE");
  OpenDriver other{path};
  ASSERT_TRUE(other.isOpen());
  EXPECT_EQ(ids(*other, kReadPb), Ids{9});
  EXPECT_EQ(ids(*other, kReadAsm), Ids{7});
}

TEST(AttachedDriver, needs_no_state_file) {
  for (const char* name : {static_cast<const char*>(nullptr), ""}) {
    name == nullptr ? unsetenv("VEXOQTF_SIMULATOR_STATE") : setenv("VEXOQTF_SIMULATOR_STATE", name, 1);
    const HANDLE device = openDevice();
    ASSERT_NE(device, INVALID_HANDLE_VALUE);
    EXPECT_EQ(addThrough(device, 9), name == nullptr ? 0 : 2);
    EXPECT_TRUE(CloseHandle(device));
  }
  unsetenv("VEXOQTF_SIMULATOR_STATE");
}

TEST(AttachedDriver, takes_its_options_from_the_environment) {
  setenv("VEXOQTF_SIMULATOR_OPTIONS", "x=1", 1);
  Errors errors;
  EXPECT_EQ(openDevice(), INVALID_HANDLE_VALUE);
  EXPECT_EQ(errors.take(), "vexoqtf simulator: VEXOQTF_SIMULATOR_OPTIONS: \"x=1\" is not understood\n");
  for (const char* words : {"", "seed=1,time=5"}) {
    setenv("VEXOQTF_SIMULATOR_OPTIONS", words, 1);
    const HANDLE device = openDevice();
    EXPECT_NE(device, INVALID_HANDLE_VALUE) << words;
    EXPECT_TRUE(CloseHandle(device));
  }
  unsetenv("VEXOQTF_SIMULATOR_OPTIONS");
}

TEST(AttachedDriver, takes_no_name_that_is_too_long) {
  setenv("VEXOQTF_SIMULATOR_STATE", std::string(4096, 'x').c_str(), 1);
  Errors errors;
  EXPECT_EQ(openDevice(), INVALID_HANDLE_VALUE);
  EXPECT_EQ(errors.take(), "vexoqtf simulator: VEXOQTF_SIMULATOR_STATE: is longer than 4095 bytes\n");
  unsetenv("VEXOQTF_SIMULATOR_STATE");
}

TEST(AttachedDriver, cannot_be_opened_on_a_bad_state_file) {
  const TemporaryFolder folder;
  const std::string path = folder.write("state", hex("00"));
  setenv("VEXOQTF_SIMULATOR_STATE", path.c_str(), 1);
  Errors errors;
  EXPECT_EQ(openDevice(), INVALID_HANDLE_VALUE);
  EXPECT_EQ(errors.take(), "vexoqtf simulator: " + path + " is not a state file of the simulator\n");
  unsetenv("VEXOQTF_SIMULATOR_STATE");
  EXPECT_EQ(readFile(path), hex("00"));
}

}  // namespace
}  // namespace test
