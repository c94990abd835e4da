// SPDX-License-Identifier: Apache-2.0
#include "tool/system/files.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/temporary_folder.h"
#include "tests/tool/windows/file_calls.h"
#include "tool/system/output_file.h"
#include "tool/terminal/errors.h"

namespace test {
namespace {

namespace platform = tool::platform;

/// A folder with a file that is finished, and one that is to be replaced by it.
class Files : public testing::Test {
 protected:
  void SetUp() override {
    folder.write("new", {'n', 'e', 'w'});
    folder.write("target", {'o', 'l', 'd'});
  }

  void replace() const { platform::replaceFile(finished, target); }
  [[nodiscard]] std::string refusal() const {
    try {
      replace();
    } catch (const tool::Failure& failure) {
      return failure.what();
    }
    return "";
  }
  [[nodiscard]] std::string content(const std::string& name) const {
    if (!fileExists(folder.path(name))) return "none";
    const auto bytes = readFile(folder.path(name));
    return {bytes.begin(), bytes.end()};
  }
  /// The calls of these kinds.
  [[nodiscard]] std::vector<std::wstring> seen(const std::vector<std::wstring>& kinds) const {
    std::vector<std::wstring> words;
    for (const auto& call : calls.seen)
      if (const auto word = call.substr(0, call.find(L' ')); std::ranges::find(kinds, word) != kinds.end())
        words.push_back(word);
    return words;
  }

  TemporaryFolder folder;
  std::string finished = folder.path("new");
  std::string target = folder.path("target");
  FileCalls calls;
};

const std::vector<std::wstring> kChanges = {L"flush", L"replace", L"move"};

TEST_F(Files, are_on_the_disk_before_they_replace_others) {
  replace();
  EXPECT_EQ(seen(kChanges), (std::vector<std::wstring>{L"flush", L"replace"}));
  EXPECT_EQ(content("target"), "new");
  EXPECT_EQ(content("new"), "none");
}

TEST_F(Files, are_on_the_disk_before_they_are_where_none_was) {
  std::filesystem::remove(target);
  calls.seen.clear();
  replace();
  EXPECT_EQ(seen(kChanges), (std::vector<std::wstring>{L"flush", L"move"}));
  EXPECT_EQ(content("target"), "new");
}

TEST_F(Files, that_cannot_be_stored_replace_nothing) {
  calls.fail("FlushFileBuffers", ERROR_DISK_FULL);
  EXPECT_NE(refusal().find("target cannot be written: "), std::string::npos);
  EXPECT_EQ(seen(kChanges), std::vector<std::wstring>{L"flush"});
  EXPECT_EQ(content("target"), "old");
}

TEST_F(Files, need_no_flushing_where_there_is_none) {
  for (const long error : {ERROR_INVALID_FUNCTION, ERROR_NOT_SUPPORTED}) {
    calls.fail("FlushFileBuffers", static_cast<DWORD>(error));
    EXPECT_EQ(refusal(), "") << error;
    EXPECT_EQ(content("target"), "new") << error;
    SetUp();
  }
}

TEST_F(Files, are_moved_where_the_file_system_cannot_replace) {
  for (const long error : {ERROR_INVALID_FUNCTION, ERROR_NOT_SUPPORTED, ERROR_INVALID_PARAMETER,
                           ERROR_CALL_NOT_IMPLEMENTED, ERROR_UNABLE_TO_REMOVE_REPLACED}) {
    calls.fail("ReplaceFileW", static_cast<DWORD>(error));
    EXPECT_EQ(refusal(), "") << error;
    EXPECT_EQ(content("target"), "new") << error;
    SetUp();
  }
}

TEST_F(Files, are_moved_when_replacing_has_ended_half_way) {
  calls.fail("ReplaceFileW", ERROR_UNABLE_TO_MOVE_REPLACEMENT, [&] { std::filesystem::remove(target); });
  EXPECT_EQ(refusal(), "");
  EXPECT_EQ(content("target"), "new");
  SetUp();
  calls.fail("ReplaceFileW", ERROR_UNABLE_TO_MOVE_REPLACEMENT_2,
             [&] { std::filesystem::rename(target, folder.path("moved away")); });
  EXPECT_EQ(refusal(), "");
  EXPECT_EQ(content("target"), "new");
}

TEST_F(Files, that_vanish_meanwhile_are_no_obstacle) {
  calls.fail("ReplaceFileW", ERROR_FILE_NOT_FOUND, [&] { std::filesystem::remove(target); });
  EXPECT_EQ(refusal(), "");
  EXPECT_EQ(content("target"), "new");
}

TEST_F(Files, in_use_are_left_alone) {
  calls.fail("ReplaceFileW", ERROR_SHARING_VIOLATION);
  EXPECT_TRUE(refusal().ends_with("target cannot be written: another program has it open")) << refusal();
  calls.fail("ReplaceFileW", ERROR_ACCESS_DENIED);
  EXPECT_NE(refusal().find("target cannot be written: "), std::string::npos) << refusal();
  EXPECT_EQ(seen({L"move"}), std::vector<std::wstring>{});
  EXPECT_EQ(content("target"), "old");
}

TEST_F(Files, move_that_fails_too_tells_why) {
  calls.fail("ReplaceFileW", ERROR_NOT_SUPPORTED);
  calls.fail("MoveFileExW", ERROR_SHARING_VIOLATION);
  EXPECT_TRUE(refusal().ends_with("target cannot be written: another program has it open")) << refusal();
  EXPECT_EQ(content("target"), "old");
}

/// The paths under which Windows gets to see a file that is asked for.
std::wstring askedFor(const std::string& path) {
  const FileCalls calls;
  static_cast<void>(platform::fileKind(path));
  return calls.seen.empty() ? L"" : calls.seen.back().substr(std::wstring{L"attributes "}.size());
}

TEST_F(Files, have_long_paths_in_the_form_that_has_no_limit) {
  const std::string name(200, 'n');
  const std::wstring wideName(200, L'n');
  EXPECT_EQ(askedFor("C:\\a\\b.bin"), L"C:\\a\\b.bin");
  EXPECT_EQ(askedFor("b.bin"), L"b.bin");
  EXPECT_EQ(askedFor("C:\\" + name + "/" + name), L"\\\\?\\C:\\" + wideName + L"\\" + wideName);
  EXPECT_EQ(askedFor("C:\\" + name + "\\..\\" + name + "\\" + name), L"\\\\?\\C:\\" + wideName + L"\\" + wideName);
  EXPECT_EQ(askedFor("\\\\server\\share\\" + name + "\\" + name),
            L"\\\\?\\UNC\\server\\share\\" + wideName + L"\\" + wideName);
}

TEST_F(Files, have_paths_that_are_in_that_form_already_as_they_stand) {
  for (const std::string path : {"\\\\?\\C:\\a\\b.bin", "\\\\?\\UNC\\server\\share\\b.bin", "\\\\server\\share\\b.bin"})
    EXPECT_EQ(askedFor(path), std::wstring(path.begin(), path.end()));
  const std::string name(300, 'n');
  EXPECT_EQ(askedFor("\\\\?\\C:\\" + name), L"\\\\?\\C:\\" + std::wstring(300, L'n'));
}

TEST_F(Files, of_259_units_are_the_longest_without_it) {
  EXPECT_EQ(askedFor("C:\\" + std::string(256, 'n')), L"C:\\" + std::wstring(256, L'n'));
  EXPECT_EQ(askedFor("C:\\" + std::string(257, 'n')), L"\\\\?\\C:\\" + std::wstring(257, L'n'));
}

TEST_F(Files, that_are_links_lead_to_what_is_replaced) {
  const auto link = std::filesystem::path{folder.path("link")}.wstring();
  calls.makeLink(link, std::filesystem::path{target}.wstring());
  tool::OutputFile file{folder.path("link")};
  EXPECT_TRUE(file.path().starts_with("\\\\?\\" + target + ".")) << file.path();
  std::fputs("linked", file.open().get());
  file.commit();
  EXPECT_EQ(content("target"), "linked");
  EXPECT_EQ(content("link"), "none");
}

TEST_F(Files, that_are_links_to_nothing_cannot_be_written) {
  calls.makeLink(std::filesystem::path{folder.path("link")}.wstring(), L"C:\\no\\such\\file");
  EXPECT_THROW(tool::OutputFile{folder.path("link")}, tool::Failure);
  calls.makeLink(std::filesystem::path{folder.path("link")}.wstring(), std::filesystem::path{target}.wstring());
  calls.fail("GetFinalPathNameByHandleW", ERROR_INVALID_FUNCTION);
  EXPECT_THROW(tool::OutputFile{folder.path("link")}, tool::Failure);
}

TEST_F(Files, that_are_devices_are_no_files) {
  for (const std::string device : {"NUL", "nul", "CON", "COM1", "\\\\.\\NUL"})
    EXPECT_EQ(platform::fileKind(device), platform::FileKind::kOther) << device;
  EXPECT_EQ(platform::fileKind(target), platform::FileKind::kRegular);
  EXPECT_EQ(platform::fileKind(folder.path(".")), platform::FileKind::kFolder);
  EXPECT_EQ(platform::fileKind(folder.path("missing")), platform::FileKind::kNone);
  EXPECT_EQ(platform::fileKind(folder.path("a?b")), platform::FileKind::kNone);
}

TEST_F(Files, have_a_size_that_is_not_a_link_s) {
  calls.makeLink(std::filesystem::path{folder.path("link")}.wstring(), std::filesystem::path{target}.wstring());
  EXPECT_EQ(platform::fileSize(folder.path("link")), 3U);
  EXPECT_EQ(platform::fileSize(folder.path("missing")), std::nullopt);
}

TEST_F(Files, are_found_and_removed_in_the_form_without_limit) {
  const std::string plain = "\\\\?\\" + target;
  EXPECT_EQ(platform::fileKind(plain), platform::FileKind::kRegular);
  EXPECT_EQ(platform::fileSize(plain), 3U);
  EXPECT_TRUE(platform::resizeFile(plain, 1));
  EXPECT_EQ(content("target"), "o");
  platform::removeFile(plain);
  EXPECT_EQ(content("target"), "none");
}

}  // namespace
}  // namespace test
