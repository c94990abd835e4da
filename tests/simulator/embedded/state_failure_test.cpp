// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <csignal>
#include <random>

#include "tests/simulator/embedded/client.h"

namespace test {
namespace {

/// The line that a refused open leaves; empty when it was not refused.
std::string refusal(const std::string& path) {
  Errors errors;
  const bool isOpen = OpenDriver{path}.isOpen();
  std::string text = errors.take();
  EXPECT_EQ(isOpen, text.empty()) << text;
  return text;
}

std::string line(const std::string& path, const std::string& reason) {
  return "vexoqtf simulator: " + path + " " + reason + "\n";
}

/// Without the rights that let a test pass where a user would fail.
class Unprivileged {
 public:
  explicit Unprivileged(const std::string& folder) {
    if (geteuid() != 0) return;
    EXPECT_EQ(chown(folder.c_str(), 65534, 65534), 0);
    wasRoot_ = seteuid(65534) == 0;
  }
  ~Unprivileged() {
    if (wasRoot_) {
      EXPECT_EQ(seteuid(0), 0);
    }
  }
  Unprivileged(Unprivileged&&) = delete;
  [[nodiscard]] static bool isPossible() { return geteuid() != 0; }

 private:
  bool wasRoot_ = false;
};

TEST(StateFailure, every_damaged_byte_of_an_older_format_is_refused_and_the_file_stays) {
  const TemporaryFolder folder;
  // The shortest file: every byte of it is tried through the whole driver.
  const Bytes image =
      hex("56 51 53 53 54 41 54 45  01 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00  03 00 00 00  05 00 00 00"
          "a5 3f a6 88 70 88 21 8a");
  for (std::size_t offset = 0; offset < image.size(); ++offset) {
    Bytes damaged = image;
    damaged[offset] ^= 0x10;
    const std::string path = folder.write("state", damaged);
    const std::string text = refusal(path);
    ASSERT_EQ(text.rfind("vexoqtf simulator: " + path + " ", 0), 0U) << offset << text;
    ASSERT_EQ(std::ranges::count(text, '\n'), 1) << text;
    ASSERT_EQ(readFile(path), damaged) << offset;
  }
  EXPECT_EQ(refusal(folder.write("state", image)), "");
  EXPECT_EQ(namesIn(folder.path("")), std::vector<std::string>{"state"});
}

TEST(StateFailure, every_truncation_is_refused_and_the_file_stays) {
  const TemporaryFolder folder;
  for (std::size_t length = 1; length < smallState().size(); length += length < 64 ? 1 : 61) {
    const std::string path = folder.write("state", part(smallState(), 0, length));
    ASSERT_EQ(refusal(path), line(path, length < 8 ? "is not a state file of the simulator" : "is cut short"));
    ASSERT_EQ(readFile(path), part(smallState(), 0, length));
  }
  const std::string present = folder.path("present");
  ASSERT_TRUE(OpenDriver{present}.isOpen());
  const auto size = std::filesystem::file_size(present);
  for (const auto length : std::initializer_list<std::uintmax_t>{size - 1, size / 2, 4096, 100, 12, 8}) {
    std::filesystem::resize_file(present, length);
    EXPECT_EQ(refusal(present), line(present, "is cut short")) << length;
    EXPECT_EQ(std::filesystem::file_size(present), length);
  }
}

TEST(StateFailure, foreign_newer_and_damaged_files_are_told_apart) {
  const TemporaryFolder folder;
  const std::string foreign = folder.write("foreign", sample("laptop-r5.bin"));
  EXPECT_EQ(refusal(foreign), line(foreign, "is not a state file of the simulator"));
  EXPECT_EQ(readFile(foreign), sample("laptop-r5.bin"));
  const std::string newer = folder.write("newer", Record{32}.text(0, "VQSSTATE").u32(8, 4));
  EXPECT_EQ(refusal(newer), line(newer, "was written by a newer simulator (format 4, this one reads 3)"));
  const std::string newest = folder.write("newest", Record{32}.text(0, "VQSSTATE").u32(8, 0xFFFFFFFF));
  EXPECT_EQ(refusal(newest), line(newest, "was written by a newer simulator (format 4294967295, this one reads 3)"));
  const std::string none = folder.write("none", Record{32}.text(0, "VQSSTATE"));
  EXPECT_EQ(refusal(none), line(none, "has the unknown format 0"));
  Bytes image = smallState();
  image.back() ^= 1;
  const std::string damaged = folder.write("damaged", image);
  EXPECT_EQ(refusal(damaged), line(damaged, "is damaged: wrong checksum"));
}

TEST(StateFailure, file_longer_than_any_state_is_not_read) {
  const TemporaryFolder folder;
  const std::string path = folder.write("state", smallState());
  std::filesystem::resize_file(path, 32 + 3056 + 1200 * 3972 + 8 + 1);
  EXPECT_EQ(refusal(path), line(path, "is longer than any state"));
  std::filesystem::resize_file(path, 32 + 3056 + 1200 * 3972 + 8);
  EXPECT_EQ(refusal(path), line(path, "is longer than its content"));
  const std::string present = folder.path("present");
  ASSERT_TRUE(OpenDriver{present}.isOpen());
  std::filesystem::resize_file(present, std::filesystem::file_size(present) + 1);
  EXPECT_EQ(refusal(present), line(present, "is longer than its content"));
}

/// A file with another word in it.
Bytes with(Bytes file, std::size_t offset, std::uint32_t value) {
  for (std::size_t i = 0; i < 4; ++i) file.at(offset + i) = static_cast<std::uint8_t>(value >> (8 * i));
  return file;
}

TEST(StateFailure, content_that_no_driver_leaves_is_refused) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  ASSERT_TRUE(OpenDriver{path}.isOpen());
  const Bytes file = readFile(path);
  const std::size_t settings = 4096 + word(file, 20 + 12 * 4);
  const std::size_t orders = 4096 + 400 * 3972;
  const std::string unsound = line(path, "holds a state that no driver can have");
  const struct {
    std::size_t offset;
    std::uint32_t value;
  } cases[] = {{settings + 24, 2},      // whether the platform has started
               {settings + 504, 2},     // an SE1 word
               {orders, 401},           // policies in the first store
               {orders + 4, 401},       // a place beyond the last
               {orders + 4, 1},         // one place twice
               {orders + 2 * 804, 2}};  // neither of two lists
  for (const auto& [offset, value] : cases) {
    folder.write("state", with(file, offset, value));
    EXPECT_EQ(refusal(path), unsound) << offset - settings << ' ' << offset - orders;
    EXPECT_TRUE(readFile(path) == with(file, offset, value));
  }
  folder.write("state", with(file, 24, 1));
  EXPECT_EQ(refusal(path), line(path, "lays its content out in another way"));
}

TEST(StateFailure, random_damage_is_refused_or_harmless) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  {
    OpenDriver driver{path};
    for (const std::uint32_t code : kModifyCodes)
      for (std::uint32_t id = 0; id < 3; ++id) ASSERT_EQ(add(*driver, code, id), 0);
  }
  const Bytes file = readFile(path);
  std::mt19937 random{11};
  int refused = 0;
  for (int round = 0; round < 60; ++round) {
    Bytes damaged = file;
    for (int i = 0; i < 40; ++i)
      damaged[4096 + random() % (damaged.size() - 4096)] = static_cast<std::uint8_t>(random());
    // Where the lists of the stores stand, and policies that are there.
    for (const std::size_t store : {0U, 1U, 2U})
      for (int i = 0; i < round % 3; ++i)
        damaged[4096 + store * kStoreSize + random() % 12000] = static_cast<std::uint8_t>(random());
    folder.write("state", damaged);
    const Errors errors;
    OpenDriver driver{path};
    refused += driver.isOpen() ? 0 : 1;
    for (const std::uint32_t code : kReadCodes) request(*driver, code, chunkQuery(0));
    for (const std::uint32_t code : kModifyCodes) {
      request(*driver, code, modifyRequest(4).u8(3984, 1));
      request(*driver, code, Record{4000 + 140 * 3}.u32(0, 4).u32(3976, 3));
      request(*driver, code, deleteRequest(1));
      add(*driver, code, 1);
    }
  }
  EXPECT_LT(refused, 60);
}

TEST(StateFailure, refused_driver_keeps_what_it_has_and_can_be_opened_later) {
  const TemporaryFolder folder;
  TestDriver driver;
  std::string& name = driver.stateFile;
  ASSERT_TRUE(driver.open(handle(1)));
  ASSERT_EQ(add(driver, kModifyPb, 1), 0);
  driver.close(handle(1));
  name = folder.write("state", sealed(Record{32}));
  {
    const Errors errors;
    EXPECT_FALSE(driver.open(handle(1)));
  }
  EXPECT_EQ(request(driver, kReadPb, countQuery()), Bytes{});
  name.clear();
  ASSERT_TRUE(driver.open(handle(1)));
  EXPECT_EQ(ids(driver, kReadPb), Ids{1});
  driver.close(handle(1));
  name = folder.write("state", smallState());
  ASSERT_TRUE(driver.open(handle(1)));
  EXPECT_EQ(ids(driver, kReadAsm), Ids{7});
  driver.close(handle(1));
}

TEST(StateFailure, directories_and_pipes_are_no_state_files) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.path("folder"));
  EXPECT_EQ(refusal(folder.path("folder")), line(folder.path("folder"), "is not a regular file"));
  ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(refusal(folder.path("pipe")), line(folder.path("pipe"), "is not a regular file"));
}

TEST(StateFailure, missing_folder_is_refused) {
  const TemporaryFolder folder;
  EXPECT_EQ(refusal(folder.path("no/state")),
            line(folder.path("no/state"), "cannot be opened: No such file or directory"));
  folder.write("file", {});
  EXPECT_EQ(refusal(folder.path("file/state")), line(folder.path("file/state"), "cannot be opened: Not a directory"));
}

TEST(StateFailure, name_that_is_too_long_is_refused) {
  Errors errors;
  TestDriver driver{std::string(4090, 'x')};
  EXPECT_FALSE(driver.open(handle(1)));
  EXPECT_EQ(errors.take(), line(std::string(4090, 'x'), "cannot be opened: File name too long"));
}

TEST(StateFailure, name_with_a_line_break_still_gives_one_line) {
  const std::string text = refusal("no\nsuch/folder\x1b[31m/state");
  EXPECT_EQ(text.rfind("vexoqtf simulator: no?such/folder?[31m/state cannot be ", 0), 0U) << text;
}

TEST(StateFailure, unwritable_folder_is_no_place_for_a_new_file) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  ASSERT_TRUE(OpenDriver{path}.isOpen());
  ASSERT_EQ(chmod(path.c_str(), 0666), 0);
  const Unprivileged rights{folder.path("")};
  ASSERT_EQ(chmod(folder.path("").c_str(), 0555), 0);
  if (!Unprivileged::isPossible()) GTEST_SKIP() << "runs with rights that no folder can refuse";
  EXPECT_EQ(refusal(folder.path("new")), line(folder.path("new"), "cannot be opened: Permission denied"));
  EXPECT_EQ(refusal(path), "") << "a file that is there needs no right to its folder";
  EXPECT_EQ(namesIn(folder.path("")), std::vector<std::string>{"state"});
  ASSERT_EQ(chmod(folder.path("").c_str(), 0755), 0);
}

TEST(StateFailure, unreadable_file_is_refused) {
  const TemporaryFolder folder;
  const std::string path = folder.write("state", smallState());
  ASSERT_EQ(chmod(path.c_str(), 0), 0);
  const Unprivileged rights{folder.path("")};
  if (!Unprivileged::isPossible()) GTEST_SKIP() << "runs with rights that no file can refuse";
  EXPECT_EQ(refusal(path), line(path, "cannot be opened: Permission denied"));
}

TEST(StateFailure, file_that_cannot_grow_is_refused_and_nobody_is_killed) {
  const TemporaryFolder folder;
  const std::string fresh = folder.path("fresh");
  const std::string old = folder.write("old", smallState());
  Errors errors;
  const pid_t process = inProcess([&] {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{8192, 8192};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return 2;
    return OpenDriver{fresh}.isOpen() || OpenDriver{old}.isOpen() ? 1 : 0;
  });
  EXPECT_EQ(exitStatus(process), 0);
  EXPECT_EQ(errors.take(),
            line(fresh, "cannot be written: File too large") + line(old, "cannot be written: File too large"));
  EXPECT_EQ(readFile(old), smallState());
  EXPECT_EQ(namesIn(folder.path("")), (std::vector<std::string>{"fresh", "old"}));
}

TEST(StateFailure, file_that_is_taken_away_is_a_loss_to_nobody) {
  const TemporaryFolder folder;
  const std::string path = folder.path("state");
  OpenDriver first{path};
  ASSERT_EQ(add(*first, kModifyPb, 1), 0);
  std::filesystem::remove(path);
  ASSERT_EQ(add(*first, kModifyPb, 2), 0);
  OpenDriver second{path};
  ASSERT_TRUE(second.isOpen()) << "a file of its own";
  EXPECT_EQ(ids(*second, kReadPb), Ids{});
  EXPECT_EQ(ids(*first, kReadPb), (Ids{1, 2}));
}

}  // namespace
}  // namespace test
