/* SPDX-License-Identifier: Apache-2.0 */
/*
 * A program on the universal C runtime, which is the library's too: its locale, its handler of invalid parameters and
 * its standard output are the ones that the library uses. Arguments: a folder for files, "-" or the name of a locale
 * whose byte 0xCF is U+041F. Exits with the number of failures.
 */
#include <locale.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>

#include <vqs/vqs.h>

static int failures;

static void expect(int condition, const char* what) {
  if (!condition) {
    fprintf(stderr, "failed: %s\n", what);
    ++failures;
  }
}

/* A session without a driver: its requests come to answerRequest. */
static struct {
  void* handle;
  uint64_t reserved[2];
} stand = {&stand, {0, 0}};
static QtfSession* const session = (QtfSession*)&stand;

static int requests;
static const char* oemId = "";
static int handlerCalls;
static int requestsAtHandler;

static BOOL WINAPI answerRequest(HANDLE handle, DWORD code, void* in, DWORD inLength, void* out, DWORD outLength,
                                 DWORD* returned, OVERLAPPED* overlapped) {
  (void)handle, (void)in, (void)inLength, (void)returned, (void)overlapped;
  ++requests;
  if (code == 0x8022204C && outLength == 32) memcpy(out, oemId, strlen(oemId));
  return TRUE;
}

/* Puts answerRequest in the place where the library finds DeviceIoControl. */
static void becomeTheDriver(void) {
  char* base = (char*)GetModuleHandleW(L"VexoQTFServices.dll");
  const IMAGE_NT_HEADERS64* headers = (const IMAGE_NT_HEADERS64*)(base + ((const IMAGE_DOS_HEADER*)base)->e_lfanew);
  const IMAGE_DATA_DIRECTORY* imports = &headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  const IMAGE_IMPORT_DESCRIPTOR* module = (const IMAGE_IMPORT_DESCRIPTOR*)(base + imports->VirtualAddress);
  void* wanted = (void*)GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "DeviceIoControl");
  int found = 0;
  for (; module->Name != 0; ++module) {
    void** slot = (void**)(base + module->FirstThunk);
    for (; *slot != NULL; ++slot) {
      DWORD before;
      if (*slot != wanted || !VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &before)) continue;
      *slot = (void*)answerRequest;
      ++found;
    }
  }
  expect(found == 1, "the library imports DeviceIoControl");
}

static void noteInvalidParameter(const wchar_t* expression, const wchar_t* function, const wchar_t* file,
                                 unsigned int line, uintptr_t reserved) {
  (void)expression, (void)function, (void)file, (void)line, (void)reserved;
  ++handlerCalls;
  requestsAtHandler = requests;
}

static void expectHandled(vqsStatus status, int calls, int requestsBefore, const char* what) {
  expect(status == VQS_SUCCESS, what);
  expect(handlerCalls == calls && (calls == 0 || requestsAtHandler == requestsBefore), what);
  expect(requests == 1, what);
  handlerCalls = requests = 0;
}

static void askWithAndWithoutHandler(void) {
  char id[7];
  oemId = "VEXOQTF";
  expectHandled(vqsAtstNotifyBiosEvent(session), 0, 0, "without a handler a firmware event goes on");
  expectHandled(vqsAtstNotifyBiosEventV2(session), 0, 0, "and so does one of the second version");
  expectHandled(vqsGetOEMID(session, id), 0, 0, "and an OEM id that is too long");
  expect(id[0] == '\0', "which is empty");

  _set_invalid_parameter_handler(noteInvalidParameter);
  expectHandled(vqsAtstNotifyBiosEvent(session), 1, 0, "the handler is called once before a firmware event");
  expectHandled(vqsAtstNotifyBiosEventV2(session), 1, 0, "and once before one of the second version");
  expectHandled(vqsGetOEMID(session, id), 1, 1, "and once for an OEM id that is too long");
  expect(id[0] == '\0', "which is empty");
  oemId = "VEXOQT";
  expectHandled(vqsGetOEMID(session, id), 0, 0, "but not for one that fits");
  expect(strcmp(id, "VEXOQT") == 0, "which is there");
}

/* Nowhere else: texts that cannot be converted, names without an end, and records without room. */
static void neverRaiseElsewhere(const char* path) {
  VqsPolicyV0 policy;
  uint32_t verdict = 0;
  memset(&policy, 'n', sizeof(policy));
  expect(vqsPbAddPolicy(session, &policy, NULL, &verdict) == VQS_REQUEST_FAILED, "a name without end is refused");
  expect(vqsPbCreateBinary(NULL, &policy, 1, 1, 2, path) == VQS_REQUEST_FAILED, "and not written");
  memset(&policy, 0, sizeof(policy));
  expect(vqsPbIDGetPolicy(session, 1, &policy) == VQS_SUCCESS, "an empty policy is read");
  expect(handlerCalls == 0, "no other call raises the condition");
}

/* The name of the one policy of a file, as the file has it. */
static uint16_t firstUnitOfName(const char* path) {
  uint8_t file[79];
  FILE* stream = fopen(path, "rb");
  size_t read = stream == NULL ? 0 : fread(file, 1, sizeof(file), stream);
  if (stream != NULL) fclose(stream);
  return read < 22 ? 0 : (uint16_t)(file[20] | file[21] << 8);
}

static void writeName(const char* path, unsigned char first) {
  VqsPolicyV0 policy;
  memset(&policy, 0, sizeof(policy));
  policy.name[0] = (char)first;
  policy.conditionCount = 1;
  expect(vqsPbCreateBinary(NULL, &policy, 1, 1, 2, path) == VQS_SUCCESS, "a policy is written");
}

static void useTheLocale(const char* path, const char* name) {
  writeName(path, 0xCF);
  expect(firstUnitOfName(path) == 0x00CF, "in the plain locale a byte is a unit");
  expect(setlocale(LC_ALL, name) != NULL, "the locale is there");
  writeName(path, 0xCF);
  expect(firstUnitOfName(path) == 0x041F, "in the program's locale it is a letter of that locale");
  setlocale(LC_ALL, "C");
  writeName(path, 0xCF);
  expect(firstUnitOfName(path) == 0x00CF, "and back");
}

static void printToTheProgramsOutput(const char* path, const char* outputPath) {
  static const char expected[] = "before File not fully read...\nafter";
  char text[128] = {0};
  VqsPolicyBinary binary;
  uint64_t size = 0;
  FILE* stream = fopen(path, "wb");
  if (stream != NULL) fclose(stream);
  expect(freopen(outputPath, "wb", stdout) != NULL, "the output is redirected");
  /* Not flushed: only the same buffer keeps the order. */
  setvbuf(stdout, NULL, _IOFBF, 4096);
  printf("before ");
  expect(vqsPbReadBinaryV2(session, path, &binary, &size, 2) == VQS_REQUEST_FAILED, "an empty file is refused");
  printf("after");
  fflush(stdout);
  stream = fopen(outputPath, "rb");
  if (stream != NULL) {
    expect(fread(text, 1, sizeof(text) - 1, stream) == sizeof(expected) - 1, "the output has all three");
    fclose(stream);
  }
  expect(strcmp(text, expected) == 0, "the library's message is in the program's output, in its place");
}

int main(int count, char** arguments) {
  char path[260];
  char output[260];
  if (count != 3) return 100;
  snprintf(path, sizeof(path), "%s/policies.bin", arguments[1]);
  snprintf(output, sizeof(output), "%s/output.txt", arguments[1]);
  becomeTheDriver();
  askWithAndWithoutHandler();
  neverRaiseElsewhere(path);
  useTheLocale(path, arguments[2]);
  printToTheProgramsOutput(path, output);
  return failures;
}
