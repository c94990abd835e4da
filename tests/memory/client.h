// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <vector>

#include <vqs/vqs.h>
#include "host/windows_api.h"
#include "tests/support/bytes.h"
#include "tests/support/temporary_folder.h"

namespace test {

/// A client of the simulated driver, whose stores hold policies 1 and 2, and what its calls need.
class Client {
 public:
  Client();
  ~Client();
  Client(Client&&) = delete;

  /// A log of that kind runs, with an iterator on its first record.
  void startKV();
  void startExKV();

  QtfSession* session = nullptr;
  /// another one, and another iterator, of the call at hand
  QtfSession* opened = nullptr;
  QtfLogKVIter* made = nullptr;

  QtfLogKV* log = nullptr;
  QtfLogKVIter* iterator = nullptr;
  std::uint64_t address = 0;
  std::uint32_t logId = 0;
  HANDLE event = nullptr;

  /// policy 5, in each form
  VqsPolicyV0 policy{};
  VqsVersionedPolicy record{};
  std::vector<std::uint64_t> list;
  [[nodiscard]] VqsPolicyListV2& listHead() { return *reinterpret_cast<VqsPolicyListV2*>(list.data()); }

  std::array<VqsPolicyV0, 4> policies{};
  VqsPolicyList policyList{};
  std::array<VqsPolicyStatus, 4> statuses{};
  VqsPolicyStatusList statusList{};
  VqsPolicyBinaryV0* summary = nullptr;
  std::vector<std::uint64_t> binary;
  std::uint64_t binarySize = 0;
  /// a file to write
  [[nodiscard]] const std::string& written() const { return written_; }
  const std::string samplePath = test::samplePath("laptop-r5.bin");
  const Bytes sample = test::sample("laptop-r5.bin");

  const QtfConditionInfo* conditions = nullptr;
  const QtfActionInfo* actions = nullptr;
  std::array<QtfLogKeyInfo, VQS_LOG_KV_KEYS> keys{};
  std::array<std::uint32_t, 64> words{};
  std::array<std::uint16_t, 4> limits{};
  char oemId[VQS_OEM_ID_SIZE] = {};
  std::uint32_t number = 0;
  std::uint32_t verdict = 0;
  std::uint8_t isDone = 0;

 private:
  void startLog(bool isEx);
  vqsStatus stopLog();

  bool isExLog_ = false;
  TemporaryFolder folder_;
  std::string written_ = folder_.path("written");
};

}  // namespace test
