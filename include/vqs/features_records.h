/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_FEATURES_RECORDS_H
#define VQS_FEATURES_RECORDS_H

#include "base.h"

/** Number of features; their indexes are 0 to VQS_FEATURES - 1. */
enum { VQS_FEATURES = 9 };

/** Operations of the table functions: one that sets, and four that read, which the driver tells apart. */
enum { VQS_TABLE_READ = 0, VQS_TABLE_SET = 1, VQS_TABLE_READ_2 = 2, VQS_TABLE_READ_3 = 3, VQS_TABLE_READ_4 = 4 };

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

#endif
