/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_POLICY_RECORDS_H
#define VQS_POLICY_RECORDS_H

#include "base.h"

/*
 * Policies: rules of conditions and actions that the driver keeps in three stores.
 *
 * A caller writes and reads policies in one of three layouts, told apart by a structure version. Versions 0
 * and 1 carry 8-bit text, version 2 carries UTF-16; version 0 carries only the first two fields of an action.
 * The functions without a suffix use version 0 in plain arrays, the V2 functions take any version.
 */

/** Structure versions: the layouts of a policy. */
enum { VQS_STRUCTURE_VERSION_0 = 0, VQS_STRUCTURE_VERSION_1 = 1, VQS_STRUCTURE_VERSION_2 = 2 };

/** Limits of one policy. */
enum {
  VQS_POLICY_NAME_UNITS = 64,
  VQS_POLICY_DESCRIPTION_SIZE = 32,
  VQS_POLICY_MAX_CONDITIONS = 15,
  VQS_POLICY_MAX_TEXTS = 5,
  VQS_POLICY_MAX_ACTIONS = 32,
  VQS_POLICY_TEXT_SIZE = 32,
  VQS_POLICY_TEXT_UNITS = 256,
  /** comparisons are 0 to this one */
  VQS_POLICY_MAX_OPERATOR = 4,
  /** a text's flag is 0 or this */
  VQS_POLICY_MAX_TEXT_FLAG = 1
};

/** Bytes of a name in the status of a policy, the NUL included. */
enum { VQS_POLICY_STATUS_NAME_SIZE = 64 };

/** The policy stores. */
enum {
  /** Policy Builder */
  VQS_POLICY_STORE_PB = 0,
  VQS_POLICY_STORE_ASM = 1,
  VQS_POLICY_STORE_BALANCE_PROFILE = 2
};

/** Selects a policy store: one of VQS_POLICY_STORE_. */
typedef uint8_t VqsPolicyStore;

/** What a driverResult holds. Every word but the first is a refusal; the driver decides which word stands for what. */
enum {
  /** the driver did what it was asked for */
  VQS_DRIVER_RESULT_TAKEN = 0,
  /** written by the library when the request itself failed, so that the driver has no result */
  VQS_DRIVER_RESULT_REQUEST_FAILED = 1
};

/** A condition, the same in every layout. */
typedef struct VqsPolicyCondition {
  /** condition type, the Id of the condition catalogue */
  uint32_t conditionId;
  /** comparison, 0 to VQS_POLICY_MAX_OPERATOR; with any other the policy is malformed */
  uint32_t op;
  uint32_t value;
  uint32_t value2;
} VqsPolicyCondition;

/** An action of a version 0 policy; the fields it lacks are zero in the driver. */
typedef struct VqsPolicyActionV0 {
  /** action type, the Id of the action catalogue */
  uint32_t actionId;
  uint32_t value;
} VqsPolicyActionV0;

/** An action of a version 1 or 2 policy. */
typedef struct VqsPolicyAction {
  /** action type, the Id of the action catalogue */
  uint32_t actionId;
  uint32_t value;
  uint32_t value2;
  /** must be 0 in a policy that is to be read as version 0 */
  uint8_t option1;
  uint8_t option2;
  uint8_t reserved0[2];
  uint32_t value3;
  uint8_t option3;
  uint8_t reserved1[3];
  uint32_t value4;
} VqsPolicyAction;

/** A text of a version 0 or 1 policy. */
typedef struct VqsPolicyText {
  /** ends in NUL unless it fills all 32 bytes */
  char text[VQS_POLICY_TEXT_SIZE];
  /** 0 or 1; with any other the policy is malformed */
  uint8_t flag;
} VqsPolicyText;

/** A text of a version 2 policy. */
typedef struct VqsPolicyTextV2 {
  /** must hold a zero unit */
  VqsChar16 text[VQS_POLICY_TEXT_UNITS];
  /** 0 or 1; with any other the policy is malformed */
  uint8_t flag;
  uint8_t reserved0;
} VqsPolicyTextV2;

/** A policy, structure version 0. */
typedef struct VqsPolicyV0 {
  /** must end in NUL within its 64 bytes */
  char name[VQS_POLICY_NAME_UNITS];
  /** 8-bit in every layout; ends in NUL when shorter than 32 bytes */
  char description[VQS_POLICY_DESCRIPTION_SIZE];
  uint8_t flag0;
  uint8_t reserved0[3];
  /** the policy's id in its store, the key of delete and replace */
  uint32_t id;
  uint32_t param0;
  uint8_t flag1;
  uint8_t flag2;
  uint8_t reserved1[2];
  uint32_t param1;
  uint32_t param2;
  /**
   * at most 15. A higher count goes to a store as it is, with 15 conditions, and is refused on the way back and by the
   * functions that write policy binaries.
   */
  uint32_t conditionCount;
  /** at most 5; beyond, as conditionCount */
  uint32_t textCount;
  uint8_t reserved2[8];
  VqsPolicyCondition conditions[VQS_POLICY_MAX_CONDITIONS];
  VqsPolicyText texts[VQS_POLICY_MAX_TEXTS];
  uint8_t reserved3[3];
  VqsPolicyActionV0 actions[VQS_POLICY_MAX_ACTIONS];
  /** at most 32; beyond, as conditionCount. In this layout it stands behind the actions. */
  uint32_t actionCount;
} VqsPolicyV0;

/** A policy, structure version 1; the fields are those of VqsPolicyV0. */
typedef struct VqsPolicyV1 {
  /** the caller's own; the library neither reads nor writes it */
  uint32_t header;
  char name[VQS_POLICY_NAME_UNITS];
  char description[VQS_POLICY_DESCRIPTION_SIZE];
  uint8_t flag0;
  uint8_t reserved0[3];
  uint32_t id;
  uint32_t param0;
  uint8_t flag1;
  uint8_t flag2;
  uint8_t reserved1[2];
  uint32_t param1;
  uint32_t param2;
  uint32_t conditionCount;
  uint32_t actionCount;
  uint32_t textCount;
  uint8_t reserved2[8];
  VqsPolicyCondition conditions[VQS_POLICY_MAX_CONDITIONS];
  VqsPolicyText texts[VQS_POLICY_MAX_TEXTS];
  uint8_t reserved3[3];
  VqsPolicyAction actions[VQS_POLICY_MAX_ACTIONS];
} VqsPolicyV1;

/** A policy, structure version 2; the fields are those of VqsPolicyV0. */
typedef struct VqsPolicyV2 {
  /** the caller's own; the library neither reads nor writes it */
  uint32_t header;
  /** sent as it is */
  VqsChar16 name[VQS_POLICY_NAME_UNITS];
  char description[VQS_POLICY_DESCRIPTION_SIZE];
  uint8_t flag0;
  uint8_t reserved0[3];
  uint32_t id;
  uint32_t param0;
  uint8_t flag1;
  uint8_t flag2;
  uint8_t reserved1[2];
  uint32_t param1;
  uint32_t param2;
  uint32_t conditionCount;
  uint32_t actionCount;
  uint32_t textCount;
  uint8_t reserved2[8];
  VqsPolicyCondition conditions[VQS_POLICY_MAX_CONDITIONS];
  VqsPolicyTextV2 texts[VQS_POLICY_MAX_TEXTS];
  uint8_t reserved3[2];
  VqsPolicyAction actions[VQS_POLICY_MAX_ACTIONS];
} VqsPolicyV2;

/**
 * One policy of any structure version, for the V2 functions. A caller may pass as few bytes as its version
 * needs: 4 + 804, 4 + 1448 or 4 + 3916.
 */
typedef struct VqsVersionedPolicy {
  /** one of VQS_STRUCTURE_VERSION_ */
  uint32_t structureVersion;
  union {
    VqsPolicyV0 v0;
    VqsPolicyV1 v1;
    VqsPolicyV2 v2;
  } policy;
} VqsVersionedPolicy;

/**
 * The head of a list of policies of any structure version. The bodies follow it directly, from byte 16, back to
 * back: VqsPolicyV0, VqsPolicyV1 or VqsPolicyV2 records, 804, 1448 or 3916 bytes each.
 */
typedef struct VqsPolicyListV2 {
  /** one of VQS_STRUCTURE_VERSION_: the layout of the bodies */
  uint32_t structureVersion;
  /** number of bodies; for a read: in: the capacity, 0 to count only, out: see vqsPbGetPoliciesV2 */
  uint32_t count;
  /** bytes behind the head that the bodies may use */
  uint64_t size;
} VqsPolicyListV2;

/** The status of one policy. The library passes the values on: the driver gives them their meaning. */
typedef struct VqsPolicyStatus {
  uint8_t reserved0[4];
  /** the policy's name; empty when the driver's name does not fit with its NUL */
  char name[VQS_POLICY_STATUS_NAME_SIZE];
  uint32_t statusValue;
  uint8_t statusFlagA;
  uint8_t statusFlagB;
  uint8_t reserved1[2];
  uint32_t statusValue2;
} VqsPolicyStatus;

/* The layouts, as the driver and other clients know them. */

VQS_LAYOUT(sizeof(VqsPolicyCondition) == 16);
VQS_LAYOUT(offsetof(VqsPolicyCondition, conditionId) == 0);
VQS_LAYOUT(offsetof(VqsPolicyCondition, op) == 4);
VQS_LAYOUT(offsetof(VqsPolicyCondition, value) == 8);
VQS_LAYOUT(offsetof(VqsPolicyCondition, value2) == 12);

VQS_LAYOUT(sizeof(VqsPolicyActionV0) == 8);
VQS_LAYOUT(offsetof(VqsPolicyActionV0, actionId) == 0);
VQS_LAYOUT(offsetof(VqsPolicyActionV0, value) == 4);

VQS_LAYOUT(sizeof(VqsPolicyAction) == 28);
VQS_LAYOUT(offsetof(VqsPolicyAction, actionId) == 0);
VQS_LAYOUT(offsetof(VqsPolicyAction, value) == 4);
VQS_LAYOUT(offsetof(VqsPolicyAction, value2) == 8);
VQS_LAYOUT(offsetof(VqsPolicyAction, option1) == 12);
VQS_LAYOUT(offsetof(VqsPolicyAction, option2) == 13);
VQS_LAYOUT(offsetof(VqsPolicyAction, value3) == 16);
VQS_LAYOUT(offsetof(VqsPolicyAction, option3) == 20);
VQS_LAYOUT(offsetof(VqsPolicyAction, value4) == 24);

VQS_LAYOUT(sizeof(VqsPolicyText) == 33);
VQS_LAYOUT(offsetof(VqsPolicyText, text) == 0);
VQS_LAYOUT(offsetof(VqsPolicyText, flag) == 32);

VQS_LAYOUT(sizeof(VqsPolicyTextV2) == 514);
VQS_LAYOUT(offsetof(VqsPolicyTextV2, text) == 0);
VQS_LAYOUT(offsetof(VqsPolicyTextV2, flag) == 512);

VQS_LAYOUT(sizeof(VqsPolicyV0) == 804);
VQS_LAYOUT(offsetof(VqsPolicyV0, name) == 0);
VQS_LAYOUT(offsetof(VqsPolicyV0, description) == 64);
VQS_LAYOUT(offsetof(VqsPolicyV0, flag0) == 96);
VQS_LAYOUT(offsetof(VqsPolicyV0, id) == 100);
VQS_LAYOUT(offsetof(VqsPolicyV0, param0) == 104);
VQS_LAYOUT(offsetof(VqsPolicyV0, flag1) == 108);
VQS_LAYOUT(offsetof(VqsPolicyV0, flag2) == 109);
VQS_LAYOUT(offsetof(VqsPolicyV0, param1) == 112);
VQS_LAYOUT(offsetof(VqsPolicyV0, param2) == 116);
VQS_LAYOUT(offsetof(VqsPolicyV0, conditionCount) == 120);
VQS_LAYOUT(offsetof(VqsPolicyV0, textCount) == 124);
VQS_LAYOUT(offsetof(VqsPolicyV0, reserved2) == 128);
VQS_LAYOUT(offsetof(VqsPolicyV0, conditions) == 136);
VQS_LAYOUT(offsetof(VqsPolicyV0, texts) == 376);
VQS_LAYOUT(offsetof(VqsPolicyV0, actions) == 544);
VQS_LAYOUT(offsetof(VqsPolicyV0, actionCount) == 800);

VQS_LAYOUT(sizeof(VqsPolicyV1) == 1448);
VQS_LAYOUT(offsetof(VqsPolicyV1, header) == 0);
VQS_LAYOUT(offsetof(VqsPolicyV1, name) == 4);
VQS_LAYOUT(offsetof(VqsPolicyV1, description) == 68);
VQS_LAYOUT(offsetof(VqsPolicyV1, flag0) == 100);
VQS_LAYOUT(offsetof(VqsPolicyV1, id) == 104);
VQS_LAYOUT(offsetof(VqsPolicyV1, param0) == 108);
VQS_LAYOUT(offsetof(VqsPolicyV1, flag1) == 112);
VQS_LAYOUT(offsetof(VqsPolicyV1, flag2) == 113);
VQS_LAYOUT(offsetof(VqsPolicyV1, param1) == 116);
VQS_LAYOUT(offsetof(VqsPolicyV1, param2) == 120);
VQS_LAYOUT(offsetof(VqsPolicyV1, conditionCount) == 124);
VQS_LAYOUT(offsetof(VqsPolicyV1, actionCount) == 128);
VQS_LAYOUT(offsetof(VqsPolicyV1, textCount) == 132);
VQS_LAYOUT(offsetof(VqsPolicyV1, reserved2) == 136);
VQS_LAYOUT(offsetof(VqsPolicyV1, conditions) == 144);
VQS_LAYOUT(offsetof(VqsPolicyV1, texts) == 384);
VQS_LAYOUT(offsetof(VqsPolicyV1, actions) == 552);

VQS_LAYOUT(sizeof(VqsPolicyV2) == 3916);
VQS_LAYOUT(offsetof(VqsPolicyV2, header) == 0);
VQS_LAYOUT(offsetof(VqsPolicyV2, name) == 4);
VQS_LAYOUT(offsetof(VqsPolicyV2, description) == 132);
VQS_LAYOUT(offsetof(VqsPolicyV2, flag0) == 164);
VQS_LAYOUT(offsetof(VqsPolicyV2, id) == 168);
VQS_LAYOUT(offsetof(VqsPolicyV2, param0) == 172);
VQS_LAYOUT(offsetof(VqsPolicyV2, flag1) == 176);
VQS_LAYOUT(offsetof(VqsPolicyV2, flag2) == 177);
VQS_LAYOUT(offsetof(VqsPolicyV2, param1) == 180);
VQS_LAYOUT(offsetof(VqsPolicyV2, param2) == 184);
VQS_LAYOUT(offsetof(VqsPolicyV2, conditionCount) == 188);
VQS_LAYOUT(offsetof(VqsPolicyV2, actionCount) == 192);
VQS_LAYOUT(offsetof(VqsPolicyV2, textCount) == 196);
VQS_LAYOUT(offsetof(VqsPolicyV2, reserved2) == 200);
VQS_LAYOUT(offsetof(VqsPolicyV2, conditions) == 208);
VQS_LAYOUT(offsetof(VqsPolicyV2, texts) == 448);
VQS_LAYOUT(offsetof(VqsPolicyV2, actions) == 3020);

VQS_LAYOUT(sizeof(VqsVersionedPolicy) == 3920);
VQS_LAYOUT(offsetof(VqsVersionedPolicy, structureVersion) == 0);
VQS_LAYOUT(offsetof(VqsVersionedPolicy, policy) == 4);

VQS_LAYOUT(sizeof(VqsPolicyListV2) == 16);
VQS_LAYOUT(offsetof(VqsPolicyListV2, structureVersion) == 0);
VQS_LAYOUT(offsetof(VqsPolicyListV2, count) == 4);
VQS_LAYOUT(offsetof(VqsPolicyListV2, size) == 8);

VQS_LAYOUT(sizeof(VqsPolicyStatus) == 80);
VQS_LAYOUT(offsetof(VqsPolicyStatus, name) == 4);
VQS_LAYOUT(offsetof(VqsPolicyStatus, statusValue) == 68);
VQS_LAYOUT(offsetof(VqsPolicyStatus, statusFlagA) == 72);
VQS_LAYOUT(offsetof(VqsPolicyStatus, statusFlagB) == 73);
VQS_LAYOUT(offsetof(VqsPolicyStatus, statusValue2) == 76);

#endif
