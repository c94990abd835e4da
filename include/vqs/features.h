/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_FEATURES_H
#define VQS_FEATURES_H

#include "features_records.h" /* IWYU pragma: export */
#include "session.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Feature status, and the driver's feature tables.
 *
 * Every table call takes one of VQS_TABLE_: a set sends the caller's table and leaves it alone; a read sends the
 * operation only, and writes every field of the caller's table when it succeeds. The library passes the fields on
 * without using them.
 */

/**
 * Asks for the status of a feature.
 *
 * @param[in]  session  an open session
 * @param[in]  index    the feature, 0 to VQS_FEATURES - 1
 * @param[out] status   receives both flags and the value; its reserved bytes are untouched
 * @retval VQS_SUCCESS            status is written
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; index is out of range; status is null
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsQueryFeatureStatus(QtfSession* session, int32_t index, VqsFeatureStatus* status);

/**
 * Reads or sets the automatic-mode table.
 *
 * @param[in]     session    an open session
 * @param[in]     operation  one of VQS_TABLE_
 * @param[in,out] table      the table
 * @retval VQS_SUCCESS            the driver took the table, or table is written
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; table is null; operation is 5 or more
 * @retval VQS_NOT_SUPPORTED      operation is negative; nothing was sent
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsItsAutoModeTableControl(QtfSession* session, int32_t operation, VqsAutoModeTable* table);

/**
 * Reads or sets the in-bag policy table, as vqsItsAutoModeTableControl. A set sends the three words only: points and
 * value travel as zeros, and the caller's own are zero afterwards too, even when the request failed.
 *
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsInBagPolicyTableControl(QtfSession* session, int32_t operation, VqsInBagTable* table);

/**
 * Reads or sets the static slider table in its first form, as vqsItsAutoModeTableControl.
 *
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsStaticSliderTableControl_V1(QtfSession* session, int32_t operation,
                                                          VqsStaticSliderTableV1* table);

/**
 * Reads or sets the static slider table in its second form, as vqsItsAutoModeTableControl.
 *
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsStaticSliderTableControl_V2(QtfSession* session, int32_t operation,
                                                          VqsStaticSliderTableV2* table);

/**
 * Reads or sets the static slider table in its fourth form, as vqsItsAutoModeTableControl, but every operation that is
 * none of VQS_TABLE_, negative ones too, gives VQS_INVALID_PARAMETER.
 *
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsStaticSliderTableControl_V4(QtfSession* session, int32_t operation,
                                                          VqsStaticSliderTableV4* table);

/** Reads or sets the ASM-lite table, as vqsItsAutoModeTableControl. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsAsmLiteTableControl(QtfSession* session, int32_t operation, VqsAsmLiteTable* table);

/**
 * Switches the dynamic slider.
 *
 * @param[in] session  an open session
 * @param[in] enable   nonzero: on
 * @retval VQS_SUCCESS            the driver took it
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsDynamicSliderEnableDisable(QtfSession* session, uint8_t enable);

/** Not carried out by this library: VQS_NOT_SUPPORTED, whatever the arguments. Threads: any. */
VQS_API vqsStatus VQS_CALL vqsCustomWorkloadControl(QtfSession* session, int32_t operation, void* table);
/** The same function under a second name. Threads: any. */
VQS_API vqsStatus VQS_CALL vqsQueryCurrentItsAutoModeSettings(QtfSession* session, int32_t operation, void* table);

#ifdef __cplusplus
}
#endif

#endif
