/* SPDX-License-Identifier: Apache-2.0 */
/* Opens a session, tells the versions of the library, the driver and its logs, and which features there are. */
#include <inttypes.h>
#include <stdio.h>

#include "vqs/vqs.h"

enum { FEATURES = 9 };

/* The words are the product's major number, the file's second number, and its fourth before its third. */
static void printVersion(const char* of, vqsStatus status, const uint32_t words[4]) {
  if (status != VQS_SUCCESS)
    printf("%-12s unknown\n", of);
  else
    printf("%-12s %" PRIu32 ".%" PRIu32 ".%" PRIu32 ".%" PRIu32 "\n", of, words[0], words[1], words[3], words[2]);
}

static void printLogVersion(QtfSession* session) {
  uint32_t version = 0;
  if (vqsGetQTFLogVersion(session, &version) == VQS_SUCCESS) printf("%-12s %" PRIu32 "\n", "log", version);
}

static void printFeatures(QtfSession* session) {
  for (int32_t index = 0; index < FEATURES; ++index) {
    VqsFeatureStatus status;
    if (vqsQueryFeatureStatus(session, index, &status) != VQS_SUCCESS) continue;
    printf("feature %" PRId32 "    %s, %s\n", index, status.flagA != 0 ? "supported" : "not supported",
           status.flagB != 0 ? "active" : "not active");
  }
}

int main(void) {
  uint32_t words[4];
  QtfSession* session = NULL;
  vqsStatus status;

  /* Versions come from files and need no session. */
  status = vqsGetVersion(words);
  printVersion("library", status, words);
  status = vqsGetDriverVersion(words);
  printVersion("driver", status, words);

  status = vqsInitialize(&session);
  if (status != VQS_SUCCESS) {
    fprintf(stderr, "the session cannot be opened: %s\n",
            status == VQS_DRIVER_NOT_FOUND ? "the driver is not loaded" : "the driver does not answer");
    return 1;
  }
  printLogVersion(session);
  printFeatures(session);
  return vqsUninitialize(session) == VQS_SUCCESS ? 0 : 1;
}
