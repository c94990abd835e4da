// SPDX-License-Identifier: Apache-2.0
#include <sys/resource.h>
#include <sys/stat.h>
#include <csignal>

#include "simulator/embedded_client.h"

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

TEST(StateFailure, every_damaged_byte_is_refused_and_the_file_stays) {
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
  EXPECT_EQ(namesIn(folder.path("")), (std::vector<std::string>{"state", "state.lock"}));
}

TEST(StateFailure, every_truncation_is_refused_and_the_file_stays) {
  const TemporaryFolder folder;
  for (std::size_t length = 0; length < smallState().size(); length += length < 64 ? 1 : 61) {
    const std::string path = folder.write("state", part(smallState(), 0, length));
    ASSERT_EQ(refusal(path), line(path, length < 8 ? "is not a state file of the simulator" : "is cut short"));
    ASSERT_EQ(readFile(path), part(smallState(), 0, length));
  }
}

TEST(StateFailure, foreign_newer_and_damaged_files_are_told_apart) {
  const TemporaryFolder folder;
  const std::string foreign = folder.write("foreign", sample("laptop-r5.bin"));
  EXPECT_EQ(refusal(foreign), line(foreign, "is not a state file of the simulator"));
  EXPECT_EQ(readFile(foreign), sample("laptop-r5.bin"));
  const std::string newer = folder.write("newer", sealed(Record{32}.text(0, "VQSSTATE").u32(8, 3)));
  EXPECT_EQ(refusal(newer), line(newer, "was written by a newer simulator (format 3, this one reads 2)"));
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
}

TEST(StateFailure, refused_driver_keeps_what_it_has_and_can_be_opened_later) {
  const TemporaryFolder folder;
  std::string name;
  EmbeddedDriver driver{[&name] { return name; }};
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
  EXPECT_EQ(
      refusal(folder.path("no/state")),
      line(folder.path("no/state"), "cannot be written: folder " + folder.path("no") + ": No such file or directory"));
  folder.write("file", {});
  EXPECT_NE(refusal(folder.path("file/state")), "");
}

TEST(StateFailure, name_with_a_line_break_still_gives_one_line) {
  const std::string text = refusal("no\nsuch/folder\x1b[31m/state");
  EXPECT_EQ(text.rfind("vexoqtf simulator: no?such/folder?[31m/state cannot be ", 0), 0U) << text;
}

TEST(StateFailure, unwritable_folder_is_refused_at_the_open) {
  const TemporaryFolder folder;
  const std::string path = folder.write("state", smallState());
  ASSERT_EQ(chmod(path.c_str(), 0644), 0);
  const Unprivileged rights{folder.path("")};
  ASSERT_EQ(chmod(folder.path("").c_str(), 0555), 0);
  if (!Unprivileged::isPossible()) GTEST_SKIP() << "runs with rights that no folder can refuse";
  const std::string text = refusal(path);
  EXPECT_EQ(text.rfind("vexoqtf simulator: " + path + " cannot be written: folder ", 0), 0U) << text;
  EXPECT_NE(text.find(": Permission denied\n"), std::string::npos) << text;
  EXPECT_EQ(namesIn(folder.path("")), std::vector<std::string>{"state"});
  ASSERT_EQ(chmod(folder.path("").c_str(), 0755), 0);
}

TEST(StateFailure, unreadable_file_and_lock_are_refused) {
  const TemporaryFolder folder;
  const std::string path = folder.write("state", smallState());
  ASSERT_EQ(chmod(path.c_str(), 0), 0);
  folder.write("locked", smallState());
  folder.write("locked.lock", {});
  ASSERT_EQ(chmod(folder.path("locked.lock").c_str(), 0), 0);
  const Unprivileged rights{folder.path("")};
  if (!Unprivileged::isPossible()) GTEST_SKIP() << "runs with rights that no file can refuse";
  EXPECT_EQ(refusal(path), line(path, "cannot be read: Permission denied"));
  EXPECT_EQ(refusal(folder.path("locked")),
            line(folder.path("locked"), "its lock file cannot be opened: Permission denied"));
}

TEST(StateFailure, lock_is_never_taken_on_the_target_of_a_link) {
  const TemporaryFolder folder;
  folder.write("victim", hex("01"));
  std::filesystem::create_symlink("victim", folder.path("state.lock"));
  EXPECT_NE(refusal(folder.path("state")), "");
  EXPECT_EQ(readFile(folder.path("victim")), hex("01"));
}

TEST(StateFailure, folder_lost_before_the_close_is_told) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.path("gone"));
  const std::string path = folder.path("gone/state");
  Errors errors;
  {
    OpenDriver driver{path};
    ASSERT_EQ(add(*driver, kModifyPb, 7), 0);
    std::filesystem::remove_all(folder.path("gone"));
  }
  EXPECT_EQ(errors.take(), line(path, "cannot be written: No such file or directory"));
}

TEST(StateFailure, file_that_does_not_fit_leaves_the_old_one_and_nothing_else) {
  const TemporaryFolder folder;
  const std::string path = folder.write("state", smallState());
  Errors errors;
  const pid_t process = inProcess([&path] {
    OpenDriver driver{path};
    if (add(*driver, kModifyPb, 8) != 0) return 1;
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{5000, 5000};
    return setrlimit(RLIMIT_FSIZE, &limit) == 0 ? 0 : 2;
  });
  ASSERT_EQ(exitStatus(process), 0);
  EXPECT_EQ(errors.take(), line(path, "cannot be written: File too large"));
  EXPECT_EQ(readFile(path), smallState());
  EXPECT_EQ(namesIn(folder.path("")), (std::vector<std::string>{"state", "state.lock"}));
}

TEST(StateFailure, close_without_a_save_lets_the_next_driver_in) {
  const TemporaryFolder folder;
  const std::string path = folder.path("sub/state");
  std::filesystem::create_directory(folder.path("sub"));
  EmbeddedDriver driver{path, milliseconds{0}};
  ASSERT_TRUE(driver.open(handle(1)));
  ASSERT_EQ(add(driver, kModifyPb, 7), 0);
  std::filesystem::rename(folder.path("sub"), folder.path("moved"));
  {
    const Errors errors;
    driver.close(handle(1));
  }
  std::filesystem::rename(folder.path("moved"), folder.path("sub"));
  OpenDriver next{path};
  ASSERT_TRUE(next.isOpen());
  EXPECT_EQ(ids(*next, kReadPb), Ids{});
}

}  // namespace
}  // namespace test
