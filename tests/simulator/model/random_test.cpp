// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "tests/simulator/model/request_page.h"
#include "tests/simulator/model/settings_view.h"
#include "tests/support/temporary_folder.h"

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
  ASSERT_EQ(version.outcome, Outcome::kSuccess);
  EXPECT_LE(word(version.answer, 3988), 0xFFFF);
  EXPECT_LE(word(version.answer, 3992), 0xFFFF);
}

struct Shape {
  std::uint32_t code;
  std::size_t inputLength;
  std::size_t outputLength;
};

bool isOfStores(std::uint32_t code) {
  return code == kLookup || std::ranges::count(kReadCodes, code) + std::ranges::count(kModifyCodes, code) != 0;
}

/// Every request beside those of the stores.
std::vector<Shape> shapes() {
  std::vector<Shape> all;
  for (const Form& form : requestPage())
    if (!isOfStores(form.code)) all.push_back({form.code, form.inputLength, form.outputLength});
  return all;
}

/// What the driver was told to keep, but policies; the platform, which stands before it, changes by itself.
Bytes toldSettings(ModelClient& client) {
  Bytes all = bytesOf(client.driver().settings());
  all.erase(all.begin(), all.begin() + offsetof(simulator::Settings, inputs));
  return all;
}

bool mayChangeSettings(std::uint32_t code) { return simulator::rowOf(code).changes == simulator::Changes::kSettings; }

/// Sends a request, which changes no settings unless the driver's list says so; notes its code when it changes some.
Outcome sendWatched(ModelClient& client, std::uint32_t code, const Bytes& request, std::size_t outputLength,
                    std::set<std::uint32_t>& changing) {
  const Bytes before = toldSettings(client);
  const Outcome outcome = client.outcome(code, request, outputLength);
  if (toldSettings(client) == before) return outcome;
  EXPECT_TRUE(mayChangeSettings(code)) << std::hex << code;
  changing.insert(code);
  return outcome;
}

constexpr std::uint64_t kFileAddress = 0x10000;

/// The words that come first in most requests are small; what follows them is anything, or zero.
Bytes plausible(Random& random, const Shape& shape) {
  Record record{shape.inputLength};
  const std::size_t smallWords = 1 + below(random, 3);
  for (std::size_t i = 0; i < smallWords && 4 * i + 4 <= shape.inputLength; ++i)
    record.u32(4 * i, static_cast<std::uint32_t>(below(random, i == 1 && shape.code == kOverride ? 190 : 15)));
  if (below(random, 4) == 0 && shape.inputLength > 8)
    record.u8(8 + below(random, shape.inputLength - 8), static_cast<std::uint8_t>(random()));
  if (shape.code == kCatalogue && shape.inputLength > 16) record.u64(8, shape.inputLength - 16);
  if (shape.code == kPolicyBinary && below(random, 2) == 0) record.u32(0, 0).u32(4, 0).u64(8, 79).u64(16, kFileAddress);
  return record;
}

/// Another session, another process, a later moment, a session's end.
void anythingAround(Random& random, ModelClient& client) {
  client.session = 1 + below(random, 4);
  client.surroundings.caller = 100 + client.session % 3;
  client.surroundings.canMapLogs = below(random, 50) != 0;
  client.surroundings.canKeepEvents = below(random, 50) != 0;
  client.surroundings.clock += below(random, 3) == 0 ? below(random, 3000) : 0;
  if (below(random, 1000) == 0) client.surroundings.clock += 3000000;
  if (below(random, 400) == 0) client.close();
  if (below(random, 200) == 0) client.refresh();
}

/// What an area shows is what it shows when it is written anew.
void expectAreaIsUpToDate(ModelClient& client, LogKind kind, std::uint32_t startOperation) {
  const auto isOfKind = [kind](const auto& mapping) { return mapping.kind == kind; };
  if (std::ranges::none_of(client.surroundings.mapped, isOfKind)) return;
  const auto before = bytesOfArea(client.surroundings.area(kind));
  const auto started = client.send(kLog, logRequest(startOperation), 32);
  if (started.outcome != Outcome::kSuccess) return;
  EXPECT_EQ(difference(bytesOfArea(client.surroundings.area(kind)), before), "");
  EXPECT_EQ(client.outcome(kLog, logRequest(1, word(started.answer, 0)), 32), Outcome::kSuccess);
}

void expectAreasWalk(ModelClient& client) {
  const auto isMapped = [&](LogKind kind) {
    return std::ranges::count(client.surroundings.mapped, kind, &ScriptedSurroundings::Mapping::kind) != 0;
  };
  client.refresh();
  if (isMapped(LogKind::kKeyValue)) {
    EXPECT_EQ(faultOfArea(bytesOfArea(client.surroundings.area(LogKind::kKeyValue)), kvRows()), "");
  }
  if (isMapped(LogKind::kExKeyValue)) {
    EXPECT_EQ(faultOfArea(bytesOfArea(client.surroundings.area(LogKind::kExKeyValue)), exKVRows()), "");
  }
  EXPECT_LE(client.surroundings.mapped.size(), 64U);
  EXPECT_LE(client.surroundings.kept.size(), 64U);
  EXPECT_EQ(client.driver().hasMappedLogs(), !client.surroundings.mapped.empty());
}

TEST(SimulatorRandom, damaged_requests_of_every_kind_leave_logs_and_settings_readable) {
  Random random{20261121};
  ModelClient client;
  client.surroundings.memory[kFileAddress] = readFile(VQS_TEST_DATA "/one-policy.bin");
  const auto all = shapes();
  std::set<std::uint32_t> changing;
  std::size_t outcomes[5] = {};
  std::set<std::uint32_t> succeeded;
  for (int i = 0; i < 60000; ++i) {
    const Shape& shape = all[below(random, all.size())];
    Bytes request = plausible(random, shape);
    if (below(random, 4) == 0) damage(random, request);
    anythingAround(random, client);
    const std::size_t outputLength = below(random, 30) == 0 ? below(random, 600) : shape.outputLength;
    const auto outcome = sendWatched(client, shape.code, request, outputLength, changing);
    ++outcomes[static_cast<std::size_t>(outcome)];
    if (outcome == Outcome::kSuccess) succeeded.insert(shape.code);
    if (i % 5000 == 0) expectAreasWalk(client);
    if (i % 7 == 0)
      for (std::size_t kind = 0; kind < 4; ++kind)
        expectAreaIsUpToDate(client, kLogKinds[kind], kStartOperations[kind]);
  }
  expectAreasWalk(client);
  EXPECT_EQ(settingsOf(client), settingsOf(client));
  for (const std::size_t count : outcomes) EXPECT_GT(count, 100U);
  for (const Shape& shape : all) {
    EXPECT_TRUE(succeeded.contains(shape.code)) << std::hex << shape.code;
    EXPECT_EQ(changing.contains(shape.code), mayChangeSettings(shape.code)) << std::hex << shape.code;
  }
  for (client.session = 1; client.session <= 4; ++client.session) client.close();
  EXPECT_TRUE(client.surroundings.mapped.empty());
  EXPECT_TRUE(client.surroundings.kept.empty());
}

TEST(SimulatorRandom, damaged_requests_leave_the_stores_readable) {
  Random random{20240229};
  ModelClient client;
  std::set<std::uint32_t> changing;
  std::size_t outcomes[5] = {};
  for (int i = 0; i < 250000; ++i) {
    Bytes request = plausible(random);
    const std::size_t outputLength = request.size() == 3984   ? 3972
                                     : word(request, 0) == 5  ? 4
                                     : below(random, 10) == 0 ? anyOutputLength(random, request.size())
                                                              : request.size();
    if (below(random, 3) == 0) damage(random, request);
    const std::uint32_t code = anyCode(random);
    ++outcomes[static_cast<std::size_t>(sendWatched(client, code, request, outputLength, changing))];
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
