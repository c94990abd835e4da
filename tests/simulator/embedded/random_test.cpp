// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <thread>

#include "tests/simulator/embedded/client.h"

namespace test {
namespace {

constexpr int kThreads = 4;
constexpr int kRequestsEach = 250000;

/// Views of log areas in this process.
int countViews() {
  std::ifstream maps{"/proc/self/maps"};
  int count = 0;
  for (std::string line; std::getline(maps, line);) count += line.find("vexoqtf log") != std::string::npos ? 1 : 0;
  return count;
}

/// Any code of the device, any length, any bytes; short runs of zero are likely, so that requests succeed too.
void sendRandomRequests(EmbeddedDriver& driver, HANDLE session, std::uint32_t seed) {
  std::mt19937 random{seed};
  constexpr DWORD kLengths[] = {0, 1, 4, 8, 12, 16, 24, 32, 40, 52, 64, 80, 196, 235, 404, 420, 520, 3984, 4000};
  std::vector<std::uint8_t> input(20000);
  std::vector<std::uint8_t> output(20000);
  for (int i = 0; i < kRequestsEach; ++i) {
    const DWORD inputLength =
        random() % 8 == 0 ? static_cast<DWORD>(random() % 20000) : kLengths[random() % std::size(kLengths)];
    const DWORD outputLength = random() % 2 == 0 ? inputLength : kLengths[random() % std::size(kLengths)];
    std::fill_n(input.begin(), inputLength, std::uint8_t{0});
    for (auto patches = random() % 4; patches > 0 && inputLength != 0; --patches)
      input[random() % std::min<DWORD>(inputLength, 16)] = static_cast<std::uint8_t>(random() % 16);
    if (random() % 16 == 0)
      for (DWORD at = 0; at < inputLength; ++at) input[at] = static_cast<std::uint8_t>(random());
    const DWORD code =
        random() % 50 == 0 ? static_cast<DWORD>(random()) : static_cast<DWORD>(0x80222000 + 4 * (random() % 0x2E));
    driver.control(session, {code, input.data(), inputLength, output.data(), outputLength, nullptr, nullptr});
  }
}

TEST(EmbeddedRandom, a_million_requests_of_several_threads_leave_a_sound_driver) {
  TestDriver driver;
  std::vector<std::jthread> threads;
  for (std::uintptr_t i = 0; i < kThreads; ++i) {
    ASSERT_TRUE(driver.open(handle(10 + i)));
    threads.emplace_back(
        [&driver, i] { sendRandomRequests(driver, handle(10 + i), static_cast<std::uint32_t>(77 + i)); });
  }
  threads.clear();

  ASSERT_TRUE(driver.open(handle(1)));
  for (const std::uint32_t code : kReadCodes) {
    const auto answer = request(driver, code, countQuery());
    ASSERT_FALSE(answer.empty());
    EXPECT_LE(word(answer, 4), 400);
  }
  for (std::uintptr_t i = 0; i < kThreads; ++i) driver.close(handle(10 + i));
  EXPECT_LE(countViews(), 4) << "the driver's own views are left, and no client's";
  EXPECT_EQ(word(request(driver, kModifyPb, modifyRequest(3)), 3980), 0);
  EXPECT_EQ(add(driver, kModifyPb, 7), 0);
  EXPECT_EQ(ids(driver, kReadPb), Ids{7});
  driver.close(handle(1));
}

}  // namespace
}  // namespace test
