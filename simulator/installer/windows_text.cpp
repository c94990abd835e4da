// SPDX-License-Identifier: Apache-2.0
#include "simulator/installer/windows_text.h"

#include <fmt/format.h>
#include <setupapi.h>

namespace setup {
namespace {

std::wstring systemMessage(DWORD code) {
  wchar_t text[512] = {};
  constexpr DWORD kFlags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
  FormatMessageW(kFlags, nullptr, code, 0, text, static_cast<DWORD>(std::size(text)), nullptr);
  std::wstring message = text;
  while (!message.empty() && (message.back() == L' ' || message.back() == L'.')) message.pop_back();
  return message;
}

/// The setup functions' own errors have no text under their own number.
DWORD messageCode(DWORD error) { return static_cast<DWORD>(HRESULT_FROM_SETUPAPI(error)); }

}  // namespace

std::string narrow(const std::wstring& wide) {
  const int size = static_cast<int>(wide.size());
  const int needed = WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, text.data(), needed, nullptr, nullptr);
  return text;
}

std::wstring widen(const std::string& utf8) {
  const int size = static_cast<int>(utf8.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

void fail(const std::string& what, DWORD error) {
  std::wstring reason = systemMessage(error);
  if (reason.empty()) reason = systemMessage(messageCode(error));
  throw Failure{reason.empty() ? fmt::format("{}: error 0x{:08X}", what, error)
                               : fmt::format("{}: {} (0x{:X})", what, narrow(reason), error)};
}

}  // namespace setup
