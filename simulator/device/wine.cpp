// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/wine.h"

#include <ntimage.h>

#include <cstring>

namespace device::wine {
namespace {

using ReadVirtualMemory = NTSTATUS(NTAPI*)(HANDLE process, const void* from, void* to, SIZE_T length, SIZE_T* read);

void* kernelSymbol(const wchar_t* name) {
  UNICODE_STRING text;
  RtlInitUnicodeString(&text, name);
  return MmGetSystemRoutineAddress(&text);
}

template <class T>
T* at(void* image, ULONG offset) {
  return reinterpret_cast<T*>(static_cast<char*>(image) + offset);
}

void* exportOf(void* image, const char* name) {
  constexpr USHORT kExportDirectory = 0;
  ULONG size = 0;
  const auto* directory =
      static_cast<IMAGE_EXPORT_DIRECTORY*>(RtlImageDirectoryEntryToData(image, TRUE, kExportDirectory, &size));
  if (directory == nullptr) return nullptr;
  const auto* names = at<ULONG>(image, directory->AddressOfNames);
  const auto* ordinals = at<USHORT>(image, directory->AddressOfNameOrdinals);
  const auto* functions = at<ULONG>(image, directory->AddressOfFunctions);
  for (ULONG i = 0; i < directory->NumberOfNames; ++i)
    if (strcmp(at<char>(image, names[i]), name) == 0) return at<void>(image, functions[ordinals[i]]);
  return nullptr;
}

/// The process of the drivers holds ntdll too, which can read other processes. The kernel passes on one symbol of it.
ReadVirtualMemory findReadVirtualMemory() {
  void* const inNtdll = kernelSymbol(L"NlsAnsiCodePage");
  void* ntdll = nullptr;
  if (inNtdll == nullptr || RtlPcToFileHeader(inNtdll, &ntdll) == nullptr) return nullptr;
  return reinterpret_cast<ReadVirtualMemory>(exportOf(ntdll, "NtReadVirtualMemory"));
}

}  // namespace

bool isPresent() { return kernelSymbol(L"wine_ntoskrnl_main_loop") != nullptr; }

NTSTATUS mapIntoSystem(HANDLE section, void** address, SIZE_T* size) {
  return ZwMapViewOfSection(section, ZwCurrentProcess(), address, 0, 0, nullptr, size, ViewUnmap, 0, PAGE_READWRITE);
}

void unmapFromSystem(void* address) { ZwUnmapViewOfSection(ZwCurrentProcess(), address); }

bool copyMemory(HANDLE process, const void* from, void* to, SIZE_T length) {
  const ReadVirtualMemory read = findReadVirtualMemory();
  SIZE_T count = 0;
  return read != nullptr && NT_SUCCESS(read(process, from, to, length, &count)) && count == length;
}

NTSTATUS referenceEvent(HANDLE process, HANDLE handle, PKEVENT* event) {
  HANDLE own = nullptr;
  NTSTATUS status = ZwDuplicateObject(process, handle, ZwCurrentProcess(), &own, EVENT_MODIFY_STATE, 0, 0);
  if (!NT_SUCCESS(status)) return status;
  void* object = nullptr;
  status = ObReferenceObjectByHandle(own, EVENT_MODIFY_STATE, eventType(), KernelMode, &object, nullptr);
  ZwClose(own);
  *event = static_cast<PKEVENT>(object);
  return status;
}

}  // namespace device::wine
