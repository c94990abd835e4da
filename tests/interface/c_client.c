/* SPDX-License-Identifier: Apache-2.0 */
/* A client in plain C: what it needs compiles and links, and a file is read through it. */
#include <stdio.h>
#include <stdlib.h>

#include <vqs/vqs.h>

static int expect(int condition, const char* what) {
  if (!condition) printf("failed: %s\n", what);
  return condition ? 0 : 1;
}

int main(int count, char** arguments) {
  int failures = 0;
  VqsVersion version = {{9, 9, 9, 9}};
  VqsPolicyBinaryV0* summary = NULL;
  vqsStatus status;

  if (count != 2) return 2;
  status = vqsPbReadBinary(NULL, arguments[1], &summary);
  failures += expect(status == VQS_SUCCESS && summary != NULL, "the file is valid");
  if (summary != NULL) {
    failures += expect(summary->binaryVersion1 == 3 && summary->binaryVersion2 == 41, "its versions are 3 and 41");
    failures += expect(summary->policyCount == 16, "it holds 16 policies");
  }
  failures += expect(vqsGetVersion(version.words) == VQS_SUCCESS, "the library's version can be read");
  failures += expect(version.numbers.productMajor == 0 && version.numbers.fileMinor == 1, "it begins with 0.1");
  failures += expect(version.numbers.fileThird == 0 && version.numbers.fileFourth == 0, "it ends with 0.0");
  failures += expect(vqsGetVersion(NULL) == VQS_INVALID_PARAMETER, "a missing output is refused");
  failures += expect(vqsPbCheckStructureSupport(NULL, VQS_STRUCTURE_VERSION_2) == VQS_SUCCESS,
                     "structure version 2 is supported");
#if !defined(_WIN32)
  free(summary);
#endif
  return failures == 0 ? 0 : 1;
}
