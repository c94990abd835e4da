// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <csignal>

#include "host/windows_api.h"
#include "tests/simulator/embedded/client.h"

namespace test {
namespace {

constexpr std::size_t kHead = 4096;

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
    TestDriver driver{path};
    driver.attach();
    ASSERT_TRUE(driver.open(handle(1)));
    ASSERT_FALSE(request(driver, 0x80222090, table).empty());
    ASSERT_FALSE(request(driver, kAppIo, Record{12}.u32(0, 4).u32(4, 5).u32(8, 6)).empty());
    EXPECT_EQ(word(request(driver, 0x80222058, Record{32}.u32(4, 7)), 0), 1);
    EXPECT_EQ(word(request(driver, 0x80222058, Record{32}.u32(4, 7)), 0), 2);
    driver.close(handle(1));
  }
  TestDriver driver{path};
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

TEST(StateFile, begins_with_a_head_that_says_where_what_is) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  ASSERT_TRUE(OpenDriver{path}.isOpen());
  const Bytes file = readFile(path);
  EXPECT_EQ(part(file, 0, 16), hex("56 51 53 53 54 41 54 45  03 00 00 00  08 00 00 00"));
  const char* names[] = {"POLI", "LOGS", "EVNT", "BINA", "SETT", "BEFO", "CHAN", "UNRD"};
  std::size_t end = 0;
  for (std::size_t i = 0; i < std::size(names); ++i) {
    EXPECT_EQ(part(file, 16 + 12 * i, 4), Bytes(names[i], names[i] + 4));
    EXPECT_GE(word(file, 20 + 12 * i), end) << names[i];
    end = word(file, 20 + 12 * i) + word(file, 24 + 12 * i);
  }
  EXPECT_EQ(part(file, 16 + 96, kHead - 112), Bytes(kHead - 112));
  EXPECT_GE(file.size(), kHead + end);
  EXPECT_LT(file.size(), kHead + end + 8);
  EXPECT_EQ(namesIn(folder.path("")), std::vector<std::string>{"state"});
}

TEST(StateFile, has_what_the_driver_was_told_at_once) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  OpenDriver driver{path};
  ASSERT_EQ(add(*driver, kModifyPb, 7), 0);
  ASSERT_EQ(add(*driver, kModifyAsm, 8), 0);
  EXPECT_EQ(part(readFile(path), kHead, 3972), simplePolicy(7).bytes());
  EXPECT_EQ(part(readFile(path), kHead + kStoreSize, 3972), simplePolicy(8).bytes());
}

TEST(StateFile, of_older_formats_is_brought_to_the_present_one) {
  const TemporaryFolder folder;
  for (const Bytes& image : {oldState(), smallState()}) {
    const std::string path = folder.write("state", image);
    for (int time = 0; time < 2; ++time) {
      OpenDriver driver{path};
      ASSERT_TRUE(driver.isOpen());
      EXPECT_EQ(ids(*driver, kReadAsm), Ids{7});
      EXPECT_EQ(part(request(*driver, kModifyAsm, modifyRequest(7)), 3988, 8), hex("03 00 00 00  05 00 00 00"));
      EXPECT_EQ(part(readFile(path), 0, 12), hex("56 51 53 53 54 41 54 45  03 00 00 00"));
    }
    EXPECT_EQ(namesIn(folder.path("")), std::vector<std::string>{"state"});
  }
}

TEST(StateFile, that_is_empty_is_a_fresh_driver) {
  const TemporaryFolder folder;
  OpenDriver driver{folder.write("state", {})};
  ASSERT_TRUE(driver.isOpen());
  EXPECT_EQ(ids(*driver, kReadPb), Ids{});
}

TEST(StateFile, of_a_process_that_ended_before_the_head_is_a_fresh_driver) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  ASSERT_TRUE(OpenDriver{path}.isOpen());
  const auto size = std::filesystem::file_size(path);
  folder.write("state", {});
  std::filesystem::resize_file(path, size);
  ASSERT_TRUE(OpenDriver{path}.isOpen());
  EXPECT_EQ(part(readFile(path), 0, 8), hex("56 51 53 53 54 41 54 45"));
}

TEST(StateFile, belongs_to_its_owner_alone) {
  const TemporaryFolder folder;
  const mode_t mask = umask(0);
  ASSERT_TRUE(OpenDriver{folder.path("state")}.isOpen());
  ASSERT_TRUE(OpenDriver{folder.write("old", smallState())}.isOpen());
  umask(mask);
  for (const char* name : {"state", "old"}) {
    struct stat status{};
    ASSERT_EQ(stat(folder.path(name).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600) << name;
  }
}

TEST(StateFile, is_held_until_the_last_of_several_handles) {
  const TemporaryFolder folder;
  TestDriver driver{folder.path("state")};
  ASSERT_TRUE(driver.open(handle(1)));
  ASSERT_TRUE(driver.open(handle(2)));
  driver.close(handle(1));
  {
    const Errors errors;
    EXPECT_FALSE(OpenDriver{folder.path("state")}.isOpen());
  }
  ASSERT_TRUE(driver.open(handle(1)));
  driver.close(handle(2));
  ASSERT_EQ(add(driver, kModifyPb, 8), 0);
  driver.close(handle(1));
  OpenDriver next{folder.path("state")};
  ASSERT_TRUE(next.isOpen());
  EXPECT_EQ(ids(*next, kReadPb), Ids{8});
}

TEST(StateFile, is_read_again_by_each_first_handle) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  TestDriver driver{path};
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
  TestDriver driver;
  ASSERT_TRUE(driver.open(handle(1)));
  ASSERT_EQ(add(driver, kModifyPb, 1), 0);
  driver.stateFile = folder.write("state", smallState());
  ASSERT_TRUE(driver.open(handle(2)));
  driver.close(handle(2));
  EXPECT_EQ(ids(driver, kReadPb), Ids{1});
  driver.close(handle(1));
  ASSERT_TRUE(driver.open(handle(1)));
  EXPECT_EQ(ids(driver, kReadPb), Ids{});
  EXPECT_EQ(ids(driver, kReadAsm), Ids{7});
  driver.close(handle(1));
  driver.stateFile.clear();
  ASSERT_TRUE(driver.open(handle(1)));
  EXPECT_EQ(ids(driver, kReadPb), Ids{1}) << "what it had before it was given a file";
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
    std::filesystem::current_path(folder.path("elsewhere"));
    ASSERT_EQ(add(*driver, kModifyPb, 7), 0);
  }
  std::filesystem::current_path(before);
  OpenDriver driver{folder.path("state")};
  EXPECT_EQ(ids(*driver, kReadPb), Ids{7});
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
  }
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link")));
  OpenDriver driver{folder.path("real/state")};
  EXPECT_EQ(ids(*driver, kReadPb), Ids{7});
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
  TestDriver driver{folder.path("state")};
  driver.attach();
  driver.detach();
  EXPECT_EQ(readFile(folder.path("state")), hex("00"));
}

TEST(StateFile, keeps_the_changes_of_a_process_that_ends_with_open_handles) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  const pid_t other = inProcess([&path] {
    auto* driver = new OpenDriver{path};
    return driver->isOpen() && add(**driver, kModifyAsm, 8) == 0 ? 0 : 1;
  });
  ASSERT_EQ(exitStatus(other), 0);
  OpenDriver next{path};
  ASSERT_TRUE(next.isOpen());
  EXPECT_EQ(ids(*next, kReadAsm), Ids{8});
}

// Policies come and go as in a queue: the third step of three takes the oldest out.
struct Step {
  bool isAddition;
  std::uint32_t id;
};
Step stepOf(std::uint32_t number) {
  const std::uint32_t round = number / 3;
  return number % 3 == 2 ? Step{false, round} : Step{true, 2 * round + number % 3};
}

/// What the store holds after so many steps, worked out without a driver.
Ids idsAfter(std::uint32_t steps) {
  Ids held;
  for (std::uint32_t number = 0; number < steps; ++number) {
    const Step step = stepOf(number);
    if (step.isAddition)
      held.push_back(step.id);
    else
      std::erase(held, step.id);
  }
  return held;
}

std::uint32_t remove(EmbeddedDriver& driver, std::uint32_t code, std::uint32_t id) {
  Bytes record = deleteRequest(id);
  DWORD returned = 0;
  return driver.control(handle(1), {code, record.data(), 4000, record.data(), 4, &returned, nullptr}) ? word(record, 0)
                                                                                                      : 1;
}

/// Takes one step after the other and writes the number of those taken to a pipe, for as long as it lives.
void workForever(const std::string& path, int acknowledgements) {
  OpenDriver driver{path};
  for (std::uint32_t number = 0; driver.isOpen() && number < 1000; ++number) {
    const Step step = stepOf(number);
    if ((step.isAddition ? add(*driver, kModifyPb, step.id) : remove(*driver, kModifyPb, step.id)) != 0) return;
    const std::uint32_t done = number + 1;
    if (write(acknowledgements, &done, sizeof(done)) != sizeof(done)) return;
  }
  pause();
}

Ids allIds(EmbeddedDriver& driver, std::uint32_t code) {
  Ids all;
  const std::uint32_t count = word(request(driver, code, countQuery()), 4);
  for (std::uint32_t chunk = 0; 5 * chunk < count; ++chunk) {
    const auto answer = request(driver, code, chunkQuery(chunk));
    for (std::uint32_t i = 0; i < 5 && 5 * chunk + i < count; ++i)
      all.push_back(word(answer, 12 + 3972 * std::size_t{i} + 164));
  }
  return all;
}

TEST(StateFile, loses_nothing_that_was_acknowledged_when_its_process_is_killed) {
  const TemporaryFolder folder;
  std::uint32_t longest = 0;
  for (int round = 0; round < 25; ++round) {
    const std::string path = folder.path("state" + std::to_string(round));
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t worker = inProcess([&] {
      workForever(path, ends[1]);
      return 1;
    });
    close(ends[1]);
    usleep(static_cast<useconds_t>(2000 + 700 * round));
    ASSERT_EQ(kill(worker, SIGKILL), 0);
    EXPECT_EQ(exitStatus(worker), -1);
    std::uint32_t acknowledged = 0;
    for (std::uint32_t done = 0; read(ends[0], &done, sizeof(done)) == sizeof(done);) acknowledged = done;
    close(ends[0]);
    longest = std::max(longest, acknowledged);
    OpenDriver driver{path};
    ASSERT_TRUE(driver.isOpen());
    const Ids held = allIds(*driver, kReadPb);
    EXPECT_TRUE(held == idsAfter(acknowledged) || held == idsAfter(acknowledged + 1)) << acknowledged;
  }
  EXPECT_GT(longest, 10U) << "the processes lived long enough to do something";
}

}  // namespace
}  // namespace test
