// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/runtime.h"

#include "simulator/device/clock.h"
#include "simulator/device/kernel.h"

namespace {

/// What the system looks for in an image whose stack cookie it may choose.
constexpr ULONG_PTR kDefaultCookie = 0x00002B992DDFA232;
/// A text that is copied beyond its place ends with a zero, and so cannot bring the two highest bytes along.
constexpr ULONG_PTR kCookieBits = 0x0000FFFFFFFFFFFF;
constexpr ULONG kDriverOverranStackBuffer = 0xF7;

/// The first fields of the system's record of what a linker tells about an image.
struct LoadConfig {
  ULONG size;
  UCHAR reserved0[84];
  const void* securityCookie;
  UCHAR reserved1[16];
};
static_assert(sizeof(LoadConfig) == 0x70);
static_assert(offsetof(LoadConfig, securityCookie) == 0x58);

/// Every bit of the result depends on every bit of the number.
ULONG_PTR mix(ULONG_PTR number) {
  number = (number ^ (number >> 30)) * 0xBF58476D1CE4E5B9;
  number = (number ^ (number >> 27)) * 0x94D049BB133111EB;
  return number ^ (number >> 31);
}

}  // namespace

/// What compiled code refers to and the kernel does not have.
extern "C" {

[[noreturn]] void __cxa_pure_virtual() { __builtin_trap(); }

/// Stands between the variables of a function and its return address.
ULONG_PTR __stack_chk_guard = kDefaultCookie;

[[noreturn]] void __stack_chk_fail() {
  KeBugCheckEx(kDriverOverranStackBuffer, 0, __stack_chk_guard, ~__stack_chk_guard, 0);
  __builtin_unreachable();
}

/// By this, Windows chooses the cookie before it calls the driver for the first time.
extern const LoadConfig _load_config_used;
[[gnu::used]] const LoadConfig _load_config_used = {
    .size = sizeof(LoadConfig), .reserved0 = {}, .securityCookie = &__stack_chk_guard, .reserved1 = {}};

}  // extern "C"

namespace device::runtime {

/// For systems that have not chosen one, from what nobody knows beforehand: when this runs, and where everything lies.
VQS_LOAD_CODE [[clang::no_stack_protector]] void chooseStackCookie() {
  if (__stack_chk_guard != kDefaultCookie) return;
  ULONG_PTR cookie = mix(clock::now()) ^ reinterpret_cast<ULONG_PTR>(&cookie);
  cookie = mix(cookie ^ __builtin_ia32_rdtsc() ^ reinterpret_cast<ULONG_PTR>(&__stack_chk_guard));
  __stack_chk_guard = cookie & kCookieBits;
}

}  // namespace device::runtime
