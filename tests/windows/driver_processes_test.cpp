// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>
#include <thread>

#include <vqs/vqs.h>
#include "tests/support/bytes.h"
#include "tests/support/results.h"
#include "tests/support/temporary_folder.h"
#include "tests/windows/processes.h"

namespace test {
namespace {

/// Set in a process that plays the other part of a test.
constexpr const char* kOther = "VQS_TEST_OTHER_PROCESS";

bool isOther() { return GetEnvironmentVariableA(kOther, nullptr, 0) != 0; }

/// The running case once more, in another process.
class OtherProcess : public RunningCase {
 public:
  OtherProcess() : RunningCase(marked()) {}
  ~OtherProcess() { SetEnvironmentVariableA(kOther, nullptr); }

 private:
  static std::string marked() {
    SetEnvironmentVariableA(kOther, "1");
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    return std::string{test->test_suite_name()} + "." + test->name();
  }
};

class DriverProcesses : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(vqsInitialize(&session_), kDone); }
  void TearDown() override { EXPECT_EQ(vqsUninitialize(session_), kDone); }

  std::uint32_t pbCount() {
    VqsPolicyListV2 head{2, 0, 0};
    EXPECT_EQ(vqsPbGetPoliciesV2(session_, &head, VQS_POLICY_STORE_PB), kDone);
    return head.count;
  }

  void addPolicies(std::uint32_t firstId, std::uint32_t count) {
    VqsPolicyV0 policy{};
    std::strcpy(policy.name, "one of many");
    for (policy.id = firstId; policy.id < firstId + count; ++policy.id) {
      std::uint32_t verdict = kPoisonWord;
      ASSERT_EQ(vqsPbAddPolicy(session_, &policy, nullptr, &verdict), kDone);
      ASSERT_EQ(verdict, 0U);
    }
  }

  QtfSession* session_ = nullptr;
};

TEST_F(DriverProcesses, one_sets_the_event_that_another_waits_for) {
  if (isOther()) {
    Sleep(300);
    ASSERT_EQ(vqsSetAppInputs(session_, 4711, 4712), kDone);
    return;
  }
  std::uint32_t a = 0;
  std::uint32_t b = 0;
  ASSERT_EQ(vqsSetAppInputs(session_, 0, 0), kDone);
  ASSERT_EQ(vqsGetAppOutput(session_, &a, &b), kDone);
  EXPECT_EQ(vqsWaitAppOutput(session_, 0), kFailed);
  OtherProcess other;
  EXPECT_EQ(vqsWaitAppOutput(session_, 30'000), kDone);
  ASSERT_EQ(vqsGetAppOutput(session_, &a, &b), kDone);
  EXPECT_EQ(a, 4711U);
  EXPECT_EQ(b, 4712U);
  EXPECT_EQ(other.wait(), 0U);
  ASSERT_EQ(vqsSetAppInputs(session_, 0, 0), kDone);
}

TEST_F(DriverProcesses, two_fill_one_store_at_once) {
  if (isOther()) {
    addPolicies(1000, 150);
    return;
  }
  ASSERT_EQ(vqsPbReset(session_), kDone);
  OtherProcess other;
  addPolicies(2000, 150);
  EXPECT_EQ(other.wait(), 0U);
  EXPECT_EQ(pbCount(), 300U);
  ASSERT_EQ(vqsPbReset(session_), kDone);
}

/// Requests of every length, until the process ends.
void workForever(QtfSession* session) {
  for (;;) {
    VqsPolicyV0 policy{};
    std::uint32_t verdict = 0;
    policy.id = 77;
    static_cast<void>(vqsPbAddPolicy(session, &policy, nullptr, &verdict));
    static_cast<void>(vqsPbDeletePolicy(session, 77, &verdict));
    QtfLogKV* log = nullptr;
    if (vqsStartQTFLogKV(session, &log) == 0) static_cast<void>(vqsStopQTFLogKV(session, log));
  }
}

TEST_F(DriverProcesses, one_that_is_killed_in_the_middle_harms_nobody) {
  if (isOther()) {
    std::uint64_t address = 0;
    QtfSession* second = nullptr;
    ASSERT_EQ(vqsInitialize(&second), kDone);
    ASSERT_EQ(vqsStartQTFLog(session_, &address), kDone);
    std::thread{[this] { workForever(session_); }}.detach();
    std::thread{[second] { workForever(second); }}.detach();
    Sleep(INFINITE);
  }
  ASSERT_EQ(vqsPbReset(session_), kDone);
  for (DWORD i = 0; i < 5; ++i) {
    OtherProcess other;
    Sleep(500 + 50 * i);
    other.kill();
  }
  EXPECT_LE(pbCount(), 1U) << "what the others added last may be there, and nothing else";
  ASSERT_EQ(vqsPbReset(session_), kDone);
  addPolicies(1, 3);
  EXPECT_EQ(pbCount(), 3U);
  ASSERT_EQ(vqsPbReset(session_), kDone);
}

/// A program of the system; its exit code.
DWORD run(std::string command) {
  STARTUPINFOA startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
    return GetLastError();
  DWORD exitCode = ~0U;
  WaitForSingleObject(process.hProcess, 60'000);
  GetExitCodeProcess(process.hProcess, &exitCode);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return exitCode;
}

constexpr const char* kParameters = "SYSTEM\\CurrentControlSet\\Services\\vexoqtf\\Parameters";

Bytes registryValue(const char* name) {
  Bytes value(100'000);
  auto size = static_cast<DWORD>(value.size());
  DWORD type = 0;
  EXPECT_EQ(RegGetValueA(HKEY_LOCAL_MACHINE, kParameters, name, RRF_RT_REG_BINARY, &type, value.data(), &size), 0);
  value.resize(size);
  return value;
}

TEST_F(DriverProcesses, registry_export_text_is_imported_as_the_policy_binary) {
  const TemporaryFolder folder;
  const auto text = folder.path("asm.reg");
  ASSERT_EQ(vqsAsmReset(session_), kDone);
  VqsPolicyV0 policy{};
  std::strcpy(policy.name, "A");
  policy.flag0 = 1;
  policy.id = 10;
  policy.conditionCount = 1;
  policy.conditions[0] = {0, 2, 1, 0};
  std::uint32_t verdict = kPoisonWord;
  ASSERT_EQ(vqsAsmAddPolicy(session_, &policy, nullptr, &verdict), kDone);
  ASSERT_EQ(vqsSetBinaryVersion(session_, 1, 2, &verdict, VQS_POLICY_STORE_ASM), kDone);
  ASSERT_EQ(vqsAsmCreateBinaryFromDriver(session_, text.c_str(), 1, 2, 1), kDone);
  RegDeleteTreeA(HKEY_LOCAL_MACHINE, kParameters);
  ASSERT_EQ(run("reg import \"" + text + "\""), 0U);
  // The same 79 bytes that the format's description shows.
  EXPECT_EQ(difference(registryValue("AsmCurrentRegkeyPolicy"),
                       hex("01 00 05 00 01 00 02 00 24 51 54 46 01 00 00 00 04 00 00 00 41 00 00 00 01 00 00 00 00"
                           "01 0a 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 01 00 00 00 00 00 00 00"
                           "00 00 00 00 02 00 00 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00")),
            "");
  RegDeleteTreeA(HKEY_LOCAL_MACHINE, kParameters);
  ASSERT_EQ(vqsAsmReset(session_), kDone);
}

TEST_F(DriverProcesses, a_whole_stores_registry_text_is_imported) {
  ASSERT_EQ(run("reg import \"" + samplePath("laptop-asm.reg") + "\""), 0U);
  EXPECT_EQ(difference(registryValue("AsmCurrentRegkeyPolicy"), sample("laptop-r5.bin")), "");
  RegDeleteTreeA(HKEY_LOCAL_MACHINE, kParameters);
}

}  // namespace
}  // namespace test
