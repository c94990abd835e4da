/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_FUNCTIONS_H
#define VQS_FUNCTIONS_H

#include <stdint.h>

/*
 * What every header with functions needs: a target that has the library, the calling convention, the import. ARM64EC
 * code calls the x64 library, and its compilers say that they compile for x64.
 */

#if defined(_WIN32)
#if !defined(_M_X64) && !defined(__x86_64__)
#error "VexoQTFServices.dll is for x64 programs, ARM64EC included. Records are in the headers named ..._records.h."
#endif
#elif UINTPTR_MAX != UINT64_MAX
#error "libVexoQTFServices is for 64-bit programs. Records are in the headers named ..._records.h."
#endif

/** Calling convention of every export. */
#if defined(_WIN32)
#define VQS_CALL __stdcall
#else
#define VQS_CALL
#endif

/** Import or export of a function; VQS_BUILDING_LIBRARY is for the library's own build alone. */
#if !defined(_WIN32)
#define VQS_API __attribute__((visibility("default")))
#elif defined(VQS_BUILDING_LIBRARY)
#define VQS_API
#else
#define VQS_API __declspec(dllimport)
#endif

#endif
