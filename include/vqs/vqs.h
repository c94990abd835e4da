/* SPDX-License-Identifier: Apache-2.0 */
/**
 * VexoQTF Services: the client interface of the platform power-management driver "vexoqtf.sys".
 *
 * Rules that hold for every function, so that no comment has to repeat them:
 *
 *  1. Results. Every function returns a vqsStatus. VQS_INVALID_PARAMETER comes from the checks at its start:
 *     nothing has been sent, opened or written then. No system error code is passed on, nothing is retried.
 *  2. Sessions. "The session rule" is: a null session pointer, or a session without a device handle, gives
 *     VQS_INVALID_PARAMETER.
 *  3. Pointers are not null unless the comment says what null does. Records and arrays are naturally aligned.
 *  4. Sizes and lengths are in bytes, counts are in entries; both are stated at each argument.
 *  5. Outputs. On a result other than VQS_SUCCESS an output is untouched unless the comment says otherwise.
 *  6. Ownership. The caller owns every buffer it passes, the library owns none after a call has returned.
 *     What the library hands out (sessions, one result block) says how it is given back.
 *  7. Text. Text of char is one byte a character, in the character set of the C runtime's current locale.
 *     Text of VqsChar16 is UTF-16. Both end at their first zero unit.
 *  8. Padding. The library never reads a reserved member of a caller's record and never writes one, except that
 *     records it creates itself have them zero.
 *  9. Threads. The library creates none and takes no lock. Calls on different sessions are independent; calls on
 *     one session may run at once as far as the driver allows requests on one handle at once.
 * 10. Byte order is little-endian everywhere: in records, in requests and in files.
 */
#ifndef VQS_VQS_H
#define VQS_VQS_H

/* IWYU pragma: begin_exports */
#include "catalogue.h"
#include "features.h"
#include "platform.h"
#include "policy.h"
#include "policy_binary.h"
#include "session.h"
#include "status.h"
#include "telemetry.h"
/* IWYU pragma: end_exports */

#endif
