// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/wine.h"

#include <ntimage.h>

namespace device::wine {
namespace {

using ReadVirtualMemory = NTSTATUS(NTAPI*)(HANDLE process, const void* from, void* to, SIZE_T length, SIZE_T* read);
using PcToFileHeader = void*(NTAPI*)(void* address, void** image);
using ImageDirectoryEntryToData = void*(NTAPI*)(void* image, BOOLEAN isMapped, USHORT entry, ULONG* size);

template <class T>
T* at(void* image, ULONG offset) {
  return reinterpret_cast<T*>(static_cast<char*>(image) + offset);
}

bool isSame(const char* left, const char* right) {
  while (*left != '\0' && *left == *right) ++left, ++right;
  return *left == *right;
}

void* exportOf(void* image, const char* name) {
  constexpr USHORT kExportDirectory = 0;
  ULONG size = 0;
  const auto find = kernelFunction<ImageDirectoryEntryToData>(L"RtlImageDirectoryEntryToData");
  const auto* directory = static_cast<IMAGE_EXPORT_DIRECTORY*>(find(image, TRUE, kExportDirectory, &size));
  if (directory == nullptr) return nullptr;
  const auto* names = at<ULONG>(image, directory->AddressOfNames);
  const auto* ordinals = at<USHORT>(image, directory->AddressOfNameOrdinals);
  const auto* functions = at<ULONG>(image, directory->AddressOfFunctions);
  for (ULONG i = 0; i < directory->NumberOfNames; ++i)
    if (isSame(at<char>(image, names[i]), name)) return at<void>(image, functions[ordinals[i]]);
  return nullptr;
}

/// The process of the drivers holds ntdll too, which can read other processes. The kernel passes on one symbol of it.
ReadVirtualMemory findReadVirtualMemory() {
  void* const inNtdll = kernelSymbol(L"NlsAnsiCodePage");
  void* ntdll = nullptr;
  const auto find = kernelFunction<PcToFileHeader>(L"RtlPcToFileHeader");
  if (inNtdll == nullptr || find(inNtdll, &ntdll) == nullptr) return nullptr;
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

void setEvent(HANDLE event, bool signalled) {
  using ChangeEvent = NTSTATUS(NTAPI*)(HANDLE event, LONG * previous);
  const auto change = kernelFunction<ChangeEvent>(signalled ? L"ZwSetEvent" : L"ZwResetEvent");
  change(event, nullptr);
}

NTSTATUS referenceEvent(HANDLE process, HANDLE handle, PKEVENT* event) {
  using DuplicateObject = NTSTATUS(NTAPI*)(HANDLE source, HANDLE object, HANDLE target, HANDLE * copy,
                                           ACCESS_MASK access, ULONG attributes, ULONG options);
  const auto duplicate = kernelFunction<DuplicateObject>(L"ZwDuplicateObject");
  HANDLE own = nullptr;
  NTSTATUS status = duplicate(process, handle, ZwCurrentProcess(), &own, EVENT_MODIFY_STATE, 0, 0);
  if (!NT_SUCCESS(status)) return status;
  void* object = nullptr;
  status = ObReferenceObjectByHandle(own, EVENT_MODIFY_STATE, eventType(), KernelMode, &object, nullptr);
  ZwClose(own);
  *event = static_cast<PKEVENT>(object);
  return status;
}

}  // namespace device::wine
