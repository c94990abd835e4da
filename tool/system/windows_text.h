// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace tool::platform {

/// Room for the longest path of all.
constexpr DWORD kLongestPath = 32768;

/// UTF-8 as Windows takes it.
std::wstring widen(std::string_view utf8);

/// In a code page; `lossy` tells whether characters had to be replaced, which UTF-8 never does.
std::string narrow(const std::wstring& wide, UINT codePage = CP_UTF8, BOOL* lossy = nullptr);

/// The system's words for an error.
std::string systemError(DWORD error);

}  // namespace tool::platform
