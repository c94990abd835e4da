// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>

#include "simulator/embedded/embedded_driver.h"

namespace {

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

/// The library finds its driver in any process that loads it. The driver is never destroyed: handles may be in use as
/// long as the process runs.
[[gnu::constructor]] void attachSimulatedDriver() {
  static auto& driver = *new simulator::EmbeddedDriver{[] { return environment("VEXOQTF_SIMULATOR_STATE"); },
                                                       simulator::EmbeddedDriver::kLockTimeout,
                                                       [] { return environment("VEXOQTF_SIMULATOR_OPTIONS"); }};
  driver.attach();
}

}  // namespace
