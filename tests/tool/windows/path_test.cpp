// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <windows.h>

#include "tests/tool/run_tool.h"
#include "tests/tool/small_binary.h"
#include "tests/tool/windows/run_tool.h"

namespace test {
namespace {

/// The tool's folder in the form that has no limit of length.
std::string verbatim(const Tool& tool) {
  return R"(\\?\)" + std::filesystem::path{tool.path("x")}.parent_path().string();
}

/// A sample's way into a store and out again, in files of a folder that is named like this.
void expectToWorkIn(const Tool& tool, const std::string& folder) {
  const std::string source = folder + R"(\source.bin)";
  const std::string copy = folder + R"(\copy.bin)";
  const std::string listing = folder + R"(\listing.json)";
  ASSERT_EQ(tool.run({"store", "load", "asm", source, "--reset"}).exitCode, 0) << folder;
  for (int time = 0; time < 2; ++time)
    EXPECT_EQ(tool.run({"store", "save", "asm", copy}),
              done("16 policies of the Asm store are in copy.bin now (version 3.41).\n"))
        << folder;
  EXPECT_EQ(tool.run({"binary", "show", copy, "--json", "-o", listing}), done("")) << folder;
  EXPECT_EQ(tool.run({"binary", "show", copy, "--json", "-o", listing}), done("")) << folder;
  EXPECT_EQ(tool.run({"binary", "show", source, "--json"}).out, tool.run({"binary", "show", copy, "--json"}).out);
}

TEST(Path, without_limit) {
  const Tool tool;
  tool.write("source.bin", sample("laptop-r5.bin"));
  expectToWorkIn(tool, verbatim(tool));
  EXPECT_EQ(tool.files(), (std::vector<std::string>{"copy.bin", "listing.json", "source.bin"}));
  EXPECT_EQ(difference(readFile(tool.path("copy.bin")), sample("laptop-r5.bin")), "");
}

TEST(Path, longer_than_usual) {
  const Tool tool;
  tool.write("source.bin", sample("laptop-r5.bin"));
  const std::string name(200, 'n');
  for (const auto& folder : {name, name + '\\' + name})
    ASSERT_TRUE(CreateDirectoryW(widen(verbatim(tool) + '\\' + folder).c_str(), nullptr)) << GetLastError();
  const std::string deep = name + '\\' + name;
  ASSERT_TRUE(MoveFileW(widen(tool.path("source.bin")).c_str(),
                        widen(verbatim(tool) + '\\' + deep + R"(\source.bin)").c_str()));
  expectToWorkIn(tool, deep);
  expectToWorkIn(tool, tool.path(deep));
}

TEST(Path, of_a_network_share) {
  // Wine has its shares in a folder of the prefix.
  wchar_t prefix[MAX_PATH] = {};
  ASSERT_NE(GetEnvironmentVariableW(L"WINEPREFIX", prefix, MAX_PATH), 0U);
  const auto share = std::filesystem::path{L"Z:" + std::wstring{prefix}} / "dosdevices/unc/server/share";
  std::filesystem::create_directories(share);
  const Tool tool;
  tool.write("source.bin", sample("laptop-r5.bin"));
  std::filesystem::copy_file(tool.path("source.bin"), share / "source.bin",
                             std::filesystem::copy_options::overwrite_existing);
  expectToWorkIn(tool, R"(\\server\share)");
  expectToWorkIn(tool, R"(\\?\UNC\server\share)");
  EXPECT_EQ(difference(readFile((share / "copy.bin").string()), sample("laptop-r5.bin")), "");
  std::filesystem::remove_all(share);
}

TEST(Path, of_a_device) {
  const Tool tool;
  tool.write("small.bin", smallBinary());
  EXPECT_EQ(tool.run({"binary", "show", "small.bin", "-o", "NUL"}),
            failed("vqs: NUL cannot be written: it is not a regular file, which is replaced whole\n"));
  EXPECT_EQ(tool.run({"binary", "show", "NUL"}), failed("vqs: NUL cannot be read: it is not a regular file\n"));
}

TEST(Path, of_a_file_that_another_program_has_open) {
  const Tool tool;
  tool.write("small.bin", smallBinary());
  tool.writeText("out.txt", "precious");
  const HANDLE reader = CreateFileW(widen(tool.path("out.txt")).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  EXPECT_EQ(tool.run({"binary", "show", "small.bin", "-o", "out.txt"}),
            failed("vqs: out.txt cannot be written: another program has it open\n"));
  CloseHandle(reader);
  EXPECT_EQ(tool.readText("out.txt"), "precious");
  // Wine leaves a file of its own behind.
  for (const auto& file : tool.files()) EXPECT_FALSE(file.ends_with(".new")) << file;
  EXPECT_EQ(tool.run({"binary", "show", "small.bin", "-o", "out.txt"}), done(""));
}

}  // namespace
}  // namespace test
