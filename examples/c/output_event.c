/* SPDX-License-Identifier: Apache-2.0 */
/*
 * Prints the application outputs whenever they change, until they have not changed for a while:
 *
 *   output_event [MILLISECONDS [INPUT_A INPUT_B]]
 *
 * Inputs, when they are given, are handed to the driver first.
 */
#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>

#include <vqs/vqs.h>

static uint32_t number(int count, char** arguments, int index, uint32_t otherwise) {
  return index < count ? (uint32_t)strtoul(arguments[index], NULL, 0) : otherwise;
}

/* Reading the outputs is what takes note of their change. */
static int printOutputs(QtfSession* session) {
  VqsAppOutputs outputs;
  if (vqsGetAppOutput(session, &outputs.valueA, &outputs.valueB) != VQS_SUCCESS) return 0;
  printf("outputs %" PRIu32 " %" PRIu32 "\n", outputs.valueA, outputs.valueB);
  return 1;
}

static int follow(QtfSession* session, uint32_t milliseconds) {
  for (;;) {
    switch (vqsWaitAppOutput(session, milliseconds)) {
      case VQS_SUCCESS:
        if (!printOutputs(session)) return 0;
        break;
      case VQS_REQUEST_FAILED:
        return 1; /* the time is up */
      default:
        fputs("the driver has no event for its outputs\n", stderr);
        return 0;
    }
  }
}

int main(int count, char** arguments) {
  QtfSession* session = NULL;
  const vqsStatus status = vqsInitialize(&session);
  int done = 1;
  if (status != VQS_SUCCESS) {
    fprintf(stderr, "the session cannot be opened: %s\n", vqsStatusText(status));
    return 1;
  }
  if (count > 3)
    done = vqsSetAppInputs(session, number(count, arguments, 2, 0), number(count, arguments, 3, 0)) == VQS_SUCCESS;
  if (done) done = follow(session, number(count, arguments, 1, 10000));
  vqsUninitialize(session);
  return done ? 0 : 1;
}
