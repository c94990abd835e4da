// SPDX-License-Identifier: Apache-2.0
#include <cstddef>

#include <vqs/platform.h>
#include "src/channel/control_codes.h"
#include "src/channel/invalid_parameter.h"
#include "src/channel/request.h"
#include "src/channel/session_record.h"

namespace vqs {
namespace {

struct EventRegistration {
  std::uint8_t registered;
  std::uint8_t reserved0[3];
  std::uint32_t index;
  std::uint64_t object;
};
static_assert(sizeof(EventRegistration) == 16);
static_assert(offsetof(EventRegistration, index) == 4);
static_assert(offsetof(EventRegistration, object) == 8);

constexpr std::int32_t kEvents = 7;

vqsStatus registerEvent(QtfSession* session, std::int32_t index, void* object, std::uint8_t registered) {
  if (!isOpen(session) || index < 0 || index >= kEvents || object == nullptr) return VQS_INVALID_PARAMETER;
  EventRegistration record{};
  record.registered = registered;
  record.index = static_cast<std::uint32_t>(index);
  record.object = reinterpret_cast<std::uint64_t>(object);
  return sendIn(session->handle, kCodeEventRegistration, record);
}

/// Raises the C runtime's invalid-parameter condition and sends a record of zeros. The event's data is longer than the
/// record: copying it always fails, which raises the condition and leaves the record empty. Handlers in callers and the
/// driver can tell, so both stay (compatibility.md: firmware-event-empty).
template <std::size_t Size>
vqsStatus notifyBiosEvent(QtfSession* session, std::uint32_t code) {
  if (!isOpen(session)) return VQS_INVALID_PARAMETER;
  raiseInvalidParameter();
  std::byte record[Size] = {};
  return sendIn(session->handle, code, record);
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsRegisterEvent(QtfSession* session, int32_t index, void* object) {
  return vqs::registerEvent(session, index, object, 1);
}

vqsStatus VQS_CALL vqsUnRegisterEvent(QtfSession* session, int32_t index, void* object) {
  return vqs::registerEvent(session, index, object, 0);
}

vqsStatus VQS_CALL vqsAtstNotifyBiosEvent(QtfSession* session) {
  return vqs::notifyBiosEvent<40>(session, vqs::kCodeBiosEvent);
}

vqsStatus VQS_CALL vqsAtstNotifyBiosEventV2(QtfSession* session) {
  return vqs::notifyBiosEvent<64>(session, vqs::kCodeBiosEventV2);
}
