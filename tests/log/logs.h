// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include <vqs/telemetry.h>
#include "tests/support/faults.h"
#include "tests/support/scripted_driver.h"

namespace test {

inline constexpr std::uint32_t kLogCode = 0x80222058;
inline constexpr std::uint64_t kPoisonLong = 0xA5A5A5A5A5A5A5A5;

/// A request about logs: id at 0, operation at 4, 32 bytes.
Record logRequest(std::uint32_t operation, std::uint32_t logId = 0);
/// The driver's answer to it; what has no field comes as garbage.
Record logReply(std::uint32_t operation, std::uint32_t logId, std::uint64_t address, std::uint32_t value);

/// A driver that can report a byte count of its own choice, and remembers where requests came from.
class LogDriver : public ScriptedDriver {
 public:
  bool control(HANDLE handle, const host::DeviceRequest& request) override {
    requestsOn.push_back(handle);
    answeredAt = request.output;
    const bool done = ScriptedDriver::control(handle, request);
    if (reported) *request.returned = *reported;
    return done;
  }

  std::optional<DWORD> reported;
  std::vector<HANDLE> requestsOn;
  const void* answeredAt = nullptr;
};

/// A session on a scripted driver that holds no log; no call of a test may leave memory behind.
class LogTest : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(faults.outstanding(), 0); }

  /// The driver's next request is a log operation on 32 zero bytes.
  Exchange& expectLog(std::uint32_t operation, std::uint32_t logId = 0,
                      std::source_location where = std::source_location::current()) {
    return driver.expectSame(kLogCode, where).request(logRequest(operation, logId));
  }
  /// Puts a log into the session as a start would.
  void holdLog(std::uint64_t reference, std::uint32_t id) {
    session->logReference = reference;
    session->logSessionId = id;
  }
  void expectHeld(std::uint64_t reference, std::uint32_t id) {
    EXPECT_EQ(session->logReference, reference);
    EXPECT_EQ(session->logSessionId, id);
  }

  LogDriver driver;
  OpenSession session{driver};
  QtfSession closed{};
  Faults faults;
};

/// Logs whose reference is their address: no call about them allocates.
class AddressLogTest : public LogTest {
 protected:
  void TearDown() override {
    EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
    LogTest::TearDown();
  }
};

/// A row of the key lists in tests/data.
struct KeyRow {
  std::uint32_t id;
  std::string name;
  std::uint32_t type;
  std::uint32_t count;
  std::uint32_t param;
  std::uint32_t valueSize;
};

/// The rows of a list, in its order.
std::vector<KeyRow> keyRows(const std::string& file);

/// One generation of key/value logs and its exports.
struct KVGeneration {
  std::string title;
  std::uint32_t startOperation;
  std::uint32_t stopOperation;
  std::uint32_t keys;
  std::string list;
  vqsStatus (*start)(QtfSession*, QtfLogKV**);
  /// the handle goes unused where the export takes none
  vqsStatus (*stop)(QtfSession*, QtfLogKV*);
  decltype(&vqsCreateQTFLogKVIter) create;
  decltype(&vqsDestroyQTFLogKVIter) destroy;
  decltype(&vqsResetQTFLogKVIter) reset;
  decltype(&vqsNextQTFLogKVIter) next;
  decltype(&vqsDoneQTFLogKVIter) isDone;
  decltype(&vqsGetQTFLogKVIterData) data;
  decltype(&vqsGetQTFLogKVMetadata_V2) metadata;
};

const std::vector<KVGeneration>& kvGenerations();
std::string generationName(const ::testing::TestParamInfo<KVGeneration>& instance);

}  // namespace test
