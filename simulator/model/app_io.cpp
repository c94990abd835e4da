// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/app_io.h"

#include "simulator/model/overrides.h"

namespace simulator {
namespace {

enum AppIoOperation : std::uint32_t {
  kAppIoGetOutputs = 0,
  kAppIoSetInputA = 1,
  kAppIoSetInputB = 2,
  kAppIoOpen = 3,
  kAppIoSetInputs = 4
};

struct AppIoRecord {
  std::uint32_t operation;
  std::uint32_t valueA;
  std::uint32_t valueB;
};
static_assert(sizeof(AppIoRecord) == 12);

/// What an operation has no use for is zero.
bool isWellFormed(const AppIoRecord& record) {
  const bool usesA = record.operation == kAppIoSetInputA || record.operation == kAppIoSetInputs;
  const bool usesB = record.operation == kAppIoSetInputB || record.operation == kAppIoSetInputs;
  return (usesA || record.valueA == 0) && (usesB || record.valueB == 0);
}

}  // namespace

std::uint32_t inputInForce(const Settings& settings, std::uint32_t index) {
  const auto key = index == 0 ? kKeyAppInput1 : kKeyAppInput2;
  return static_cast<std::uint32_t>(overridden(settings.overrides, key, settings.inputs[index]));
}

std::uint32_t outputOf(const Settings& settings, std::uint32_t index) { return inputInForce(settings, index); }

Answer controlAppIo(Surroundings& surroundings, const Request& request, Settings& settings, bool& areOutputsUnread) {
  if (!request.hasLengths(sizeof(AppIoRecord), sizeof(AppIoRecord))) return failed(Outcome::wrongLength);
  const auto record = request.load<AppIoRecord>(0);
  if (record.operation > kAppIoSetInputs) return failed(Outcome::unknownRequest);
  if (!isWellFormed(record)) return failed(Outcome::malformed);
  if (record.operation == kAppIoSetInputA || record.operation == kAppIoSetInputs) settings.inputs[0] = record.valueA;
  if (record.operation == kAppIoSetInputB || record.operation == kAppIoSetInputs) settings.inputs[1] = record.valueB;
  if (record.operation == kAppIoGetOutputs) {
    areOutputsUnread = false;
    surroundings.setOutputEvent(false);
    request.store(0, AppIoRecord{kAppIoGetOutputs, outputOf(settings, 0), outputOf(settings, 1)});
  }
  return succeeded(sizeof(AppIoRecord));
}

}  // namespace simulator
