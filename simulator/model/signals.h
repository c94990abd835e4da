// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/policy_component.h"
#include "simulator/model/simulated_platform.h"

namespace simulator {

/// Everything that telemetry is made from.
struct Sources {
  const Settings& settings;
  const PolicyComponent& policies;
};

/// The function that a telemetry key's elements are read with. One with a single value ignores the element's number.
using Signal = std::int32_t (*)(const Sources& sources, std::uint32_t element);

/// Writes a text with its zero into the bytes of a value, which are zero.
using TextSignal = void (*)(const Sources& sources, std::span<char> text);

/// The signals, by what they show.
namespace signal {

std::int32_t lidClosed(const Sources& sources, std::uint32_t element);
std::int32_t userEngaged(const Sources& sources, std::uint32_t element);
std::int32_t userPresent(const Sources& sources, std::uint32_t element);
std::int32_t powerSource(const Sources& sources, std::uint32_t element);
std::int32_t powerMode(const Sources& sources, std::uint32_t element);
std::int32_t gameMode(const Sources& sources, std::uint32_t element);
std::int32_t dynamicSlider(const Sources& sources, std::uint32_t element);
std::int32_t featureActive(const Sources& sources, std::uint32_t feature);
std::int32_t displayEnabled(const Sources& sources, std::uint32_t display);
std::int32_t displayNumber(const Sources& sources, std::uint32_t element);
std::int32_t displayType(const Sources& sources, std::uint32_t display);
std::int32_t mouseNumber(const Sources& sources, std::uint32_t element);
std::int32_t keyboardNumber(const Sources& sources, std::uint32_t element);
std::int32_t ambientLight(const Sources& sources, std::uint32_t element);
std::int32_t brightness(const Sources& sources, std::uint32_t element);

std::int32_t chargeRate(const Sources& sources, std::uint32_t element);
std::int32_t chargeLevel(const Sources& sources, std::uint32_t element);
std::int32_t batteryTemperature(const Sources& sources, std::uint32_t element);

std::int32_t pbPolicyId(const Sources& sources, std::uint32_t position);
std::int32_t asmPolicyId(const Sources& sources, std::uint32_t position);
std::int32_t balanceProfilePolicyId(const Sources& sources, std::uint32_t position);
std::int32_t binaryIsLoaded(const Sources& sources, std::uint32_t element);
/// "3.41"
void binaryVersion(const Sources& sources, std::span<char> text);
std::int32_t binarySource(const Sources& sources, std::uint32_t element);

std::int32_t appInput(const Sources& sources, std::uint32_t index);
std::int32_t appOutput(const Sources& sources, std::uint32_t index);
std::int32_t customInput(const Sources& sources, std::uint32_t index);
std::int32_t sensorStatus(const Sources& sources, std::uint32_t sensor);
/// three words a sensor
std::int32_t sensorWord(const Sources& sources, std::uint32_t word);
std::int32_t taStatus(const Sources& sources, std::uint32_t element);
std::int32_t firmwareEvents(const Sources& sources, std::uint32_t version);

std::int32_t cpuActivity(const Sources& sources, std::uint32_t element);
std::int32_t coreActivity(const Sources& sources, std::uint32_t core);
std::int32_t sortedCoreActivity(const Sources& sources, std::uint32_t rank);
std::int32_t gfxActivity(const Sources& sources, std::uint32_t element);
std::int32_t npuActivity(const Sources& sources, std::uint32_t element);
std::int32_t memoryReads(const Sources& sources, std::uint32_t element);
std::int32_t memoryWrites(const Sources& sources, std::uint32_t element);
std::int32_t queueLength(const Sources& sources, std::uint32_t element);
std::int32_t processorTime(const Sources& sources, std::uint32_t element);
std::int32_t highestProcessorTime(const Sources& sources, std::uint32_t element);
std::int32_t interrupts(const Sources& sources, std::uint32_t element);
std::int32_t highestInterrupts(const Sources& sources, std::uint32_t element);
std::int32_t gfxTime(const Sources& sources, std::uint32_t element);

std::int32_t corePower(const Sources& sources, std::uint32_t core);
std::int32_t allCorePower(const Sources& sources, std::uint32_t element);
std::int32_t gfxPower(const Sources& sources, std::uint32_t element);
std::int32_t npuPower(const Sources& sources, std::uint32_t element);
std::int32_t apuPower(const Sources& sources, std::uint32_t element);
std::int32_t systemPower(const Sources& sources, std::uint32_t element);
/// cores, then the rest of the chip
std::int32_t railVoltage(const Sources& sources, std::uint32_t rail);
std::int32_t railCurrent(const Sources& sources, std::uint32_t rail);
std::int32_t railPower(const Sources& sources, std::uint32_t rail);

std::int32_t socTemperature(const Sources& sources, std::uint32_t element);
std::int32_t coreTemperature(const Sources& sources, std::uint32_t core);
std::int32_t skinTemperature(const Sources& sources, std::uint32_t element);
std::int32_t coreFrequency(const Sources& sources, std::uint32_t core);
std::int32_t gfxFrequency(const Sources& sources, std::uint32_t element);
std::int32_t npuFrequency(const Sources& sources, std::uint32_t element);

std::int32_t seconds(const Sources& sources, std::uint32_t element);
std::int32_t throttled(const Sources& sources, std::uint32_t throttler);
std::int32_t throttlerBits(const Sources& sources, std::uint32_t element);
std::int32_t powerModeSeconds(const Sources& sources, std::uint32_t mode);
std::int32_t levelHistory(const Sources& sources, std::uint32_t minutesAgo);
std::int32_t rateHistory(const Sources& sources, std::uint32_t minutesAgo);
std::int32_t batteryTemperatureHistory(const Sources& sources, std::uint32_t minutesAgo);
std::int32_t nvmeTemperatureHistory(const Sources& sources, std::uint32_t minutesAgo);
std::int32_t brightnessHistory(const Sources& sources, std::uint32_t minutesAgo);

}  // namespace signal

}  // namespace simulator
