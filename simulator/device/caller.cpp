// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/caller.h"

#include <algorithm>

#include "simulator/device/pool.h"
#include "simulator/device/wine.h"
#include "simulator/device/wine_process.h"

namespace device::caller {
namespace {

constexpr ACCESS_MASK kReadMemory = 0x0010;
constexpr ACCESS_MASK kQueryInformation = 0x0400;
constexpr ACCESS_MASK kDuplicateHandles = 0x0040;

/// Where the memory of processes ends on 64-bit Windows.
constexpr std::uint64_t kUserMemoryEnd = 0x7FFFFFFF0000;

bool isUserMemory(std::uint64_t address, std::size_t size) {
  return address < kUserMemoryEnd && size <= kUserMemoryEnd - address;
}

union CopyAddress {
  const void* virtualAddress;
  LARGE_INTEGER physicalAddress;
};

/// MmCopyMemory. Kernels have it since Windows 8.1, and only newer toolchains declare it.
using CopyAnyMemory = NTSTATUS(NTAPI*)(void* to, CopyAddress from, SIZE_T length, ULONG flags, SIZE_T* copied);
constexpr ULONG kVirtualAddress = 2;

/// Copies from an address that may be invalid: MmCopyMemory fails then, or copies less.
bool copy(CopyAnyMemory copyAny, const std::byte* from, std::span<std::byte> resident) {
  SIZE_T copied = 0;
  const NTSTATUS status = copyAny(resident.data(), {.virtualAddress = from}, resident.size(), kVirtualAddress, &copied);
  return NT_SUCCESS(status) && copied == resident.size();
}

/// Copies piece by piece through `resident`, because MmCopyMemory writes to resident memory only.
bool copyThrough(std::span<std::byte> resident, const std::byte* from, std::span<std::byte> destination) {
  const auto copyAny = kernelFunction<CopyAnyMemory>(L"MmCopyMemory");
  if (copyAny == nullptr) return false;
  while (!destination.empty()) {
    const auto piece = resident.first(std::min(resident.size(), destination.size()));
    if (!copy(copyAny, from, piece)) return false;
    std::ranges::copy(piece, destination.begin());
    from += piece.size();
    destination = destination.subspan(piece.size());
  }
  return true;
}

bool readOnWindows(const void* from, std::span<std::byte> destination) {
  constexpr std::size_t kPieceSize = 4096;
  auto* const piece = static_cast<std::byte*>(pool::allocateResident(pool::Purpose::callerCopy, kPieceSize));
  if (piece == nullptr) return false;
  const bool done = copyThrough({piece, kPieceSize}, static_cast<const std::byte*>(from), destination);
  pool::release(pool::Purpose::callerCopy, piece);
  return done;
}

bool readOnWine(const void* from, std::span<std::byte> destination) {
  const HANDLE process = open(kReadMemory | kQueryInformation | SYNCHRONIZE);
  if (process == nullptr) return false;
  const bool done = wine::readMemory(process, from, destination.data(), destination.size());
  ZwClose(process);
  return done;
}

NTSTATUS referenceOnWine(HANDLE handle, PKEVENT* event) {
  const HANDLE process = open(kDuplicateHandles);
  if (process == nullptr) return STATUS_INVALID_HANDLE;
  const NTSTATUS status = wine::referenceEvent(process, handle, event);
  ZwClose(process);
  return status;
}

NTSTATUS referenceOnWindows(HANDLE handle, PKEVENT* event) {
  void* object = nullptr;
  const NTSTATUS status =
      ObReferenceObjectByHandle(handle, EVENT_MODIFY_STATE, eventType(), UserMode, &object, nullptr);
  *event = static_cast<PKEVENT>(object);
  return status;
}

}  // namespace

HANDLE open(ACCESS_MASK access) {
  OBJECT_ATTRIBUTES attributes;
  InitializeObjectAttributes(&attributes, nullptr, OBJ_KERNEL_HANDLE, nullptr, nullptr);
  CLIENT_ID id = {PsGetCurrentProcessId(), nullptr};
  HANDLE process = nullptr;
  return NT_SUCCESS(ZwOpenProcess(&process, access, &attributes, &id)) ? process : nullptr;
}

bool read(std::uint64_t address, std::span<std::byte> destination) {
  if (!isUserMemory(address, destination.size())) return false;
  auto* const from = reinterpret_cast<void*>(address);
  return wine::isPresent() ? readOnWine(from, destination) : readOnWindows(from, destination);
}

PKEVENT referenceEvent(std::uint64_t handle) {
  PKEVENT event = nullptr;
  auto* const object = reinterpret_cast<HANDLE>(handle);
  const NTSTATUS status = wine::isPresent() ? referenceOnWine(object, &event) : referenceOnWindows(object, &event);
  return NT_SUCCESS(status) ? event : nullptr;
}

}  // namespace device::caller
