/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_SESSION_H
#define VQS_SESSION_H

/* IWYU pragma: begin_exports */
#include "functions.h"
#include "session_records.h"
#include "status.h"
/* IWYU pragma: end_exports */

#ifdef __cplusplus
extern "C" {
#endif

/**
 * An open connection to the driver. The library allocates it in an initialize call and frees it in an
 * uninitialize call; in between its pointer goes into every other call. Sessions share nothing but the flags of the
 * catalogues. Either initialize call makes a session that every export accepts.
 */
typedef struct QtfSession QtfSession;

/**
 * Finds the driver, opens its device and announces the new session to it.
 *
 * @param[out] session  receives the session; untouched unless the result is VQS_SUCCESS
 * @retval VQS_SUCCESS            the session is open; the driver's answer to the announcement is not looked at
 * @retval VQS_REQUEST_FAILED     the device list could not be read, or the device could not be opened
 * @retval VQS_INVALID_PARAMETER  session is null
 * @retval VQS_OUT_OF_MEMORY      the session or the device list could not be allocated
 * @retval VQS_DRIVER_NOT_FOUND   the driver is not loaded
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsInitialize(QtfSession** session);

/** As vqsInitialize; to be closed with vqsExUninitialize when "Ex" telemetry logs are used. Threads: any. */
VQS_API vqsStatus VQS_CALL vqsExInitialize(QtfSession** session);

/**
 * Closes a session, whose pointer is dead afterwards. A telemetry log that is still running is stopped first, as one
 * that vqsStartQTFLog started. The handle of a key/value log is not freed by this: stop such a log before.
 *
 * @param[in] session  the session to close
 * @retval VQS_SUCCESS            always, for a session that is not null
 * @retval VQS_INVALID_PARAMETER  session is null
 * @note Threads: the last call.
 */
VQS_API vqsStatus VQS_CALL vqsUninitialize(QtfSession* session);

/** As vqsUninitialize; a running log is stopped as one that vqsExStartQTFLog started. Threads: the last call. */
VQS_API vqsStatus VQS_CALL vqsExUninitialize(QtfSession* session);

/**
 * Reads the version of the library's own file, "VexoQTFServices.dll", found by the system's search rules. No session is
 * needed.
 *
 * @param[out] words  four words, VqsVersion names them: the product's major number, the file's minor number, and then
 *                    the file's fourth and third numbers, in this order. File version 3.4.5.6 of a product 7.x gives 7,
 *                    4, 6, 5.
 * @retval VQS_SUCCESS            words holds the version
 * @retval VQS_REQUEST_FAILED     the file or its version resource could not be read, or memory for it ran out
 * @retval VQS_INVALID_PARAMETER  words is null
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsGetVersion(uint32_t words[4]);

/**
 * Reads the version of the driver's file, "vexoqtf.sys", as vqsGetVersion does for the library's.
 *
 * @param[out] words  four words in the order of vqsGetVersion; all zero when the result is VQS_REQUEST_FAILED
 * @retval VQS_SUCCESS            words holds the version
 * @retval VQS_REQUEST_FAILED     the file or its version resource could not be read, or memory for it ran out
 * @retval VQS_INVALID_PARAMETER  words is null
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsGetDriverVersion(uint32_t words[4]);

#ifdef __cplusplus
}
#endif

#endif
