// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "simulator/embedded/reason.h"
#include "simulator/model/log_area.h"

namespace simulator {

/// The options of docs/simulator.md.
struct Options {
  std::uint64_t seed = 0;
  /// where the clock stands still, in milliseconds
  std::optional<std::uint64_t> time = std::nullopt;
  LogFault logFault = LogFault::none;
};

/// Options from words such as "seed=7,log=no-end", or which word was not understood.
Reason parseOptions(std::string_view words, Options& options);

}  // namespace simulator
