// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <thread>

#include <vqs/vqs.h>
#include "tests/simulator/embedded/state_bytes.h"
#include "tests/support/results.h"
#include "tests/support/temporary_folder.h"
#include "tests/windows/processes.h"

namespace test {
namespace {

constexpr const char* kVariable = "VEXOQTF_SIMULATOR_STATE";

/// The driver's file, named to this process and to those that it starts.
class StateFile : public testing::Test {
 protected:
  void SetUp() override {
    isPart_ = GetEnvironmentVariableA(kVariable, nullptr, 0) != 0;
    if (!isPart_) SetEnvironmentVariableA(kVariable, path().c_str());
  }
  void TearDown() override {
    if (!isPart_) SetEnvironmentVariableA(kVariable, nullptr);
  }

  /// True in a process that plays a part in another's test.
  [[nodiscard]] bool isPart() const { return isPart_; }
  [[nodiscard]] std::string path() const { return folder.path("state"); }

  TemporaryFolder folder;

 private:
  bool isPart_ = false;
};

void add(QtfSession* session, std::uint32_t id) {
  VqsPolicyV0 policy{};
  policy.id = id;
  std::strcpy(policy.name, "one of many");
  std::uint32_t verdict = 99;
  ASSERT_EQ(vqsPbAddPolicy(session, &policy, nullptr, &verdict), kDone);
  ASSERT_EQ(verdict, 0U);
}

std::uint32_t policyCount(QtfSession* session, VqsPolicyStore store) {
  VqsPolicyListV2 head{2, 0, 0};
  EXPECT_EQ(vqsPbGetPoliciesV2(session, &head, store), kDone);
  return head.count;
}

/// What is written to standard error while it lives.
class Errors {
 public:
  explicit Errors(const std::string& path)
      : before_(GetStdHandle(STD_ERROR_HANDLE)),
        file_(CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr)),
        path_(path) {
    EXPECT_TRUE(SetStdHandle(STD_ERROR_HANDLE, file_));
  }
  ~Errors() {
    SetStdHandle(STD_ERROR_HANDLE, before_);
    CloseHandle(file_);
  }
  Errors(Errors&&) = delete;

  [[nodiscard]] std::string text() const {
    const Bytes bytes = readFile(path_);
    return {bytes.begin(), bytes.end()};
  }

 private:
  HANDLE before_;
  HANDLE file_;
  std::string path_;
};

TEST_F(StateFile, has_what_a_process_said_before_it_was_ended) {
  if (isPart()) {
    QtfSession* session = nullptr;
    ASSERT_EQ(vqsInitialize(&session), kDone);
    add(session, 7);
    TerminateProcess(GetCurrentProcess(), 5);
  }
  EXPECT_EQ(runCase("StateFile.has_what_a_process_said_before_it_was_ended"), 5U);
  QtfSession* session = nullptr;
  ASSERT_EQ(vqsInitialize(&session), kDone);
  VqsPolicyV0 policy{};
  EXPECT_EQ(vqsPbIDGetPolicy(session, 7, &policy), kDone);
  EXPECT_STREQ(policy.name, "one of many");
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

TEST_F(StateFile, is_waited_for) {
  const HANDLE file = CreateFileA(path().c_str(), GENERIC_READ, 0, nullptr, CREATE_NEW, 0, nullptr);
  ASSERT_NE(file, INVALID_HANDLE_VALUE);
  std::thread other{[&] {
    Sleep(300);
    CloseHandle(file);
  }};
  QtfSession* session = nullptr;
  EXPECT_EQ(vqsInitialize(&session), kDone);
  other.join();
  add(session, 7);
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

TEST_F(StateFile, is_free_after_the_last_session) {
  for (std::uint32_t count = 1; count < 4; ++count) {
    QtfSession* session = nullptr;
    ASSERT_EQ(vqsInitialize(&session), kDone);
    add(session, count);
    EXPECT_EQ(policyCount(session, VQS_POLICY_STORE_PB), count);
    EXPECT_EQ(vqsUninitialize(session), kDone);
    EXPECT_EQ(part(readFile(path()), 0, 12), hex("56 51 53 53 54 41 54 45  03 00 00 00"));
  }
}

TEST_F(StateFile, of_an_older_format_is_brought_to_the_present_one) {
  for (const Bytes& image : {oldState(), smallState()}) {
    folder.write("state", image);
    QtfSession* session = nullptr;
    ASSERT_EQ(vqsInitialize(&session), kDone);
    EXPECT_EQ(policyCount(session, VQS_POLICY_STORE_ASM), 1U);
    EXPECT_EQ(vqsUninitialize(session), kDone);
    EXPECT_EQ(part(readFile(path()), 0, 12), hex("56 51 53 53 54 41 54 45  03 00 00 00"));
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator{folder.path("")}) files += entry.exists() ? 1 : 0;
    EXPECT_EQ(files, 1U);
  }
}

/// A file that no driver opens, and what is said about it.
void expectRefusal(const TemporaryFolder& folder, const std::string& stateFile, const std::string& reason) {
  SetEnvironmentVariableA(kVariable, stateFile.c_str());
  const Errors errors{folder.path("errors")};
  QtfSession* session = nullptr;
  EXPECT_EQ(vqsInitialize(&session), kFailed);
  EXPECT_EQ(errors.text(), "vexoqtf simulator: " + stateFile + " " + reason + "\n");
}

TEST_F(StateFile, that_is_none_is_refused_and_left_alone) {
  const Bytes other = hex("00 01 02");
  expectRefusal(folder, folder.write("other", other), "is not a state file of the simulator");
  EXPECT_EQ(readFile(folder.path("other")), other);
  const Bytes cut = part(smallState(), 0, 11);
  expectRefusal(folder, folder.write("cut", cut), "is cut short");
  EXPECT_EQ(readFile(folder.path("cut")), cut);
}

TEST_F(StateFile, that_is_a_folder_or_a_stream_is_refused) {
  std::filesystem::create_directory(folder.path("folder"));
  expectRefusal(folder, folder.path("folder"), "is not a regular file");
  expectRefusal(folder, "NUL", "is not a regular file");
}

TEST_F(StateFile, is_named_in_utf_8) {
  const std::filesystem::path file = std::filesystem::path{folder.path("")} / L"stan-\x0142\x4e2d";
  SetEnvironmentVariableW(L"VEXOQTF_SIMULATOR_STATE", file.c_str());
  QtfSession* session = nullptr;
  ASSERT_EQ(vqsInitialize(&session), kDone);
  EXPECT_EQ(vqsUninitialize(session), kDone);
  EXPECT_NE(GetFileAttributesW(file.c_str()), INVALID_FILE_ATTRIBUTES);
}

}  // namespace
}  // namespace test
