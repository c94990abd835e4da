// SPDX-License-Identifier: Apache-2.0
#include <cstddef>

#include <vqs/platform.h>
#include "src/channel/control_codes.h"
#include "src/channel/driver_handle.h"
#include "src/channel/request.h"
#include "src/channel/session_record.h"

namespace vqs {
namespace {

enum BatteryOperation : std::uint32_t { kSetChargeRate = 0, kGetTemperature = 1, kGetLimits = 2 };

struct BatteryRequest {
  std::uint32_t operation;
  std::uint32_t value;
};
static_assert(sizeof(BatteryRequest) == 8);

struct BatteryLimits {
  std::uint16_t limits[4];
};
static_assert(sizeof(BatteryLimits) == 8);

/// Opens the driver for one request of its own and closes it again.
vqsStatus sendOnOwnHandle(BatteryRequest request, std::uint32_t& answer) {
  HANDLE handle = nullptr;
  const vqsStatus opened = openDriver(&handle);
  if (opened != VQS_SUCCESS) return opened;
  const vqsStatus result = sendSplit(handle, kCodeBattery, request, &answer);
  CloseHandle(handle);
  return result;
}

}  // namespace
}  // namespace vqs

using namespace vqs;

vqsStatus VQS_CALL vqsSetChargeRate(uint32_t rate) {
  std::uint32_t discarded = 0;
  return sendOnOwnHandle({.operation = kSetChargeRate, .value = rate}, discarded);
}

vqsStatus VQS_CALL vqsGetBatteryTemperature(uint32_t* temperature) {
  if (temperature == nullptr) return VQS_INVALID_PARAMETER;
  std::uint32_t answer = 0;
  const vqsStatus result = sendOnOwnHandle({.operation = kGetTemperature, .value = 0}, answer);
  if (result == VQS_SUCCESS) *temperature = answer;
  return result;
}

vqsStatus VQS_CALL vqsGetBatteryLimits(QtfSession* session, uint16_t* first, uint16_t* second, uint16_t* third,
                                       uint16_t* fourth) {
  if (!isOpen(session)) return VQS_INVALID_PARAMETER;
  if (first == nullptr || second == nullptr || third == nullptr || fourth == nullptr) return VQS_INVALID_PARAMETER;
  BatteryRequest request{.operation = kGetLimits, .value = 0};
  BatteryLimits answer{};
  const vqsStatus result = sendSplit(session->handle, kCodeBattery, request, &answer);
  if (result != VQS_SUCCESS) return result;
  *first = answer.limits[0];
  *second = answer.limits[1];
  *third = answer.limits[2];
  *fourth = answer.limits[3];
  return VQS_SUCCESS;
}
