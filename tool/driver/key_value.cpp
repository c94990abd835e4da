// SPDX-License-Identifier: Apache-2.0
#include "tool/driver/key_value.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <span>

#include "tool/terminal/numbers.h"

namespace tool {
namespace {

std::size_t elementWidth(std::uint32_t type) {
  switch (type) {
    case VQS_LOG_ELEMENT_BYTES:
    case VQS_LOG_ELEMENT_BOOL8:
      return 1;
    case VQS_LOG_ELEMENT_UINT16:
      return 2;
    default:
      return 4;
  }
}

std::int64_t elementAt(std::span<const std::uint8_t> bytes, std::size_t offset, std::uint32_t type) {
  switch (type) {
    case VQS_LOG_ELEMENT_BYTES:
    case VQS_LOG_ELEMENT_BOOL8:
      return bytes[offset];
    case VQS_LOG_ELEMENT_UINT16:
      return numberAt<std::uint16_t>(bytes, offset);
    case VQS_LOG_ELEMENT_INT32:
      return numberAt<std::int32_t>(bytes, offset);
    default:
      return numberAt<std::uint32_t>(bytes, offset);
  }
}

bool isPrintableAscii(std::uint8_t byte) { return byte >= 0x20 && byte < 0x7F; }

/// Fewer equal numbers in a row are written out.
constexpr std::ptrdiff_t kShortestRun = 4;

std::string joinNumbers(const std::vector<std::int64_t>& numbers) {
  std::vector<std::string> parts;
  for (auto first = numbers.begin(); first != numbers.end();) {
    const auto last = std::find_if(first, numbers.end(), [&](std::int64_t number) { return number != *first; });
    const auto length = last - first;
    if (length >= kShortestRun)
      parts.push_back(fmt::format("{}*{}", length, *first));
    else
      parts.insert(parts.end(), static_cast<std::size_t>(length), std::to_string(*first));
    first = last;
  }
  return fmt::format("{}", fmt::join(parts, ","));
}

}  // namespace

KeyValue::KeyValue(const vqs::KeyRow& key, std::uint64_t address)
    : key_{key}, bytes_(key.count * elementWidth(key.type)) {
  std::memcpy(bytes_.data(), reinterpret_cast<const void*>(address), bytes_.size());
}

std::string KeyValue::text() const {
  return key_.type == VQS_LOG_ELEMENT_BYTES ? bytesAsText() : joinNumbers(numbers());
}

nlohmann::ordered_json KeyValue::json() const {
  if (key_.type == VQS_LOG_ELEMENT_BYTES) return bytesAsText();
  const auto all = numbers();
  return all.size() == 1 ? nlohmann::ordered_json(all.front()) : nlohmann::ordered_json(all);
}

std::vector<std::int64_t> KeyValue::numbers() const {
  std::vector<std::int64_t> numbers;
  for (std::size_t offset = 0; offset < bytes_.size(); offset += elementWidth(key_.type))
    numbers.push_back(elementAt(bytes_, offset, key_.type));
  return numbers;
}

std::string KeyValue::bytesAsText() const {
  const auto end = std::ranges::find(bytes_, 0);
  const bool isText = std::all_of(bytes_.begin(), end, isPrintableAscii) &&
                      std::all_of(end, bytes_.end(), [](std::uint8_t byte) { return byte == 0; });
  return isText ? std::string{bytes_.begin(), end} : fmt::format("0x{:02x}", fmt::join(bytes_, ""));
}

}  // namespace tool
