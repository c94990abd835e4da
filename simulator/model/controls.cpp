// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/controls.h"

#include "simulator/model/context.h"
#include "simulator/model/simulated_platform.h"

namespace simulator {
namespace {

struct PollingRecord {
  std::uint16_t operation;
  std::uint8_t client;
  std::uint8_t reserved0;
  std::uint32_t value;
  std::uint8_t reserved1[16];
};
static_assert(sizeof(PollingRecord) == 24);

enum : std::uint32_t { kPollingStop = 1, kHighestClient = 1 };

struct TwoWords {
  std::uint32_t words[2];
};

struct TaskbarIcon {
  std::uint32_t reserved0[2];
  std::uint32_t shape;
  std::uint32_t colour;
};
static_assert(sizeof(TaskbarIcon) == 16);

enum IconShape : std::uint32_t { kShapeMains = 0, kShapeBattery = 1, kShapeBatteryLow = 2 };

constexpr std::int32_t kLowCharge = 20;
constexpr std::size_t kOemIdLength = 32;
constexpr std::size_t kFirmwareEventLength = 40;
constexpr std::size_t kFirmwareEventV2Length = 64;

IconShape shapeOf(const Platform& platform) {
  if (platform.powerSource() == kSourceAc) return kShapeMains;
  return platform.chargeLevel() < kLowCharge ? kShapeBatteryLow : kShapeBattery;
}

Answer countFirmwareEvent(const Request& request, std::size_t length, std::uint32_t& count) {
  if (!request.hasLengths(length, 0)) return failed(Outcome::kWrongLength);
  if (!isZero(request.buffer.first(length))) return failed(Outcome::kMalformed);
  ++count;
  return succeeded(0);
}

}  // namespace

Answer controlPolling(const Context& /*context*/, const Request& request) {
  if (!request.hasLengths(sizeof(PollingRecord), sizeof(PollingRecord))) return failed(Outcome::kWrongLength);
  const auto record = request.load<PollingRecord>(0);
  if (record.operation > kPollingStop) return failed(Outcome::kUnknownRequest);
  if (record.client > kHighestClient) return failed(Outcome::kMalformed);
  return succeeded(sizeof(PollingRecord));
}

Answer programSe1(const Context& context, const Request& request) {
  if (!request.hasLengths(sizeof(TwoWords), sizeof(TwoWords))) return failed(Outcome::kWrongLength);
  const auto record = request.load<TwoWords>(0);
  if (record.words[0] > 1 || record.words[1] > 1) return failed(Outcome::kMalformed);
  std::ranges::copy(record.words, context.settings.se1);
  return succeeded(sizeof(TwoWords));
}

Answer controlTa(const Context& context, const Request& request) {
  if (!request.hasLengths(sizeof(TwoWords), 0)) return failed(Outcome::kWrongLength);
  std::ranges::copy(request.load<TwoWords>(0).words, context.settings.ta);
  return succeeded(0);
}

Answer answerTaskbarIcon(const Context& context, const Request& request) {
  if (!request.hasLengths(sizeof(TaskbarIcon), sizeof(TaskbarIcon))) return failed(Outcome::kWrongLength);
  if (!isZero(request.buffer.first(sizeof(TaskbarIcon)))) return failed(Outcome::kMalformed);
  const Platform platform{context.settings};
  request.store(0, TaskbarIcon{.reserved0 = {}, .shape = shapeOf(platform), .colour = platform.powerMode()});
  return succeeded(sizeof(TaskbarIcon));
}

Answer answerDebugOutput(const Context& context, const Request& request) {
  if (!request.hasLengths(0, sizeof(std::uint32_t))) return failed(Outcome::kWrongLength);
  request.store(0, Platform{context.settings}.seconds());
  return succeeded(sizeof(std::uint32_t));
}

Answer answerOemId(const Context& /*context*/, const Request& request) {
  if (!request.hasLengths(0, kOemIdLength)) return failed(Outcome::kWrongLength);
  std::ranges::fill(request.buffer.first(kOemIdLength), std::byte{});
  for (std::size_t i = 0; kOemId[i] != '\0'; ++i) request.store(i, kOemId[i]);
  return succeeded(kOemIdLength);
}

Answer notifyFirmwareEvent(const Context& context, const Request& request) {
  return countFirmwareEvent(request, kFirmwareEventLength, context.settings.firmwareEvents[0]);
}

Answer notifyFirmwareEventV2(const Context& context, const Request& request) {
  return countFirmwareEvent(request, kFirmwareEventV2Length, context.settings.firmwareEvents[1]);
}

bool areControlsSound(const Settings& settings) { return settings.se1[0] <= 1 && settings.se1[1] <= 1; }

}  // namespace simulator
