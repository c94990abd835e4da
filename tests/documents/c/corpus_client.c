/* SPDX-License-Identifier: Apache-2.0 */
/* Puts every file through every operation: corpus_client FOLDER FILE... writes FOLDER/INDEX-OPERATION. */
#include <stdio.h>
#include <stdlib.h>

#include "documents/c/vqs_documents.h"

typedef struct Bytes {
  unsigned char* data;
  size_t size;
} Bytes;

static void fail(const char* what, const char* path) {
  fprintf(stderr, "corpus_client: %s %s\n", what, path);
  exit(1);
}

static Bytes readFile(const char* path) {
  Bytes bytes = {NULL, 0};
  FILE* file = fopen(path, "rb");
  long size = 0;
  if (file == NULL || fseek(file, 0, SEEK_END) != 0 || (size = ftell(file)) < 0) fail("cannot read", path);
  rewind(file);
  bytes.size = (size_t)size;
  bytes.data = malloc(bytes.size + 1);
  if (bytes.data == NULL || fread(bytes.data, 1, bytes.size, file) != bytes.size) fail("cannot read", path);
  fclose(file);
  return bytes;
}

/* One file a result: the status, the findings, the output as it is. */
static void keep(const char* folder, int index, const char* operation, VqsDocumentsResult* result) {
  char path[4096];
  FILE* file;
  snprintf(path, sizeof path, "%s/%d-%s", folder, index, operation);
  file = fopen(path, "wb");
  if (file == NULL) fail("cannot write", path);
  fprintf(file, "%u\n%s\n", (unsigned)vqsDocumentsStatus(result), vqsDocumentsFindings(result));
  fwrite(vqsDocumentsOutput(result), 1, vqsDocumentsOutputSize(result), file);
  if (fclose(file) != 0) fail("cannot write", path);
  vqsDocumentsRelease(result);
}

static void putThrough(const char* folder, int index, const Bytes* file, const Bytes* before) {
  const VqsDocumentsOptions binary = {2, 1, VQS_DOCUMENTS_BINARY, VQS_DOCUMENTS_UTF8};
  const VqsDocumentsOptions narrow = {1, 0, VQS_DOCUMENTS_REGISTRY_ASM, VQS_DOCUMENTS_UTF8};
  const VqsDocumentsOptions wide = {2, 0, VQS_DOCUMENTS_REGISTRY_BALANCE_PROFILE, VQS_DOCUMENTS_UTF16};
  keep(folder, index, "check", vqsDocumentsCheck(file->data, file->size, NULL));
  keep(folder, index, "binary", vqsDocumentsCompile(file->data, file->size, &binary));
  keep(folder, index, "narrow", vqsDocumentsCompile(file->data, file->size, &narrow));
  keep(folder, index, "wide", vqsDocumentsCompile(file->data, file->size, &wide));
  keep(folder, index, "decompile", vqsDocumentsDecompile(file->data, file->size));
  keep(folder, index, "format", vqsDocumentsFormat(file->data, file->size));
  keep(folder, index, "diff", vqsDocumentsDiff(before->data, before->size, file->data, file->size));
}

int main(int argc, char** argv) {
  Bytes before = {NULL, 0};
  if (argc < 3) fail("needs a folder and", "files");
  keep(argv[1], 0, "schema", vqsDocumentsSchema());
  for (int i = 2; i < argc; ++i) {
    const Bytes file = readFile(argv[i]);
    putThrough(argv[1], i - 1, &file, &before);
    free(before.data);
    before = file;
  }
  free(before.data);
  return 0;
}
