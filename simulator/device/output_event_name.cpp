// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/output_event.h"

namespace device {

/// Clients know it as Global\VexoQtfAppOutputEvent.
const wchar_t kOutputEventName[] = L"\\BaseNamedObjects\\VexoQtfAppOutputEvent";

}  // namespace device
