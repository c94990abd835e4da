// SPDX-License-Identifier: Apache-2.0
#include "tests/policy/stores.h"

#include <algorithm>

namespace test {

const std::vector<Store>& allStores() {
  static const std::vector<Store> stores = {
      {"Pb", 0, 0x80222064, 0x80222034, vqsPbAddPolicy, vqsPbGetPolicies, vqsPbReset, vqsPbGetPoliciesStatus,
       vqsPbDeletePolicy, vqsPbReplacePolicy},
      {"Asm", 1, 0x80222050, 0x80222054, vqsAsmAddPolicy, vqsAsmGetPolicies, vqsAsmReset, vqsAsmGetPoliciesStatus,
       vqsAsmDeletePolicy, vqsAsmReplacePolicy},
      {"BalanceProfile", 2, 0x802220A8, 0x802220AC, vqsBalanceProfileAddPolicy, vqsBalanceProfileGetPolicies,
       vqsBalanceProfileReset, vqsBalanceProfileGetPoliciesStatus, vqsBalanceProfileDeletePolicy,
       vqsBalanceProfileReplacePolicy},
  };
  return stores;
}

std::string storeName(const ::testing::TestParamInfo<Store>& instance) { return instance.param.title; }

Record modifyRequest(std::uint32_t operation) { return Record{4000}.u32(0, operation); }
Record addRequest(const Bytes& packed) { return modifyRequest(1).put(4, packed); }
Record deleteRequest(std::uint32_t id) { return modifyRequest(5).u32(168, id); }

Record countRequest() { return Record{19872}.u8(0, 1); }

Record chunkRequest(std::uint32_t total, std::uint32_t chunk, const Bytes& before) {
  return Record{19872}.u32(4, total).u32(8, chunk).put(12, before);
}

std::vector<Bytes> packedPolicies(std::uint32_t count) {
  std::vector<Bytes> policies;
  policies.reserve(count);
  for (std::uint32_t i = 0; i < count; ++i) policies.push_back(packedPolicy(numberedPolicy(100 + i)));
  return policies;
}

void expectCount(ScriptedDriver& driver, std::uint32_t readCode, std::uint32_t total, std::source_location where) {
  driver.expectSame(readCode, where).request(countRequest()).replyWord(4, total);
}

void expectChunks(ScriptedDriver& driver, std::uint32_t readCode, const std::vector<Bytes>& policies,
                  std::source_location where) {
  const auto total = static_cast<std::uint32_t>(policies.size());
  Bytes before;
  for (std::uint32_t chunk = 0; 5 * chunk < total; ++chunk) {
    Record answer{std::size_t{5} * 3972, 0xEE};
    for (std::uint32_t i = 5 * chunk; i < std::min(total, 5 * chunk + 5); ++i)
      answer.put(std::size_t{3972} * (i - 5 * chunk), policies[i]);
    driver.expectSame(readCode, where).request(chunkRequest(total, chunk, before)).replyAt(12, answer);
    before = answer;
  }
}

}  // namespace test
