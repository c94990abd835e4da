// SPDX-License-Identifier: Apache-2.0
#include <sys/mman.h>
#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>

#include <vqs/vqs.h>
#include "bench/programs/heap.h"

// single_read FILE SIZE: reads a policy binary once, as the first thing that this process asks of the library, into
// SIZE bytes that have been touched before. Prints the nanoseconds that it took, its page faults, its allocations, the
// most bytes of them, and the kilobytes that the process had at most from the buffer on; then the page faults of a
// later read, and the nanoseconds that reading the file and filling the buffer takes without the library.

namespace {

long pageFaults() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt + usage.ru_majflt;
}

/// A figure of this process, in kilobytes.
long kilobytes(const char* name) {
  std::FILE* const status = std::fopen("/proc/self/status", "r");
  char line[256];
  long value = 0;
  while (std::fgets(line, sizeof(line), status) != nullptr)
    if (std::strncmp(line, name, std::strlen(name)) == 0) value = std::atol(line + std::strlen(name));
  std::fclose(status);
  return value;
}

template <class Work>
double nanosecondsOf(const Work& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
}

/// Memory from the system, touched. It is not the allocator's: that one must be as in a process that just began.
std::span<char> touchedMemory(std::size_t size) {
  void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) std::exit(1);
  std::memset(memory, 0xA5, size);
  return {static_cast<char*>(memory), size};
}

void readWithoutTheLibrary(const char* path, std::span<char> memory) {
  std::FILE* const file = std::fopen(path, "rb");
  std::fseek(file, 0, SEEK_END);
  const auto length = static_cast<std::size_t>(std::ftell(file));
  std::fseek(file, 0, SEEK_SET);
  char* const bytes = static_cast<char*>(std::malloc(length));
  if (std::fread(bytes, length, 1, file) != 1) std::exit(1);
  std::fclose(file);
  std::memset(memory.data(), 0, memory.size());
  asm volatile("" : : "r"(memory.data()), "r"(bytes) : "memory");
  std::free(bytes);
}

struct Cost {
  double nanoseconds;
  long pageFaults;
  bench::HeapUse heap;
};

Cost read(QtfSession* session, const char* path, std::span<char> memory) {
  std::uint64_t size = memory.size();
  auto* const head = reinterpret_cast<VqsPolicyBinary*>(memory.data());
  vqsStatus result = VQS_REQUEST_FAILED;
  bench::beginHeapUse();
  const long faultsBefore = pageFaults();
  const double nanoseconds =
      nanosecondsOf([&] { result = vqsPbReadBinaryV2(session, path, head, &size, VQS_STRUCTURE_VERSION_2); });
  const long faults = pageFaults() - faultsBefore;
  if (result != VQS_SUCCESS) std::exit(1);
  return {.nanoseconds = nanoseconds, .pageFaults = faults, .heap = bench::heapUse()};
}

/// Once the heap has its size.
Cost readAgain(QtfSession* session, const char* path, std::span<char> memory) {
  for (int i = 0; i < 3; ++i) read(session, path, memory);
  return read(session, path, memory);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const char* const path = argv[1];
  QtfSession* session = nullptr;
  if (vqsInitialize(&session) != VQS_SUCCESS) return 1;
  const long before = kilobytes("VmRSS:");
  const auto memory = touchedMemory(std::strtoull(argv[2], nullptr, 10));
  // The clock and the counter have been used before, so that their own pages are not counted.
  nanosecondsOf([] { pageFaults(); });
  const Cost first = read(session, path, memory);
  const long peak = kilobytes("VmHWM:") - before;
  const Cost later = readAgain(session, path, memory);
  const double floor = nanosecondsOf([&] { readWithoutTheLibrary(path, memory); });
  std::printf("%.0f %ld %d %zu %ld %ld %.0f\n", first.nanoseconds, first.pageFaults, first.heap.allocations,
              first.heap.peakBytes, peak, later.pageFaults, floor);
  return 0;
}
