// SPDX-License-Identifier: Apache-2.0
#pragma once

// The types of the Windows API, on Windows and elsewhere.
#ifdef _WIN32
#include <windows.h>
#else
#include "host/windows_api.h"
#endif
