// SPDX-License-Identifier: Apache-2.0
#include <random>
#include <set>

#include "simulator/model_client.h"

namespace test {
namespace {

using Random = std::mt19937_64;

std::size_t below(Random& random, std::size_t limit) { return random() % limit; }

/// A request that the driver would take, of any kind.
Bytes plausible(Random& random) {
  const auto id = static_cast<std::uint32_t>(below(random, 20));
  switch (below(random, 9)) {
    case 0:
    case 1:
    case 2:
      return addRequest(simplePolicy(id).u32(168, static_cast<std::uint32_t>(random())));
    case 3:
      return deleteRequest(id);
    case 4:
      return below(random, 10) == 0 ? modifyRequest(3) : modifyRequest(7);
    case 5:
      return modifyRequest(6).u32(3988, id).u32(3992, 1);
    case 6:
      return Record{4000 + 140 * std::size_t{id}}.u32(0, 4).u32(3976, id).u8(3984, id == 0 ? 1 : 0);
    case 7:
      return lookupRequest(id % 3, id);
    default:
      return Record{12}.u32(0, 3);
  }
}

void damage(Random& random, Bytes& request) {
  if (request.empty()) return;
  for (std::size_t i = below(random, 4); i > 0; --i)
    request[below(random, request.size())] = static_cast<std::uint8_t>(random());
  if (below(random, 8) == 0) request.resize(below(random, request.size() + 200));
}

std::uint32_t anyCode(Random& random) {
  constexpr std::uint32_t kCodes[] = {kReadPb,    kReadAsm,   kReadBalanceProfile,   kModifyPb,
                                      kModifyAsm, kModifyAsm, kModifyBalanceProfile, kLookup,
                                      kAppIo};
  return below(random, 20) == 0 ? static_cast<std::uint32_t>(random()) : kCodes[below(random, std::size(kCodes))];
}

std::size_t anyOutputLength(Random& random, std::size_t inputLength) {
  constexpr std::size_t kLengths[] = {0, 4, 12, 3972, 4000, 19872};
  return below(random, 2) == 0 ? inputLength : kLengths[below(random, std::size(kLengths))];
}

/// What a client may rely on in any policy that it reads.
void expectSound(const Bytes& policy) {
  EXPECT_LE(word(policy, 184), 15);
  EXPECT_LE(word(policy, 188), 32);
  EXPECT_LE(word(policy, 192), 5);
  for (std::size_t i = 0; i < 15; ++i) EXPECT_LE(word(policy, 196 + 16 * i + 4), 4);
  for (std::size_t i = 0; i < 5; ++i) EXPECT_LE(policy[436 + 528 * i], 1);
}

void expectReadable(ModelClient& client) {
  for (const std::uint32_t code : kReadCodes) {
    ASSERT_LE(client.count(code), 400);
    std::set<std::uint32_t> ids;
    const auto policies = client.policies(code);
    for (const auto& policy : policies) {
      expectSound(policy);
      ids.insert(word(policy, 164));
    }
    EXPECT_EQ(ids.size(), policies.size());
  }
  const auto version = client.same(kModifyAsm, modifyRequest(7));
  ASSERT_EQ(version.outcome, Outcome::success);
  EXPECT_LE(word(version.answer, 3988), 0xFFFF);
  EXPECT_LE(word(version.answer, 3992), 0xFFFF);
}

TEST(SimulatorRandom, damaged_requests_leave_the_stores_readable) {
  Random random{20240229};
  ModelClient client;
  std::size_t outcomes[5] = {};
  for (int i = 0; i < 250000; ++i) {
    Bytes request = plausible(random);
    const std::size_t outputLength = request.size() == 3984   ? 3972
                                     : word(request, 0) == 5  ? 4
                                     : below(random, 10) == 0 ? anyOutputLength(random, request.size())
                                                              : request.size();
    if (below(random, 3) == 0) damage(random, request);
    ++outcomes[static_cast<std::size_t>(client.send(anyCode(random), request, outputLength).outcome)];
    if (i % 25000 == 0) expectReadable(client);
  }
  expectReadable(client);
  // A run that never reaches one of the outcomes shows nothing about it.
  for (const std::size_t count : outcomes) EXPECT_GT(count, 100U);
}

TEST(SimulatorRandom, random_requests_leave_the_stores_readable) {
  Random random{19480616};
  ModelClient client;
  for (int i = 0; i < 100000; ++i) {
    Bytes request(below(random, below(random, 50) == 0 ? 20000 : 64));
    for (auto& byte : request) byte = static_cast<std::uint8_t>(random() >> 56);
    client.send(anyCode(random), request, anyOutputLength(random, request.size()));
  }
  expectReadable(client);
}

}  // namespace
}  // namespace test
