// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/request.h"
#include "simulator/model/settings.h"

namespace simulator {

/// Inputs whose value a client can dictate, by the telemetry keys that show them.
enum OverrideKey : std::uint32_t {
  kKeyLidClosed = 2,
  kKeyUserEngaged = 4,
  kKeyUserPresent = 5,
  kKeyPowerSource = 24,
  kKeyChargeRate = 27,
  kKeyChargeLevel = 28,
  kKeyAppInput1 = 31,
  kKeyAppInput2 = 32,
  kKeyCustomInput1 = 35,
  kKeyCustomInput2 = 36,
  kKeyPowerMode = 52,
  kKeyMouseNum = 54,
  kKeyKeyboardNum = 55,
  kKeyDisplayNum = 56,
  kKeyAmbientLight = 57,
  kKeyBrightness = 58,
  kKeyBatteryTemperature = 85,
  kKeyCustomInput3 = 97,
  kKeyCustomInput10 = 104,
  kKeyGameMode = 126,
  kKeySkinTemperature = 175,
  kKeyApuPower = 185
};

/// The dictated value of a key, or else its own one.
std::int64_t overridden(const OverrideSettings& overrides, OverrideKey key, std::int64_t own);

/// False for values that could not have been dictated.
bool areSound(const OverrideSettings& overrides);

/// Sets or lifts an override.
Answer setOverride(const Context& context, const Request& request);
Answer answerOverrideListSize(const Context& context, const Request& request);
Answer answerOverrideList(const Context& context, const Request& request);
Answer answerOverrideMetadata(const Context& context, const Request& request);

/// Where a key stands among the keys that can be overridden; kOverrideKeys when it cannot.
std::size_t findOverrideKey(std::uint32_t key);

}  // namespace simulator
