// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/settings.h"

#include "simulator/model/features.h"
#include "simulator/model/overrides.h"
#include "simulator/model/platform.h"
#include "simulator/model/policy_component.h"
#include "simulator/model/sensors.h"

namespace simulator {
namespace {

bool isSound(const BinarySettings& binary) {
  if (binary.source == kBinaryStatic) return binary.version1 == 0 && binary.version2 == 0 && binary.policies == 0;
  return binary.source <= kBinaryDisk && binary.version1 <= kHighestVersionWord &&
         binary.version2 <= kHighestVersionWord;
}

bool isChargeRateSound(const Settings& settings) {
  return settings.isChargeRateSet == 0
             ? settings.chargeRate == 0
             : settings.isChargeRateSet == 1 && settings.chargeRate <= std::uint32_t{kHighestChargeRate};
}

}  // namespace

bool areSound(const Settings& settings) {
  return isSound(settings.platform) && settings.se1[0] <= 1 && settings.se1[1] <= 1 && settings.dynamicSlider <= 1 &&
         isChargeRateSound(settings) && isSound(settings.binary) && areSound(settings.sensors) &&
         areSound(settings.overrides) && areTablesSound(settings);
}

}  // namespace simulator
