// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/log_areas.h"

#include "simulator/device/caller.h"
#include "simulator/device/pool.h"
#include "simulator/device/wine.h"
#include "simulator/device/wine_process.h"

namespace device {
namespace {

constexpr ACCESS_MASK kChangeMemory = 0x0008;

NTSTATUS createSection(std::size_t size, HANDLE* section) {
  OBJECT_ATTRIBUTES attributes;
  InitializeObjectAttributes(&attributes, nullptr, OBJ_KERNEL_HANDLE, nullptr, nullptr);
  LARGE_INTEGER length;
  length.QuadPart = static_cast<LONGLONG>(size);
  return ZwCreateSection(section, SECTION_ALL_ACCESS, &attributes, &length, PAGE_READWRITE, SEC_COMMIT, nullptr);
}

NTSTATUS mapIntoSystem(HANDLE section, void** view, SIZE_T* size) {
  if (wine::isPresent()) return wine::mapIntoSystem(section, view, size);
  void* object = nullptr;
  NTSTATUS status = ObReferenceObjectByHandle(section, SECTION_ALL_ACCESS, nullptr, KernelMode, &object, nullptr);
  if (!NT_SUCCESS(status)) return status;
  status = MmMapViewInSystemSpace(object, view, size);
  ObDereferenceObject(object);
  return status;
}

void unmapFromSystem(void* view) {
  if (wine::isPresent())
    wine::unmapFromSystem(view);
  else
    MmUnmapViewInSystemSpace(view);
}

NTSTATUS mapIntoProcess(HANDLE section, HANDLE process, void** address) {
  if (wine::isPresent()) return wine::mapIntoProcess(section, process, address);
  SIZE_T size = 0;
  return ZwMapViewOfSection(section, process, address, 0, 0, nullptr, &size, ViewUnmap, 0, PAGE_READONLY);
}

void unmapFromProcess(HANDLE process, void* address) {
  if (wine::isPresent())
    wine::unmapFromProcess(process, address);
  else
    ZwUnmapViewOfSection(process, address);
}

}  // namespace

NTSTATUS LogAreas::create(Area& area, std::size_t size) {
  NTSTATUS status = createSection(size, &area.section);
  if (!NT_SUCCESS(status)) return status;
  SIZE_T viewSize = size;
  status = mapIntoSystem(area.section, &area.view, &viewSize);
  if (!NT_SUCCESS(status)) {
    area.view = nullptr;
    destroy(area);
  }
  return status;
}

void LogAreas::destroy(Area& area) {
  if (area.view != nullptr) unmapFromSystem(area.view);
  if (area.section != nullptr) ZwClose(area.section);
  area = {};
}

void LogAreas::destroy(Mapping* mapping) {
  unmapFromProcess(mapping->handle, mapping->address);
  ZwClose(mapping->handle);
  pool::release(pool::Purpose::kLogMapping, mapping);
}

std::span<std::byte> LogAreas::own(simulator::LogKind kind) {
  const auto index = static_cast<std::size_t>(kind);
  const std::size_t size = simulator::kLogAreaSize[index];
  Area& area = areas_[index];
  if (area.view == nullptr && !NT_SUCCESS(create(area, size))) return {};
  return {static_cast<std::byte*>(area.view), size};
}

std::uint64_t LogAreas::map(simulator::LogKind kind) {
  if (own(kind).empty()) return 0;
  auto* const mapping = static_cast<Mapping*>(pool::allocatePaged(pool::Purpose::kLogMapping, sizeof(Mapping)));
  if (mapping == nullptr) return 0;
  mapping->handle = caller::open(kChangeMemory | SYNCHRONIZE);
  if (mapping->handle == nullptr ||
      !NT_SUCCESS(mapIntoProcess(areas_[static_cast<std::size_t>(kind)].section, mapping->handle, &mapping->address))) {
    if (mapping->handle != nullptr) ZwClose(mapping->handle);
    pool::release(pool::Purpose::kLogMapping, mapping);
    return 0;
  }
  mapping->process = reinterpret_cast<std::uint64_t>(PsGetCurrentProcessId());
  mapping->next = mappings_;
  mappings_ = mapping;
  return reinterpret_cast<std::uint64_t>(mapping->address);
}

void LogAreas::unmap(std::uint64_t process, std::uint64_t address) {
  for (Mapping** link = &mappings_; *link != nullptr; link = &(*link)->next) {
    Mapping* const mapping = *link;
    if (mapping->process != process || reinterpret_cast<std::uint64_t>(mapping->address) != address) continue;
    *link = mapping->next;
    destroy(mapping);
    return;
  }
}

void LogAreas::release() {
  while (Mapping* const mapping = mappings_) {
    mappings_ = mapping->next;
    destroy(mapping);
  }
  for (Area& area : areas_) destroy(area);
}

}  // namespace device
