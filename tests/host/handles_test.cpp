// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <vector>

#include "host/host.h"
#include "tests/support/faults.h"

namespace test {
namespace {

constexpr const char16_t* kName = u"Global\\Handles";

HANDLE open() { return OpenEventW(SYNCHRONIZE, FALSE, kName); }

TEST(Handles, ascend_and_are_never_given_twice) {
  ASSERT_TRUE(host::createEvent(kName));
  const HANDLE first = open();
  const HANDLE second = open();
  EXPECT_GT(second, first);
  EXPECT_TRUE(CloseHandle(second));
  const HANDLE third = open();
  EXPECT_GT(third, second);
  EXPECT_FALSE(CloseHandle(second));
  EXPECT_TRUE(CloseHandle(first));
  EXPECT_TRUE(CloseHandle(third));
  host::removeEvent(kName);
}

TEST(Handles, are_found_among_many) {
  ASSERT_TRUE(host::createEvent(kName));
  std::vector<HANDLE> handles(1000);
  for (auto& handle : handles) handle = open();
  for (std::size_t i = 0; i < handles.size(); i += 2) EXPECT_TRUE(CloseHandle(handles[i]));
  for (std::size_t i = 0; i < handles.size(); ++i)
    EXPECT_EQ(WaitForSingleObject(handles[i], 0), i % 2 == 0 ? WAIT_FAILED : WAIT_TIMEOUT);
  for (std::size_t i = 1; i < handles.size(); i += 2) EXPECT_TRUE(CloseHandle(handles[i]));
  host::removeEvent(kName);
}

TEST(Handles, are_refused_without_memory_and_given_again) {
  ASSERT_TRUE(host::createEvent(kName));
  std::vector<HANDLE> handles(2000);
  std::size_t count = 0;
  {
    Faults faults;
    faults.failFrom(Fault::kGrowth, 1);
    while (count < handles.size() && (handles[count] = open()) != nullptr) ++count;
  }
  ASSERT_LT(count, handles.size());
  handles.resize(count);
  host::signalEvent(kName);
  for (const HANDLE handle : handles) EXPECT_EQ(WaitForSingleObject(handle, 0), WAIT_OBJECT_0);
  handles.push_back(open());
  for (const HANDLE handle : handles) EXPECT_TRUE(CloseHandle(handle));
  host::removeEvent(kName);
}

TEST(Named, things_need_room) {
  const std::u16string longest(128, u'x');
  EXPECT_TRUE(host::createEvent(longest));
  EXPECT_NE(OpenEventW(SYNCHRONIZE, FALSE, longest.c_str()), nullptr);
  host::removeEvent(longest);
  EXPECT_FALSE(host::createEvent(longest + u"x"));
  EXPECT_TRUE(host::setFileVersion(std::string(64, 'x'), {}));
  host::removeFileVersion(std::string(64, 'x'));
  EXPECT_FALSE(host::setFileVersion(std::string(65, 'x'), {}));
}

}  // namespace
}  // namespace test
