// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/binary_component.h"
#include "simulator/model/event_component.h"
#include "simulator/model/log_component.h"
#include "simulator/model/policy_component.h"
#include "simulator/model/settings.h"
#include "simulator/model/signals.h"
#include "simulator/model/surroundings.h"

namespace simulator {

/// What a request is carried out on: the parts of the driver, and the system around it.
struct Context {
  Surroundings& surroundings;
  Settings& settings;
  PolicyComponent& policies;
  LogComponent& logs;
  EventComponent& events;
  BinaryComponent& binaries;
  bool& areOutputsUnread;

  [[nodiscard]] Sources sources() const { return {.settings = settings, .policies = policies}; }
};

}  // namespace simulator
