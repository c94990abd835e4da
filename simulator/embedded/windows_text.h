// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <windows.h>

#include <cstddef>
#include <span>
#include <string_view>

namespace simulator {

/// Text in the system's form, of as many units as there is room for, its end included.
template <std::size_t kRoom>
class WideText {
 public:
  /// From UTF-8; false when it is longer.
  bool assign(const char* text) {
    const int units = MultiByteToWideChar(CP_UTF8, 0, text, -1, text_, static_cast<int>(kRoom));
    length_ = units > 0 ? static_cast<std::size_t>(units) - 1 : 0;
    text_[length_] = L'\0';
    return units > 0;
  }

  [[nodiscard]] const wchar_t* text() const { return text_; }
  [[nodiscard]] std::size_t length() const { return length_; }

 private:
  wchar_t text_[kRoom] = {};
  std::size_t length_ = 0;
};

/// To UTF-8, with an end; false when it is longer than the room for it.
inline bool narrow(std::wstring_view wide, std::span<char> text) {
  const int room = static_cast<int>(text.size()) - 1;
  const int size = wide.empty() ? 0
                                : WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()),
                                                      text.data(), room, nullptr, nullptr);
  text[static_cast<std::size_t>(size)] = '\0';
  return wide.empty() || size > 0;
}

}  // namespace simulator
