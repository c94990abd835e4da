// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/event_component.h"

#include "simulator/model/context.h"
#include "simulator/model/places.h"

namespace simulator {
namespace {

struct RegistrationRecord {
  std::uint8_t isRegistration;
  std::uint8_t reserved0[3];
  std::uint32_t event;
  std::uint64_t handle;
};
static_assert(sizeof(RegistrationRecord) == 16);

bool isWellFormed(const RegistrationRecord& record) {
  return record.isRegistration <= 1 && isZeroFilled(record.reserved0) && record.event < kEventCount &&
         record.handle != 0;
}

}  // namespace

Answer EventComponent::control(const Context& context, const Request& request) {
  if (!request.hasLengths(sizeof(RegistrationRecord), 0)) return failed(Outcome::kWrongLength);
  const auto record = request.load<RegistrationRecord>(0);
  if (!isWellFormed(record)) return failed(Outcome::kMalformed);
  const Registration wanted{.session = request.session, .handle = record.handle, .object = 0, .event = record.event};
  return record.isRegistration != 0 ? add(context.surroundings, wanted) : remove(context.surroundings, wanted);
}

void EventComponent::close(Surroundings& surroundings, SessionId session) {
  for (auto& registration : registrations_) {
    if (registration.object == 0 || registration.session != session) continue;
    surroundings.releaseEvent(registration.object);
    registration = {};
  }
}

void EventComponent::fire(Surroundings& surroundings, Event event) const {
  for (const auto& registration : registrations_)
    if (registration.object != 0 && registration.event == event) surroundings.signalEvent(registration.object);
}

Answer EventComponent::add(Surroundings& surroundings, const Registration& wanted) {
  if (find(wanted) != nullptr) return failed(Outcome::kRefused);
  Registration* const place = findPlace(registrations_, &Registration::object, wanted.session);
  if (place == nullptr) return failed(Outcome::kRefused);
  const std::uint64_t object = surroundings.retainEvent(wanted.handle);
  if (object == 0) return failed(Outcome::kRefused);
  *place = wanted;
  place->object = object;
  return succeeded(0);
}

Answer EventComponent::remove(Surroundings& surroundings, const Registration& wanted) {
  Registration* registration = find(wanted);
  if (registration == nullptr) return failed(Outcome::kRefused);
  surroundings.releaseEvent(registration->object);
  *registration = {};
  return succeeded(0);
}

EventComponent::Registration* EventComponent::find(const Registration& wanted) {
  const auto found = std::ranges::find_if(registrations_, [&](const Registration& registration) {
    return registration.object != 0 && registration.session == wanted.session && registration.handle == wanted.handle &&
           registration.event == wanted.event;
  });
  return found == std::end(registrations_) ? nullptr : &*found;
}

}  // namespace simulator
