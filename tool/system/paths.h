// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

namespace tool {

/// Text of a path, UTF-8 on every system, and back.
inline std::filesystem::path toPath(const std::string& text) { return std::u8string{text.begin(), text.end()}; }
inline std::string fromPath(const std::filesystem::path& path) {
  const auto text = path.u8string();
  return {text.begin(), text.end()};
}

struct FileCloser {
  void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

}  // namespace tool
