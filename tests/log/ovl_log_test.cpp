// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "tests/log/logs.h"
#include "tests/support/results.h"
#include "tests/support/windows_calls.h"

namespace test {
namespace {

constexpr std::uint64_t kAddress = 0x00007FF612345678;
constexpr std::uint32_t kFillingCode = 0x8022207C;

/// Remembers every opening, and closes at its end what the calls left open.
class OpeningsDriver : public ScriptedDriver {
 public:
  ~OpeningsDriver() override {
    for (HANDLE handle : openings) CloseHandle(handle);
  }

  bool open(HANDLE handle) override {
    openings.push_back(handle);
    return ScriptedDriver::open(handle);
  }

  std::vector<HANDLE> openings;
};

/// What the calls write, and the calls that reach the driver.
class OvlLog : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(faults.outstanding(), 0); }

  void expectUntouched() {
    EXPECT_EQ(address, kPoisonLong);
    EXPECT_EQ(logId, kPoisonWord);
    EXPECT_EQ(version, kPoisonWord);
  }
  Exchange& expectLog(std::uint32_t operation, std::uint32_t id = 0,
                      std::source_location where = std::source_location::current()) {
    return driver->expectSame(kLogCode, where).request(logRequest(operation, id));
  }
  Exchange& expectFilling(std::uint16_t command, std::source_location where = std::source_location::current()) {
    return driver->expectSame(kFillingCode, where).request(Record{24}.u16(0, command));
  }

  struct Call {
    const char* name;
    std::function<vqsStatus()> run;
    std::function<Exchange*()> expect;
  };
  const std::vector<Call> calls = {
      {"map", [this] { return vqsOVLMapQTFLogAddress(&address, &logId); }, [this] { return &expectLog(0); }},
      {"unmap", [] { return vqsOVLUnmapQTFLogId(7); }, [this] { return &expectLog(1, 7); }},
      {"start", [this] { return vqsOVLStartQTFLog(this, this); }, [this] { return &expectFilling(0); }},
      {"stop", [] { return vqsOVLStopQTFLog(); }, [this] { return &expectFilling(1); }},
      {"log version", [this] { return vqsOVLGetQTFLogVersion(&version); }, [this] { return &expectLog(4); }},
      {"interface version", [this] { return vqsOVLGetInterfaceVersion(&version); }, [this] { return &expectLog(13); }},
      {"update", [] { return vqsOVLForceDataUpdate(); }, [this] { return &expectLog(6); }},
  };

  std::unique_ptr<OpeningsDriver> driver = std::make_unique<OpeningsDriver>();
  Faults faults;
  std::uint64_t address = kPoisonLong;
  std::uint32_t logId = kPoisonWord;
  std::uint32_t version = kPoisonWord;
};

TEST_F(OvlLog, each_call_opens_the_driver_for_itself_and_leaves_the_handle_open) {
  int open = 0;
  for (const auto& call : calls) {
    call.expect();
    EXPECT_EQ(call.run(), kDone) << call.name;
    EXPECT_EQ(driver->openHandles(), ++open) << call.name;
  }
  EXPECT_EQ(open, 7);
  EXPECT_EQ(driver->takeRequestsOn(), driver->openings);
}

TEST_F(OvlLog, a_failed_request_answers_1_and_leaves_the_handle_open_too) {
  int open = 0;
  for (const auto& call : calls) {
    call.expect()->reply(Bytes(24, 0xEE)).fails();
    EXPECT_EQ(call.run(), kFailed) << call.name;
    EXPECT_EQ(driver->openHandles(), ++open) << call.name;
  }
  expectUntouched();
}

TEST_F(OvlLog, each_call_makes_one_request_after_opening_and_closes_nothing) {
  for (const auto& call : calls) {
    WindowsCalls windows;
    const int allocations = faults.calls(Fault::kAllocation);
    call.expect();
    EXPECT_EQ(call.run(), kDone) << call.name;
    EXPECT_EQ(windows.all().size(), 4U) << call.name;
    EXPECT_EQ(windows.of("CreateFileW").size(), 1U) << call.name;
    EXPECT_TRUE(windows.all().back().starts_with("DeviceIoControl(")) << call.name;
    EXPECT_EQ(faults.calls(Fault::kAllocation), allocations + 1) << call.name << ": the list of devices";
  }
}

TEST_F(OvlLog, opening_without_a_driver_answers_4) {
  driver.reset();
  for (const auto& call : calls) EXPECT_EQ(call.run(), kNoDriver) << call.name;
  expectUntouched();
}

TEST_F(OvlLog, opening_without_memory_answers_3) {
  for (const auto& call : calls) {
    faults.fail(Fault::kAllocation, 1);
    EXPECT_EQ(call.run(), kNoMemory) << call.name;
  }
  expectUntouched();
  EXPECT_TRUE(driver->openings.empty());
}

TEST_F(OvlLog, a_refused_opening_answers_1) {
  for (const char* function : {"CreateFileW", "CM_Get_Device_Interface_ListW", "CM_Get_Device_Interface_List_SizeA"}) {
    WindowsCalls windows;
    windows.refuse(function);
    for (const auto& call : calls) EXPECT_EQ(call.run(), kFailed) << call.name << ", " << function;
  }
  expectUntouched();
  EXPECT_TRUE(driver->openings.empty());
}

TEST_F(OvlLog, bad_arguments_open_nothing) {
  EXPECT_EQ(vqsOVLMapQTFLogAddress(nullptr, &logId), kInvalid);
  EXPECT_EQ(vqsOVLMapQTFLogAddress(&address, nullptr), kInvalid);
  EXPECT_EQ(vqsOVLStartQTFLog(nullptr, this), kInvalid);
  EXPECT_EQ(vqsOVLStartQTFLog(this, nullptr), kInvalid);
  EXPECT_EQ(vqsOVLGetQTFLogVersion(nullptr), kInvalid);
  EXPECT_EQ(vqsOVLGetInterfaceVersion(nullptr), kInvalid);
  EXPECT_TRUE(driver->openings.empty());
  expectUntouched();
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_F(OvlLog, mapping_gives_the_address_and_the_id) {
  expectLog(0).reply(logReply(0, 0x80000007, kAddress, 9));
  EXPECT_EQ(vqsOVLMapQTFLogAddress(&address, &logId), kDone);
  EXPECT_EQ(address, kAddress);
  EXPECT_EQ(logId, 0x80000007);
}

TEST_F(OvlLog, unmapping_names_the_log) {
  for (const std::uint32_t id : {0U, 0x01020304U, 0xFFFFFFFFU}) {
    expectLog(1, id);
    EXPECT_EQ(vqsOVLUnmapQTFLogId(id), kDone);
  }
}

TEST_F(OvlLog, starting_does_not_use_its_arguments_further) {
  std::uint64_t first = kPoisonLong;
  std::uint64_t second = kPoisonLong;
  expectFilling(0).reply(Bytes(24, 0xEE));
  EXPECT_EQ(vqsOVLStartQTFLog(&first, &second), kDone);
  EXPECT_EQ(first, kPoisonLong);
  EXPECT_EQ(second, kPoisonLong);
  expectFilling(0);
  EXPECT_EQ(vqsOVLStartQTFLog(reinterpret_cast<void*>(1), reinterpret_cast<void*>(1)), kDone);
}

TEST_F(OvlLog, versions_are_the_value_of_the_answer) {
  expectLog(4).reply(logReply(4, 7, kAddress, 0x80000102));
  EXPECT_EQ(vqsOVLGetQTFLogVersion(&version), kDone);
  EXPECT_EQ(version, 0x80000102);
  expectLog(13).reply(logReply(13, 7, kAddress, 0x01020304));
  EXPECT_EQ(vqsOVLGetInterfaceVersion(&version), kDone);
  EXPECT_EQ(version, 0x01020304U);
}

/// The version of the library's file, for as long as it lives.
class FileVersion {
 public:
  FileVersion(DWORD fileHigh, DWORD fileLow, DWORD productHigh) {
    VS_FIXEDFILEINFO info{};
    info.dwSignature = 0xFEEF04BD;
    info.dwFileVersionMS = fileHigh;
    info.dwFileVersionLS = fileLow;
    info.dwProductVersionMS = productHigh;
    host::setFileVersion("VexoQTFServices.dll", info);
  }
  ~FileVersion() { host::removeFileVersion("VexoQTFServices.dll"); }
  FileVersion(const FileVersion&) = delete;
  FileVersion& operator=(const FileVersion&) = delete;
};

class OvlDllVersion : public OvlLog {
 protected:
  std::uint32_t packed = 0;
};

TEST_F(OvlDllVersion, is_product_major_and_the_files_last_three_numbers_in_order) {
  const FileVersion file{0x00030004, 0x00050006, 0x00070008};
  EXPECT_EQ(vqsOVLGetDllVersion(&packed), kDone);
  EXPECT_EQ(packed, 0x07040506U);
  EXPECT_TRUE(driver->openings.empty());
}

TEST_F(OvlDllVersion, keeps_the_bits_that_the_caller_has_set) {
  const FileVersion file{0x00030004, 0x00050006, 0x00070008};
  packed = 0x80F00018;
  EXPECT_EQ(vqsOVLGetDllVersion(&packed), kDone);
  EXPECT_EQ(packed, 0x87F4051EU);
}

TEST_F(OvlDllVersion, lets_numbers_above_255_run_into_their_neighbours) {
  const FileVersion file{0x00000102, 0x01000201, 0x01200000};
  EXPECT_EQ(vqsOVLGetDllVersion(&packed), kDone);
  EXPECT_EQ(packed, 0x21030201U);
}

TEST_F(OvlDllVersion, fails_with_the_version_query_and_touches_nothing) {
  EXPECT_EQ(vqsOVLGetDllVersion(&version), kFailed);
  const FileVersion file{0x00030004, 0x00050006, 0x00070008};
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(vqsOVLGetDllVersion(&version), kFailed);
  expectUntouched();
}

TEST_F(OvlDllVersion, needs_room) {
  const FileVersion file{0x00030004, 0x00050006, 0x00070008};
  EXPECT_EQ(vqsOVLGetDllVersion(nullptr), kInvalid);
}

}  // namespace
}  // namespace test
