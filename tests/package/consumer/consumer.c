/* SPDX-License-Identifier: Apache-2.0 */
#include <stdio.h>
#include <vqs/vqs.h>

int main(void) {
  uint32_t words[4] = {9, 9, 9, 9};
  if (vqsGetVersion(words) != VQS_SUCCESS) return 1;
  printf("C: %u.%u.%u.%u\n", (unsigned)words[0], (unsigned)words[1], (unsigned)words[2], (unsigned)words[3]);
  return 0;
}
