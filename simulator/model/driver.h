// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/binary_component.h"
#include "simulator/model/event_component.h"
#include "simulator/model/log_component.h"
#include "simulator/model/policy_component.h"
#include "simulator/model/settings.h"
#include "simulator/model/surroundings.h"

namespace simulator {

/// The simulated driver. Its owner provides the memory, 5.1 MB of it, and lets in one call at a time; an object of zero
/// bytes is a fresh driver.
class Driver {
 public:
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

  Answer dispatch(Surroundings& surroundings, const Request& request);
  Answer dispatchPolicies(const Request& request);
  Answer dispatchPlatform(const Request& request);
  void tellOfChanges(Surroundings& surroundings, const Watched& before);
  [[nodiscard]] Sources sources() const { return {.settings = settings_, .policies = policies_}; }

  PolicyComponent policies_;
  LogComponent logs_;
  EventComponent events_;
  BinaryComponent binaries_;
  Settings settings_{};
  bool areOutputsUnread_{};
};

}  // namespace simulator
