/* SPDX-License-Identifier: Apache-2.0 */
/* Calls with the records that stand beside the prototypes, in C and C++. */
#include <vqs/vqs.h>

#if defined(VQS_TEXT) != EXPECT_TEXT
#error "VQS_TEXT is there where it should not be, or the other way round"
#endif

VQS_LAYOUT(sizeof(void*) == 8);

vqsStatus versions(VqsVersion* library, VqsVersion* driver);
vqsStatus versions(VqsVersion* library, VqsVersion* driver) {
  const vqsStatus status = vqsGetVersion(library->words);
  return status != VQS_SUCCESS ? status : vqsGetDriverVersion(driver->words);
}

typedef struct Readings {
  VqsAppOutputs outputs;
  VqsTaskbarIcon icon;
  VqsBatteryLimits limits;
  VqsPolicyBinaryWords words;
  char oemId[VQS_OEM_ID_SIZE];
} Readings;

vqsStatus readings(QtfSession* session, Readings* to);
vqsStatus readings(QtfSession* session, Readings* to) {
  vqsStatus status = vqsGetAppOutput(session, &to->outputs.valueA, &to->outputs.valueB);
  if (status == VQS_SUCCESS) status = vqsGetTaskbarIcon(session, &to->icon.first, &to->icon.second);
  if (status == VQS_SUCCESS) status = vqsExLoadDiskBinary(session, &to->words.first, &to->words.second);
  if (status == VQS_SUCCESS) status = vqsGetOEMID(session, to->oemId);
  if (status != VQS_SUCCESS) return status;
  return vqsGetBatteryLimits(session, &to->limits.first, &to->limits.second, &to->limits.third, &to->limits.fourth);
}

vqsStatus controls(QtfSession* session, void* object, VqsStaticSliderTableV4* table);
vqsStatus controls(QtfSession* session, void* object, VqsStaticSliderTableV4* table) {
  vqsStatus status = vqsSetAppInput(session, VQS_APP_INPUT_B, 1);
  if (status == VQS_SUCCESS) status = vqsProgramSE1(session, VQS_SE1_SET, VQS_SE1_CLEAR);
  if (status == VQS_SUCCESS) status = vqsRegisterEvent(session, VQS_EVENTS - 1, object);
  if (status == VQS_SUCCESS) status = vqsStaticSliderTableControl_V4(session, VQS_TABLE_SET, table);
  return status != VQS_SUCCESS ? status : vqsWaitAppOutput(session, VQS_WAIT_FOREVER);
}

/* The record that an iterator stands on: its value's address lies behind the head. */
const VqsLogRecordHead* currentRecord(const QtfLogKVIter* iterator);
const VqsLogRecordHead* currentRecord(const QtfLogKVIter* iterator) {
  uint32_t key = VQS_LOG_KEY_END;
  uint64_t address = 0;
  if (vqsGetQTFLogKVIterData(iterator, &key, &address) != VQS_SUCCESS) return NULL;
  return (const VqsLogRecordHead*)(uintptr_t)address - 1;
}

int takenInto(QtfSession* session, const VqsPolicyV0* policy);
int takenInto(QtfSession* session, const VqsPolicyV0* policy) {
  uint32_t driverResult = VQS_DRIVER_RESULT_REQUEST_FAILED;
  return vqsPbAddPolicy(session, policy, NULL, &driverResult) == VQS_SUCCESS && driverResult == VQS_DRIVER_RESULT_TAKEN;
}
