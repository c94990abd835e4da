// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/log_memory.h"

#include <sys/mman.h>

namespace simulator {
namespace {

std::size_t indexOf(LogKind kind) { return static_cast<std::size_t>(kind); }
std::size_t sizeOf(LogKind kind) { return kLogAreaSize[indexOf(kind)]; }

std::byte* mapFile(const Descriptor& file, LogKind kind, int protection) {
  void* view = mmap(nullptr, sizeOf(kind), protection, MAP_SHARED, file.number(), 0);
  return view == MAP_FAILED ? nullptr : static_cast<std::byte*>(view);
}

}  // namespace

LogMemory::~LogMemory() {
  for (std::size_t i = 0; i < kLogKinds; ++i)
    if (areas_[i].view != nullptr) munmap(areas_[i].view, kLogAreaSize[i]);
}

std::span<std::byte> LogMemory::area(LogKind kind) {
  auto& area = areas_[indexOf(kind)];
  if (area.view == nullptr) {
    Descriptor file{memfd_create("vexoqtf log", MFD_CLOEXEC)};
    if (!file || ftruncate(file.number(), static_cast<off_t>(sizeOf(kind))) != 0) return {};
    area.view = mapFile(file, kind, PROT_READ | PROT_WRITE);
    area.file = std::move(file);
  }
  return area.view == nullptr ? std::span<std::byte>{} : std::span{area.view, sizeOf(kind)};
}

std::uint64_t LogMemory::map(LogKind kind) {
  return reinterpret_cast<std::uint64_t>(mapFile(areas_[indexOf(kind)].file, kind, PROT_READ));
}

void LogMemory::unmap(LogKind kind, std::uint64_t address) { munmap(reinterpret_cast<void*>(address), sizeOf(kind)); }

}  // namespace simulator
