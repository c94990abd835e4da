/* SPDX-License-Identifier: Apache-2.0 */
#include <dlfcn.h>
#include <errno.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <vqs/vqs.h>

/*
 * A client that loads the library and opens a session while memory runs out: exhausted_client LIBRARY NTH once|from.
 * Its nth allocation fails, the dynamic linker's counted too, or all from then on. It ends with 77 when it had no nth.
 */

/* The C library's own names of what this program puts in their places. */
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* memory, size_t size);

static int isCounting = 0;
static int allocations = 0;
static int firstToFail = 0;
static int lastToFail = 0;

static int fails(void) {
  if (!isCounting) return 0;
  ++allocations;
  if (allocations < firstToFail || allocations > lastToFail) return 0;
  errno = ENOMEM;
  return 1;
}

void* malloc(size_t size) { return fails() ? NULL : __libc_malloc(size); }
void* calloc(size_t count, size_t size) { return fails() ? NULL : __libc_calloc(count, size); }
void* realloc(void* memory, size_t size) { return fails() ? NULL : __libc_realloc(memory, size); }

static void demand(int holds, const char* what) {
  if (holds) return;
  isCounting = 0;
  fprintf(stderr, "it does not hold that %s\n", what);
  exit(9);
}

typedef vqsStatus(VQS_CALL* Initialize)(QtfSession** session);
typedef vqsStatus(VQS_CALL* Uninitialize)(QtfSession* session);
typedef vqsStatus(VQS_CALL* SetAppInputs)(QtfSession* session, uint32_t valueA, uint32_t valueB);

/* With memory there again: whoever has a session has the driver. */
static void demandRequests(void* library, QtfSession* session) {
  const int wasCounting = isCounting;
  isCounting = 0;
  demand(((SetAppInputs)dlsym(library, "vqsSetAppInputs"))(session, 1, 2) == VQS_SUCCESS, "the driver is there");
  isCounting = wasCounting;
}

static vqsStatus openAndClose(void* library) {
  QtfSession* session = NULL;
  const vqsStatus result = ((Initialize)dlsym(library, "vqsInitialize"))(&session);
  if (result != VQS_SUCCESS) return result;
  demandRequests(library, session);
  demand(((Uninitialize)dlsym(library, "vqsUninitialize"))(session) == VQS_SUCCESS, "the session closes");
  return VQS_SUCCESS;
}

static int isOneOf(vqsStatus result, vqsStatus first, vqsStatus second, vqsStatus third) {
  return result == VQS_SUCCESS || result == first || result == second || result == third;
}

int main(int count, char** words) {
  demand(count == 4, "there are three words");
  firstToFail = atoi(words[2]);
  lastToFail = strcmp(words[3], "from") == 0 ? INT_MAX : firstToFail;
  isCounting = 1;
  void* library = dlopen(words[1], RTLD_NOW);
  const vqsStatus result = library != NULL ? openAndClose(library) : VQS_DRIVER_NOT_FOUND;
  isCounting = 0;
  demand(isOneOf(result, VQS_REQUEST_FAILED, VQS_OUT_OF_MEMORY, VQS_DRIVER_NOT_FOUND), "the failure has its name");
  if (library == NULL) {
    demand(dlerror() != NULL, "the linker says why");
    library = dlopen(words[1], RTLD_NOW);
  }
  /* Memory is there again; a driver that could not be attached is not. */
  demand(library != NULL, "the library loads");
  demand(isOneOf(openAndClose(library), VQS_DRIVER_NOT_FOUND, 0, 0),
         "the driver is there, or the library says it is not");
  return allocations >= firstToFail ? 0 : 77;
}
