// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ntifs.h>

namespace device {

/// The toolchain's headers promise a pointer to the kernel's variable, and its linker gives the variable itself.
inline POBJECT_TYPE eventType() { return reinterpret_cast<POBJECT_TYPE>(ExEventObjectType); }

/// What the kernel exports by this name, for what not every kernel has: an import of it would keep the driver from
/// being loaded. nullptr where it is missing.
inline void* kernelSymbol(const wchar_t* name) {
  UNICODE_STRING text;
  RtlInitUnicodeString(&text, name);
  return MmGetSystemRoutineAddress(&text);
}

template <class FunctionPointer>
FunctionPointer kernelFunction(const wchar_t* name) {
  return reinterpret_cast<FunctionPointer>(kernelSymbol(name));
}

}  // namespace device
