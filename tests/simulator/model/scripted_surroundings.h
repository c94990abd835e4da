// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <vector>

#include "simulator/model/surroundings.h"
#include "tests/support/bytes.h"

namespace test {

using simulator::LogKind;

/// A world that does what a test says, and remembers what the driver did in it.
class ScriptedSurroundings final : public simulator::Surroundings {
 public:
  struct Mapping {
    LogKind kind;
    std::uint64_t process;
    std::uint64_t address;

    friend bool operator==(const Mapping&, const Mapping&) = default;
  };

  std::uint64_t clock = 5000000;
  std::uint64_t caller = 100;
  bool hasLogMemory = true;
  bool canMapLogs = true;
  bool canKeepEvents = true;
  /// What the calling process may read, by its addresses.
  std::map<std::uint64_t, Bytes> memory;

  /// Log mappings that are not taken back, and those that are.
  std::vector<Mapping> mapped;
  std::vector<Mapping> unmapped;
  bool outputEvent = false;
  /// Handles of the event objects that are kept, by the name that the driver got.
  std::map<std::uint64_t, std::uint64_t> kept;
  /// Handles of the events that were signalled, in order.
  std::vector<std::uint64_t> signalled;

  std::vector<std::byte>& area(LogKind kind) { return areas_[static_cast<std::size_t>(kind)]; }

  std::uint64_t now() override { return clock; }
  std::uint64_t process() override { return caller; }

  std::span<std::byte> logArea(LogKind kind) override {
    if (!hasLogMemory) return {};
    return area(kind);
  }

  std::uint64_t mapLog(LogKind kind) override {
    if (!canMapLogs) return 0;
    mapped.push_back({kind, caller, nextAddress_ += 0x10000});
    return nextAddress_;
  }

  void unmapLog(LogKind kind, std::uint64_t process, std::uint64_t address) override {
    const Mapping mapping{kind, process, address};
    EXPECT_EQ(std::erase(mapped, mapping), 1U) << "no such mapping";
    unmapped.push_back(mapping);
  }

  bool readCaller(std::uint64_t address, std::span<std::byte> destination) override {
    const auto behind = memory.upper_bound(address);
    if (behind == memory.begin()) return false;
    const auto& [start, bytes] = *std::prev(behind);
    const std::uint64_t skipped = address - start;
    if (skipped > bytes.size() || destination.size() > bytes.size() - skipped) return false;
    if (!destination.empty()) std::memcpy(destination.data(), bytes.data() + skipped, destination.size());
    return true;
  }

  void setOutputEvent(bool isSet) override { outputEvent = isSet; }

  std::uint64_t retainEvent(std::uint64_t handle) override {
    if (!canKeepEvents) return 0;
    kept.emplace(++lastEvent_, handle);
    return lastEvent_;
  }

  void releaseEvent(std::uint64_t event) override { EXPECT_EQ(kept.erase(event), 1U) << "not kept, or released twice"; }

  void signalEvent(std::uint64_t event) override {
    ASSERT_TRUE(kept.contains(event));
    signalled.push_back(kept.at(event));
  }

 private:
  std::array<std::vector<std::byte>, 4> areas_ = {std::vector<std::byte>(4096), std::vector<std::byte>(4096),
                                                  std::vector<std::byte>(16384), std::vector<std::byte>(4096)};
  std::uint64_t nextAddress_ = 0x7F0000000000;
  std::uint64_t lastEvent_ = 900;
};

}  // namespace test
