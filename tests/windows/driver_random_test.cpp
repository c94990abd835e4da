// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <thread>

#include <vqs/vqs.h>
#include "tests/support/results.h"
#include "tests/windows/device_handle.h"

namespace test {
namespace {

constexpr int kThreads = 4;

/// 200000 of all threads; VQS_TEST_REQUESTS in the environment asks for another number.
int requestsEach() {
  char number[16] = {};
  GetEnvironmentVariableA("VQS_TEST_REQUESTS", number, sizeof(number));
  const int wanted = std::atoi(number);
  return (wanted > 0 ? wanted : 200'000) / kThreads;
}
constexpr DWORD kLogCode = 0x80222058;

/// Any code of the device, any length, any bytes. Mostly zero, so that requests succeed too.
Bytes anyInput(std::mt19937& random) {
  constexpr DWORD kLengths[] = {0, 1, 4, 8, 12, 16, 24, 32, 40, 52, 64, 80, 196, 235, 404, 420, 520, 3984, 4000};
  Bytes input(random() % 32 == 0 ? random() % 20000 : kLengths[random() % std::size(kLengths)]);
  for (auto patches = random() % 4; patches > 0 && !input.empty(); --patches)
    input[random() % std::min<std::size_t>(input.size(), 16)] = static_cast<std::uint8_t>(random() % 16);
  if (random() % 16 == 0)
    for (auto& byte : input) byte = static_cast<std::uint8_t>(random());
  return input;
}

int sendRandomRequests(std::uint32_t seed) {
  std::mt19937 random{seed};
  const DeviceHandle device;
  int succeeded = 0;
  for (int i = requestsEach(); i > 0; --i) {
    const Bytes input = anyInput(random);
    const auto outputLength = static_cast<DWORD>(random() % 2 == 0 ? input.size() : random() % 600);
    const auto code = static_cast<DWORD>(random() % 50 == 0 ? random() : 0x80222000 + 4 * (random() % 0x2E));
    succeeded += device.request(code, input, outputLength).error == 0 ? 1 : 0;
  }
  return succeeded;
}

void expectReadableStores(QtfSession* session) {
  for (const VqsPolicyStore store : {VQS_POLICY_STORE_PB, VQS_POLICY_STORE_ASM, VQS_POLICY_STORE_BALANCE_PROFILE}) {
    VqsPolicyListV2 head{2, 0, 0};
    EXPECT_EQ(vqsPbGetPoliciesV2(session, &head, store), kDone);
    EXPECT_LE(head.count, 400U);
  }
}

/// All of the driver's places for logs are free, so none of the views is left.
void expectFreeLogs() {
  const DeviceHandle devices[8];
  for (int i = 0; i < 64; ++i) ASSERT_EQ(devices[i % 8].request(kLogCode, Record{32}, 32).error, 0U) << i;
}

TEST(DriverRandom, requests_of_several_threads_leave_a_sound_driver) {
  std::vector<std::thread> threads;
  std::vector<int> succeeded(kThreads);
  for (std::uint32_t i = 0; i < kThreads; ++i)
    threads.emplace_back([&, i] { succeeded[i] = sendRandomRequests(99 + i); });
  for (auto& thread : threads) thread.join();
  for (const int count : succeeded) EXPECT_GT(count, 50) << "nothing is shown by requests that all fail";

  QtfSession* session = nullptr;
  ASSERT_EQ(vqsInitialize(&session), kDone);
  expectReadableStores(session);
  expectFreeLogs();
  for (auto* reset : {vqsPbReset, vqsAsmReset, vqsBalanceProfileReset}) EXPECT_EQ(reset(session), kDone);
  // Random requests may have dictated inputs.
  std::uint32_t keys[28] = {};
  ASSERT_EQ(vqsGetInputOverrideKeyList(session, keys, nullptr, 0), kDone);
  for (const std::uint32_t key : keys) EXPECT_EQ(vqsOverrideInput(session, key, 0, 0), kDone);
  EXPECT_EQ(vqsExClearDynamicPolicy(session), kDone);
  EXPECT_EQ(vqsUninitialize(session), kDone);
}

}  // namespace
}  // namespace test
