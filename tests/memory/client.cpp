// SPDX-License-Identifier: Apache-2.0
#include "tests/memory/client.h"

#include <gtest/gtest.h>

#include <cstring>

#include "tests/support/results.h"

namespace test {
namespace {

VqsPolicyV0 policyOf(std::uint32_t id) {
  VqsPolicyV0 policy{};
  std::strcpy(policy.name, "policy");
  policy.id = id;
  policy.conditionCount = 1;
  return policy;
}

void fill(QtfSession* session) {
  std::uint32_t verdict = 0;
  for (const auto add : {vqsPbAddPolicy, vqsAsmAddPolicy, vqsBalanceProfileAddPolicy})
    for (const std::uint32_t id : {1U, 2U}) {
      const VqsPolicyV0 policy = policyOf(id);
      EXPECT_EQ(add(session, &policy, nullptr, &verdict), 0U);
    }
}

std::vector<std::uint64_t> room(std::size_t bytes) { return std::vector<std::uint64_t>(bytes / 8 + 1); }

}  // namespace

Client::Client() {
  EXPECT_EQ(vqsInitialize(&session), kDone);
  for (const auto reset : {vqsPbReset, vqsAsmReset, vqsBalanceProfileReset}) EXPECT_EQ(reset(session), 0U);
  fill(session);
  policy = policyOf(5);
  record.structureVersion = 0;
  record.policy.v0 = policy;
  list = room(sizeof(VqsPolicyListV2) + 4 * sizeof(VqsPolicyV0));
  listHead() = {.structureVersion = 0, .count = 4, .size = 4 * sizeof(VqsPolicyV0)};
  for (std::size_t i = 0; i < 4; ++i) std::memcpy(reinterpret_cast<char*>(&listHead() + 1) + 804 * i, &policy, 804);
  binarySize = sizeof(VqsPolicyBinary) + 16 * sizeof(VqsPolicyV2);
  binary = room(binarySize);
  event = OpenEventW(SYNCHRONIZE, FALSE, u"Global\\VexoQtfAppOutputEvent");
  EXPECT_NE(event, nullptr);
}

Client::~Client() {
  if (iterator != nullptr) {
    EXPECT_EQ(vqsDestroyQTFLogKVIter(iterator), kDone);
    EXPECT_EQ(stopLog(), kDone);
  }
  EXPECT_EQ(vqsUninitialize(session), kDone);
  EXPECT_TRUE(CloseHandle(event));
}

vqsStatus Client::stopLog() { return isExLog_ ? vqsExStopQTFLogExKV(session) : vqsStopQTFLogKV(session, log); }

void Client::startLog(bool isEx) {
  if (log != nullptr) return;
  isExLog_ = isEx;
  EXPECT_EQ(isEx ? vqsExStartQTFLogExKV(session, &log) : vqsStartQTFLogKV(session, &log), kDone);
  EXPECT_EQ(vqsCreateQTFLogKVIter(log, &iterator), kDone);
}

void Client::startKV() {
  startLog(false);
  EXPECT_EQ(vqsResetQTFLogKVIter(log, iterator), kDone);
}

void Client::startExKV() {
  startLog(true);
  EXPECT_EQ(vqsResetQTFLogKVIter(log, iterator), kDone);
}

}  // namespace test
