// SPDX-License-Identifier: Apache-2.0
#include "tests/log/logs.h"

#include <sstream>

#include "tests/support/temporary_folder.h"

namespace test {
namespace {

std::uint32_t number(std::istream& line) {
  std::string field;
  std::getline(line, field, '\t');
  return static_cast<std::uint32_t>(std::stoul(field));
}

KeyRow rowOf(const std::string& text) {
  std::istringstream line{text};
  KeyRow row{};
  row.id = number(line);
  std::getline(line, row.name, '\t');
  row.type = number(line);
  row.count = number(line);
  row.param = number(line);
  row.valueSize = number(line);
  return row;
}

vqsStatus stopEx(QtfSession* session, QtfLogKV* /*log*/) { return vqsExStopQTFLogExKV(session); }

}  // namespace

Record logRequest(std::uint32_t operation, std::uint32_t logId) { return Record{32}.u32(0, logId).u32(4, operation); }

Record logReply(std::uint32_t operation, std::uint32_t logId, std::uint64_t address, std::uint32_t value) {
  return Record{32, 0xEE}.u32(0, logId).u32(4, operation).u64(8, address).u32(24, value);
}

std::vector<KeyRow> keyRows(const std::string& file) {
  const auto bytes = readFile(std::string{VQS_TEST_DATA} + "/" + file);
  std::istringstream text{std::string{bytes.begin(), bytes.end()}};
  std::string line;
  std::getline(text, line);  // the columns' names
  std::vector<KeyRow> rows;
  while (std::getline(text, line)) rows.push_back(rowOf(line));
  return rows;
}

const std::vector<KVGeneration>& kvGenerations() {
  static const std::vector<KVGeneration> generations = {
      {"Plain", 7, 8, 228, "kv_keys.tsv", vqsStartQTFLogKV, vqsStopQTFLogKV, vqsCreateQTFLogKVIter,
       vqsDestroyQTFLogKVIter, vqsResetQTFLogKVIter, vqsNextQTFLogKVIter, vqsDoneQTFLogKVIter, vqsGetQTFLogKVIterData,
       vqsGetQTFLogKVMetadata_V2},
      {"Ex", 10, 11, 50, "ex_kv_keys.tsv", vqsExStartQTFLogExKV, stopEx, vqsExCreateQTFLogExKVIter,
       vqsExDestroyQTFLogExKVIter, vqsExResetQTFLogExKVIter, vqsExNextQTFLogExKVIter, vqsExDoneQTFLogExKVIter,
       vqsExGetQTFLogExKVIterData, vqsExGetQTFLogExKVMetadata_V2},
  };
  return generations;
}

std::string generationName(const ::testing::TestParamInfo<KVGeneration>& instance) { return instance.param.title; }

}  // namespace test
