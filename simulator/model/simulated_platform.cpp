// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/simulated_platform.h"

#include <algorithm>

#include "simulator/model/overrides.h"

namespace simulator {
namespace {

constexpr std::uint64_t kSecond = 1000;
constexpr std::uint32_t kSecondsPerMinute = 60;
constexpr std::int32_t kSecondsPerHour = 3600;
constexpr std::int32_t kFullCharge = kFullCapacity * kSecondsPerHour;
constexpr std::int32_t kRoomTemperature = 24000;
constexpr std::int32_t kHottest = 110000;
/// Seconds stay within 32 bits.
constexpr std::uint64_t kLongestLife = 0xFFFFFFFF * kSecond;

/// What moves on its own, each with a course of its own.
enum Course : std::uint32_t { kCourseCpu = 1, kCourseGfx = 2, kCourseNpu = 3, kCourseLight = 4, kCourseCore = 16 };

std::uint64_t mixed(std::uint64_t value) {
  value += 0x9E3779B97F4A7C15;
  value = (value ^ value >> 30) * 0xBF58476D1CE4E5B9;
  value = (value ^ value >> 27) * 0x94D049BB133111EB;
  return value ^ value >> 31;
}

struct Range {
  std::int32_t lowest;
  std::int32_t highest;
};

std::int32_t pointOf(std::uint64_t course, std::uint64_t index, Range range) {
  const std::uint64_t random = mixed(course + index);
  const auto width = static_cast<std::uint64_t>(range.highest - range.lowest) + 1;
  return range.lowest + static_cast<std::int32_t>(random % width);
}

/// A course through random points, straight from one to the next.
std::int32_t courseAt(std::uint64_t seed, std::uint32_t course, std::uint32_t second, std::uint32_t period,
                      Range range) {
  const std::uint32_t index = second / period;
  const auto within = static_cast<std::int32_t>(second % period);
  const std::uint64_t ownCourse = mixed(mixed(seed) + course);
  const std::int32_t from = pointOf(ownCourse, index, range);
  const std::int32_t to = pointOf(ownCourse, index + std::uint64_t{1}, range);
  return from + (to - from) * within / static_cast<std::int32_t>(period);
}

/// What a core of that activity draws.
std::int32_t powerAt(std::int32_t activity) { return 40 + activity * 7; }

/// One second of the way from a temperature to where it tends.
std::int32_t approached(std::int32_t temperature, std::int32_t target, std::int32_t seconds) {
  return temperature + (target - temperature) / seconds;
}

void start(PlatformState& state, std::uint64_t clock) {
  state.isStarted = 1;
  state.clock = clock;
  state.powerSource = kSourceDc;
  state.charge = kFullCharge / 5 * 4;
  state.socTemperature = 38000;
  state.skinTemperature = 29000;
  state.batteryTemperature = 27000;
}

void moveCharge(PlatformState& state, std::int32_t rate) {
  state.charge = std::clamp(state.charge + rate, 0, kFullCharge);
  if (state.charge <= kFullCharge / 20 * 3) state.powerSource = kSourceAc;
  if (state.charge >= kFullCharge / 20 * 19) state.powerSource = kSourceDc;
}

void moveTemperatures(PlatformState& state, const Platform& platform, std::int32_t chargeRate) {
  const std::int32_t burden = chargeRate < 0 ? -chargeRate : chargeRate;
  state.socTemperature = approached(state.socTemperature, kRoomTemperature + platform.apuPower() * 2, 15);
  state.skinTemperature = approached(state.skinTemperature, kRoomTemperature + platform.systemPower() * 3 / 4, 180);
  state.batteryTemperature = approached(state.batteryTemperature, kRoomTemperature + burden / 4, 300);
  for (auto* temperature : {&state.socTemperature, &state.skinTemperature, &state.batteryTemperature})
    *temperature = std::min(*temperature, kHottest);
}

void countThrottling(PlatformState& state, const Platform& platform) {
  const auto throttlers = static_cast<std::uint32_t>(throttlersOf(platform));
  for (std::size_t i = 0; i < kThrottlers; ++i) state.throttled[i] += throttlers >> i & 1U;
}

void remember(PlatformState& state, const Platform& platform) {
  std::ranges::copy_backward(std::begin(state.history), std::end(state.history) - 1, std::end(state.history));
  state.history[0] = {.chargeLevel = static_cast<std::uint32_t>(platform.chargeLevel()),
                      .chargeRate = platform.chargeRate(),
                      .batteryTemperature = static_cast<std::uint32_t>(platform.batteryTemperature()),
                      .nvmeTemperature = static_cast<std::uint32_t>(platform.nvmeTemperature()),
                      .brightness = static_cast<std::uint32_t>(platform.brightness())};
}

void live(Settings& settings) {
  auto& state = settings.platform;
  const Platform platform{settings};
  if (platform.seconds() % kSecondsPerMinute == 0) remember(state, platform);
  const std::int32_t chargeRate = platform.chargeRate();
  countThrottling(state, platform);
  ++state.inPowerMode[platform.powerMode()];
  moveTemperatures(state, platform, chargeRate);
  moveCharge(state, chargeRate);
}

}  // namespace

std::uint32_t Platform::seconds() const { return static_cast<std::uint32_t>(settings_.platform.elapsed / kSecond); }

std::uint32_t Platform::powerSource() const {
  return static_cast<std::uint32_t>(overridden(settings_.overrides, kKeyPowerSource, settings_.platform.powerSource));
}

std::uint32_t Platform::powerMode() const {
  return static_cast<std::uint32_t>(overridden(settings_.overrides, kKeyPowerMode, kModeBalanced));
}

bool Platform::lidClosed() const { return overridden(settings_.overrides, kKeyLidClosed, 0) != 0; }

std::int32_t Platform::brightness() const {
  return static_cast<std::int32_t>(overridden(settings_.overrides, kKeyBrightness, 70));
}

std::int32_t Platform::ambientLight() const {
  const auto& sensors = settings_.sensors;
  const std::int64_t own = sensors.isSimulated[0] != 0
                               ? std::int64_t{sensors.words[0][0]}
                               : courseAt(settings_.platform.seed, kCourseLight, seconds(), 120, {80, 600});
  return static_cast<std::int32_t>(overridden(settings_.overrides, kKeyAmbientLight, own));
}

std::int32_t Platform::cpuActivity() const {
  return courseAt(settings_.platform.seed, kCourseCpu, seconds(), 16, {3, 97});
}

std::int32_t Platform::activityOfCore(std::uint32_t core, std::int32_t cpuActivity) const {
  const std::int32_t own = courseAt(settings_.platform.seed, kCourseCore + core, seconds(), 8, {-20, 20});
  return std::clamp(cpuActivity + own, 0, 100);
}

std::int32_t Platform::coreActivity(std::uint32_t core) const { return activityOfCore(core, cpuActivity()); }

std::int32_t Platform::gfxActivity() const {
  return courseAt(settings_.platform.seed, kCourseGfx, seconds(), 24, {0, 80});
}

std::int32_t Platform::npuActivity() const {
  return courseAt(settings_.platform.seed, kCourseNpu, seconds(), 40, {0, 60});
}

std::int32_t Platform::corePower(std::uint32_t core) const { return powerAt(coreActivity(core)); }

std::int32_t Platform::allCorePower() const {
  const std::int32_t activity = cpuActivity();
  std::int32_t sum = 0;
  for (std::uint32_t core = 0; core < kCores; ++core) sum += powerAt(activityOfCore(core, activity));
  return sum;
}

std::int32_t Platform::gfxPower() const { return 300 + gfxActivity() * 75; }
std::int32_t Platform::npuPower() const { return 100 + npuActivity() * 30; }

std::int32_t Platform::ownApuPower() const { return 1200 + allCorePower() + gfxPower() + npuPower(); }

std::int32_t Platform::apuPower() const {
  if (!apuPower_) apuPower_ = static_cast<std::int32_t>(overridden(settings_.overrides, kKeyApuPower, ownApuPower()));
  return *apuPower_;
}

std::int32_t Platform::systemPower() const { return apuPower() + 2500 + brightness() * 40; }

std::int32_t Platform::ownChargeRate() const {
  if (powerSource() == kSourceDc) return settings_.platform.charge == 0 ? 0 : -systemPower();
  if (settings_.platform.charge >= kFullCharge) return 0;
  return settings_.isChargeRateSet != 0 ? static_cast<std::int32_t>(settings_.chargeRate) : kUsualChargeRate;
}

std::int32_t Platform::chargeRate() const {
  return static_cast<std::int32_t>(overridden(settings_.overrides, kKeyChargeRate, ownChargeRate()));
}

std::int32_t Platform::chargeLevel() const {
  const std::int32_t own = settings_.platform.charge / (kFullCharge / 100);
  return static_cast<std::int32_t>(overridden(settings_.overrides, kKeyChargeLevel, own));
}

std::int32_t Platform::socTemperature() const { return settings_.platform.socTemperature / 10; }

std::int32_t Platform::skinTemperature() const {
  const std::int32_t own = settings_.platform.skinTemperature / 10;
  return static_cast<std::int32_t>(overridden(settings_.overrides, kKeySkinTemperature, own));
}

std::int32_t Platform::batteryTemperature() const {
  const std::int32_t own = settings_.platform.batteryTemperature / 10;
  return static_cast<std::int32_t>(overridden(settings_.overrides, kKeyBatteryTemperature, own));
}

std::int32_t Platform::nvmeTemperature() const { return (settings_.platform.skinTemperature + 4000) / 10; }

std::int32_t throttlersOf(const Platform& platform) {
  const auto bit = [](bool isActive, std::uint32_t position) { return (isActive ? 1 : 0) << position; };
  return bit(platform.socTemperature() > 10000, 0) | bit(platform.apuPower() > 15000, 1) |
         bit(platform.apuPower() > 22000, 2) | bit(platform.apuPower() > 18000, 3) |
         bit(platform.socTemperature() > 6000, 4) | bit(platform.gfxPower() > 5000, 5) |
         bit(platform.socTemperature() > 6500, 6);
}

void startOnce(Settings& settings, std::uint64_t clock) {
  if (settings.platform.isStarted == 0) start(settings.platform, clock);
}

bool advance(Settings& settings, std::uint64_t clock) {
  auto& state = settings.platform;
  const std::uint64_t passed = clock > state.clock ? std::min(clock - state.clock, kLongestCatchUp) : 0;
  state.clock = clock;
  const std::uint64_t goal = state.elapsed + passed;
  const bool isLater = goal / kSecond != state.elapsed / kSecond;
  // Second by second, so that many small steps and a large one come to the same.
  while (state.elapsed / kSecond < goal / kSecond) {
    live(settings);
    state.elapsed = (state.elapsed / kSecond + 1) * kSecond;
  }
  state.elapsed = goal;
  return isLater;
}

bool isSound(const PlatformState& state) {
  const auto isTemperature = [](std::int32_t value) { return value >= 0 && value <= kHottest; };
  return state.isStarted <= 1 && state.elapsed <= kLongestLife && state.powerSource <= kSourceDc && state.charge >= 0 &&
         state.charge <= kFullCharge && isTemperature(state.socTemperature) && isTemperature(state.skinTemperature) &&
         isTemperature(state.batteryTemperature);
}

}  // namespace simulator
