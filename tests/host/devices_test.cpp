// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <string_view>
#include <vector>

#include "host/host.h"
#include "tests/support/faults.h"

namespace test {
namespace {

constexpr GUID kClass = {0x11111111, 0x2222, 0x3333, {1, 2, 3, 4, 5, 6, 7, 8}};
constexpr GUID kOtherClass = {0x11111111, 0x2222, 0x3333, {1, 2, 3, 4, 5, 6, 7, 9}};

/// Notes what reaches it.
class NotingDevice : public host::Device {
 public:
  bool open(HANDLE handle) override {
    handles.push_back(handle);
    return opens;
  }
  bool control(HANDLE handle, const host::DeviceRequest& request) override {
    lastHandle = handle;
    last = request;
    return answers;
  }
  void close(HANDLE handle) override { closed.push_back(handle); }

  bool opens = true;
  bool answers = true;
  std::vector<HANDLE> handles;
  std::vector<HANDLE> closed;
  HANDLE lastHandle = nullptr;
  host::DeviceRequest last{};
};

HANDLE open(const char16_t* path) {
  return CreateFileW(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

ULONG listSize(GUID interfaceClass) {
  ULONG length = 77;
  EXPECT_EQ(CM_Get_Device_Interface_List_SizeA(&length, &interfaceClass, nullptr, 0), CR_SUCCESS);
  return length;
}

TEST(InterfaceList, of_an_absent_class_holds_its_terminator_only) { EXPECT_EQ(listSize(kClass), 1U); }

TEST(InterfaceList, names_the_devices_of_the_class_in_order) {
  NotingDevice first;
  NotingDevice second;
  NotingDevice other;
  host::attachDevice(first, kClass, u"one");
  host::attachDevice(other, kOtherClass, u"zzz");
  host::attachDevice(second, kClass, u"two");
  GUID interfaceClass = kClass;
  ASSERT_EQ(listSize(kClass), 9U);
  std::array<char16_t, 9> list{};
  EXPECT_EQ(CM_Get_Device_Interface_ListW(&interfaceClass, nullptr, list.data(), 8, 0), CR_BUFFER_SMALL);
  EXPECT_EQ(CM_Get_Device_Interface_ListW(&interfaceClass, nullptr, list.data(), 9, 0), CR_SUCCESS);
  EXPECT_EQ((std::u16string_view{list.data(), 9}), (std::u16string_view{u"one\0two\0\0", 9}));
  host::detachDevice(first);
  host::detachDevice(second);
  host::detachDevice(other);
  EXPECT_EQ(listSize(kClass), 1U);
}

TEST(Device, is_not_opened_without_memory_for_the_handle) {
  NotingDevice device;
  host::attachDevice(device, kClass, u"one");
  device.handles.reserve(2000);
  std::size_t count = 0;
  {
    Faults faults;
    faults.failFrom(Fault::kGrowth, 1);
    while (count < 2000 && open(u"one") != INVALID_HANDLE_VALUE) ++count;
  }
  EXPECT_LT(count, 2000U);
  EXPECT_EQ(device.handles.size(), count);
  EXPECT_NE(open(u"one"), INVALID_HANDLE_VALUE);
  for (const HANDLE handle : device.handles) EXPECT_TRUE(CloseHandle(handle));
  EXPECT_EQ(device.closed, device.handles);
  host::detachDevice(device);
}

TEST(Device, is_opened_by_its_path_whatever_the_case) {
  NotingDevice device;
  host::attachDevice(device, kClass, u"\\\\?\\Root#A");
  EXPECT_EQ(open(u"\\\\?\\root#b"), INVALID_HANDLE_VALUE);
  const HANDLE handle = open(u"\\\\?\\ROOT#a");
  ASSERT_NE(handle, INVALID_HANDLE_VALUE);
  EXPECT_EQ(device.handles, std::vector{handle});
  EXPECT_TRUE(CloseHandle(handle));
  EXPECT_EQ(device.closed, std::vector{handle});
  EXPECT_FALSE(CloseHandle(handle));
  host::detachDevice(device);
}

TEST(Device, that_refuses_its_open_leaves_no_handle) {
  NotingDevice device;
  device.opens = false;
  host::attachDevice(device, kClass, u"a");
  EXPECT_EQ(open(u"a"), INVALID_HANDLE_VALUE);
  EXPECT_FALSE(CloseHandle(device.handles.at(0)));
  host::detachDevice(device);
}

TEST(Device, sees_a_request_as_it_was_made) {
  NotingDevice device;
  host::attachDevice(device, kClass, u"a");
  const HANDLE handle = open(u"a");
  std::array<char, 4> in{};
  std::array<char, 8> out{};
  DWORD returned = 0;
  EXPECT_TRUE(DeviceIoControl(handle, 0x1234, in.data(), 4, out.data(), 8, &returned, nullptr));
  EXPECT_EQ(device.lastHandle, handle);
  EXPECT_EQ(device.last.code, 0x1234U);
  EXPECT_EQ(device.last.input, in.data());
  EXPECT_EQ(device.last.inputLength, 4U);
  EXPECT_EQ(device.last.output, out.data());
  EXPECT_EQ(device.last.outputLength, 8U);
  EXPECT_EQ(device.last.returned, &returned);
  EXPECT_EQ(device.last.overlapped, nullptr);
  device.answers = false;
  EXPECT_FALSE(DeviceIoControl(handle, 0x1234, nullptr, 0, nullptr, 0, &returned, nullptr));
  CloseHandle(handle);
  host::detachDevice(device);
}

TEST(Device, sees_no_length_where_there_is_no_buffer) {
  constexpr DWORD kBuffered = 0x80222034;
  constexpr DWORD kDirect = 0x80222035;
  constexpr DWORD kNeither = 0x80222037;
  NotingDevice device;
  host::attachDevice(device, kClass, u"a");
  const HANDLE handle = open(u"a");
  std::array<char, 4> in{};
  DWORD returned = 0;
  EXPECT_TRUE(DeviceIoControl(handle, kBuffered, in.data(), 4, nullptr, 8, &returned, nullptr));
  EXPECT_EQ(device.last.inputLength, 4U);
  EXPECT_EQ(device.last.outputLength, 0U);
  EXPECT_TRUE(DeviceIoControl(handle, kBuffered, nullptr, 4, in.data(), 4, &returned, nullptr));
  EXPECT_EQ(device.last.inputLength, 0U);
  EXPECT_EQ(device.last.outputLength, 4U);
  for (const DWORD code : {kDirect, kNeither}) {
    EXPECT_TRUE(DeviceIoControl(handle, code, in.data(), 4, nullptr, 8, &returned, nullptr));
    EXPECT_EQ(device.last.outputLength, 8U);
  }
  CloseHandle(handle);
  host::detachDevice(device);
}

TEST(Device, that_is_gone_fails_requests_on_its_handles) {
  NotingDevice device;
  host::attachDevice(device, kClass, u"a");
  const HANDLE handle = open(u"a");
  host::detachDevice(device);
  DWORD returned = 0;
  EXPECT_FALSE(DeviceIoControl(handle, 1, nullptr, 0, nullptr, 0, &returned, nullptr));
  EXPECT_TRUE(CloseHandle(handle));
  EXPECT_TRUE(device.closed.empty());
}

TEST(Device, is_not_reached_through_a_handle_that_never_was) {
  DWORD returned = 0;
  EXPECT_FALSE(DeviceIoControl(nullptr, 1, nullptr, 0, nullptr, 0, &returned, nullptr));
  EXPECT_FALSE(DeviceIoControl(INVALID_HANDLE_VALUE, 1, nullptr, 0, nullptr, 0, &returned, nullptr));
}

}  // namespace
}  // namespace test
