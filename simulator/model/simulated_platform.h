// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "simulator/model/settings.h"

namespace simulator {

enum PowerSource : std::uint32_t { kSourceAc = 0, kSourceDc = 1 };
enum PowerMode : std::uint32_t { kModeBalanced = 2 };

inline constexpr std::int32_t kDesignedCapacity = 60000;
inline constexpr std::int32_t kFullCapacity = 57000;
inline constexpr std::int32_t kUsualChargeRate = 45000;
inline constexpr std::int32_t kHighestChargeRate = 100000;
inline constexpr std::uint32_t kCores = 16;
/// What one step of the clock can bring about at most; beyond it, the platform sleeps.
inline constexpr std::uint64_t kLongestCatchUp = 3600000;

/// The platform's own inputs and states at its present second, with what is overridden of them. Powers in mW,
/// temperatures in hundredths of a degree, frequencies in MHz, activities in percent. It is for one second, and as long
/// as nothing is overridden or set anew.
class Platform {
 public:
  explicit Platform(const Settings& settings) : settings_(settings) {}

  [[nodiscard]] std::uint32_t seconds() const;
  [[nodiscard]] std::uint32_t powerSource() const;
  [[nodiscard]] std::uint32_t powerMode() const;
  [[nodiscard]] bool lidClosed() const;
  [[nodiscard]] std::int32_t brightness() const;
  [[nodiscard]] std::int32_t ambientLight() const;

  [[nodiscard]] std::int32_t cpuActivity() const;
  [[nodiscard]] std::int32_t coreActivity(std::uint32_t core) const;
  [[nodiscard]] std::int32_t gfxActivity() const;
  [[nodiscard]] std::int32_t npuActivity() const;

  [[nodiscard]] std::int32_t corePower(std::uint32_t core) const;
  [[nodiscard]] std::int32_t allCorePower() const;
  [[nodiscard]] std::int32_t gfxPower() const;
  [[nodiscard]] std::int32_t npuPower() const;
  [[nodiscard]] std::int32_t apuPower() const;
  [[nodiscard]] std::int32_t systemPower() const;

  /// positive while charging
  [[nodiscard]] std::int32_t chargeRate() const;
  /// percent of the full capacity
  [[nodiscard]] std::int32_t chargeLevel() const;

  [[nodiscard]] std::int32_t socTemperature() const;
  [[nodiscard]] std::int32_t skinTemperature() const;
  [[nodiscard]] std::int32_t batteryTemperature() const;
  [[nodiscard]] std::int32_t nvmeTemperature() const;

 private:
  [[nodiscard]] std::int32_t activityOfCore(std::uint32_t core, std::int32_t cpuActivity) const;
  [[nodiscard]] std::int32_t ownApuPower() const;
  [[nodiscard]] std::int32_t ownChargeRate() const;

  const Settings& settings_;
  /// Nearly all of the work of a second is to find this, and most of a second's values follow from it.
  mutable std::optional<std::int32_t> apuPower_;
};

/// What holds the chip back, a bit each: PROCHOT, SPL, FPPT, SPPT, and the temperature of cores, graphics and chip.
std::int32_t throttlersOf(const Platform& platform);

/// A platform that was never looked at begins now.
void startOnce(Settings& settings, std::uint64_t clock);

/// Brings a platform that has begun to a moment of the clock, second by second. False when no second has passed.
bool advance(Settings& settings, std::uint64_t clock);

/// False for a state that the simulation can never reach.
bool isSound(const PlatformState& state);

}  // namespace simulator
