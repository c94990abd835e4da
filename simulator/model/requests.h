// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/event_component.h"
#include "simulator/model/request.h"

namespace simulator {

/// Which parts of what telemetry shows a successful request may change.
enum class Changes : std::uint8_t { nothing, settings, policies };

/// A request that the driver knows.
struct RequestRow {
  std::uint32_t code;
  Handler handler;
  Changes changes = Changes::nothing;
  /// The event that a success is by itself, whatever it changes.
  Event event = kNoEvent;
};

std::span<const RequestRow> requests();

/// The row of a code. For an unknown code it is a row whose handler answers that there is no such request.
const RequestRow& rowOf(std::uint32_t code);

}  // namespace simulator
