// SPDX-License-Identifier: Apache-2.0
#include "tool/system/windows_text.h"

#include <fmt/format.h>

namespace tool::platform {

std::wstring widen(std::string_view utf8) {
  const int size = static_cast<int>(utf8.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string narrow(const std::wstring& wide, UINT codePage, BOOL* lossy) {
  const DWORD flags = lossy != nullptr ? WC_NO_BEST_FIT_CHARS : 0;
  const int size = static_cast<int>(wide.size());
  const int needed = WideCharToMultiByte(codePage, flags, wide.data(), size, nullptr, 0, nullptr, lossy);
  std::string text(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(codePage, flags, wide.data(), size, text.data(), needed, nullptr, lossy);
  return text;
}

std::string systemError(DWORD error) {
  wchar_t text[256] = {};
  FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, text, 256, nullptr);
  std::wstring message = text;
  while (!message.empty() && (message.back() == L'\n' || message.back() == L'\r' || message.back() == L'.'))
    message.pop_back();
  return message.empty() ? fmt::format("error {}", error) : narrow(message, CP_UTF8, nullptr);
}

}  // namespace tool::platform
