// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "simulator/model/log_area.h"

namespace simulator {

/// How a driver is to differ from the usual one.
struct Options {
  std::uint64_t seed = 0;
  /// where the clock stands still, in milliseconds
  std::optional<std::uint64_t> time;
  LogFault logFault = LogFault::none;
};

/// Which word was not understood, as the end of a sentence.
class OptionsError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Options from words such as "seed=7,log=no-end". Throws OptionsError.
Options parseOptions(std::string_view words);

}  // namespace simulator
