// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/signals.h"

#include <algorithm>

#include "simulator/model/app_io.h"
#include "simulator/model/binary_component.h"
#include "simulator/model/feature_tables.h"
#include "simulator/model/overrides.h"
#include "simulator/model/sensors.h"

namespace simulator::signal {
namespace {

constexpr std::int32_t kNoPolicy = -1;
constexpr std::int32_t kSocPower = 1200;
constexpr std::int32_t kSocVoltage = 850;
constexpr std::uint32_t kSensorWords = 3;
/// As policies know display types.
constexpr std::int32_t kDisplayTypes[] = {8, 5, 5, 5};

Platform platform(const Sources& sources) { return Platform{sources.settings}; }

std::int32_t input(const Sources& sources, OverrideKey key, std::int64_t own) {
  return static_cast<std::int32_t>(overridden(sources.settings.overrides, key, own));
}

std::int32_t policyId(const PolicyStore& store, std::uint32_t position) {
  return position < store.count() ? static_cast<std::int32_t>(store.policy(position).id) : kNoPolicy;
}

const Sample& sampleOf(const Sources& sources, std::uint32_t minutesAgo) {
  return sources.settings.platform.history[std::min<std::size_t>(minutesAgo, kHistory - 1)];
}

/// Writes a number and returns what lies behind it.
std::span<char> writeNumber(std::uint32_t number, std::span<char> text) {
  std::uint32_t power = 1;
  while (number / power >= 10) power *= 10;
  for (; power != 0; power /= 10) {
    text.front() = static_cast<char>('0' + number / power % 10);
    text = text.subspan(1);
  }
  return text;
}

std::int32_t coreVoltage(const Sources& sources) { return 700 + platform(sources).cpuActivity() * 5; }

}  // namespace

std::int32_t lidClosed(const Sources& sources, std::uint32_t) { return platform(sources).lidClosed() ? 1 : 0; }
std::int32_t userEngaged(const Sources& sources, std::uint32_t) { return input(sources, kKeyUserEngaged, 1); }
std::int32_t userPresent(const Sources& sources, std::uint32_t) { return input(sources, kKeyUserPresent, 1); }
std::int32_t powerSource(const Sources& sources, std::uint32_t) {
  return static_cast<std::int32_t>(platform(sources).powerSource());
}
std::int32_t powerMode(const Sources& sources, std::uint32_t) {
  return static_cast<std::int32_t>(platform(sources).powerMode());
}
std::int32_t gameMode(const Sources& sources, std::uint32_t) { return input(sources, kKeyGameMode, 0); }
std::int32_t dynamicSlider(const Sources& sources, std::uint32_t) {
  return static_cast<std::int32_t>(sources.settings.dynamicSlider);
}
std::int32_t featureActive(const Sources& sources, std::uint32_t feature) {
  return activityOfFeature(sources.settings, sources.policies, feature) != 0 ? 1 : 0;
}
std::int32_t displayEnabled(const Sources& sources, std::uint32_t display) {
  return static_cast<std::int32_t>(display) < displayNumber(sources, 0) ? 1 : 0;
}
std::int32_t displayNumber(const Sources& sources, std::uint32_t) { return input(sources, kKeyDisplayNum, 1); }
std::int32_t displayType(const Sources& sources, std::uint32_t display) {
  return displayEnabled(sources, display) != 0 ? kDisplayTypes[display] : -2;
}
std::int32_t mouseNumber(const Sources& sources, std::uint32_t) { return input(sources, kKeyMouseNum, 1); }
std::int32_t keyboardNumber(const Sources& sources, std::uint32_t) { return input(sources, kKeyKeyboardNum, 1); }
std::int32_t ambientLight(const Sources& sources, std::uint32_t) { return platform(sources).ambientLight(); }
std::int32_t brightness(const Sources& sources, std::uint32_t) { return platform(sources).brightness(); }

std::int32_t chargeRate(const Sources& sources, std::uint32_t) { return platform(sources).chargeRate(); }
std::int32_t chargeLevel(const Sources& sources, std::uint32_t) { return platform(sources).chargeLevel(); }
std::int32_t batteryTemperature(const Sources& sources, std::uint32_t) {
  return platform(sources).batteryTemperature();
}

std::int32_t pbPolicyId(const Sources& sources, std::uint32_t position) {
  return policyId(sources.policies.store(kStorePb), position);
}
std::int32_t asmPolicyId(const Sources& sources, std::uint32_t position) {
  return policyId(sources.policies.store(kStoreAsm), position);
}
std::int32_t balanceProfilePolicyId(const Sources& sources, std::uint32_t position) {
  return policyId(sources.policies.store(kStoreBalanceProfile), position);
}
std::int32_t binaryIsLoaded(const Sources& sources, std::uint32_t) {
  return sources.settings.binary.source != kBinaryStatic ? 1 : 0;
}
void binaryVersion(const Sources& sources, std::span<char> text) {
  const BinaryVersion version = binaryInForce(sources.settings.binary);
  const auto rest = writeNumber(version.word1, text);
  rest.front() = '.';
  writeNumber(version.word2, rest.subspan(1));
}
std::int32_t binarySource(const Sources& sources, std::uint32_t) {
  return static_cast<std::int32_t>(sources.settings.binary.source);
}

std::int32_t appInput(const Sources& sources, std::uint32_t index) {
  return static_cast<std::int32_t>(inputInForce(sources.settings, index));
}
std::int32_t appOutput(const Sources& sources, std::uint32_t index) {
  return static_cast<std::int32_t>(outputOf(sources.settings, index));
}
std::int32_t customInput(const Sources& sources, std::uint32_t index) {
  const std::uint32_t key = index < 2 ? kKeyCustomInput1 + index : kKeyCustomInput3 + index - 2;
  return input(sources, static_cast<OverrideKey>(key), 0);
}
std::int32_t sensorStatus(const Sources& sources, std::uint32_t sensor) {
  return static_cast<std::int32_t>(readSensor(sources.settings, sensor).status);
}
std::int32_t sensorWord(const Sources& sources, std::uint32_t word) {
  return static_cast<std::int32_t>(readSensor(sources.settings, word / kSensorWords).words[word % kSensorWords]);
}
std::int32_t taStatus(const Sources& sources, std::uint32_t) {
  return static_cast<std::int32_t>(sources.settings.ta[0]);
}
std::int32_t firmwareEvents(const Sources& sources, std::uint32_t version) {
  const auto& counts = sources.settings.firmwareEvents;
  return version < std::size(counts) ? static_cast<std::int32_t>(counts[version]) : 0;
}

std::int32_t cpuActivity(const Sources& sources, std::uint32_t) { return platform(sources).cpuActivity(); }
std::int32_t coreActivity(const Sources& sources, std::uint32_t core) { return platform(sources).coreActivity(core); }
std::int32_t sortedCoreActivity(const Sources& sources, std::uint32_t rank) {
  std::int32_t activities[kCores];
  for (std::uint32_t core = 0; core < kCores; ++core) activities[core] = coreActivity(sources, core);
  std::ranges::sort(activities, std::ranges::greater{});
  return activities[rank];
}
std::int32_t gfxActivity(const Sources& sources, std::uint32_t) { return platform(sources).gfxActivity(); }
std::int32_t npuActivity(const Sources& sources, std::uint32_t) { return platform(sources).npuActivity(); }
std::int32_t memoryReads(const Sources& sources, std::uint32_t) { return platform(sources).cpuActivity() * 20; }
std::int32_t memoryWrites(const Sources& sources, std::uint32_t) { return platform(sources).cpuActivity() * 9; }
std::int32_t queueLength(const Sources& sources, std::uint32_t) { return platform(sources).cpuActivity() / 25; }
std::int32_t processorTime(const Sources& sources, std::uint32_t) { return platform(sources).cpuActivity() * 10; }
std::int32_t highestProcessorTime(const Sources& sources, std::uint32_t) { return sortedCoreActivity(sources, 0) * 10; }
std::int32_t interrupts(const Sources& sources, std::uint32_t) { return 900 + platform(sources).cpuActivity() * 55; }
std::int32_t highestInterrupts(const Sources& sources, std::uint32_t) { return interrupts(sources, 0) * 3 / 2; }
std::int32_t gfxTime(const Sources& sources, std::uint32_t) { return platform(sources).gfxActivity() * 10; }

std::int32_t corePower(const Sources& sources, std::uint32_t core) { return platform(sources).corePower(core); }
std::int32_t allCorePower(const Sources& sources, std::uint32_t) { return platform(sources).allCorePower(); }
std::int32_t gfxPower(const Sources& sources, std::uint32_t) { return platform(sources).gfxPower(); }
std::int32_t npuPower(const Sources& sources, std::uint32_t) { return platform(sources).npuPower(); }
std::int32_t apuPower(const Sources& sources, std::uint32_t) { return platform(sources).apuPower(); }
std::int32_t systemPower(const Sources& sources, std::uint32_t) { return platform(sources).systemPower(); }
std::int32_t railVoltage(const Sources& sources, std::uint32_t rail) {
  return rail == 0 ? coreVoltage(sources) : kSocVoltage;
}
std::int32_t railCurrent(const Sources& sources, std::uint32_t rail) {
  return railPower(sources, rail) * 1000 / railVoltage(sources, rail);
}
std::int32_t railPower(const Sources& sources, std::uint32_t rail) {
  return rail == 0 ? platform(sources).allCorePower() : kSocPower;
}

std::int32_t socTemperature(const Sources& sources, std::uint32_t) { return platform(sources).socTemperature(); }
std::int32_t coreTemperature(const Sources& sources, std::uint32_t core) {
  return platform(sources).socTemperature() + platform(sources).coreActivity(core) * 8;
}
std::int32_t skinTemperature(const Sources& sources, std::uint32_t) { return platform(sources).skinTemperature(); }
std::int32_t coreFrequency(const Sources& sources, std::uint32_t core) {
  return 800 + platform(sources).coreActivity(core) * 34;
}
std::int32_t gfxFrequency(const Sources& sources, std::uint32_t) { return 400 + platform(sources).gfxActivity() * 22; }
std::int32_t npuFrequency(const Sources& sources, std::uint32_t) { return 300 + platform(sources).npuActivity() * 15; }

std::int32_t seconds(const Sources& sources, std::uint32_t) {
  return static_cast<std::int32_t>(platform(sources).seconds());
}
std::int32_t throttled(const Sources& sources, std::uint32_t throttler) {
  return static_cast<std::int32_t>(sources.settings.platform.throttled[throttler]);
}
std::int32_t throttlerBits(const Sources& sources, std::uint32_t) { return throttlersOf(platform(sources)); }
std::int32_t powerModeSeconds(const Sources& sources, std::uint32_t mode) {
  return mode < kPowerModes ? static_cast<std::int32_t>(sources.settings.platform.inPowerMode[mode]) : 0;
}
std::int32_t levelHistory(const Sources& sources, std::uint32_t minutesAgo) {
  return static_cast<std::int32_t>(sampleOf(sources, minutesAgo).chargeLevel);
}
std::int32_t rateHistory(const Sources& sources, std::uint32_t minutesAgo) {
  return sampleOf(sources, minutesAgo).chargeRate;
}
std::int32_t batteryTemperatureHistory(const Sources& sources, std::uint32_t minutesAgo) {
  return static_cast<std::int32_t>(sampleOf(sources, minutesAgo).batteryTemperature);
}
std::int32_t nvmeTemperatureHistory(const Sources& sources, std::uint32_t minutesAgo) {
  return static_cast<std::int32_t>(sampleOf(sources, minutesAgo).nvmeTemperature);
}
std::int32_t brightnessHistory(const Sources& sources, std::uint32_t minutesAgo) {
  return static_cast<std::int32_t>(sampleOf(sources, minutesAgo).brightness);
}

}  // namespace simulator::signal
