/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_CATALOGUE_RECORDS_H
#define VQS_CATALOGUE_RECORDS_H

#include "base.h"

/** Numbers of condition and action types. */
enum { VQS_CONDITION_TYPES = 73, VQS_ACTION_TYPES = 168 };

/** Bytes of the texts, which end in NUL. */
enum { VQS_OPTION_TEXT_SIZE = 32, VQS_CATALOGUE_UNITS_SIZE = 12, VQS_CATALOGUE_NAME_SIZE = 64 };

/** Kinds of value. Others, 0, 5, 8, 12, 14 and 15 of conditions and 10 of actions, are special to few types each. */
enum {
  /** one of the options */
  VQS_VALUE_ENUMERATION = 1,
  /** an unsigned number in a range */
  VQS_VALUE_UNSIGNED = 2,
  /** a signed number in a range */
  VQS_VALUE_SIGNED = 3,
  /** the name of an application; an option, where there is one, is a template for it */
  VQS_VALUE_APPLICATION = 6,
  /** a set of the options' bits */
  VQS_VALUE_BIT_SET = 7,
  /** a test of a registry value; the option is a template for it */
  VQS_VALUE_REGISTRY = 11
};

/** The MaxValue of a range that has no upper bound. */
#define VQS_VALUE_UNBOUNDED 0xFFFFFFFFU

/** A named value. */
typedef struct QtfOptionInfo {
  char Text[VQS_OPTION_TEXT_SIZE];
  /** what a policy stores for this choice */
  int32_t Value;
} QtfOptionInfo;

VQS_LAYOUT(sizeof(QtfOptionInfo) == 36);
VQS_LAYOUT(offsetof(QtfOptionInfo, Text) == 0);
VQS_LAYOUT(offsetof(QtfOptionInfo, Value) == 32);

#endif
