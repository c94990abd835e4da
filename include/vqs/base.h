/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_BASE_H
#define VQS_BASE_H

#include <stddef.h>
#include <stdint.h>

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

/** A compile-time proof about a record's layout, checked in the caller's own build too. */
#if defined(__cplusplus)
#define VQS_LAYOUT(proof) static_assert(proof, "record layout")
#else
#define VQS_LAYOUT(proof) _Static_assert(proof, "record layout")
#endif

/**
 * One unit of UTF-16 text, 16 bits on every system. It is the type of the literals a caller has at hand:
 * L"..." on Windows, u"..." elsewhere.
 */
#if defined(_WIN32)
typedef wchar_t VqsChar16;
#elif defined(__cplusplus)
typedef char16_t VqsChar16;
#else
typedef uint_least16_t VqsChar16;
#endif

VQS_LAYOUT(sizeof(VqsChar16) == 2);
VQS_LAYOUT(sizeof(void*) == 8);

#endif
