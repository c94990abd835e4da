// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <random>

#include "tests/simulator/model/settings_view.h"
#include "tests/support/temporary_folder.h"

// A driver whose process is killed in the middle of a request, as the next process finds its memory.

namespace test {
namespace {

/// A world in which something happens while the driver reads a caller's memory, in the middle of a request.
class Interrupting final : public simulator::Surroundings {
 public:
  std::function<void()> inTheMiddle;

  std::uint64_t now() override { return 5000000; }
  std::uint64_t process() override { return 100; }
  std::span<std::byte> logArea(LogKind kind) override { return areas_[static_cast<std::size_t>(kind)]; }
  std::uint64_t mapLog(LogKind /*kind*/) override { return ++mappings_; }
  void unmapLog(LogKind /*kind*/, std::uint64_t /*process*/, std::uint64_t /*address*/) override { ++unmapped; }
  bool readCaller(std::uint64_t /*address*/, std::span<std::byte> destination) override {
    std::memcpy(destination.data(), sample("laptop-r5.bin").data(), destination.size());
    inTheMiddle();
    return true;
  }
  void setOutputEvent(bool /*signalled*/) override {}
  std::uint64_t retainEvent(std::uint64_t handle) override { return handle; }
  void releaseEvent(std::uint64_t /*event*/) override { ++unmapped; }
  void signalEvent(std::uint64_t /*event*/) override {}

  int unmapped = 0;

 private:
  std::array<std::array<std::byte, 16384>, 4> areas_{};
  std::uint64_t mappings_ = 0;
};

class Recovery : public testing::Test {
 protected:
  Bytes send(simulator::Driver& to, std::uint32_t code, Bytes record) {
    const auto length = static_cast<std::uint32_t>(record.size());
    const auto answer = to.control(surroundings, 1, code, std::as_writable_bytes(std::span{record}), length, length);
    EXPECT_EQ(answer.outcome, Outcome::kSuccess);
    return record;
  }
  Bytes binaryInForce(simulator::Driver& to) { return part(send(to, kPolicyBinary, Record{24}.u32(0, 2)), 8, 8); }
  void loadBinary(simulator::Driver& to) { send(to, kPolicyBinary, Record{24}.u64(8, 3371).u64(16, 0x1000)); }
  static void copy(const simulator::Driver& from, simulator::Driver& to) { std::memcpy(&to, &from, sizeof(from)); }

  Interrupting surroundings;
  std::unique_ptr<simulator::Driver> driver = std::make_unique<simulator::Driver>();
  std::unique_ptr<simulator::Driver> found = std::make_unique<simulator::Driver>();
};

TEST_F(Recovery, takes_a_change_back_that_was_not_ended) {
  surroundings.inTheMiddle = [this] { copy(*driver, *found); };
  send(*driver, 0x80222094, Record{8}.u32(0, 1));
  loadBinary(*driver);
  // As far as the killed process may have come.
  found->settings().binary = {.source = 1, .version1 = 99, .version2 = 98, .policies = 97};
  found->settings().se1[1] = 1;
  found->recover();
  EXPECT_EQ(binaryInForce(*found), hex("01 00 00 00  00 00 00 00"));
  EXPECT_EQ(found->settings().se1[0], 1U) << "what was told before";
  EXPECT_EQ(found->settings().se1[1], 0U);
}

TEST_F(Recovery, keeps_a_change_that_was_ended) {
  surroundings.inTheMiddle = [] {};
  loadBinary(*driver);
  copy(*driver, *found);
  found->recover();
  EXPECT_EQ(binaryInForce(*found), hex("03 00 00 00  29 00 00 00"));
}

TEST_F(Recovery, is_over_at_once) {
  surroundings.inTheMiddle = [this] { copy(*driver, *found); };
  loadBinary(*driver);
  found->recover();
  surroundings.inTheMiddle = [] {};
  loadBinary(*found);
  found->recover();
  EXPECT_EQ(binaryInForce(*found), hex("03 00 00 00  29 00 00 00"));
}

TEST_F(Recovery, ends_the_logs_and_registrations_of_the_process_and_touches_none) {
  EXPECT_EQ(word(send(*driver, kLog, logRequest(7)), 0), 1);
  EXPECT_TRUE(driver->hasMappedLogs());
  driver->recover();
  EXPECT_FALSE(driver->hasMappedLogs());
  EXPECT_EQ(surroundings.unmapped, 0);
  EXPECT_EQ(word(send(*driver, kLog, logRequest(7)), 0), 1);
}

TEST_F(Recovery, leaves_a_fresh_driver_fresh) {
  driver->recover();
  EXPECT_TRUE(bytesOf(*driver) == bytesOf(*found));
  EXPECT_TRUE(driver->isSound());
}

// The store does the same as a list, whatever comes and goes, and its memory is never unsound.
TEST(SimulatorStores, keep_the_order_of_arrival_through_any_comings_and_goings) {
  std::mt19937 random{3};
  const auto store = std::make_unique<simulator::PolicyStore>();
  Ids expected;
  for (int step = 0; step < 20000; ++step) {
    const auto id = static_cast<std::uint32_t>(random() % 600);
    const bool isHeld = std::ranges::find(expected, id) != expected.end();
    if (random() % 100 < 55) {
      simulator::PackedPolicy policy{};
      policy.id = id;
      policy.param0 = id + 7;
      const auto result = store->add(policy);
      ASSERT_EQ(static_cast<std::uint32_t>(result), isHeld ? 2U : expected.size() == 400 ? 3U : 0U);
      if (!isHeld && expected.size() < 400) expected.push_back(id);
    } else {
      ASSERT_EQ(static_cast<std::uint32_t>(store->remove(id)), isHeld ? 0U : 4U);
      std::erase(expected, id);
    }
    if (random() % 2000 == 0) {
      store->reset();
      expected.clear();
    }
    ASSERT_EQ(store->count(), expected.size());
    if (step % 50 != 0) continue;
    ASSERT_TRUE(store->isSound());
    for (std::uint32_t i = 0; i < expected.size(); ++i) {
      ASSERT_EQ(store->policy(i).id, expected[i]);
      ASSERT_EQ(store->policy(i).param0, expected[i] + 7);
    }
  }
}

}  // namespace
}  // namespace test
