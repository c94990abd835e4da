// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/output_event.h"

namespace device {

/// Clients know it as Global\VexoQtfAppOutputEvent.
const wchar_t* outputEventName() { return L"\\BaseNamedObjects\\VexoQtfAppOutputEvent"; }

}  // namespace device
