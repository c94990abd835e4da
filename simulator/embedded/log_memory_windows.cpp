// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include "simulator/embedded/log_memory.h"

namespace simulator {
namespace {

std::size_t indexOf(LogKind kind) { return static_cast<std::size_t>(kind); }
std::size_t sizeOf(LogKind kind) { return kLogAreaSize[indexOf(kind)]; }

std::byte* mapMemory(std::intptr_t memory, DWORD access) {
  return static_cast<std::byte*>(MapViewOfFile(reinterpret_cast<HANDLE>(memory), access, 0, 0, 0));
}

}  // namespace

LogMemory::~LogMemory() {
  for (std::size_t i = 0; i < kLogKinds; ++i) release(areas_[i], static_cast<LogKind>(i));
}

void LogMemory::release(Area& area, LogKind /*kind*/) {
  if (area.view == nullptr) return;
  UnmapViewOfFile(area.view);
  CloseHandle(reinterpret_cast<HANDLE>(area.memory));
  area = {};
}

std::span<std::byte> LogMemory::area(LogKind kind) {
  Area& area = areas_[indexOf(kind)];
  if (area.view != nullptr) return {area.view, sizeOf(kind)};
  const HANDLE memory =
      CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, static_cast<DWORD>(sizeOf(kind)), nullptr);
  if (memory == nullptr) return {};
  const auto name = reinterpret_cast<std::intptr_t>(memory);
  std::byte* const view = mapMemory(name, FILE_MAP_WRITE);
  if (view == nullptr) {
    CloseHandle(memory);
    return {};
  }
  area = {.memory = name, .view = view};
  return {view, sizeOf(kind)};
}

std::uint64_t LogMemory::map(LogKind kind) {
  return reinterpret_cast<std::uint64_t>(mapMemory(areas_[indexOf(kind)].memory, FILE_MAP_READ));
}

void LogMemory::unmap(LogKind /*kind*/, std::uint64_t address) { UnmapViewOfFile(reinterpret_cast<void*>(address)); }

}  // namespace simulator
