// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/context.h"
#include "simulator/model/requests.h"

namespace simulator {

/// A part of a driver's memory, named by what it holds.
struct DriverBlock {
  char name[4];
  std::uint32_t offset;
  std::uint32_t size;
};

inline constexpr std::size_t kDriverBlocks = 8;

/// The simulated driver. Its owner provides the memory, 5.1 MB of it, and lets in one call at a time; an object of zero
/// bytes is a fresh driver.
class Driver {
 public:
  // A driver may lie in memory that outlives its process, which can be killed at any point, and be used by the next.

  /// Tells how a driver lies in its memory. A block may be added, and grow at its end; a name keeps its meaning.
  static void describe(DriverBlock (&blocks)[kDriverBlocks]);
  /// Takes back what the last process has begun and not ended, and what it was given.
  void recover();
  /// False for memory whose content no sequence of requests can lead to.
  [[nodiscard]] bool isSound() const;

  /// Carries out one request. `buffer` holds the input, is at least as long as the longer of both lengths, and
  /// receives the answer from its beginning; on failure its content means nothing, and nothing but time has passed.
  Answer control(Surroundings& surroundings, SessionId session, std::uint32_t code, std::span<std::byte> buffer,
                 std::uint32_t inputLength, std::uint32_t outputLength);

  /// Takes back what a session was given: its logs and its event registrations. Called when its handle is closed, and
  /// not necessarily by the process that opened it.
  void close(Surroundings& surroundings, SessionId session);

  /// Brings the platform up to the present, and with it the log areas that are mapped.
  void refresh(Surroundings& surroundings);

  /// True while a log is mapped somewhere, and refresh is worth calling now and then.
  [[nodiscard]] bool hasMappedLogs() const { return logs_.hasMappedLogs(); }

  /// True when the outputs have changed since they were read last: the state that the event of their change should
  /// have.
  [[nodiscard]] bool areOutputsUnread() const { return areOutputsUnread_; }

  /// Makes key/value logs show a fault from now on.
  void setLogFault(LogFault fault) { logs_.setFault(fault); }
  /// Chooses the course of a platform that has not been looked at yet.
  void setSeed(std::uint64_t seed);

  [[nodiscard]] PolicyComponent& policies() { return policies_; }
  [[nodiscard]] const PolicyComponent& policies() const { return policies_; }
  [[nodiscard]] Settings& settings() { return settings_; }
  [[nodiscard]] const Settings& settings() const { return settings_; }

 private:
  /// States whose change is an event.
  struct Watched;

  Answer carryOut(Surroundings& surroundings, const RequestRow& row, const Request& request);
  void tellOfChanges(Surroundings& surroundings, const Watched& before);
  [[nodiscard]] Sources sources() const { return {.settings = settings_, .policies = policies_}; }
  void beginChange();
  void endChange();

  PolicyComponent policies_;
  LogComponent logs_;
  EventComponent events_;
  BinaryComponent binaries_;
  Settings settings_{};
  /// The settings before the change at hand: a process that is killed in its middle has not made it.
  Settings before_{};
  std::uint32_t isChanging_ = 0;
  bool areOutputsUnread_ = false;
};
static_assert(std::is_trivially_copyable_v<Driver> && std::is_standard_layout_v<Driver>);

}  // namespace simulator
