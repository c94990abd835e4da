// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/override_value.h"

#include "simulator/model/context.h"
#include "simulator/model/overrides.h"
#include "simulator/model/telemetry_keys.h"

namespace simulator {
namespace {

struct OverrideValue {
  std::uint32_t value;
  std::uint32_t isOverridden;
};

}  // namespace

Answer answerOverrideValue(const Context& context, const Request& request) {
  if (!request.hasLengths(sizeof(std::uint32_t), sizeof(OverrideValue))) return failed(Outcome::kWrongLength);
  const auto id = request.load<std::uint32_t>(0);
  const std::size_t index = findOverrideKey(id);
  if (index == kOverrideKeys) return failed(Outcome::kMalformed);
  const TelemetryKey& key = keyValueKeys()[id - 1];
  const std::int32_t value = key.signal(context.sources(), key.first);
  request.store(0, OverrideValue{.value = static_cast<std::uint32_t>(value),
                                 .isOverridden = context.settings.overrides.isSet[index]});
  return succeeded(sizeof(OverrideValue));
}

}  // namespace simulator
