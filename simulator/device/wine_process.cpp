// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/wine_process.h"

#include "simulator/device/pool.h"
#include "simulator/device/wine.h"

/// Declared by headers of processes only.
struct MemoryInformation {
  void* base;
  void* allocation;
  ULONG allocationProtection;
  ULONG reserved0;
  SIZE_T size;
  ULONG state;
  ULONG protection;
  ULONG type;
  ULONG reserved1;
};
static_assert(sizeof(MemoryInformation) == 48);

namespace device::wine {
namespace {

using QueryVirtualMemory = NTSTATUS(NTAPI*)(HANDLE process, const void* address, ULONG kind,
                                            MemoryInformation* information, SIZE_T length, SIZE_T* written);

/// One piece of work on a process. It is not freed while its thread may still come back.
struct Work {
  NTSTATUS (*run)(Work& work);
  HANDLE process;
  HANDLE section;
  void* address;
  SIZE_T length;
  NTSTATUS status;
};

NTSTATUS map(Work& work) {
  return ZwMapViewOfSection(work.section, work.process, &work.address, 0, 0, nullptr, &work.length, ViewUnmap, 0,
                            PAGE_READONLY);
}

NTSTATUS unmap(Work& work) { return ZwUnmapViewOfSection(work.process, work.address); }

bool isReadable(const MemoryInformation& memory) {
  return memory.state == MEM_COMMIT && (memory.protection & (PAGE_NOACCESS | PAGE_GUARD)) == 0;
}

/// Wine reads pages that the process itself may not read.
NTSTATUS checkReadable(Work& work) {
  constexpr ULONG kBasicInformation = 0;
  const auto query = kernelFunction<QueryVirtualMemory>(L"ZwQueryVirtualMemory");
  const auto* from = static_cast<const char*>(work.address);
  const char* const end = from + work.length;
  while (from < end) {
    MemoryInformation memory{};
    SIZE_T written = 0;
    const NTSTATUS status = query(work.process, from, kBasicInformation, &memory, sizeof(memory), &written);
    if (!NT_SUCCESS(status)) return status;
    if (!isReadable(memory)) return STATUS_ACCESS_VIOLATION;
    from = static_cast<const char*>(memory.base) + memory.size;
  }
  return STATUS_SUCCESS;
}

void NTAPI runWork(void* context) {
  auto& work = *static_cast<Work*>(context);
  work.status = work.run(work);
  PsTerminateSystemThread(STATUS_SUCCESS);
}

LARGE_INTEGER milliseconds(LONGLONG count) {
  LARGE_INTEGER time;
  time.QuadPart = -10'000 * count;
  return time;
}

bool isOver(HANDLE object, LONGLONG waitMilliseconds) {
  LARGE_INTEGER time = milliseconds(waitMilliseconds);
  return ZwWaitForSingleObject(object, FALSE, &time) == STATUS_SUCCESS;
}

/// False when the process has ended and the thread does not come back.
bool awaitThread(HANDLE thread, HANDLE process) {
  constexpr LONGLONG kPatience = 100;
  while (!isOver(thread, kPatience))
    if (isOver(process, 0) && !isOver(thread, kPatience)) return false;
  return true;
}

/// Carries out a piece of work on a thread of its own. Returns the work's status and copies its results to `wanted`.
NTSTATUS carryOut(Work& wanted) {
  auto* const work = static_cast<Work*>(pool::allocateResident(pool::Purpose::work, sizeof(Work)));
  if (work == nullptr) return STATUS_NO_MEMORY;
  *work = wanted;
  OBJECT_ATTRIBUTES attributes;
  InitializeObjectAttributes(&attributes, nullptr, OBJ_KERNEL_HANDLE, nullptr, nullptr);
  HANDLE thread = nullptr;
  const NTSTATUS status = PsCreateSystemThread(&thread, SYNCHRONIZE, &attributes, nullptr, nullptr, &runWork, work);
  if (!NT_SUCCESS(status)) {
    pool::release(pool::Purpose::work, work);
    return status;
  }
  const bool isDone = awaitThread(thread, wanted.process);
  ZwClose(thread);
  if (!isDone) return STATUS_PROCESS_IS_TERMINATING;
  wanted = *work;
  pool::release(pool::Purpose::work, work);
  return wanted.status;
}

}  // namespace

NTSTATUS mapIntoProcess(HANDLE section, HANDLE process, void** address) {
  Work work{.run = &map, .process = process, .section = section, .address = nullptr, .length = 0, .status = 0};
  const NTSTATUS status = carryOut(work);
  *address = work.address;
  return status;
}

void unmapFromProcess(HANDLE process, void* address) {
  Work work{.run = &unmap, .process = process, .section = nullptr, .address = address, .length = 0, .status = 0};
  carryOut(work);
}

bool readMemory(HANDLE process, const void* from, void* to, SIZE_T length) {
  Work work{.run = &checkReadable,
            .process = process,
            .section = nullptr,
            .address = const_cast<void*>(from),
            .length = length,
            .status = 0};
  return NT_SUCCESS(carryOut(work)) && copyMemory(process, from, to, length);
}

}  // namespace device::wine
