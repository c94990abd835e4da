// SPDX-License-Identifier: Apache-2.0
#include <new>

#include "simulator/embedded/embedded_driver.h"

namespace simulator {
namespace {

Reason readEnvironment(void* /*context*/, Configuration& configuration) {
  if (system::environment("VEXOQTF_SIMULATOR_STATE", configuration.stateFile) &&
      system::environment("VEXOQTF_SIMULATOR_OPTIONS", configuration.options))
    return {};
  return Reason{"is longer than %zu bytes", Configuration::kLongestText - 1};
}

/// The library finds its driver in any process that loads it. The driver is never destroyed: handles may be in use as
/// long as the process runs.
[[gnu::constructor]] void attachSimulatedDriver() {
  system::stayLoaded();
  alignas(EmbeddedDriver) static std::byte memory[sizeof(EmbeddedDriver)];
  (new (memory) EmbeddedDriver{&readEnvironment})->attach();
}

}  // namespace
}  // namespace simulator
