// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <sys/stat.h>

#include "host/windows_api.h"
#include "simulator/embedded_client.h"

namespace test {
namespace {

TEST(StateFile, carries_the_state_from_one_driver_to_the_next) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  {
    OpenDriver first{path};
    ASSERT_TRUE(first.isOpen());
    for (const std::uint32_t id : {9U, 7U, 8U}) ASSERT_EQ(add(*first, kModifyPb, id), 0);
    ASSERT_EQ(add(*first, kModifyBalanceProfile, 1), 0);
    ASSERT_FALSE(request(*first, kModifyAsm, modifyRequest(6).u32(3988, 3).u32(3992, 5)).empty());
  }
  OpenDriver second{path};
  ASSERT_TRUE(second.isOpen());
  EXPECT_EQ(ids(*second, kReadPb), (Ids{9, 7, 8}));
  EXPECT_EQ(ids(*second, kReadAsm), Ids{});
  EXPECT_EQ(ids(*second, kReadBalanceProfile), Ids{1});
  EXPECT_EQ(part(request(*second, kModifyAsm, modifyRequest(7)), 3988, 8), hex("03 00 00 00  05 00 00 00"));
}

TEST(StateFile, carries_settings_and_neither_logs_nor_registrations) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  const Record table = Record{16}.u32(0, 1).u8(13, 9);
  {
    EmbeddedDriver driver{path};
    driver.attach();
    ASSERT_TRUE(driver.open(handle(1)));
    ASSERT_FALSE(request(driver, 0x80222090, table).empty());
    ASSERT_FALSE(request(driver, kAppIo, Record{12}.u32(0, 4).u32(4, 5).u32(8, 6)).empty());
    EXPECT_EQ(word(request(driver, 0x80222058, Record{32}.u32(4, 7)), 0), 1);
    EXPECT_EQ(word(request(driver, 0x80222058, Record{32}.u32(4, 7)), 0), 2);
    driver.close(handle(1));
  }
  EmbeddedDriver driver{path};
  driver.attach();
  ASSERT_TRUE(driver.open(handle(1)));
  EXPECT_EQ(request(driver, 0x80222090, Record{16}), Record{16}.u8(13, 9).bytes());
  EXPECT_EQ(word(request(driver, 0x80222058, Record{32}.u32(4, 7)), 0), 1);
  const HANDLE event = OpenEventW(SYNCHRONIZE, FALSE, u"Global\\VexoQtfAppOutputEvent");
  EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT) << "nothing has changed since";
  EXPECT_TRUE(CloseHandle(event));
  EXPECT_EQ(request(driver, kAppIo, Record{12}), Record{12}.u32(4, 5).u32(8, 6).bytes());
  driver.close(handle(1));
}

TEST(StateFile, is_written_as_documented) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  {
    OpenDriver driver{path};
    (*driver).setTime(12345);
    ASSERT_EQ(add(*driver, kModifyAsm, 7), 0);
    ASSERT_FALSE(request(*driver, kModifyAsm, modifyRequest(6).u32(3988, 3).u32(3992, 5)).empty());
  }
  EXPECT_EQ(difference(readFile(path), smallState()), "");
  EXPECT_EQ(namesIn(folder.path("")), (std::vector<std::string>{"state", "state.lock"}));
}

TEST(StateFile, may_come_from_elsewhere) {
  const TemporaryFolder folder;
  OpenDriver driver{folder.write("state", smallState())};
  ASSERT_TRUE(driver.isOpen());
  EXPECT_EQ(ids(*driver, kReadAsm), Ids{7});
}

TEST(StateFile, is_not_written_when_nothing_was_asked) {
  const TemporaryFolder folder;
  {
    OpenDriver driver{folder.path("fresh")};
    ASSERT_TRUE(driver.isOpen());
  }
  EXPECT_FALSE(fileExists(folder.path("fresh")));
}

TEST(StateFile, is_written_for_the_start_of_the_platform) {
  const TemporaryFolder folder;
  const std::string path = folder.path("fresh");
  {
    OpenDriver driver{path};
    (*driver).setTime(12345);
    ASSERT_EQ(ids(*driver, kReadPb), Ids{});
  }
  EXPECT_EQ(difference(readFile(path), sealed(stateContent(0))), "");
}

TEST(StateFile, of_format_1_is_read_and_written_in_format_2) {
  const TemporaryFolder folder;
  const std::string path = folder.write("state", oldState());
  {
    OpenDriver driver{path};
    ASSERT_TRUE(driver.isOpen());
    (*driver).setTime(12345);
    EXPECT_EQ(ids(*driver, kReadAsm), Ids{7});
  }
  EXPECT_EQ(difference(readFile(path), smallState()), "");
}

TEST(StateFile, is_not_written_because_time_has_passed) {
  const TemporaryFolder folder;
  const std::string path = folder.write("state", smallState());
  {
    OpenDriver driver{path};
    (*driver).setTime(12345 + 600000);
    ASSERT_EQ(ids(*driver, kReadAsm), Ids{7});
  }
  EXPECT_EQ(readFile(path), smallState());
}

TEST(StateFile, is_not_written_without_a_change) {
  const TemporaryFolder folder;

  const std::string path = folder.write("state", smallState());
  struct stat before{}, after{};
  ASSERT_EQ(stat(path.c_str(), &before), 0);
  {
    OpenDriver driver{path};
    ASSERT_EQ(add(*driver, kModifyAsm, 7), 2);
    ASSERT_EQ(add(*driver, kModifyPb, 7), 0);
    ASSERT_FALSE(request(*driver, kModifyPb, modifyRequest(3)).empty());
  }
  ASSERT_EQ(stat(path.c_str(), &after), 0);
  EXPECT_EQ(after.st_ino, before.st_ino);
}

TEST(StateFile, is_replaced_and_never_rewritten) {
  const TemporaryFolder folder;
  const std::string path = folder.write("state", smallState());
  // A reader that holds the old file keeps seeing all of it.
  std::filesystem::create_hard_link(path, folder.path("old"));
  {
    OpenDriver driver{path};
    ASSERT_EQ(add(*driver, kModifyAsm, 8), 0);
  }
  EXPECT_EQ(readFile(folder.path("old")), smallState());
  EXPECT_EQ(readFile(path).size(), kPoliciesOffset + 2 * 3972 + 8);
}

TEST(StateFile, belongs_to_its_owner_alone) {
  const TemporaryFolder folder;
  const mode_t mask = umask(0);
  {
    OpenDriver driver{folder.path("state")};
    ASSERT_EQ(add(*driver, kModifyPb, 7), 0);
  }
  umask(mask);
  for (const char* name : {"state", "state.lock"}) {
    struct stat status{};
    ASSERT_EQ(stat(folder.path(name).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600) << name;
  }
}

TEST(StateFile, is_saved_by_the_last_of_several_handles) {
  const TemporaryFolder folder;
  EmbeddedDriver driver{folder.path("state")};
  ASSERT_TRUE(driver.open(handle(1)));
  ASSERT_TRUE(driver.open(handle(2)));
  ASSERT_EQ(add(driver, kModifyPb, 7), 0);
  driver.close(handle(1));
  EXPECT_FALSE(fileExists(folder.path("state")));
  ASSERT_EQ(add(driver, kModifyPb, 8), 0);
  driver.close(handle(2));
  EXPECT_EQ(readFile(folder.path("state")).size(), kPoliciesOffset + 2 * 3972 + 8);
}

TEST(StateFile, is_read_again_by_each_first_handle) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  EmbeddedDriver driver{path};
  ASSERT_TRUE(driver.open(handle(1)));
  ASSERT_EQ(add(driver, kModifyPb, 1), 0);
  driver.close(handle(1));
  folder.write("state", smallState());
  ASSERT_TRUE(driver.open(handle(1)));
  EXPECT_EQ(ids(driver, kReadPb), Ids{});
  EXPECT_EQ(ids(driver, kReadAsm), Ids{7});
  driver.close(handle(1));
  std::filesystem::remove(path);
  ASSERT_TRUE(driver.open(handle(1)));
  EXPECT_EQ(ids(driver, kReadAsm), Ids{});
  driver.close(handle(1));
}

TEST(StateFile, name_is_asked_for_by_each_first_handle) {
  const TemporaryFolder folder;
  std::string name;
  EmbeddedDriver driver{[&name] { return name; }};
  ASSERT_TRUE(driver.open(handle(1)));
  ASSERT_EQ(add(driver, kModifyPb, 1), 0);
  name = folder.write("state", smallState());
  ASSERT_TRUE(driver.open(handle(2)));
  driver.close(handle(2));
  EXPECT_EQ(ids(driver, kReadPb), Ids{1});
  driver.close(handle(1));
  ASSERT_TRUE(driver.open(handle(1)));
  EXPECT_EQ(ids(driver, kReadPb), Ids{});
  EXPECT_EQ(ids(driver, kReadAsm), Ids{7});
  driver.close(handle(1));
  name.clear();
  ASSERT_TRUE(driver.open(handle(1)));
  EXPECT_EQ(ids(driver, kReadAsm), Ids{7});
  driver.close(handle(1));
}

TEST(StateFile, stays_where_it_was_when_the_working_directory_changes) {
  const TemporaryFolder folder;
  const auto before = std::filesystem::current_path();
  std::filesystem::create_directory(folder.path("elsewhere"));
  std::filesystem::current_path(folder.path(""));
  {
    OpenDriver driver{"state"};
    ASSERT_TRUE(driver.isOpen());
    ASSERT_EQ(add(*driver, kModifyPb, 7), 0);
    std::filesystem::current_path(folder.path("elsewhere"));
  }
  std::filesystem::current_path(before);
  EXPECT_TRUE(fileExists(folder.path("state")));
  EXPECT_EQ(namesIn(folder.path("elsewhere")), std::vector<std::string>{});
}

TEST(StateFile, is_found_through_a_symbolic_link_that_stays) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.path("real"));
  folder.write("real/state", smallState());
  std::filesystem::create_symlink("real/state", folder.path("link"));
  {
    OpenDriver driver{folder.path("link")};
    ASSERT_TRUE(driver.isOpen());
    ASSERT_EQ(add(*driver, kModifyPb, 7), 0);
    EXPECT_TRUE(fileExists(folder.path("real/state.lock")));
  }
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link")));
  EXPECT_EQ(readFile(folder.path("real/state")).size(), kPoliciesOffset + 2 * 3972 + 8);
  EXPECT_EQ(namesIn(folder.path("")), (std::vector<std::string>{"link", "real"}));
}

TEST(StateFile, of_full_stores_comes_back) {
  const TemporaryFolder folder;
  {
    OpenDriver driver{folder.path("state")};
    for (const std::uint32_t code : kModifyCodes)
      for (std::uint32_t id = 0; id < 400; ++id) ASSERT_EQ(add(*driver, code, id), 0);
  }
  OpenDriver driver{folder.path("state")};
  ASSERT_TRUE(driver.isOpen());
  for (const std::uint32_t code : kReadCodes) EXPECT_EQ(word(request(*driver, code, countQuery()), 4), 400);
  EXPECT_EQ(add(*driver, kModifyPb, 400), 3);
}

TEST(StateFile, costs_nothing_before_the_first_handle) {
  const TemporaryFolder folder;
  folder.write("state", hex("00"));
  EmbeddedDriver driver{folder.path("state")};
  driver.attach();
  driver.detach();
  EXPECT_EQ(namesIn(folder.path("")), std::vector<std::string>{"state"});
}

}  // namespace
}  // namespace test
