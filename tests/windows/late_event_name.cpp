// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/output_event.h"

namespace device {

/// In a folder that is not there unless a test makes it, as that of the other name when a system starts.
const wchar_t* outputEventName() { return L"\\BaseNamedObjects\\VexoQtfLate\\VexoQtfAppOutputEvent"; }

}  // namespace device
