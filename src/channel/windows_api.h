// SPDX-License-Identifier: Apache-2.0
#pragma once

// The one door to the Windows API: the system's own headers, or the host's stand-in for them.
#ifdef _WIN32
// clang-format off
#include <windows.h>
#include <cfgmgr32.h>
// clang-format on
#ifdef __MINGW32__
// Missing in the toolchain's headers, there in the runtime.
extern "C" {
_CRTIMP _invalid_parameter_handler __cdecl _get_thread_local_invalid_parameter_handler(void);
_CRTIMP void __cdecl _invalid_parameter_noinfo(void);
}
#endif
#else
#include "host/windows_api.h"
#endif
