// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/app_io.h"

#include "simulator/model/context.h"
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

bool usesA(const AppIoRecord& record) {
  return record.operation == kAppIoSetInputA || record.operation == kAppIoSetInputs;
}
bool usesB(const AppIoRecord& record) {
  return record.operation == kAppIoSetInputB || record.operation == kAppIoSetInputs;
}

/// Whether the values that the operation does not use are zero.
bool isWellFormed(const AppIoRecord& record) {
  return (usesA(record) || record.valueA == 0) && (usesB(record) || record.valueB == 0);
}

void readOutputs(const Context& context, const Request& request) {
  context.areOutputsUnread = false;
  context.surroundings.setOutputEvent(false);
  request.store(0, AppIoRecord{kAppIoGetOutputs, outputOf(context.settings, 0), outputOf(context.settings, 1)});
}

}  // namespace

std::uint32_t inputInForce(const Settings& settings, std::uint32_t index) {
  const auto key = index == 0 ? kKeyAppInput1 : kKeyAppInput2;
  return static_cast<std::uint32_t>(overridden(settings.overrides, key, settings.inputs[index]));
}

std::uint32_t outputOf(const Settings& settings, std::uint32_t index) { return inputInForce(settings, index); }

Answer controlAppIo(const Context& context, const Request& request) {
  if (!request.hasLengths(sizeof(AppIoRecord), sizeof(AppIoRecord))) return failed(Outcome::wrongLength);
  const auto record = request.load<AppIoRecord>(0);
  if (record.operation > kAppIoSetInputs) return failed(Outcome::unknownRequest);
  if (!isWellFormed(record)) return failed(Outcome::malformed);
  if (usesA(record)) context.settings.inputs[0] = record.valueA;
  if (usesB(record)) context.settings.inputs[1] = record.valueB;
  if (record.operation == kAppIoGetOutputs) readOutputs(context, request);
  return succeeded(sizeof(AppIoRecord));
}

}  // namespace simulator
