/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_POLICY_BINARY_RECORDS_H
#define VQS_POLICY_BINARY_RECORDS_H

#include "base.h"

/** Most policies of a policy binary file of revision 5 that can be read. */
enum { VQS_POLICY_BINARY_MAX_POLICIES = 400 };

/**
 * The head of what vqsPbReadBinaryV2 returns. The bodies follow it directly, from byte 200, back to back: policyCount
 * records of the structure version, 804, 1448 or 3916 bytes each.
 */
typedef struct VqsPolicyBinary {
  uint8_t reserved0[4];
  uint16_t binaryVersion1;
  uint16_t binaryVersion2;
  uint8_t reserved1[40];
  /** number of bodies */
  uint32_t policyCount;
  uint8_t reserved2[132];
  /** one of VQS_STRUCTURE_VERSION_: the layout of the bodies */
  uint32_t structureVersion;
  uint8_t reserved3[12];
} VqsPolicyBinary;

/** What vqsPbReadBinary returns: a summary without the policies. Every reserved byte is zero. */
typedef struct VqsPolicyBinaryV0 {
  uint8_t reserved0[4];
  uint16_t binaryVersion1;
  uint16_t binaryVersion2;
  uint32_t policyCount;
  uint8_t reserved1[52];
} VqsPolicyBinaryV0;

VQS_LAYOUT(sizeof(VqsPolicyBinary) == 200);
VQS_LAYOUT(offsetof(VqsPolicyBinary, binaryVersion1) == 4);
VQS_LAYOUT(offsetof(VqsPolicyBinary, binaryVersion2) == 6);
VQS_LAYOUT(offsetof(VqsPolicyBinary, policyCount) == 48);
VQS_LAYOUT(offsetof(VqsPolicyBinary, structureVersion) == 184);

VQS_LAYOUT(sizeof(VqsPolicyBinaryV0) == 64);
VQS_LAYOUT(offsetof(VqsPolicyBinaryV0, binaryVersion1) == 4);
VQS_LAYOUT(offsetof(VqsPolicyBinaryV0, binaryVersion2) == 6);
VQS_LAYOUT(offsetof(VqsPolicyBinaryV0, policyCount) == 8);

#endif
