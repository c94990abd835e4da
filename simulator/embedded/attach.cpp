// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>

#include "simulator/embedded/embedded_driver.h"

namespace {

std::string stateFileFromEnvironment() {
  const char* name = std::getenv("VEXOQTF_SIMULATOR_STATE");
  return name == nullptr ? "" : name;
}

/// The library finds its driver in any process that loads it. The driver is never destroyed: handles may be in use as
/// long as the process runs.
[[gnu::constructor]] void attachSimulatedDriver() {
  static auto& driver = *new simulator::EmbeddedDriver{stateFileFromEnvironment};
  driver.attach();
}

}  // namespace
