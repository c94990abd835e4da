/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_PLATFORM_RECORDS_H
#define VQS_PLATFORM_RECORDS_H

#include "base.h"

/*
 * The library passes the words of these records on without using them: the driver gives them their meaning. The records
 * of outputs are a convenience: a caller may pass the addresses of their members, or of any variables.
 */

/** Indexes of the application inputs. */
enum { VQS_APP_INPUT_A = 1, VQS_APP_INPUT_B = 2 };

/** Both application outputs: for vqsGetAppOutput. */
typedef struct VqsAppOutputs {
  uint32_t valueA;
  uint32_t valueB;
} VqsAppOutputs;

/** How long a waiting function waits when no time is to end it. */
#define VQS_WAIT_FOREVER 0xFFFFFFFFU

/** The taskbar icon's state: for vqsGetTaskbarIcon. */
typedef struct VqsTaskbarIcon {
  uint32_t first;
  uint32_t second;
} VqsTaskbarIcon;

/** What vqsProgramSE1 takes for each of its flags. */
enum { VQS_SE1_CLEAR = 0, VQS_SE1_SET = 1 };

/** A key's overridden value, as the driver answers it. */
typedef struct VqsOverrideValue {
  uint8_t data[8];
} VqsOverrideValue;

/** A key's description, as the driver answers it. */
typedef struct VqsOverrideMetadata {
  uint8_t data[52];
} VqsOverrideMetadata;

/** A simulated sensor update, passed to the driver as it is. */
typedef struct VqsSensorUpdate {
  uint8_t data[16];
} VqsSensorUpdate;

/** The driver's sensor block. */
typedef struct VqsSensorData {
  uint8_t data[64];
} VqsSensorData;

/** Bytes of the platform's OEM identifier, the NUL included. */
enum { VQS_OEM_ID_SIZE = 7 };

/** The battery's limits: for vqsGetBatteryLimits. */
typedef struct VqsBatteryLimits {
  uint16_t first;
  uint16_t second;
  uint16_t third;
  uint16_t fourth;
} VqsBatteryLimits;

/** Number of the driver's events; their indexes are 0 to VQS_EVENTS - 1. */
enum { VQS_EVENTS = 7 };

/** Most bytes of a dynamic policy. */
enum { VQS_DYNAMIC_POLICY_MAX_SIZE = 307200 };

/** The two words with which the driver answers about its policy binary: results of loading it, or its version. */
typedef struct VqsPolicyBinaryWords {
  uint32_t first;
  uint32_t second;
} VqsPolicyBinaryWords;

VQS_LAYOUT(sizeof(VqsAppOutputs) == 8);
VQS_LAYOUT(offsetof(VqsAppOutputs, valueA) == 0);
VQS_LAYOUT(offsetof(VqsAppOutputs, valueB) == 4);

VQS_LAYOUT(sizeof(VqsTaskbarIcon) == 8);
VQS_LAYOUT(offsetof(VqsTaskbarIcon, first) == 0);
VQS_LAYOUT(offsetof(VqsTaskbarIcon, second) == 4);

VQS_LAYOUT(sizeof(VqsOverrideValue) == 8);
VQS_LAYOUT(sizeof(VqsOverrideMetadata) == 52);
VQS_LAYOUT(sizeof(VqsSensorUpdate) == 16);
VQS_LAYOUT(sizeof(VqsSensorData) == 64);

VQS_LAYOUT(sizeof(VqsBatteryLimits) == 8);
VQS_LAYOUT(offsetof(VqsBatteryLimits, first) == 0);
VQS_LAYOUT(offsetof(VqsBatteryLimits, second) == 2);
VQS_LAYOUT(offsetof(VqsBatteryLimits, third) == 4);
VQS_LAYOUT(offsetof(VqsBatteryLimits, fourth) == 6);

VQS_LAYOUT(sizeof(VqsPolicyBinaryWords) == 8);
VQS_LAYOUT(offsetof(VqsPolicyBinaryWords, first) == 0);
VQS_LAYOUT(offsetof(VqsPolicyBinaryWords, second) == 4);

#endif
