// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <sys/mman.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <thread>

#include "tests/simulator/embedded/client.h"
#include "tests/simulator/model/settings_view.h"

namespace test {
namespace {

using std::chrono::steady_clock;

/// Waits for something that another thread brings about.
template <class Condition>
bool comesTrue(Condition condition) {
  const auto deadline = steady_clock::now() + std::chrono::seconds{20};
  while (!condition()) {
    if (steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(milliseconds{5});
  }
  return true;
}

/// The system's line about the log mapping at an address; empty when there is none.
std::string mappingAt(std::uint64_t address) {
  std::ifstream maps{"/proc/self/maps"};
  for (std::string line; std::getline(maps, line);) {
    const std::uint64_t first = std::stoull(line, nullptr, 16);
    if (first == address && line.find("vexoqtf log") != std::string::npos) return line;
  }
  return {};
}

std::size_t threads() {
  const std::filesystem::directory_iterator tasks{"/proc/self/task"};
  return static_cast<std::size_t>(std::distance(begin(tasks), end(tasks)));
}

struct StartedLog {
  std::uint32_t id = 0;
  std::uint64_t address = 0;
};

StartedLog start(EmbeddedDriver& driver, std::uint32_t operation, std::uintptr_t session = 1) {
  Bytes record = logRequest(operation);
  DWORD returned = 0;
  if (!driver.control(handle(session), {kLog, record.data(), 32, record.data(), 32, &returned, nullptr})) return {};
  return {word(record, 0), word(record, 8) | std::uint64_t{word(record, 12)} << 32};
}

Bytes areaAt(std::uint64_t address, std::size_t size) {
  const auto* first = reinterpret_cast<const std::uint8_t*>(address);
  return {first, first + size};
}

/// Seconds simulated, from a plain log.
std::uint32_t secondsAt(std::uint64_t address) { return *reinterpret_cast<const volatile std::uint32_t*>(address + 8); }

TEST(EmbeddedLog, can_be_walked_in_this_process) {
  OpenDriver driver{""};
  const auto log = start(*driver, 7);
  const auto ex = start(*driver, 10);
  ASSERT_NE(log.address, 0U);
  ASSERT_NE(ex.address, 0U);
  EXPECT_EQ(faultOfArea(areaAt(log.address, 16384), kvRows()), "");
  EXPECT_EQ(faultOfArea(areaAt(ex.address, 4096), exKVRows()), "");
}

TEST(EmbeddedLog, can_be_read_only) {
  OpenDriver driver{""};
  for (const std::uint32_t operation : kStartOperations) {
    const auto log = start(*driver, operation);
    EXPECT_NE(mappingAt(log.address).find(" r--s "), std::string::npos) << mappingAt(log.address);
    const Errors errors;
    EXPECT_NE(exitStatus(inProcess([address = log.address] {
                *reinterpret_cast<volatile char*>(address) = 1;
                return 0;
              })),
              0);
  }
}

TEST(EmbeddedLog, is_mapped_once_for_each_start) {
  OpenDriver driver{""};
  const auto first = start(*driver, 7);
  const auto second = start(*driver, 7);
  EXPECT_NE(first.address, second.address);
  EXPECT_NE(mappingAt(first.address), "");
  EXPECT_NE(mappingAt(second.address), "");
  ASSERT_FALSE(request(*driver, kLog, logRequest(8, first.id)).empty());
  EXPECT_EQ(mappingAt(first.address), "");
  EXPECT_EQ(faultOfArea(areaAt(second.address, 16384), kvRows()), "");
}

TEST(EmbeddedLog, shows_what_later_requests_change) {
  OpenDriver driver{""};
  (*driver).setTime(1000);
  const auto first = start(*driver, 0);
  const auto second = start(*driver, 0);
  EXPECT_EQ(secondsAt(first.address), 0);
  (*driver).setTime(43000);
  request(*driver, kReadPb, countQuery());
  EXPECT_EQ(secondsAt(first.address), 42);
  EXPECT_EQ(secondsAt(second.address), 42);
}

TEST(EmbeddedLog, is_unmapped_with_its_handle) {
  TestDriver driver;
  ASSERT_TRUE(driver.open(handle(1)));
  ASSERT_TRUE(driver.open(handle(2)));
  const auto first = start(driver, 7, 1);
  const auto second = start(driver, 7, 2);
  driver.close(handle(1));
  EXPECT_EQ(mappingAt(first.address), "");
  EXPECT_NE(mappingAt(second.address), "");
  driver.close(handle(2));
  EXPECT_EQ(mappingAt(second.address), "");
}

TEST(EmbeddedLog, is_unmapped_when_the_driver_goes) {
  std::uint64_t address = 0;
  {
    TestDriver driver;
    driver.attach();
    ASSERT_TRUE(driver.open(handle(1)));
    address = start(driver, 7).address;
    EXPECT_NE(mappingAt(address), "");
  }
  EXPECT_EQ(mappingAt(address), "");
}

TEST(EmbeddedLog, goes_on_without_requests) {
  OpenDriver driver{""};
  const auto log = start(*driver, 0);
  const std::uint32_t before = secondsAt(log.address);
  EXPECT_TRUE(comesTrue([&] { return secondsAt(log.address) >= before + 2; }));
}

TEST(EmbeddedLog, has_a_thread_only_while_it_is_mapped) {
  const std::size_t before = threads();
  OpenDriver driver{""};
  request(*driver, kReadPb, countQuery());
  EXPECT_EQ(threads(), before);
  for (int i = 0; i < 3; ++i) {
    const auto first = start(*driver, 0);
    const auto second = start(*driver, 10);
    EXPECT_EQ(threads(), before + 1);
    ASSERT_FALSE(request(*driver, kLog, logRequest(1, first.id)).empty());
    EXPECT_EQ(threads(), before + 1);
    ASSERT_FALSE(request(*driver, kLog, logRequest(1, second.id)).empty());
    EXPECT_TRUE(comesTrue([&] { return threads() == before; }));
  }
}

TEST(EmbeddedLog, thread_ends_with_the_handle_and_with_the_driver) {
  const std::size_t before = threads();
  {
    TestDriver driver;
    ASSERT_TRUE(driver.open(handle(1)));
    start(driver, 7);
    EXPECT_EQ(threads(), before + 1);
    driver.close(handle(1));
    EXPECT_TRUE(comesTrue([&] { return threads() == before; }));
    ASSERT_TRUE(driver.open(handle(2)));
    start(driver, 7, 2);
  }
  EXPECT_TRUE(comesTrue([&] { return threads() == before; }));
}

TEST(EmbeddedLog, threads_may_start_and_stop_at_once) {
  TestDriver driver;
  std::vector<std::thread> clients;
  for (std::uintptr_t client = 1; client <= 4; ++client)
    clients.emplace_back([&driver, client] {
      for (int i = 0; i < 50; ++i) {
        ASSERT_TRUE(driver.open(handle(client)));
        const auto log = start(driver, 7, client);
        ASSERT_NE(log.address, 0U);
        EXPECT_EQ(word(areaAt(log.address, 16384), 0), 1);
        driver.close(handle(client));
      }
    });
  for (auto& client : clients) client.join();
}

TEST(EmbeddedPolicyBinary, is_read_from_the_callers_memory) {
  OpenDriver driver{""};
  const Bytes file = sample("laptop-r5.bin");
  const Record load = Record{24}.u64(8, file.size()).u64(16, reinterpret_cast<std::uint64_t>(file.data()));
  EXPECT_EQ(request(*driver, kPolicyBinary, load), Record{24}.u32(12, 16).bytes());
  EXPECT_EQ(part(request(*driver, kPolicyBinary, Record{24}.u32(0, 2)), 8, 8), hex("03 00 00 00  29 00 00 00"));
}

/// Two pages of which only the first can be read.
class HalfReadable {
 public:
  HalfReadable() : page_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))) {
    void* memory = mmap(nullptr, 2 * page_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    EXPECT_NE(memory, MAP_FAILED);
    memory_ = static_cast<std::uint8_t*>(memory);
    EXPECT_EQ(mprotect(memory_ + page_, page_, PROT_NONE), 0);
  }
  ~HalfReadable() { munmap(memory_, 2 * page_); }
  HalfReadable(HalfReadable&&) = delete;

  /// Puts bytes at the end of what can be read; their address.
  [[nodiscard]] std::uint64_t put(const Bytes& bytes) const {
    std::uint8_t* first = memory_ + page_ - bytes.size();
    std::ranges::copy(bytes, first);
    return reinterpret_cast<std::uint64_t>(first);
  }

 private:
  std::size_t page_;
  std::uint8_t* memory_ = nullptr;
};

TEST(EmbeddedPolicyBinary, memory_that_cannot_be_read_fails_the_request_only) {
  OpenDriver driver{""};
  for (const std::uint64_t address : std::initializer_list<std::uint64_t>{1, 0xDEAD0000, 0xFFFFFFFFFFFFF000, ~0ULL})
    EXPECT_EQ(request(*driver, kPolicyBinary, Record{24}.u64(8, 79).u64(16, address)), Bytes{}) << address;
  const HalfReadable memory;
  const std::uint64_t address = memory.put(sample("laptop-r3.bin"));
  EXPECT_EQ(request(*driver, kPolicyBinary, Record{24}.u64(8, 2243).u64(16, address)), Bytes{});
  EXPECT_EQ(request(*driver, kPolicyBinary, Record{24}.u64(8, 2242).u64(16, address + 1)), Bytes{});
  EXPECT_EQ(part(request(*driver, kPolicyBinary, Record{24}.u32(0, 2)), 8, 8), hex("01 00 00 00  00 00 00 00"));
  EXPECT_EQ(request(*driver, kPolicyBinary, Record{24}.u64(8, 2242).u64(16, address)), Record{24}.u32(12, 16).bytes());
}

}  // namespace
}  // namespace test
