/* SPDX-License-Identifier: Apache-2.0 */
/**
 * VexoQTF Services: the client interface of the platform power-management driver "vexoqtf.sys".
 *
 * On Windows the library is for Windows 10 or later and for x64 programs, those with ARM64EC code included; on other
 * systems, in front of a simulated driver, for 64-bit programs. The headers are for C99 or newer, for Microsoft's C
 * with or without /std, and for C++11 or newer. compatibility.md has more on both.
 *
 * Rules that hold for every function, so that no comment has to repeat them:
 *
 *  1. Results. Every function returns a vqsStatus. VQS_INVALID_PARAMETER comes before the first request, and nothing
 *     has been opened or written then, with one exception: the functions that read all policies of a store need a
 *     request to find out that a capacity is too small. No system error code is passed on, nothing is retried.
 *  2. Sessions. "The session rule" is: a null session pointer, or a session without a device handle, gives
 *     VQS_INVALID_PARAMETER.
 *  3. Pointers are not null unless the comment says what null does. Records and arrays are naturally aligned.
 *  4. Sizes and lengths are in bytes, counts are in entries; both are stated at each argument.
 *  5. Outputs. On a result other than VQS_SUCCESS an output is untouched unless the comment says otherwise. An output
 *     that the driver writes straight into may hold part of an answer when the request failed.
 *  6. Ownership. The caller owns every buffer it passes, the library owns none after a call has returned. What it hands
 *     out to be given back (sessions, handles and iterators of logs, one result block) says how. Its tables remain its
 *     own, and can be read while it is loaded.
 *  7. Text of char ends at its first NUL; text of VqsChar16 is UTF-16 and ends at its first zero unit. Where a policy's
 *     name and texts are of char, the C runtime converts them, in the character set of its current locale. On Windows
 *     that is the universal C runtime, which the library shares with every program that is built on it: setlocale in
 *     the program has its effect. A program on another runtime (msvcrt, or one that is linked statically) has a locale
 *     of its own, which the library does not see. All other text of char is passed on byte for byte.
 *  8. Reserved members of a caller's record are neither read nor written, with one exception: vqsPbReadBinaryV2 fills
 *     its output whole, with zeros in them. They are zero in the records that the library hands out.
 *  9. Threads. The library creates none and takes no lock. Each function's comment ends with who may be in it at once:
 *      -  any: every thread, at any time.
 *      -  as the driver allows: calls on one session, as far as the driver takes requests on one handle at once. Calls
 *         on different sessions are independent of each other.
 *      -  one log call at a time: as before, but what the session remembers of its log is not guarded. Of the functions
 *         that start or stop a log and those that close the session only one runs on a session at a time.
 *      -  the last call: no other call on the session runs at the same time, or comes later.
 *      -  one call at a time on one iterator: and none on it while its log is being stopped.
 *      -  as the driver allows, with shared flags: calls at once, also on different sessions, write the same flags into
 *         the library's tables. Who needs the flags to stand still serialises the calls.
 *     The runtime's locale (rule 7) and handler (rule 11) are not changed while a call runs.
 * 10. Byte order is little-endian everywhere: in records, in requests and in files.
 * 11. The C runtime's invalid-parameter condition. On Windows it is raised by vqsAtstNotifyBiosEvent, its two other
 *     names and vqsAtstNotifyBiosEventV2, always, and by vqsGetOEMID when the driver's text is too long; by nothing
 *     else. A handler that the program has installed in the universal C runtime, for the thread or for the process, is
 *     called once, and the call goes on when it returns. Without a handler the condition would end the process: here
 *     the call goes on silently, on purpose. On other systems there is no handler, and nothing is raised.
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
