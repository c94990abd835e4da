/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_CATALOGUE_H
#define VQS_CATALOGUE_H

#include "catalogue_records.h" /* IWYU pragma: export */
#include "session.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Catalogues: every condition and action type that a policy may use. They are tables of the library, one for the whole
 * process, handed out by pointer and valid while it is loaded; callers must not free them. Only the two driver flags of
 * each record ever change, and only inside the two calls below, which ask the driver what the platform supports.
 */

/** A condition type. */
typedef struct QtfConditionInfo {
  /** the conditionId of policies; equals the record's index */
  uint32_t Id;
  /** 1: available, 0: not; the low byte is the driver's first flag */
  uint32_t Enabled;
  /** kind of value, VQS_VALUE_ where it has a name */
  uint32_t Type;
  /** bit n, 0 to VQS_POLICY_MAX_OPERATOR: the comparison op n may be applied */
  uint32_t OperatorMask;
  /** lowest value; signed when Type is VQS_VALUE_SIGNED */
  uint32_t MinValue;
  /** highest value, likewise, or VQS_VALUE_UNBOUNDED */
  uint32_t MaxValue;
  /** empty when the value has no unit */
  char Units[VQS_CATALOGUE_UNITS_SIZE];
  char Name[VQS_CATALOGUE_NAME_SIZE];
  uint32_t OptionCount;
  /** OptionCount records, or null */
  const QtfOptionInfo* Options;
  uint32_t Attr1;
  /** the driver's second flag */
  uint32_t DriverFlag;
  uint32_t Attr2;
  uint32_t Attr3;
  uint32_t Attr4;
  uint8_t reserved0[180];
} QtfConditionInfo;

/**
 * An action type. The driver's second flag stands before Attr1 here, and behind it in QtfConditionInfo
 * (compatibility.md: flag-places).
 */
typedef struct QtfActionInfo {
  /** the actionId of policies; equals the record's index */
  uint32_t Id;
  /** 1: available, 0: not; the low byte is the driver's first flag */
  uint32_t Enabled;
  /** kind of value, VQS_VALUE_ where it has a name */
  uint32_t Type;
  uint32_t MinValue;
  /** highest value, or VQS_VALUE_UNBOUNDED */
  uint32_t MaxValue;
  /** empty when the value has no unit */
  char Units[VQS_CATALOGUE_UNITS_SIZE];
  char Name[VQS_CATALOGUE_NAME_SIZE];
  uint32_t OptionCount;
  uint32_t reserved0;
  /** OptionCount records, or null */
  const QtfOptionInfo* Options;
  /** the driver's second flag */
  uint32_t DriverFlag;
  uint32_t Attr1;
  uint8_t reserved1[184];
} QtfActionInfo;

/**
 * Hands out the condition types, marked with what the driver supports. When the driver does not answer, or memory for
 * its answer runs out, the flags stay as they were. Flags beyond the catalogue are dropped.
 *
 * @param[in]  session  an open session
 * @param[out] table    receives the address of the first record
 * @param[out] count    receives VQS_CONDITION_TYPES
 * @retval VQS_SUCCESS            always, for arguments that are there
 * @retval VQS_INVALID_PARAMETER  the session rule; table or count is null
 * @note Threads: as the driver allows, with shared flags.
 */
VQS_API vqsStatus VQS_CALL vqsPbGetConditions(QtfSession* session, const QtfConditionInfo** table, uint32_t* count);

/**
 * As vqsPbGetConditions, for the action types, of which there are VQS_ACTION_TYPES; the session is not checked. With a
 * null one nothing is sent and the flags stay as they were.
 *
 * @note Threads: as the driver allows, with shared flags.
 */
VQS_API vqsStatus VQS_CALL vqsPbGetActions(QtfSession* session, const QtfActionInfo** table, uint32_t* count);

VQS_LAYOUT(sizeof(QtfConditionInfo) == 312);
VQS_LAYOUT(offsetof(QtfConditionInfo, Id) == 0);
VQS_LAYOUT(offsetof(QtfConditionInfo, Enabled) == 4);
VQS_LAYOUT(offsetof(QtfConditionInfo, Type) == 8);
VQS_LAYOUT(offsetof(QtfConditionInfo, OperatorMask) == 12);
VQS_LAYOUT(offsetof(QtfConditionInfo, MinValue) == 16);
VQS_LAYOUT(offsetof(QtfConditionInfo, MaxValue) == 20);
VQS_LAYOUT(offsetof(QtfConditionInfo, Units) == 24);
VQS_LAYOUT(offsetof(QtfConditionInfo, Name) == 36);
VQS_LAYOUT(offsetof(QtfConditionInfo, OptionCount) == 100);
VQS_LAYOUT(offsetof(QtfConditionInfo, Options) == 104);
VQS_LAYOUT(offsetof(QtfConditionInfo, Attr1) == 112);
VQS_LAYOUT(offsetof(QtfConditionInfo, DriverFlag) == 116);
VQS_LAYOUT(offsetof(QtfConditionInfo, Attr2) == 120);
VQS_LAYOUT(offsetof(QtfConditionInfo, Attr3) == 124);
VQS_LAYOUT(offsetof(QtfConditionInfo, Attr4) == 128);
VQS_LAYOUT(offsetof(QtfConditionInfo, reserved0) == 132);

VQS_LAYOUT(sizeof(QtfActionInfo) == 304);
VQS_LAYOUT(offsetof(QtfActionInfo, Id) == 0);
VQS_LAYOUT(offsetof(QtfActionInfo, Enabled) == 4);
VQS_LAYOUT(offsetof(QtfActionInfo, Type) == 8);
VQS_LAYOUT(offsetof(QtfActionInfo, MinValue) == 12);
VQS_LAYOUT(offsetof(QtfActionInfo, MaxValue) == 16);
VQS_LAYOUT(offsetof(QtfActionInfo, Units) == 20);
VQS_LAYOUT(offsetof(QtfActionInfo, Name) == 32);
VQS_LAYOUT(offsetof(QtfActionInfo, OptionCount) == 96);
VQS_LAYOUT(offsetof(QtfActionInfo, reserved0) == 100);
VQS_LAYOUT(offsetof(QtfActionInfo, Options) == 104);
VQS_LAYOUT(offsetof(QtfActionInfo, DriverFlag) == 112);
VQS_LAYOUT(offsetof(QtfActionInfo, Attr1) == 116);
VQS_LAYOUT(offsetof(QtfActionInfo, reserved1) == 120);

#ifdef __cplusplus
}
#endif

#endif
