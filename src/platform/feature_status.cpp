// SPDX-License-Identifier: Apache-2.0
#include <array>

#include <vqs/features.h>
#include "src/channel/control_codes.h"
#include "src/channel/request.h"
#include "src/channel/session_record.h"

namespace vqs {
namespace {

/// The driver's id of each feature, by the caller's index. The driver has no feature of id 8 (compatibility.md:
/// feature-id).
constexpr std::array<std::uint32_t, VQS_FEATURES> kDriverIds = {0, 1, 2, 3, 4, 5, 6, 7, 9};

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsQueryFeatureStatus(QtfSession* session, int32_t index, VqsFeatureStatus* status) {
  if (!vqs::isOpen(session) || status == nullptr) return VQS_INVALID_PARAMETER;
  if (index < 0 || index >= VQS_FEATURES) return VQS_INVALID_PARAMETER;
  std::uint32_t id = vqs::kDriverIds[static_cast<std::size_t>(index)];
  VqsFeatureStatus answer{};
  if (vqs::sendSplit(session->handle, vqs::kCodeQueryFeatureStatus, id, &answer) != VQS_SUCCESS)
    return VQS_REQUEST_FAILED;
  status->flagA = answer.flagA;
  status->flagB = answer.flagB;
  status->value = answer.value;
  return VQS_SUCCESS;
}

vqsStatus VQS_CALL vqsDynamicSliderEnableDisable(QtfSession* session, uint8_t enable) {
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  std::uint32_t word = enable != 0 ? 1 : 0;
  return vqs::sendIn(session->handle, vqs::kCodeDynamicSlider, word);
}

// Exported for programs that link to it; there is no such control (compatibility.md: unsupported-control).
vqsStatus VQS_CALL vqsCustomWorkloadControl(QtfSession* /*session*/, int32_t /*operation*/, void* /*table*/) {
  return VQS_NOT_SUPPORTED;
}
