// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/battery.h"

#include "simulator/model/context.h"
#include "simulator/model/simulated_platform.h"

namespace simulator {
namespace {

enum BatteryOperation : std::uint32_t { kSetChargeRate = 0, kReadTemperature = 1, kReadLimits = 2 };

struct BatteryRequest {
  std::uint32_t operation;
  std::uint32_t value;
};

/// Charge in percent, temperature in degrees.
struct BatteryLimits {
  std::uint16_t lowestCharge;
  std::uint16_t highestCharge;
  std::uint16_t lowestTemperature;
  std::uint16_t highestTemperature;
};
static_assert(sizeof(BatteryLimits) == 8);

constexpr BatteryLimits kLimits = {
    .lowestCharge = 20, .highestCharge = 80, .lowestTemperature = 0, .highestTemperature = 45};

template <class T>
Answer answerWith(const Request& request, const T& value) {
  request.store(0, value);
  return succeeded(sizeof(T));
}

Answer setChargeRate(const Request& request, std::uint32_t rate, Settings& settings) {
  if (rate > kHighestChargeRate) return failed(Outcome::kMalformed);
  settings.isChargeRateSet = 1;
  settings.chargeRate = rate;
  return answerWith(request, std::uint32_t{0});
}

}  // namespace

Answer controlBattery(const Context& context, const Request& request) {
  if (request.inputLength != sizeof(BatteryRequest)) return failed(Outcome::kWrongLength);
  const auto record = request.load<BatteryRequest>(0);
  if (record.operation > kReadLimits) return failed(Outcome::kUnknownRequest);
  const std::size_t length = record.operation == kReadLimits ? sizeof(BatteryLimits) : sizeof(std::uint32_t);
  if (request.outputLength != length) return failed(Outcome::kWrongLength);
  if (record.operation == kSetChargeRate) return setChargeRate(request, record.value, context.settings);
  if (record.value != 0) return failed(Outcome::kMalformed);
  if (record.operation == kReadLimits) return answerWith(request, kLimits);
  return answerWith(request, static_cast<std::uint32_t>(Platform{context.settings}.batteryTemperature()));
}

bool isBatterySound(const Settings& settings) {
  return settings.isChargeRateSet == 0
             ? settings.chargeRate == 0
             : settings.isChargeRateSet == 1 && settings.chargeRate <= std::uint32_t{kHighestChargeRate};
}

}  // namespace simulator
