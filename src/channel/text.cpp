// SPDX-License-Identifier: Apache-2.0
#include "src/channel/text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <vqs/policy.h>
#include "format/bytes.h"
#include "src/channel/windows_api.h"

namespace vqs {
namespace {

bool widen(std::span<VqsChar16> destination, const char* text, std::size_t mostBytes) {
  std::size_t converted = 0;
  return mbstowcs_s(&converted, destination.data(), destination.size(), text, mostBytes) == 0;
}

}  // namespace

bool widenTerminated(std::span<VqsChar16> destination, std::span<const char> field) {
  if (unitsBeforeZero(field) == field.size()) {
    errno = ERANGE;
    return false;
  }
  return widen(destination, field.data(), field.size());
}

bool widenField(std::span<VqsChar16> destination, std::span<const char> field) {
  // In a multi-byte locale the conversion counts characters, so only a NUL keeps it inside the field.
  std::array<char, VQS_POLICY_TEXT_SIZE + 1> text{};
  std::ranges::copy(field.first(std::min(field.size(), text.size() - 1)), text.begin());
  return widen(destination, text.data(), text.size() - 1);
}

bool narrowField(std::span<char> destination, std::span<const VqsChar16> field) {
  std::array<VqsChar16, VQS_POLICY_TEXT_UNITS + 1> terminated;
  const VqsChar16* text = field.data();
  if (unitsBeforeZero(field) == field.size()) {
    const auto end = std::ranges::copy(field.first(std::min(field.size(), terminated.size() - 1)), terminated.begin());
    *end.out = 0;
    text = terminated.data();
  }
  std::size_t converted = 0;
  const errno_t result = wcstombs_s(&converted, destination.data(), destination.size(), text, _TRUNCATE);
  return result == 0 || result == STRUNCATE;
}

bool copyBounded(std::span<char> destination, std::span<const char> field) {
  if (unitsBeforeZero(field) >= destination.size()) {
    destination[0] = '\0';
    errno = ERANGE;
    return false;
  }
  return strncpy_s(destination.data(), destination.size(), field.data(), field.size()) == 0;
}

}  // namespace vqs
