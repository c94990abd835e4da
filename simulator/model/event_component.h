// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/request.h"
#include "simulator/model/surroundings.h"

namespace simulator {

/// What sessions can ask to be told of, by the wire's event index.
enum Event : std::uint32_t {
  kEventOutputs = 0,
  kEventPowerSource = 1,
  kEventLid = 2,
  kEventBinary = 3,
  kEventSensor = 4,
  kEventFirmware = 5,
  kEventOverride = 6,
  kEventCount = 7,
  kNoEvent = kEventCount
};

/// The event objects that sessions have registered.
class EventComponent {
 public:
  Answer control(const Context& context, const Request& request);
  void close(Surroundings& surroundings, SessionId session);
  void fire(Surroundings& surroundings, Event event) const;

 private:
  struct Registration {
    SessionId session;
    std::uint64_t handle;
    /// 0 in a place that is free
    std::uint64_t object;
    std::uint32_t event;
  };

  static constexpr std::size_t kCapacity = 64;

  Answer add(Surroundings& surroundings, const Registration& wanted);
  Answer remove(Surroundings& surroundings, const Registration& wanted);
  Registration* find(const Registration& wanted);

  Registration registrations_[kCapacity]{};
};

}  // namespace simulator
