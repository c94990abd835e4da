// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/event_component.h"
#include "simulator/model/request.h"

namespace simulator {

/// What a request may change of that which telemetry shows, when it succeeds.
enum class Changes : std::uint8_t { kNothing, kSettings, kPolicies };

/// A request that the driver knows.
struct RequestRow {
  std::uint32_t code;
  Handler handler;
  Changes changes = Changes::kNothing;
  /// The event that a success is by itself, whatever it changes.
  Event event = kNoEvent;
};

std::span<const RequestRow> requests();

/// The row of a code. That of a code which is in no row answers that there is no such request.
const RequestRow& rowOf(std::uint32_t code);

}  // namespace simulator
