// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

/// What the driver is told to keep, policies aside, and the state of its platform: plain records that go into a state
/// file as they are. All zero is a fresh driver. A new field goes to the end of Settings: files that were written
/// without it are read with zeros in its place.
namespace simulator {

inline constexpr std::size_t kOverrideKeys = 28;
inline constexpr std::size_t kSensors = 4;
inline constexpr std::size_t kHistory = 20;
inline constexpr std::size_t kPowerModes = 5;
inline constexpr std::size_t kThrottlers = 7;

/// The platform at one of the last minutes.
struct Sample {
  std::uint32_t chargeLevel;
  std::int32_t chargeRate;
  std::uint32_t batteryTemperature;
  std::uint32_t nvmeTemperature;
  std::uint32_t brightness;
};

/// Temperatures are in thousandths of a degree, the charge in mW seconds.
struct PlatformState {
  std::uint64_t seed;
  /// the clock as it was last seen
  std::uint64_t clock;
  /// milliseconds that were simulated
  std::uint64_t elapsed;
  std::uint32_t isStarted;
  /// 1 on battery, as long as nothing overrides it
  std::uint32_t powerSource;
  std::int32_t charge;
  std::int32_t socTemperature;
  std::int32_t skinTemperature;
  std::int32_t batteryTemperature;
  /// seconds spent throttled, and in each power mode
  std::uint32_t throttled[kThrottlers];
  std::uint32_t inPowerMode[kPowerModes];
  /// newest first
  Sample history[kHistory];
};
static_assert(sizeof(PlatformState) == 496);
static_assert(offsetof(PlatformState, isStarted) == 24);
static_assert(offsetof(PlatformState, throttled) == 48);
static_assert(offsetof(PlatformState, history) == 96);

struct OverrideSettings {
  std::uint32_t isSet[kOverrideKeys];
  std::uint32_t values[kOverrideKeys];
};

struct SensorSettings {
  std::uint32_t isSimulated[kSensors];
  std::uint32_t words[kSensors][3];
};

enum BinarySource : std::uint32_t { kBinaryStatic = 0, kBinaryDynamic = 1, kBinaryDisk = 2 };

/// The policy binary in force. For the static one all fields are zero: its version is fixed.
struct BinarySettings {
  std::uint32_t source;
  std::uint32_t version1;
  std::uint32_t version2;
  std::uint32_t policies;

  friend bool operator==(const BinarySettings&, const BinarySettings&) = default;
};

/// A feature table without its operation word.
template <std::size_t kSize>
struct TableSettings {
  std::uint32_t sets;
  std::uint8_t current[kSize];
  std::uint8_t previous[kSize];
};

struct Settings {
  PlatformState platform;
  std::uint32_t inputs[2];
  std::uint32_t se1[2];
  std::uint32_t ta[2];
  std::uint32_t dynamicSlider;
  std::uint32_t isChargeRateSet;
  std::uint32_t chargeRate;
  std::uint32_t firmwareEvents[2];
  BinarySettings binary;
  SensorSettings sensors;
  OverrideSettings overrides;
  TableSettings<192> autoMode;
  TableSettings<76> inBag;
  TableSettings<400> slider;
  TableSettings<416> asmLite;
  TableSettings<12> sliderV4;
};
static_assert(sizeof(Settings) == 3056);
static_assert(offsetof(Settings, inputs) == 496);
static_assert(offsetof(Settings, binary) == 540);
static_assert(offsetof(Settings, sensors) == 556);
static_assert(offsetof(Settings, overrides) == 620);
static_assert(offsetof(Settings, autoMode) == 844);
static_assert(std::is_trivially_copyable_v<Settings>);
static_assert(std::has_unique_object_representations_v<Settings>);

}  // namespace simulator
