// SPDX-License-Identifier: Apache-2.0
#include "tests/log/logs.h"

namespace test {
namespace {

vqsStatus stopEx(QtfSession* session, QtfLogKV* /*log*/) { return vqsExStopQTFLogExKV(session); }

}  // namespace

Record logRequest(std::uint32_t operation, std::uint32_t logId) { return Record{32}.u32(0, logId).u32(4, operation); }

Record logReply(std::uint32_t operation, std::uint32_t logId, std::uint64_t address, std::uint32_t value) {
  return Record{32, 0xEE}.u32(0, logId).u32(4, operation).u64(8, address).u32(24, value);
}

const std::vector<KVGeneration>& kvGenerations() {
  static const std::vector<KVGeneration> generations = {
      {"Plain", 7, 8, listedIn(kKeyListing), kKeyListing, vqsStartQTFLogKV, vqsStopQTFLogKV, vqsCreateQTFLogKVIter,
       vqsDestroyQTFLogKVIter, vqsResetQTFLogKVIter, vqsNextQTFLogKVIter, vqsDoneQTFLogKVIter, vqsGetQTFLogKVIterData,
       vqsGetQTFLogKVMetadata_V2},
      {"Ex", 10, 11, listedIn(kExKeyListing), kExKeyListing, vqsExStartQTFLogExKV, stopEx, vqsExCreateQTFLogExKVIter,
       vqsExDestroyQTFLogExKVIter, vqsExResetQTFLogExKVIter, vqsExNextQTFLogExKVIter, vqsExDoneQTFLogExKVIter,
       vqsExGetQTFLogExKVIterData, vqsExGetQTFLogExKVMetadata_V2},
  };
  return generations;
}

std::string generationName(const ::testing::TestParamInfo<KVGeneration>& instance) { return instance.param.title; }

}  // namespace test
