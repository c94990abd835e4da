/* SPDX-License-Identifier: Apache-2.0 */
/* What a program or library tells the loader about itself. mingw-w64 brings no such record, or an older one. */
#include <stddef.h>
#include <stdint.h>

/** The first fields of the system's record; what the image leaves out may be left out. */
typedef struct LoadConfig {
  uint32_t size;
  uint8_t reserved0[74];
  /** where DLLs are loaded from, as flags of LoadLibraryEx */
  uint16_t dependentLoadFlags;
  uint8_t reserved1[32];
  const void* guardCheck;
  const void* guardDispatch;
  const void* guardFunctions;
  uint64_t guardFunctionCount;
  uint32_t guardFlags;
  uint8_t reserved2[12];
  const void* guardImports;
  uint64_t guardImportCount;
  const void* guardJumpTargets;
  uint64_t guardJumpTargetCount;
} LoadConfig;
_Static_assert(sizeof(LoadConfig) == 0xC0, "record layout");
_Static_assert(offsetof(LoadConfig, dependentLoadFlags) == 78, "record layout");
_Static_assert(offsetof(LoadConfig, guardCheck) == 112, "record layout");
_Static_assert(offsetof(LoadConfig, guardFlags) == 144, "record layout");
_Static_assert(offsetof(LoadConfig, guardImports) == 160, "record layout");

enum { kGuardInstrumented = 0x100, kGuardFunctionTable = 0x400, kGuardLongJumpTable = 0x10000 };

/** Where the linker puts its tables; the numbers of their entries are the addresses of the counts. */
extern const char __guard_fids_table[], __guard_fids_count[];
extern const char __guard_iat_table[], __guard_iat_count[];
extern const char __guard_longjmp_table[], __guard_longjmp_count[];

/** What indirect calls do until the system has put its own checks in the place of the two pointers. */
static void check(void) {}
__attribute__((naked)) static void dispatch(void) { __asm__("jmpq *%rax"); }

#define GUARD_POINTER __attribute__((section(".00cfg"), used)) const void* const
GUARD_POINTER __guard_check_icall_fptr = (const void*)check;
GUARD_POINTER __guard_dispatch_icall_fptr = (const void*)dispatch;

__attribute__((used)) const LoadConfig _load_config_used = {
    .size = sizeof(LoadConfig),
    .dependentLoadFlags = VQS_DEPENDENT_LOAD_FLAGS,
    .guardCheck = &__guard_check_icall_fptr,
    .guardDispatch = &__guard_dispatch_icall_fptr,
    .guardFunctions = __guard_fids_table,
    .guardFunctionCount = (uint64_t)__guard_fids_count,
    .guardFlags = kGuardInstrumented | kGuardFunctionTable | kGuardLongJumpTable,
    .guardImports = __guard_iat_table,
    .guardImportCount = (uint64_t)__guard_iat_count,
    .guardJumpTargets = __guard_longjmp_table,
    .guardJumpTargetCount = (uint64_t)__guard_longjmp_count,
};
