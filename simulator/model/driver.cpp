// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/driver.h"

#include <atomic>

#include "simulator/model/app_io.h"
#include "simulator/model/battery.h"
#include "simulator/model/controls.h"
#include "simulator/model/feature_tables.h"
#include "simulator/model/overrides.h"
#include "simulator/model/sensors.h"

namespace simulator {

struct Driver::Watched {
  std::uint32_t outputs[2];
  std::uint32_t powerSource;
  bool isLidClosed;
  BinarySettings binary;

  explicit Watched(const Settings& settings)
      : outputs{outputOf(settings, 0), outputOf(settings, 1)},
        powerSource(Platform{settings}.powerSource()),
        isLidClosed(Platform{settings}.lidClosed()),
        binary(settings.binary) {}
};

bool Driver::isSound() const {
  return simulator::isSound(settings_.platform) && areControlsSound(settings_) && isBatterySound(settings_) &&
         simulator::isSound(settings_.binary) && areSound(settings_.sensors) && areSound(settings_.overrides) &&
         areFeaturesSound(settings_) && policies_.isSound();
}

void Driver::tellOfChanges(Surroundings& surroundings, const Watched& before) {
  const Watched after{settings_};
  if (!std::ranges::equal(before.outputs, after.outputs)) {
    areOutputsUnread_ = true;
    surroundings.setOutputEvent(true);
    events_.fire(surroundings, kEventOutputs);
  }
  if (before.powerSource != after.powerSource) events_.fire(surroundings, kEventPowerSource);
  if (before.isLidClosed != after.isLidClosed) events_.fire(surroundings, kEventLid);
  if (before.binary != after.binary) events_.fire(surroundings, kEventBinary);
}

Answer Driver::control(Surroundings& surroundings, SessionId session, std::uint32_t code, std::span<std::byte> buffer,
                       std::uint32_t inputLength, std::uint32_t outputLength) {
  if (buffer.size() < std::max(inputLength, outputLength)) return failed(Outcome::kWrongLength);
  const std::uint64_t now = surroundings.now();
  startOnce(settings_, now);
  const Watched before{settings_};
  const bool isLater = advance(settings_, now);
  const RequestRow& row = rowOf(code);
  const Answer answer = carryOut(surroundings, row, {session, buffer, inputLength, outputLength});
  tellOfChanges(surroundings, before);
  const bool isDone = answer.outcome == Outcome::kSuccess;
  if (isDone) events_.fire(surroundings, row.event);
  if (isLater || (isDone && row.changes != Changes::kNothing)) logs_.refresh(surroundings, sources());
  return answer;
}

Answer Driver::carryOut(Surroundings& surroundings, const RequestRow& row, const Request& request) {
  const Context context{.surroundings = surroundings,
                        .settings = settings_,
                        .policies = policies_,
                        .logs = logs_,
                        .events = events_,
                        .binaries = binaries_,
                        .areOutputsUnread = areOutputsUnread_};
  if (row.changes == Changes::kSettings) beginChange();
  const Answer answer = row.handler(context, request);
  endChange();
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

}  // namespace simulator
