/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_TELEMETRY_H
#define VQS_TELEMETRY_H

#include "session.h"
#include "telemetry_records.h" /* IWYU pragma: export */

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Telemetry logs: memory that the driver keeps filling with the platform's inputs and states, mapped into the calling
 * process. Four generations stand side by side: the plain log, the Ex log, and the key/value and Ex key/value logs,
 * which iterators walk. A session holds one log at a time and remembers the last one that was started on it.
 *
 * A key/value walk: start the log; create an iterator on its handle; until vqsDoneQTFLogKVIter says so, read a record
 * with vqsGetQTFLogKVIterData and step with vqsNextQTFLogKVIter; reset to walk again after the driver has refreshed the
 * area; destroy the iterator before the log is stopped. Walking makes no request and no allocation.
 *
 * The iterators follow key ids, not a length: the driver ends the records with VQS_LOG_KEY_END. They do not know where
 * the mapped area ends.
 */

/** What a key's value is. */
typedef struct QtfLogKeyInfo {
  /** the id that stands before the value in the log */
  uint32_t KeyId;
  /** one of VQS_LOG_ELEMENT_ */
  uint32_t ElementType;
  uint32_t ElementCount;
  /** 0, or 10 for a few keys; the library does not use it */
  uint32_t Param;
  /** a constant of the library, valid while it is loaded */
  const char* Name;
} QtfLogKeyInfo;

/** A running key/value log; made by its start call, freed by its stop call. */
typedef struct QtfLogKV QtfLogKV;

/** A place in a key/value log; made by its create call, freed by its destroy call. */
typedef struct QtfLogKVIter QtfLogKVIter;

/**
 * Starts the plain log and maps it.
 *
 * @param[in]  session  an open session
 * @param[out] address  receives the address of the log; may be null
 * @retval VQS_SUCCESS            the log runs
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: one log call at a time.
 */
VQS_API vqsStatus VQS_CALL vqsStartQTFLog(QtfSession* session, uint64_t* address);

/**
 * Stops the plain log. The session forgets the log even when the driver refuses.
 *
 * @param[in] session  an open session
 * @retval VQS_SUCCESS            the log is stopped
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; no log is running
 * @note Threads: one log call at a time.
 */
VQS_API vqsStatus VQS_CALL vqsStopQTFLog(QtfSession* session);

/**
 * Asks what the plain log supports.
 *
 * @param[in]  session  an open session
 * @param[out] buffer   the driver writes straight into it; a null one is for the driver to refuse
 * @param[in]  length   bytes at buffer
 * @retval VQS_SUCCESS            buffer holds the answer
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsGetQTFLogSupport(QtfSession* session, void* buffer, uint32_t length);

/**
 * Asks for the version of the plain log.
 *
 * @param[in]  session  an open session
 * @param[out] version  receives the version; may be null
 * @retval VQS_SUCCESS            version holds the answer
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsGetQTFLogVersion(QtfSession* session, uint32_t* version);

/**
 * Starts the Ex log, and asks for its version in a second request when version is given. The second request then
 * decides the result, even if the start failed. After a failed start the session has forgotten the log that ran before.
 * It takes the value at address for the address of a running log then, and will send a stop for it unless that value is
 * 0: so set it to 0 before the call.
 *
 * @param[in]     session  an open session
 * @param[in,out] address  receives the address of the log, untouched when the start failed; may be null
 * @param[out]    version  receives the version of the log; null asks for none
 * @retval VQS_SUCCESS            the last request succeeded
 * @retval VQS_REQUEST_FAILED     the last request failed; address may be written all the same
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: one log call at a time.
 */
VQS_API vqsStatus VQS_CALL vqsExStartQTFLog(QtfSession* session, uint64_t* address, uint32_t* version);

/**
 * Stops the Ex log. The session forgets the log even when the driver refuses.
 *
 * @param[in] session  an open session
 * @retval VQS_SUCCESS            the log is stopped, or none was running
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: one log call at a time.
 */
VQS_API vqsStatus VQS_CALL vqsExStopQTFLog(QtfSession* session);

/** As vqsGetQTFLogSupport, for the Ex log; a null buffer gives VQS_INVALID_PARAMETER. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsExQTFLogSupport(QtfSession* session, void* buffer, uint32_t length);

/**
 * Starts the key/value log. With any result but VQS_SUCCESS the session remembers what it did before.
 *
 * @param[in]  session  an open session
 * @param[out] log      receives the log's handle, to be given back to vqsStopQTFLogKV
 * @retval VQS_SUCCESS            the log runs
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; log is null
 * @retval VQS_OUT_OF_MEMORY      the handle could not be allocated; the driver was told to stop the log again
 * @retval VQS_VERSION_MISMATCH   the driver's log has another data version than 1; it was told to stop it again
 * @note Threads: one log call at a time.
 */
VQS_API vqsStatus VQS_CALL vqsStartQTFLogKV(QtfSession* session, QtfLogKV** log);

/**
 * Stops the log of a session, and frees its handle if a key/value start made it on this session. When the driver
 * refuses, the log stays open. A handle that a second start, vqsStopQTFLog, vqsExStopQTFLog or the end of the session
 * has left behind is never freed.
 *
 * @param[in] session  an open session
 * @param[in] log      not null; what is stopped is the session's log
 * @retval VQS_SUCCESS            the log is stopped, or none was running
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; log is null
 * @note Threads: one log call at a time.
 */
VQS_API vqsStatus VQS_CALL vqsStopQTFLogKV(QtfSession* session, QtfLogKV* log);

/**
 * As vqsStartQTFLogKV, for the Ex key/value log; with a null log the handle is known to the session only.
 *
 * @note Threads: one log call at a time.
 */
VQS_API vqsStatus VQS_CALL vqsExStartQTFLogExKV(QtfSession* session, QtfLogKV** log);

/** As vqsStopQTFLogKV, for the Ex key/value log. Threads: one log call at a time. */
VQS_API vqsStatus VQS_CALL vqsExStopQTFLogExKV(QtfSession* session);

/**
 * Creates an iterator on the first record of a log.
 *
 * @param[in]  log       a running key/value log
 * @param[out] iterator  receives the iterator
 * @retval VQS_SUCCESS            the iterator stands on the first record
 * @retval VQS_INVALID_PARAMETER  an argument is null
 * @retval VQS_OUT_OF_MEMORY      the iterator could not be allocated
 * @note Threads: one call at a time on one iterator.
 */
VQS_API vqsStatus VQS_CALL vqsCreateQTFLogKVIter(QtfLogKV* log, QtfLogKVIter** iterator);
/** The same function under a second name, for Ex key/value logs. Threads: one call at a time on one iterator. */
VQS_API vqsStatus VQS_CALL vqsExCreateQTFLogExKVIter(QtfLogKV* log, QtfLogKVIter** iterator);

/**
 * Frees an iterator.
 *
 * @param[in] iterator  the iterator
 * @retval VQS_SUCCESS            it is gone
 * @retval VQS_INVALID_PARAMETER  it is null
 * @note Threads: one call at a time on one iterator.
 */
VQS_API vqsStatus VQS_CALL vqsDestroyQTFLogKVIter(QtfLogKVIter* iterator);
/** The same function under a second name. Threads: one call at a time on one iterator. */
VQS_API vqsStatus VQS_CALL vqsExDestroyQTFLogExKVIter(QtfLogKVIter* iterator);

/**
 * Puts an iterator back on the first record of a log.
 *
 * @param[in] log       a running key/value log
 * @param[in] iterator  the iterator
 * @retval VQS_SUCCESS            the iterator stands on the first record
 * @retval VQS_INVALID_PARAMETER  an argument is null
 * @note Threads: one call at a time on one iterator.
 */
VQS_API vqsStatus VQS_CALL vqsResetQTFLogKVIter(QtfLogKV* log, QtfLogKVIter* iterator);
/** The same function under a second name. Threads: one call at a time on one iterator. */
VQS_API vqsStatus VQS_CALL vqsExResetQTFLogExKVIter(QtfLogKV* log, QtfLogKVIter* iterator);

/**
 * Steps to the next record.
 *
 * @param[in] iterator  an iterator on a key/value log
 * @retval VQS_SUCCESS            the iterator stands on the next record, or on the end marker
 * @retval VQS_REQUEST_FAILED     it stands on the end marker or on a key id that does not exist, and stays there
 * @retval VQS_INVALID_PARAMETER  iterator is null
 * @note Threads: one call at a time on one iterator.
 */
VQS_API vqsStatus VQS_CALL vqsNextQTFLogKVIter(QtfLogKVIter* iterator);
/** As vqsNextQTFLogKVIter, on an Ex key/value log. Threads: one call at a time on one iterator. */
VQS_API vqsStatus VQS_CALL vqsExNextQTFLogExKVIter(QtfLogKVIter* iterator);

/**
 * Tells whether an iterator stands on the end marker.
 *
 * @param[in]  iterator  an iterator on a key/value log
 * @param[out] done      receives 1 on the end marker, otherwise 0
 * @retval VQS_SUCCESS            done holds the answer
 * @retval VQS_REQUEST_FAILED     the iterator stands on a key id that does not exist
 * @retval VQS_INVALID_PARAMETER  an argument is null
 * @note Threads: one call at a time on one iterator.
 */
VQS_API vqsStatus VQS_CALL vqsDoneQTFLogKVIter(const QtfLogKVIter* iterator, uint8_t* done);
/** As vqsDoneQTFLogKVIter, on an Ex key/value log. Threads: one call at a time on one iterator. */
VQS_API vqsStatus VQS_CALL vqsExDoneQTFLogExKVIter(const QtfLogKVIter* iterator, uint8_t* done);

/**
 * Tells the key and the place of the value that an iterator stands on.
 *
 * @param[in]  iterator  an iterator on a key/value log
 * @param[out] key       receives the key id
 * @param[out] address   receives the address of the value, inside the log and valid while it runs
 * @retval VQS_SUCCESS            both are written
 * @retval VQS_REQUEST_FAILED     the iterator stands on the end marker or on a key id that does not exist
 * @retval VQS_INVALID_PARAMETER  an argument is null
 * @note Threads: one call at a time on one iterator.
 */
VQS_API vqsStatus VQS_CALL vqsGetQTFLogKVIterData(const QtfLogKVIter* iterator, uint32_t* key, uint64_t* address);
/** As vqsGetQTFLogKVIterData, on an Ex key/value log. Threads: one call at a time on one iterator. */
VQS_API vqsStatus VQS_CALL vqsExGetQTFLogExKVIterData(const QtfLogKVIter* iterator, uint32_t* key, uint64_t* address);

/**
 * Copies what is known of the keys of the key/value log, in an order that is nearly that of the ids.
 *
 * @param[out]    keys   room for count records; may be null when count is 0
 * @param[in,out] count  in: room, in records, or 0 to ask; out: VQS_LOG_KV_KEYS. Not checked: it must not be null.
 * @retval VQS_SUCCESS            keys holds VQS_LOG_KV_KEYS records, or count says so
 * @retval VQS_INVALID_PARAMETER  count is neither 0 nor at least VQS_LOG_KV_KEYS, or keys is null
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsGetQTFLogKVMetadata_V2(QtfLogKeyInfo* keys, uint32_t* count);

/**
 * Copies what is known of the keys of the Ex key/value log.
 *
 * @param[out]    keys   room for count records; may be null when count is 0
 * @param[in,out] count  in: room, in records, or 0 to ask; out: VQS_LOG_EX_KV_KEYS when asked, and VQS_LOG_KV_KEYS
 *                       after copying, although VQS_LOG_EX_KV_KEYS records were copied. Not checked: it must not be
 *                       null.
 * @retval VQS_SUCCESS            keys holds VQS_LOG_EX_KV_KEYS records, or count says so
 * @retval VQS_INVALID_PARAMETER  count is neither 0 nor at least VQS_LOG_EX_KV_KEYS, or keys is null
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsExGetQTFLogExKVMetadata_V2(QtfLogKeyInfo* keys, uint32_t* count);

/*
 * The OVL family maps the plain log without a session. Each call but vqsOVLGetDllVersion opens the driver for itself
 * and leaves that handle open for the rest of the process. Besides the results named at each, these give what opening
 * gives: VQS_REQUEST_FAILED, VQS_OUT_OF_MEMORY or VQS_DRIVER_NOT_FOUND.
 */

/**
 * Maps the plain log.
 *
 * @param[out] address  receives the address of the log
 * @param[out] logId    receives the log's id, for vqsOVLUnmapQTFLogId
 * @retval VQS_SUCCESS            the log is mapped
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  an argument is null
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsOVLMapQTFLogAddress(uint64_t* address, uint32_t* logId);

/**
 * Unmaps a log.
 *
 * @param[in] logId  the log's id
 * @retval VQS_SUCCESS         the log is unmapped
 * @retval VQS_REQUEST_FAILED  the request failed
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsOVLUnmapQTFLogId(uint32_t logId);

/**
 * Starts the driver's filling of the log.
 *
 * @param[in] first   not null, not used further
 * @param[in] second  not null, not used further
 * @retval VQS_SUCCESS            the driver took it
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  an argument is null
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsOVLStartQTFLog(void* first, void* second);

/** Stops the driver's filling of the log: VQS_SUCCESS or VQS_REQUEST_FAILED. Threads: any. */
VQS_API vqsStatus VQS_CALL vqsOVLStopQTFLog(void);

/**
 * Asks for the version of the plain log.
 *
 * @param[out] version  receives the version
 * @retval VQS_SUCCESS            version holds the answer
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  version is null
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsOVLGetQTFLogVersion(uint32_t* version);

/** As vqsOVLGetQTFLogVersion, for the version of the driver's interface. Threads: any. */
VQS_API vqsStatus VQS_CALL vqsOVLGetInterfaceVersion(uint32_t* version);

/** Makes the driver fill the log at once: VQS_SUCCESS or VQS_REQUEST_FAILED. Threads: any. */
VQS_API vqsStatus VQS_CALL vqsOVLForceDataUpdate(void);

/**
 * Reads the library's own version in one word. The driver is not opened.
 *
 * @param[in,out] version  the version is ORed into it, so clear it first: from the highest byte to the lowest the
 *                         product's major number, and the file's second, third and fourth numbers, at
 *                         VQS_DLL_VERSION_..._SHIFT
 * @retval VQS_SUCCESS            version holds it
 * @retval VQS_REQUEST_FAILED     as vqsGetVersion
 * @retval VQS_INVALID_PARAMETER  version is null
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsOVLGetDllVersion(uint32_t* version);

VQS_LAYOUT(sizeof(QtfLogKeyInfo) == 24);
VQS_LAYOUT(offsetof(QtfLogKeyInfo, KeyId) == 0);
VQS_LAYOUT(offsetof(QtfLogKeyInfo, ElementType) == 4);
VQS_LAYOUT(offsetof(QtfLogKeyInfo, ElementCount) == 8);
VQS_LAYOUT(offsetof(QtfLogKeyInfo, Param) == 12);
VQS_LAYOUT(offsetof(QtfLogKeyInfo, Name) == 16);

#ifdef __cplusplus
}
#endif

#endif
