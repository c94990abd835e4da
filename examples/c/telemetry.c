/* SPDX-License-Identifier: Apache-2.0 */
/* Walks the key/value log once and prints every key with its value. */
#include <inttypes.h>
#include <stdio.h>
#include <string.h>

#include <vqs/vqs.h>

/* The records do not stand in the order of the ids, so they are put there: a key's is at its id. */
static QtfLogKeyInfo keys[VQS_LOG_KV_KEYS + 1];

static int readKeys(void) {
  static QtfLogKeyInfo records[VQS_LOG_KV_KEYS];
  uint32_t count = VQS_LOG_KV_KEYS;
  if (vqsGetQTFLogKVMetadata_V2(records, &count) != VQS_SUCCESS) return 0;
  for (uint32_t i = 0; i < count; ++i) keys[records[i].KeyId] = records[i];
  return 1;
}

/* The driver writes the log at any time, and values need not be aligned: they are copied out. */
static void printElement(const QtfLogKeyInfo* key, const unsigned char* value, uint32_t index) {
  uint16_t half;
  uint32_t word;
  int32_t number;
  switch (key->ElementType) {
    case VQS_LOG_ELEMENT_UINT16:
      memcpy(&half, value + index * sizeof(half), sizeof(half));
      printf(" %" PRIu16, half);
      break;
    case VQS_LOG_ELEMENT_INT32:
      memcpy(&number, value + index * sizeof(number), sizeof(number));
      printf(" %" PRId32, number);
      break;
    case VQS_LOG_ELEMENT_UINT32:
      memcpy(&word, value + index * sizeof(word), sizeof(word));
      printf(" %" PRIu32, word);
      break;
    default:
      printf(" %u", value[index]);
      break;
  }
}

static void printRecord(uint32_t id, uint64_t address) {
  const unsigned char* value = (const unsigned char*)(uintptr_t)address;
  const QtfLogKeyInfo* key = &keys[id];
  printf("%s:", key->Name);
  if (key->ElementType == VQS_LOG_ELEMENT_BYTES)
    printf(" %.*s", (int)key->ElementCount, (const char*)value);
  else
    for (uint32_t i = 0; i < key->ElementCount; ++i) printElement(key, value, i);
  printf("\n");
}

/* Returns 0 when the log does not end as it should. No key comes twice, so a longer walk is none. */
static int walk(QtfLogKVIter* iterator) {
  uint8_t done = 0;
  for (int records = 0; records <= VQS_LOG_KV_KEYS; ++records) {
    uint32_t id = 0;
    uint64_t address = 0;
    if (vqsDoneQTFLogKVIter(iterator, &done) != VQS_SUCCESS) return 0;
    if (done) return 1;
    if (vqsGetQTFLogKVIterData(iterator, &id, &address) != VQS_SUCCESS) return 0;
    printRecord(id, address);
    if (vqsNextQTFLogKVIter(iterator) != VQS_SUCCESS) return 0;
  }
  return 0;
}

static int showLog(QtfLogKV* log) {
  QtfLogKVIter* iterator = NULL;
  int done;
  if (vqsCreateQTFLogKVIter(log, &iterator) != VQS_SUCCESS) return 0;
  done = walk(iterator);
  vqsDestroyQTFLogKVIter(iterator);
  return done;
}

int main(void) {
  QtfSession* session = NULL;
  QtfLogKV* log = NULL;
  const vqsStatus status = vqsInitialize(&session);
  int done;
  if (status != VQS_SUCCESS) {
    fprintf(stderr, "the session cannot be opened: %s\n", vqsStatusText(status));
    return 1;
  }
  done = readKeys() && vqsStartQTFLogKV(session, &log) == VQS_SUCCESS;
  if (done) {
    done = showLog(log);
    vqsStopQTFLogKV(session, log);
  }
  vqsUninitialize(session);
  return done ? 0 : 1;
}
