/* SPDX-License-Identifier: Apache-2.0 */
/* Without a C runtime: there is no Microsoft runtime to link here. */
#include <vqs/vqs.h>

void use_all(void);
void use(void (*function)(void));

static unsigned int missing;

void use(void (*function)(void)) {
  if (function == NULL) missing++;
}

int start(void) {
  uint32_t words[4] = {9, 9, 9, 9};
  use_all();
  if (missing != 0 || vqsGetVersion(words) != VQS_SUCCESS) return 1;
  return words[0] == 0 && words[1] == 1 && words[2] == 0 && words[3] == 0 ? 42 : 2;
}
