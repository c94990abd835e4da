// SPDX-License-Identifier: Apache-2.0
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <vqs/policy_binary.h>
#include "fuzz/check.h"
#include "src/channel/session_record.h"

namespace {

constexpr std::uint8_t kPoison = 0xA5;

/// A file in memory that has a path.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(memfd_create("input", 0)), path_("/proc/self/fd/" + std::to_string(descriptor_)) {
    check(descriptor_ >= 0);
  }

  void fill(const std::uint8_t* data, std::size_t size) {
    check(ftruncate(descriptor_, 0) == 0);
    check(pwrite(descriptor_, data, size, 0) == static_cast<ssize_t>(size));
  }
  [[nodiscard]] const char* path() const { return path_.c_str(); }

 private:
  int descriptor_;
  std::string path_;
};

struct Answer {
  vqsStatus status;
  std::uint64_t size;
  std::vector<std::uint8_t> buffer;
};

Answer read(const char* path, std::uint32_t structureVersion, std::uint64_t claimed, std::size_t room) {
  QtfSession session{};
  session.handle = &session;
  Answer answer{.status = 0, .size = claimed, .buffer = std::vector<std::uint8_t>(room, kPoison)};
  answer.status = vqsPbReadBinaryV2(&session, path, reinterpret_cast<VqsPolicyBinary*>(answer.buffer.data()),
                                    &answer.size, structureVersion);
  return answer;
}

bool isUntouched(const std::vector<std::uint8_t>& buffer) {
  return std::ranges::all_of(buffer, [](std::uint8_t byte) { return byte == kPoison; });
}

/// True when the read succeeded.
bool readAs(const char* path, std::size_t fileSize, std::uint32_t structureVersion) {
  const auto query = read(path, structureVersion, 0, sizeof(VqsPolicyBinary));
  check(query.status <= VQS_REQUEST_FAILED && isUntouched(query.buffer));
  check((query.status == VQS_SUCCESS) == (query.size != 0));
  if (query.status != VQS_SUCCESS) return false;
  // No file holds more policies than this; one that announces more must be refused before anything is written.
  const bool possible = query.size <= sizeof(VqsPolicyBinary) + (fileSize / 57) * sizeof(VqsPolicyV2);
  const auto answer = read(path, structureVersion, query.size, possible ? query.size : sizeof(VqsPolicyBinary));
  check(answer.size == query.size);
  check(answer.status == VQS_SUCCESS ? possible && structureVersion <= 2 : isUntouched(answer.buffer));
  const auto tooSmall = read(path, structureVersion, query.size - 1, sizeof(VqsPolicyBinary));
  check(tooSmall.status == VQS_REQUEST_FAILED && isUntouched(tooSmall.buffer));
  return answer.status == VQS_SUCCESS;
}

bool readSummary(const char* path) {
  VqsPolicyBinaryV0* summary = nullptr;
  const vqsStatus status = vqsPbReadBinary(nullptr, path, &summary);
  check(status <= VQS_REQUEST_FAILED);
  check((status == VQS_SUCCESS) == (summary != nullptr));
  if (summary == nullptr) return false;
  check(summary->policyCount != 0);
  HeapFree(GetProcessHeap(), 0, summary);
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static MemoryFile file;
  // An empty file is told on standard output each time; the tests cover it.
  if (size == 0) return 0;
  file.fill(data, size);
  const bool valid = readSummary(file.path());
  for (const std::uint32_t version : {0U, 1U, 2U}) check(readAs(file.path(), size, version) == valid);
  check(!readAs(file.path(), size, 7));
  return 0;
}
