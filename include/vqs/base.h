/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_BASE_H
#define VQS_BASE_H

#include <stddef.h>
#include <stdint.h>

/*
 * What records are made of. This header, status.h and those named ..._records.h hold constants, result codes and
 * records without pointers: they are for any target, whatever the width of its pointers, and whether it has the library
 * or not.
 */

/**
 * A compile-time proof about a record's layout, checked in the caller's own build too. Before C11 it takes an
 * extension, of GNU's compilers or of Microsoft's, and where there is neither the declaration of an array whose size is
 * the proof.
 */
#if defined(__cplusplus)
#define VQS_LAYOUT(proof) static_assert(proof, "record layout")
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
#define VQS_LAYOUT(proof) _Static_assert(proof, "record layout")
#elif defined(__GNUC__)
#define VQS_LAYOUT(proof) __extension__ _Static_assert(proof, "record layout")
#elif defined(_MSC_VER)
#define VQS_LAYOUT(proof) static_assert(proof, "record layout")
#else
#define VQS_LAYOUT(proof) extern char vqsRecordLayout[(proof) ? 1 : -1]
#endif

/** One unit of UTF-16 text, 16 bits on every system. VQS_TEXT("...") makes a literal of such units. */
#if defined(_WIN32)
typedef wchar_t VqsChar16;
#elif defined(__cplusplus)
typedef char16_t VqsChar16;
#else
typedef uint_least16_t VqsChar16;
#endif

/** L"..." on Windows, u"..." elsewhere; not defined before C11, which has no such literals but on Windows. */
#if defined(_WIN32)
#define VQS_TEXT(literal) VQS_TEXT_WITH(L, literal)
#elif defined(__cplusplus) || (defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L)
#define VQS_TEXT(literal) VQS_TEXT_WITH(u, literal)
#endif
#define VQS_TEXT_WITH(prefix, literal) prefix##literal

VQS_LAYOUT(sizeof(VqsChar16) == 2);

#endif
