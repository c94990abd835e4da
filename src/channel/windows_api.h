// SPDX-License-Identifier: Apache-2.0
#pragma once

// The one door to the Windows API: the system's own headers, or the host's stand-in for them. The simulated library for
// Windows has its devices from the host, too.
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
#ifdef VQS_SIMULATED_DEVICES
#include "host/windows_devices.h"
namespace vqs {
// Found before the system's functions: pointers, because those would be found beside functions by their arguments.
inline constexpr auto* CM_Get_Device_Interface_List_SizeA = &host::CM_Get_Device_Interface_List_SizeA;
inline constexpr auto* CM_Get_Device_Interface_ListW = &host::CM_Get_Device_Interface_ListW;
inline constexpr auto* CreateFileW = &host::CreateFileW;
inline constexpr auto* DeviceIoControl = &host::DeviceIoControl;
inline constexpr auto* CloseHandle = &host::CloseHandle;
inline constexpr auto* OpenEventW = &host::OpenEventW;
inline constexpr auto* GetFileVersionInfoSizeA = &host::GetFileVersionInfoSizeA;
inline constexpr auto* GetFileVersionInfoA = &host::GetFileVersionInfoA;
inline constexpr auto* VerQueryValueA = &host::VerQueryValueA;
}  // namespace vqs
#endif
#else
#include "host/windows_api.h"
#endif
