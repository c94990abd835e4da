/* SPDX-License-Identifier: Apache-2.0 */
/* What a program without the library may use: results, constants and records, in C and C++, for any width of pointers.
 */
#include <vqs/catalogue_records.h>
#include <vqs/features_records.h>
#include <vqs/platform_records.h>
#include <vqs/policy_binary_records.h>
#include <vqs/policy_records.h>
#include <vqs/session_records.h>
#include <vqs/status.h>
#include <vqs/telemetry_records.h>

#if defined(VQS_TEXT) != EXPECT_TEXT
#error "VQS_TEXT is there where it should not be, or the other way round"
#endif

#if defined(VQS_TEXT)
#define WORD "policy"
VQS_LAYOUT(sizeof(VQS_TEXT("policy")) == 14);
VQS_LAYOUT(sizeof(VQS_TEXT(WORD)) == 14);

const VqsChar16* literal(void);
const VqsChar16* literal(void) { return VQS_TEXT("policy"); }

const VqsPolicyTextV2* wideText(void);
const VqsPolicyTextV2* wideText(void) {
  static const VqsPolicyTextV2 text = {VQS_TEXT("a.exe"), VQS_POLICY_MAX_TEXT_FLAG, 0};
  return &text;
}
#endif

/* Sizes that a caller reserves room by. */
VQS_LAYOUT(sizeof(QtfOptionInfo) == VQS_OPTION_TEXT_SIZE + 4);
VQS_LAYOUT(sizeof(VqsBatteryLimits) == 8 && sizeof(VqsTaskbarIcon) == 8 && sizeof(VqsAppOutputs) == 8);
VQS_LAYOUT(sizeof(VqsPolicyBinary) + 2 * sizeof(VqsPolicyV2) == 200 + 2 * 3916);

/* Every constant fits where it is used, without a warning. */
uint32_t constants(void);
uint32_t constants(void) {
  uint32_t words[16];
  const int32_t signedIndex = VQS_APP_INPUT_A + VQS_APP_INPUT_B + VQS_TABLE_READ_4;
  words[0] = VQS_WAIT_FOREVER;
  words[1] = VQS_VALUE_UNBOUNDED;
  words[2] = VQS_STRUCTURE_VERSION_2;
  words[3] = VQS_POLICY_MAX_OPERATOR;
  words[4] = VQS_DRIVER_RESULT_TAKEN;
  words[5] = VQS_DRIVER_RESULT_REQUEST_FAILED;
  words[6] = VQS_SE1_SET;
  words[7] = VQS_VALUE_REGISTRY;
  words[8] = VQS_LOG_KEY_END;
  words[9] = VQS_EVENTS - 1;
  words[10] = VQS_FEATURES - 1;
  words[11] = VQS_DYNAMIC_POLICY_MAX_SIZE;
  words[12] = VQS_OEM_ID_SIZE;
  words[13] = VQS_POLICY_BINARY_MAX_POLICIES;
  words[14] = VQS_CATALOGUE_NAME_SIZE + VQS_CATALOGUE_UNITS_SIZE;
  words[15] = VQS_POLICY_STATUS_NAME_SIZE;
  return words[signedIndex % 16];
}

uint32_t fileMinor(const VqsVersion* version);
uint32_t fileMinor(const VqsVersion* version) { return version->numbers.fileMinor; }

uint32_t packedMinor(uint32_t version);
uint32_t packedMinor(uint32_t version) { return version >> VQS_DLL_VERSION_FILE_MINOR_SHIFT & 0xFF; }

int isEnd(const VqsLogRecordHead* head);
int isEnd(const VqsLogRecordHead* head) { return head->KeyId == VQS_LOG_KEY_END; }

const char* describe(vqsStatus status);
const char* describe(vqsStatus status) { return status == VQS_SUCCESS ? "" : vqsStatusText(status); }
