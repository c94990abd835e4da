// SPDX-License-Identifier: Apache-2.0
#include <vqs/platform.h>
#include "src/channel/control_codes.h"
#include "src/channel/invalid_parameter.h"
#include "src/channel/request.h"
#include "src/channel/session_record.h"
#include "src/channel/text.h"

vqsStatus VQS_CALL vqsAtstSimulateSensorUpdate(QtfSession* session, const VqsSensorUpdate* update) {
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  // Not VQS_INVALID_PARAMETER (compatibility.md: sensor-update-null).
  if (update == nullptr) return VQS_REQUEST_FAILED;
  VqsSensorUpdate record = *update;
  return vqs::sendIn(session->handle, vqs::kCodeSimulateSensorUpdate, record);
}

vqsStatus VQS_CALL vqsGetSensorData(QtfSession* session, VqsSensorData* data) {
  // A null `data` is for the driver to refuse (compatibility.md: unchecked-output).
  if (!vqs::isOpen(session)) return VQS_INVALID_PARAMETER;
  return vqs::sendOut(session->handle, vqs::kCodeSensorData, data, sizeof(*data));
}

vqsStatus VQS_CALL vqsGetOEMID(QtfSession* session, char oemId[7]) {
  if (!vqs::isOpen(session) || oemId == nullptr) return VQS_INVALID_PARAMETER;
  char answer[32] = {};
  if (vqs::sendOut(session->handle, vqs::kCodeOemId, answer, sizeof(answer)) != VQS_SUCCESS) return VQS_REQUEST_FAILED;
  // Too long a text is no failure: the output is then empty (compatibility.md: oem-id-too-long).
  if (!vqs::copyBounded({oemId, 7}, answer)) vqs::raiseInvalidParameter();
  return VQS_SUCCESS;
}
