/* SPDX-License-Identifier: Apache-2.0 */
/* Opens a session, tells the versions of the library, the driver and its logs, and which features there are. */
#include <inttypes.h>
#include <stdio.h>

#include <vqs/vqs.h>

static void printVersion(const char* of, vqsStatus status, const VqsVersion* version) {
  const VqsVersionNumbers* numbers = &version->numbers;
  if (status != VQS_SUCCESS)
    printf("%-12s unknown\n", of);
  else
    printf("%-12s %" PRIu32 ".%" PRIu32 ".%" PRIu32 ".%" PRIu32 "\n", of, numbers->productMajor, numbers->fileMinor,
           numbers->fileThird, numbers->fileFourth);
}

static void printLogVersion(QtfSession* session) {
  uint32_t version = 0;
  if (vqsGetQTFLogVersion(session, &version) == VQS_SUCCESS) printf("%-12s %" PRIu32 "\n", "log", version);
}

static void printFeatures(QtfSession* session) {
  for (int32_t index = 0; index < VQS_FEATURES; ++index) {
    VqsFeatureStatus status;
    if (vqsQueryFeatureStatus(session, index, &status) != VQS_SUCCESS) continue;
    printf("feature %" PRId32 "    %s, %s\n", index, status.flagA != 0 ? "supported" : "not supported",
           status.flagB != 0 ? "active" : "not active");
  }
}

int main(void) {
  VqsVersion version;
  QtfSession* session = NULL;
  vqsStatus status;

  /* Versions come from files and need no session. */
  status = vqsGetVersion(version.words);
  printVersion("library", status, &version);
  status = vqsGetDriverVersion(version.words);
  printVersion("driver", status, &version);

  status = vqsInitialize(&session);
  if (status != VQS_SUCCESS) {
    fprintf(stderr, "the session cannot be opened: %s\n", vqsStatusText(status));
    return 1;
  }
  printLogVersion(session);
  printFeatures(session);
  return vqsUninitialize(session) == VQS_SUCCESS ? 0 : 1;
}
