// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/driver.h"

#include <atomic>

#include "simulator/model/app_io.h"
#include "simulator/model/battery.h"
#include "simulator/model/catalogue_support.h"
#include "simulator/model/controls.h"
#include "simulator/model/features.h"
#include "simulator/model/override_value.h"
#include "simulator/model/overrides.h"
#include "simulator/model/sensors.h"
#include "simulator/model/wire.h"

namespace simulator {

struct Driver::Watched {
  std::uint32_t outputs[2];
  std::uint32_t powerSource;
  bool isLidClosed;

  explicit Watched(const Settings& settings)
      : outputs{outputOf(settings, 0), outputOf(settings, 1)},
        powerSource(Platform{settings}.powerSource()),
        isLidClosed(Platform{settings}.lidClosed()) {}
};

namespace {

/// Requests that are an event by themselves.
void tellOfRequest(Surroundings& surroundings, const EventComponent& events, std::uint32_t code) {
  if (code == kCodeSensorUpdate) events.fire(surroundings, kEventSensor);
  if (code == kCodeOverride) events.fire(surroundings, kEventOverride);
  if (code == kCodeFirmwareEvent || code == kCodeFirmwareEventV2) events.fire(surroundings, kEventFirmware);
}

/// Requests that leave everything as it is that telemetry shows.
bool isReading(std::uint32_t code) {
  constexpr std::uint32_t kReading[] = {kCodeFeatureStatus,
                                        kCodePolicyLookup,
                                        kCodeCatalogueSupport,
                                        kCodeOemId,
                                        kCodePolicyReadAsm,
                                        kCodePolicyReadPb,
                                        kCodeLog,
                                        kCodeLogSupport,
                                        kCodePolling,
                                        kCodeSensorData,
                                        kCodeDebugOutput,
                                        kCodeTaskbarIcon,
                                        kCodeOverrideValue,
                                        kCodeOverrideListSize,
                                        kCodeOverrideList,
                                        kCodeOverrideMetadata,
                                        kCodePolicyReadBalanceProfile};
  return std::ranges::find(kReading, code) != std::end(kReading);
}

bool isSameBinary(const BinarySettings& left, const BinarySettings& right) {
  return left.source == right.source && left.version1 == right.version1 && left.version2 == right.version2 &&
         left.policies == right.policies;
}

}  // namespace

void Driver::tellOfChanges(Surroundings& surroundings, const Watched& before) {
  const Watched after{settings_};
  if (!std::ranges::equal(before.outputs, after.outputs)) {
    areOutputsUnread_ = true;
    surroundings.setOutputEvent(true);
    events_.fire(surroundings, kEventOutputs);
  }
  if (before.powerSource != after.powerSource) events_.fire(surroundings, kEventPowerSource);
  if (before.isLidClosed != after.isLidClosed) events_.fire(surroundings, kEventLid);
}

Answer Driver::control(Surroundings& surroundings, SessionId session, std::uint32_t code, std::span<std::byte> buffer,
                       std::uint32_t inputLength, std::uint32_t outputLength) {
  if (buffer.size() < std::max(inputLength, outputLength)) return failed(Outcome::wrongLength);
  const std::uint64_t now = surroundings.now();
  startOnce(settings_, now);
  const Watched before{settings_};
  const bool isLater = advance(settings_, now);
  const BinarySettings binary = settings_.binary;
  if (!isReading(code)) beginChange();
  const Answer answer = dispatch(surroundings, {session, code, buffer, inputLength, outputLength});
  endChange();
  tellOfChanges(surroundings, before);
  if (answer.outcome == Outcome::success) tellOfRequest(surroundings, events_, code);
  if (!isSameBinary(binary, settings_.binary)) events_.fire(surroundings, kEventBinary);
  if (isLater || !isReading(code)) logs_.refresh(surroundings, sources());
  return answer;
}

void Driver::close(Surroundings& surroundings, SessionId session) {
  logs_.close(surroundings, session);
  events_.close(surroundings, session);
}

void Driver::refresh(Surroundings& surroundings) {
  const std::uint64_t now = surroundings.now();
  startOnce(settings_, now);
  const Watched before{settings_};
  if (!advance(settings_, now)) return;
  tellOfChanges(surroundings, before);
  logs_.refresh(surroundings, sources());
}

void Driver::describe(DriverBlock (&blocks)[kDriverBlocks]) {
  const DriverBlock described[kDriverBlocks] = {
      {.name = {'P', 'O', 'L', 'I'}, .offset = offsetof(Driver, policies_), .size = sizeof(policies_)},
      {.name = {'L', 'O', 'G', 'S'}, .offset = offsetof(Driver, logs_), .size = sizeof(logs_)},
      {.name = {'E', 'V', 'N', 'T'}, .offset = offsetof(Driver, events_), .size = sizeof(events_)},
      {.name = {'B', 'I', 'N', 'A'}, .offset = offsetof(Driver, binaries_), .size = sizeof(binaries_)},
      {.name = {'S', 'E', 'T', 'T'}, .offset = offsetof(Driver, settings_), .size = sizeof(settings_)},
      {.name = {'B', 'E', 'F', 'O'}, .offset = offsetof(Driver, before_), .size = sizeof(before_)},
      {.name = {'C', 'H', 'A', 'N'}, .offset = offsetof(Driver, isChanging_), .size = sizeof(isChanging_)},
      {.name = {'U', 'N', 'R', 'D'}, .offset = offsetof(Driver, areOutputsUnread_), .size = sizeof(areOutputsUnread_)}};
  std::ranges::copy(described, blocks);
}

void Driver::recover() {
  if (isChanging_ != 0) settings_ = before_;
  endChange();
  logs_ = {};
  events_ = {};
  areOutputsUnread_ = false;
}

void Driver::beginChange() {
  before_ = settings_;
  std::atomic_signal_fence(std::memory_order_release);
  isChanging_ = 1;
  std::atomic_signal_fence(std::memory_order_release);
}

void Driver::endChange() {
  std::atomic_signal_fence(std::memory_order_release);
  isChanging_ = 0;
}

void Driver::setSeed(std::uint64_t seed) {
  if (settings_.platform.isStarted == 0) settings_.platform.seed = seed;
}

Answer Driver::dispatch(Surroundings& surroundings, const Request& request) {
  switch (request.code) {
    case kCodeAppIo:
      return controlAppIo(surroundings, request, settings_, areOutputsUnread_);
    case kCodeLog:
      return logs_.control(surroundings, request, sources());
    case kCodeLogSupport:
      return LogComponent::answerSupport(request);
    case kCodePolling:
      return controlPolling(request);
    case kCodeEventRegistration:
      return events_.control(surroundings, request);
    case kCodePolicyBinary:
      return binaries_.control(surroundings, request, settings_, policies_);
    case kCodeCatalogueSupport:
      return answerCatalogueSupport(request);
    case kCodeFeatureStatus:
      return answerFeatureStatus(request, settings_, policies_);
    case kCodeAutoModeTable:
    case kCodeInBagTable:
    case kCodeSliderTable:
    case kCodeAsmLiteTable:
    case kCodeSliderV4Table:
      return controlTable(request, settings_);
    case kCodeDynamicSlider:
      return setDynamicSlider(request, settings_);
    default:
      return dispatchPlatform(request);
  }
}

Answer Driver::dispatchPlatform(const Request& request) {
  switch (request.code) {
    case kCodeBattery:
      return controlBattery(request, settings_);
    case kCodeFirmwareEvent:
    case kCodeFirmwareEventV2:
      return notifyFirmwareEvent(request, settings_);
    case kCodeOemId:
      return answerOemId(request);
    case kCodeTaControl:
      return controlTa(request, settings_);
    case kCodeSensorUpdate:
      return updateSensor(request, settings_);
    case kCodeSensorData:
      return answerSensorData(request, settings_);
    case kCodeDebugOutput:
      return answerDebugOutput(request, settings_);
    case kCodeTaskbarIcon:
      return answerTaskbarIcon(request, settings_);
    case kCodeSe1:
      return programSe1(request, settings_);
    case kCodeOverride:
      return setOverride(request, settings_.overrides);
    case kCodeOverrideValue:
      return answerOverrideValue(request, sources());
    case kCodeOverrideListSize:
      return answerOverrideListSize(request);
    case kCodeOverrideList:
      return answerOverrideList(request);
    case kCodeOverrideMetadata:
      return answerOverrideMetadata(request, settings_.overrides);
    default:
      return dispatchPolicies(request);
  }
}

Answer Driver::dispatchPolicies(const Request& request) {
  switch (request.code) {
    case kCodePolicyReadPb:
      return policies_.read(kStorePb, request);
    case kCodePolicyReadAsm:
      return policies_.read(kStoreAsm, request);
    case kCodePolicyReadBalanceProfile:
      return policies_.read(kStoreBalanceProfile, request);
    case kCodePolicyModifyPb:
      return policies_.modify(kStorePb, request);
    case kCodePolicyModifyAsm:
      return policies_.modify(kStoreAsm, request);
    case kCodePolicyModifyBalanceProfile:
      return policies_.modify(kStoreBalanceProfile, request);
    case kCodePolicyLookup:
      return policies_.lookup(request);
    default:
      return failed(Outcome::unknownRequest);
  }
}

}  // namespace simulator
