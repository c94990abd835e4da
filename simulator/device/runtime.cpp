// SPDX-License-Identifier: Apache-2.0

/// What compiled code refers to and the kernel does not have.
extern "C" [[noreturn]] void __cxa_pure_virtual() { __builtin_trap(); }
