// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/session_component.h"

#include "simulator/model/wire.h"

namespace simulator {

Answer SessionComponent::control(const Request& request) const {
  if (!request.hasLengths(sizeof(AppIoRecord), sizeof(AppIoRecord))) return failed(Outcome::wrongLength);
  const auto record = request.load<AppIoRecord>(0);
  if (record.operation != kAppIoOpen) return failed(Outcome::unknownRequest);
  if (record.valueA != 0 || record.valueB != 0) return failed(Outcome::malformed);
  return succeeded(sizeof(AppIoRecord));
}

}  // namespace simulator
