// SPDX-License-Identifier: Apache-2.0
#include <vqs/vqs.h>
#include <cstdint>
#include <cstdio>

int main() {
  std::uint32_t words[4] = {9, 9, 9, 9};
  if (vqsGetVersion(words) != VQS_SUCCESS) return 1;
  std::printf("C++: %u.%u.%u.%u\n", words[0], words[1], words[2], words[3]);
  return 0;
}
