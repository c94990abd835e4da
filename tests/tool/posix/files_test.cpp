// SPDX-License-Identifier: Apache-2.0
#include "tool/system/files.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>

#include "tests/support/temporary_folder.h"
#include "tool/system/output_file.h"
#include "tool/terminal/errors.h"

namespace test {
namespace {

/// What has been done, in order, and the error that storing something gives.
std::vector<std::string> seen;
std::string refused;
int refusal = 0;

std::string nameOf(int descriptor) {
  return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor)).filename();
}

/// A folder with a file that is finished, and one that is to be replaced by it.
class Files : public testing::Test {
 protected:
  void SetUp() override {
    seen.clear();
    refused = "";
    std::filesystem::create_directory(folder.path("place"));
    folder.write("place/new", {'n', 'e', 'w'});
    folder.write("place/target", {'o', 'l', 'd'});
  }

  void replace() const { tool::platform::replaceFile(folder.path("place/new"), folder.path("place/target")); }
  void refuseToStore(const std::string& name, int error) const {
    refused = name;
    refusal = error;
  }
  [[nodiscard]] std::string content() const {
    const auto bytes = readFile(folder.path("place/target"));
    return {bytes.begin(), bytes.end()};
  }

  TemporaryFolder folder;
};

TEST_F(Files, are_stored_before_they_replace_others_and_the_folder_after) {
  replace();
  EXPECT_EQ(seen, (std::vector<std::string>{"store new", "rename", "store place"}));
  EXPECT_EQ(content(), "new");
}

TEST_F(Files, that_cannot_be_stored_replace_nothing) {
  refuseToStore("new", EIO);
  EXPECT_THROW(replace(), tool::Failure);
  EXPECT_EQ(seen, (std::vector<std::string>{"store new"}));
  EXPECT_EQ(content(), "old");
}

TEST_F(Files, may_be_in_a_folder_that_cannot_be_stored_by_itself) {
  refuseToStore("place", EINVAL);
  replace();
  EXPECT_EQ(content(), "new");
}

TEST_F(Files, are_not_safe_in_a_folder_that_fails) {
  refuseToStore("place", EIO);
  EXPECT_THROW(replace(), tool::Failure);
}

TEST_F(Files, that_are_links_to_nothing_cannot_be_written) {
  std::filesystem::create_symlink("missing", folder.path("link"));
  std::filesystem::create_symlink("loop", folder.path("loop"));
  for (const std::string name : {"link", "loop"}) {
    EXPECT_THROW(tool::OutputFile{folder.path(name)}, tool::Failure) << name;
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path(name))) << name;
  }
}

TEST_F(Files, that_are_links_stay_and_lead_to_what_is_replaced) {
  std::filesystem::create_directory_symlink("place", folder.path("folder"));
  std::filesystem::create_symlink("target", folder.path("place/link"));
  std::filesystem::create_symlink("../folder/link", folder.path("place/further"));
  for (const std::string name : {"folder/target", "folder/link", "place/further"}) {
    SetUp();
    tool::OutputFile file{folder.path(name)};
    std::fputs(name.c_str(), file.open().get());
    file.commit();
    EXPECT_EQ(content(), name);
  }
  for (const std::string name : {"folder", "place/link", "place/further"})
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path(name))) << name;
}

}  // namespace
}  // namespace test

extern "C" {

int __real_fsync(int descriptor);
int __wrap_fsync(int descriptor) {
  const auto name = test::nameOf(descriptor);
  test::seen.push_back("store " + name);
  if (name != test::refused) return __real_fsync(descriptor);
  errno = test::refusal;
  return -1;
}

int __real_rename(const char* from, const char* to);
int __wrap_rename(const char* from, const char* to) {
  test::seen.emplace_back("rename");
  return __real_rename(from, to);
}
}
