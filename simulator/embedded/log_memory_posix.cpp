// SPDX-License-Identifier: Apache-2.0
#include <sys/mman.h>
#include <unistd.h>

#include "simulator/embedded/log_memory.h"
#include "simulator/embedded/system.h"

namespace simulator {
namespace {

std::size_t indexOf(LogKind kind) { return static_cast<std::size_t>(kind); }
std::size_t sizeOf(LogKind kind) { return kLogAreaSize[indexOf(kind)]; }

std::byte* mapFile(std::intptr_t file, LogKind kind, int protection) {
  void* view = mmap(nullptr, sizeOf(kind), protection, MAP_SHARED, static_cast<int>(file), 0);
  return view == MAP_FAILED ? nullptr : static_cast<std::byte*>(view);
}

}  // namespace

LogMemory::~LogMemory() {
  for (std::size_t i = 0; i < kLogKinds; ++i) release(areas_[i], static_cast<LogKind>(i));
}

void LogMemory::release(Area& area, LogKind kind) {
  if (area.view == nullptr) return;
  munmap(area.view, sizeOf(kind));
  ::close(static_cast<int>(area.memory));
  area = {};
}

std::span<std::byte> LogMemory::area(LogKind kind) {
  Area& area = areas_[indexOf(kind)];
  if (area.process != system::processId()) release(area, kind);
  if (area.view != nullptr) return {area.view, sizeOf(kind)};
  const int file = memfd_create("vexoqtf log", MFD_CLOEXEC);
  if (file == -1) return {};
  const bool hasRoom = ftruncate(file, static_cast<off_t>(sizeOf(kind))) == 0;
  std::byte* const view = hasRoom ? mapFile(file, kind, PROT_READ | PROT_WRITE) : nullptr;
  if (view == nullptr) {
    ::close(file);
    return {};
  }
  area = {.memory = file, .view = view, .process = system::processId()};
  return {view, sizeOf(kind)};
}

std::uint64_t LogMemory::map(LogKind kind) {
  return reinterpret_cast<std::uint64_t>(mapFile(areas_[indexOf(kind)].memory, kind, PROT_READ));
}

void LogMemory::unmap(LogKind kind, std::uint64_t address) { munmap(reinterpret_cast<void*>(address), sizeOf(kind)); }

}  // namespace simulator
