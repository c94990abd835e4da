/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_TELEMETRY_RECORDS_H
#define VQS_TELEMETRY_RECORDS_H

#include "base.h"

/** Numbers of keys, and what vqsGetQTFLogKVMetadata_V2 and its Ex form need room for. */
enum { VQS_LOG_KV_KEYS = 228, VQS_LOG_EX_KV_KEYS = 50 };

/** Element types of a key. */
enum {
  /** bytes: text or flags */
  VQS_LOG_ELEMENT_BYTES = 0,
  VQS_LOG_ELEMENT_INT32 = 3,
  VQS_LOG_ELEMENT_BOOL8 = 5,
  VQS_LOG_ELEMENT_UINT16 = 6,
  VQS_LOG_ELEMENT_UINT32 = 7
};

/** The key id behind the last record of a log. */
enum { VQS_LOG_KEY_END = 0 };

/**
 * How a record of a key/value log begins. The value follows it directly, and the next record the value: what the
 * value's elements take, rounded up to a multiple of 4 bytes, with exceptions in the Ex key/value log that its iterator
 * knows.
 */
typedef struct VqsLogRecordHead {
  /** the key, from 1 on, or VQS_LOG_KEY_END */
  uint32_t KeyId;
} VqsLogRecordHead;

VQS_LAYOUT(sizeof(VqsLogRecordHead) == 4);
VQS_LAYOUT(offsetof(VqsLogRecordHead, KeyId) == 0);

#endif
