// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <source_location>
#include <string>
#include <vector>

#include <vqs/telemetry.h>
#include "tests/support/listings.h"
#include "tests/support/scripted_driver.h"
#include "tests/support/session_test.h"

namespace test {

inline constexpr std::uint32_t kLogCode = 0x80222058;
inline constexpr std::uint64_t kPoisonLong = 0xA5A5A5A5A5A5A5A5;

/// A request about logs: id at 0, operation at 4, 32 bytes.
Record logRequest(std::uint32_t operation, std::uint32_t logId = 0);
/// The driver's answer to it; what has no field comes as garbage.
Record logReply(std::uint32_t operation, std::uint32_t logId, std::uint64_t address, std::uint32_t value);

/// A session that holds no log. `Base` is one of the fixtures of sessions.
template <class Base>
class LogTestOn : public Base {
 protected:
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

  using Base::driver;
  using Base::session;
};

using LogTest = LogTestOn<TidySessionTest>;
/// Logs whose reference is their address: no call about them allocates.
using AddressLogTest = LogTestOn<FrugalSessionTest>;

/// One generation of key/value logs and its exports.
struct KVGeneration {
  std::string title;
  std::uint32_t startOperation;
  std::uint32_t stopOperation;
  std::uint32_t keys;
  std::string listing;
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
