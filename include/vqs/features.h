/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_FEATURES_H
#define VQS_FEATURES_H

#include "session.h"
#include "status.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Feature status, and the driver's feature tables.
 *
 * Every table call takes an operation: 1 sets the table, 0, 2, 3 and 4 read it in ways that the driver tells apart. A
 * set sends the caller's table and leaves it alone; a read sends the operation only, and writes every field of the
 * caller's table when it succeeds. What the fields mean is the driver's affair.
 */

/** Table operations; 2, 3 and 4 are further reads. */
enum { VQS_TABLE_READ = 0, VQS_TABLE_SET = 1 };

/** Fields are aligned to 4 bytes at most in all of these. */
#pragma pack(push, 4)

/** Whether a feature is supported and active. */
typedef struct VqsFeatureStatus {
  uint8_t flagA;
  uint8_t flagB;
  /** not written */
  uint8_t reserved0[2];
  uint32_t value;
} VqsFeatureStatus;

/** A point of a slider's curve. */
typedef struct VqsSliderPoint {
  uint32_t words[4];
  double value;
  uint32_t word;
} VqsSliderPoint;

/** The in-bag policy table. */
typedef struct VqsInBagTable {
  uint32_t word0;
  uint32_t word1;
  uint32_t word2;
  uint64_t value;
  VqsSliderPoint points[2];
} VqsInBagTable;

/** A row of the first-generation static slider table. */
typedef struct VqsStaticSliderRow {
  uint32_t word0;
  uint8_t byte0;
  uint8_t reserved0[3];
  uint32_t word1;
  uint32_t word2;
  uint8_t byte1;
  uint8_t reserved1[3];
  uint32_t word3;
} VqsStaticSliderRow;

typedef struct VqsStaticSliderTableV1 {
  VqsStaticSliderRow rows[5];
} VqsStaticSliderTableV1;

/** An entry of the second-generation static slider table, two of which make a row. */
typedef struct VqsStaticSliderEntry {
  VqsSliderPoint point;
  uint64_t value;
} VqsStaticSliderEntry;

typedef struct VqsStaticSliderTableV2 {
  VqsStaticSliderEntry entries[10];
} VqsStaticSliderTableV2;

typedef struct VqsStaticSliderTableV4 {
  uint8_t values[10];
} VqsStaticSliderTableV4;

/** A block of the automatic-mode table. */
typedef struct VqsAutoModeBlock {
  VqsSliderPoint point;
  uint64_t value;
  uint32_t word;
} VqsAutoModeBlock;

typedef struct VqsAutoModeTable {
  uint32_t header[8];
  VqsAutoModeBlock blocks[4];
} VqsAutoModeTable;

/** A group of the ASM-lite table. */
typedef struct VqsAsmLiteGroup {
  uint32_t words[7];
  uint8_t byte0;
  uint8_t reserved0[3];
  uint32_t word7;
  uint8_t reserved1[4];
} VqsAsmLiteGroup;

/** The ASM-lite table; what lies outside the groups is neither read nor written. */
typedef struct VqsAsmLiteTable {
  uint8_t reserved0[24];
  VqsAsmLiteGroup setA[4];
  uint8_t reserved1[24];
  VqsAsmLiteGroup setB[4];
} VqsAsmLiteTable;

#pragma pack(pop)

/**
 * Asks for the status of a feature.
 *
 * @param[in]  session  an open session
 * @param[in]  index    the feature, 0 to 8
 * @param[out] status   receives both flags and the value; its reserved bytes are untouched
 * @retval VQS_SUCCESS            status is written
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; index is out of range; status is null
 */
VQS_API vqsStatus VQS_CALL vqsQueryFeatureStatus(QtfSession* session, int32_t index, VqsFeatureStatus* status);

/**
 * Reads or sets the automatic-mode table.
 *
 * @param[in]     session    an open session
 * @param[in]     operation  1 to set, 0, 2, 3 or 4 to read
 * @param[in,out] table      the table
 * @retval VQS_SUCCESS            the driver took the table, or table is written
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; table is null; operation is 5 or more
 * @retval VQS_NOT_SUPPORTED      operation is negative; nothing was sent
 */
VQS_API vqsStatus VQS_CALL vqsItsAutoModeTableControl(QtfSession* session, int32_t operation, VqsAutoModeTable* table);

/**
 * Reads or sets the in-bag policy table, as vqsItsAutoModeTableControl. A set sends the three words only: points and
 * value travel as zeros, and the caller's own are zero afterwards too.
 */
VQS_API vqsStatus VQS_CALL vqsInBagPolicyTableControl(QtfSession* session, int32_t operation, VqsInBagTable* table);

/** Reads or sets the static slider table in its first form, as vqsItsAutoModeTableControl. */
VQS_API vqsStatus VQS_CALL vqsStaticSliderTableControl_V1(QtfSession* session, int32_t operation,
                                                          VqsStaticSliderTableV1* table);

/** Reads or sets the static slider table in its second form, as vqsItsAutoModeTableControl. */
VQS_API vqsStatus VQS_CALL vqsStaticSliderTableControl_V2(QtfSession* session, int32_t operation,
                                                          VqsStaticSliderTableV2* table);

/**
 * Reads or sets the static slider table in its fourth form, as vqsItsAutoModeTableControl, but every operation outside
 * 0 to 4, negative ones too, gives VQS_INVALID_PARAMETER.
 */
VQS_API vqsStatus VQS_CALL vqsStaticSliderTableControl_V4(QtfSession* session, int32_t operation,
                                                          VqsStaticSliderTableV4* table);

/** Reads or sets the ASM-lite table, as vqsItsAutoModeTableControl. */
VQS_API vqsStatus VQS_CALL vqsAsmLiteTableControl(QtfSession* session, int32_t operation, VqsAsmLiteTable* table);

/**
 * Switches the dynamic slider.
 *
 * @param[in] session  an open session
 * @param[in] enable   nonzero: on
 * @retval VQS_SUCCESS            the driver took it
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 */
VQS_API vqsStatus VQS_CALL vqsDynamicSliderEnableDisable(QtfSession* session, uint8_t enable);

/** Not carried out by this library: VQS_NOT_SUPPORTED, whatever the arguments. The two names are one function. */
VQS_API vqsStatus VQS_CALL vqsCustomWorkloadControl(QtfSession* session, int32_t operation, void* table);
VQS_API vqsStatus VQS_CALL vqsQueryCurrentItsAutoModeSettings(QtfSession* session, int32_t operation, void* table);

VQS_LAYOUT(sizeof(VqsFeatureStatus) == 8);
VQS_LAYOUT(offsetof(VqsFeatureStatus, flagA) == 0);
VQS_LAYOUT(offsetof(VqsFeatureStatus, flagB) == 1);
VQS_LAYOUT(offsetof(VqsFeatureStatus, value) == 4);

VQS_LAYOUT(sizeof(VqsSliderPoint) == 28);
VQS_LAYOUT(offsetof(VqsSliderPoint, words) == 0);
VQS_LAYOUT(offsetof(VqsSliderPoint, value) == 16);
VQS_LAYOUT(offsetof(VqsSliderPoint, word) == 24);

VQS_LAYOUT(sizeof(VqsInBagTable) == 76);
VQS_LAYOUT(offsetof(VqsInBagTable, word0) == 0);
VQS_LAYOUT(offsetof(VqsInBagTable, word1) == 4);
VQS_LAYOUT(offsetof(VqsInBagTable, word2) == 8);
VQS_LAYOUT(offsetof(VqsInBagTable, value) == 12);
VQS_LAYOUT(offsetof(VqsInBagTable, points) == 20);

VQS_LAYOUT(sizeof(VqsStaticSliderRow) == 24);
VQS_LAYOUT(offsetof(VqsStaticSliderRow, word0) == 0);
VQS_LAYOUT(offsetof(VqsStaticSliderRow, byte0) == 4);
VQS_LAYOUT(offsetof(VqsStaticSliderRow, word1) == 8);
VQS_LAYOUT(offsetof(VqsStaticSliderRow, word2) == 12);
VQS_LAYOUT(offsetof(VqsStaticSliderRow, byte1) == 16);
VQS_LAYOUT(offsetof(VqsStaticSliderRow, word3) == 20);
VQS_LAYOUT(sizeof(VqsStaticSliderTableV1) == 120);

VQS_LAYOUT(sizeof(VqsStaticSliderEntry) == 36);
VQS_LAYOUT(offsetof(VqsStaticSliderEntry, value) == 28);
VQS_LAYOUT(sizeof(VqsStaticSliderTableV2) == 360);
VQS_LAYOUT(sizeof(VqsStaticSliderTableV4) == 10);

VQS_LAYOUT(sizeof(VqsAutoModeBlock) == 40);
VQS_LAYOUT(offsetof(VqsAutoModeBlock, value) == 28);
VQS_LAYOUT(offsetof(VqsAutoModeBlock, word) == 36);
VQS_LAYOUT(sizeof(VqsAutoModeTable) == 192);
VQS_LAYOUT(offsetof(VqsAutoModeTable, blocks) == 32);

VQS_LAYOUT(sizeof(VqsAsmLiteGroup) == 40);
VQS_LAYOUT(offsetof(VqsAsmLiteGroup, byte0) == 28);
VQS_LAYOUT(offsetof(VqsAsmLiteGroup, word7) == 32);
VQS_LAYOUT(sizeof(VqsAsmLiteTable) == 368);
VQS_LAYOUT(offsetof(VqsAsmLiteTable, setA) == 24);
VQS_LAYOUT(offsetof(VqsAsmLiteTable, setB) == 208);

#ifdef __cplusplus
}
#endif

#endif
