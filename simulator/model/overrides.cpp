// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/overrides.h"

#include <limits>

#include "simulator/model/context.h"
#include "simulator/model/element_type.h"

namespace simulator {
namespace {

struct OverrideRow {
  std::uint32_t key;
  ElementType type;
  std::int64_t lowest;
  std::int64_t highest;
  const char* name;
};

constexpr std::int64_t kAnyWord = std::numeric_limits<std::uint32_t>::max();

// clang-format off
constexpr OverrideRow kRows[] = {
    {.key = 2, .type = ElementType::kBool8, .lowest = 0, .highest = 1, .name = "LidClosed"},
    {.key = 4, .type = ElementType::kBool8, .lowest = 0, .highest = 1, .name = "UserEngaged"},
    {.key = 5, .type = ElementType::kBool8, .lowest = 0, .highest = 1, .name = "UserPresent"},
    {.key = 24, .type = ElementType::kBool8, .lowest = 0, .highest = 1, .name = "PowerSource"},
    {.key = 27, .type = ElementType::kInt32, .lowest = -100000, .highest = 100000, .name = "BatteryChargeRate"},
    {.key = 28, .type = ElementType::kUint32, .lowest = 0, .highest = 100, .name = "BatteryChargeLevel"},
    {.key = 31, .type = ElementType::kUint32, .lowest = 0, .highest = kAnyWord, .name = "AppInput1"},
    {.key = 32, .type = ElementType::kUint32, .lowest = 0, .highest = kAnyWord, .name = "AppInput2"},
    {.key = 35, .type = ElementType::kUint32, .lowest = 0, .highest = kAnyWord, .name = "CustomInput1"},
    {.key = 36, .type = ElementType::kUint32, .lowest = 0, .highest = kAnyWord, .name = "CustomInput2"},
    {.key = 52, .type = ElementType::kUint32, .lowest = 0, .highest = 4, .name = "PowerMode"},
    {.key = 54, .type = ElementType::kUint32, .lowest = 0, .highest = 16, .name = "MouseNum"},
    {.key = 55, .type = ElementType::kUint32, .lowest = 0, .highest = 16, .name = "KeyboardNum"},
    {.key = 56, .type = ElementType::kUint32, .lowest = 0, .highest = 4, .name = "DisplayNum"},
    {.key = 57, .type = ElementType::kUint32, .lowest = 0, .highest = 100000, .name = "ambientLight"},
    {.key = 58, .type = ElementType::kUint32, .lowest = 0, .highest = 100, .name = "DisplayBrightness"},
    {.key = 85, .type = ElementType::kUint32, .lowest = 0, .highest = 10000, .name = "batteryTemperature"},
    {.key = 97, .type = ElementType::kUint32, .lowest = 0, .highest = kAnyWord, .name = "CustomInput3"},
    {.key = 98, .type = ElementType::kUint32, .lowest = 0, .highest = kAnyWord, .name = "CustomInput4"},
    {.key = 99, .type = ElementType::kUint32, .lowest = 0, .highest = kAnyWord, .name = "CustomInput5"},
    {.key = 100, .type = ElementType::kUint32, .lowest = 0, .highest = kAnyWord, .name = "CustomInput6"},
    {.key = 101, .type = ElementType::kUint32, .lowest = 0, .highest = kAnyWord, .name = "CustomInput7"},
    {.key = 102, .type = ElementType::kUint32, .lowest = 0, .highest = kAnyWord, .name = "CustomInput8"},
    {.key = 103, .type = ElementType::kUint32, .lowest = 0, .highest = kAnyWord, .name = "CustomInput9"},
    {.key = 104, .type = ElementType::kUint32, .lowest = 0, .highest = kAnyWord, .name = "CustomInput10"},
    {.key = 126, .type = ElementType::kBool8, .lowest = 0, .highest = 1, .name = "GameMode"},
    {.key = 175, .type = ElementType::kUint16, .lowest = 0, .highest = 65535, .name = "skinTemp"},
    {.key = 185, .type = ElementType::kUint32, .lowest = 0, .highest = 200000, .name = "apuPower"},
};
// clang-format on
static_assert(std::size(kRows) == kOverrideKeys);
static_assert(std::ranges::is_sorted(kRows, {}, &OverrideRow::key));

struct OverrideRequest {
  std::uint8_t enable;
  std::uint8_t reserved0[3];
  std::uint32_t key;
  std::uint32_t value;
};
static_assert(sizeof(OverrideRequest) == 12);

struct OverrideMetadata {
  std::uint32_t key;
  ElementType type;
  std::uint32_t lowest;
  std::uint32_t highest;
  char name[32];
  std::uint32_t isOverridden;
};
static_assert(sizeof(OverrideMetadata) == 52);
static_assert(offsetof(OverrideMetadata, name) == 16);
static_assert(offsetof(OverrideMetadata, isOverridden) == 48);

constexpr std::size_t kListSize = kOverrideKeys * sizeof(std::uint32_t);

/// The number that a word of the wire stands for.
std::int64_t numberOf(const OverrideRow& row, std::uint32_t word) {
  return row.type == ElementType::kInt32 ? static_cast<std::int32_t>(word) : std::int64_t{word};
}

bool isWithin(const OverrideRow& row, std::uint32_t word) {
  const std::int64_t number = numberOf(row, word);
  return row.lowest <= number && number <= row.highest;
}

}  // namespace

std::size_t findOverrideKey(std::uint32_t key) {
  return static_cast<std::size_t>(std::ranges::find(kRows, key, &OverrideRow::key) - std::begin(kRows));
}

std::int64_t overridden(const OverrideSettings& overrides, OverrideKey key, std::int64_t own) {
  const std::size_t index = findOverrideKey(key);
  return overrides.isSet[index] != 0 ? numberOf(kRows[index], overrides.values[index]) : own;
}

bool areSound(const OverrideSettings& overrides) {
  for (std::size_t i = 0; i < kOverrideKeys; ++i) {
    const bool isSound = overrides.isSet[i] == 0 ? overrides.values[i] == 0
                                                 : overrides.isSet[i] == 1 && isWithin(kRows[i], overrides.values[i]);
    if (!isSound) return false;
  }
  return true;
}

Answer setOverride(const Context& context, const Request& request) {
  if (!request.hasLengths(sizeof(OverrideRequest), 0)) return failed(Outcome::kWrongLength);
  const auto record = request.load<OverrideRequest>(0);
  const std::size_t index = findOverrideKey(record.key);
  if (index == kOverrideKeys || !isZeroFilled(record.reserved0)) return failed(Outcome::kMalformed);
  if (record.enable != 0 && !isWithin(kRows[index], record.value)) return failed(Outcome::kMalformed);
  context.settings.overrides.isSet[index] = record.enable != 0 ? 1 : 0;
  context.settings.overrides.values[index] = record.enable != 0 ? record.value : 0;
  return succeeded(0);
}

Answer answerOverrideListSize(const Context& /*context*/, const Request& request) {
  if (!request.hasLengths(0, sizeof(std::uint32_t))) return failed(Outcome::kWrongLength);
  request.store(0, static_cast<std::uint32_t>(kListSize));
  return succeeded(sizeof(std::uint32_t));
}

Answer answerOverrideList(const Context& /*context*/, const Request& request) {
  if (!request.hasLengths(0, kListSize)) return failed(Outcome::kWrongLength);
  for (std::size_t i = 0; i < kOverrideKeys; ++i) request.store(i * sizeof(std::uint32_t), kRows[i].key);
  return succeeded(kListSize);
}

Answer answerOverrideMetadata(const Context& context, const Request& request) {
  if (!request.hasLengths(sizeof(std::uint32_t), sizeof(OverrideMetadata))) return failed(Outcome::kWrongLength);
  const std::size_t index = findOverrideKey(request.load<std::uint32_t>(0));
  if (index == kOverrideKeys) return failed(Outcome::kMalformed);
  const OverrideRow& row = kRows[index];
  OverrideMetadata metadata{.key = row.key,
                            .type = row.type,
                            .lowest = static_cast<std::uint32_t>(row.lowest),
                            .highest = static_cast<std::uint32_t>(row.highest),
                            .name = {},
                            .isOverridden = context.settings.overrides.isSet[index]};
  for (std::size_t i = 0; row.name[i] != '\0'; ++i) metadata.name[i] = row.name[i];
  request.store(0, metadata);
  return succeeded(sizeof(OverrideMetadata));
}

}  // namespace simulator
