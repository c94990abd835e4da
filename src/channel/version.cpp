// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdint>

#include <vqs/session.h>
#include "src/channel/windows_api.h"
#include "src/channel/work_buffer.h"

namespace vqs {
namespace {

constexpr std::uint32_t high(DWORD word) { return word >> 16; }
constexpr std::uint32_t low(DWORD word) { return word & 0xFFFF; }

/// Reads a file's version into four words: the product's first number, the file's second, and the file's fourth number
/// before its third. Clients rely on this order (compatibility.md: version-words).
vqsStatus QtfFileVersionWords(const char* name, uint32_t* words) {
  DWORD unused = 0;
  const DWORD size = GetFileVersionInfoSizeA(name, &unused);
  if (size == 0) return VQS_REQUEST_FAILED;
  const RuntimeBuffer resource{size};
  if (!resource) return VQS_REQUEST_FAILED;
  if (!GetFileVersionInfoA(name, 0, size, resource.bytes().data())) return VQS_REQUEST_FAILED;
  void* value = nullptr;
  UINT length = sizeof(VS_FIXEDFILEINFO);
  if (!VerQueryValueA(resource.bytes().data(), "\\", &value, &length)) return VQS_REQUEST_FAILED;
  if (value == nullptr || length < sizeof(VS_FIXEDFILEINFO)) return VQS_REQUEST_FAILED;

  const auto& info = *static_cast<const VS_FIXEDFILEINFO*>(value);
  words[0] = high(info.dwProductVersionMS);
  words[1] = low(info.dwFileVersionMS);
  words[2] = low(info.dwFileVersionLS);
  words[3] = high(info.dwFileVersionLS);
  return VQS_SUCCESS;
}

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsGetVersion(uint32_t words[4]) {
  if (words == nullptr) return VQS_INVALID_PARAMETER;
  return vqs::QtfFileVersionWords("VexoQTFServices.dll", words);
}

vqsStatus VQS_CALL vqsGetDriverVersion(uint32_t words[4]) {
  if (words == nullptr) return VQS_INVALID_PARAMETER;
  // A failure clears the words here, and leaves them alone in vqsGetVersion (compatibility.md: driver-version-zeros).
  const vqsStatus result = vqs::QtfFileVersionWords("vexoqtf.sys", words);
  if (result != VQS_SUCCESS) std::fill_n(words, 4, 0U);
  return result;
}
