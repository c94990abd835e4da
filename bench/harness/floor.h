// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "bench/harness/comparison.h"
#include "bench/harness/require.h"

namespace bench {

/// A file that is opened, read and closed with the C runtime, as the library does it, into memory touched before.
class WholeFile {
 public:
  explicit WholeFile(std::string path) : path_(std::move(path)), bytes_(lengthOf(path_)) { read(); }

  /// All of its bytes.
  const std::vector<unsigned char>& read() {
    std::FILE* const stream = std::fopen(path_.c_str(), "rb");
    require(stream != nullptr && std::fread(bytes_.data(), bytes_.size(), 1, stream) == 1, "a file that can be read");
    std::fclose(stream);
    return bytes_;
  }

 private:
  static std::size_t lengthOf(const std::string& path) {
    std::FILE* const stream = std::fopen(path.c_str(), "rb");
    require(stream != nullptr && std::fseek(stream, 0, SEEK_END) == 0, "a file");
    const long length = std::ftell(stream);
    std::fclose(stream);
    return static_cast<std::size_t>(length);
  }

  std::string path_;
  std::vector<unsigned char> bytes_;
};

/// What no reader can do without: the file is read, and as many bytes are written as the result has.
class Floor {
 public:
  Floor(std::string path, std::size_t resultSize) : file_(std::move(path)), result_(resultSize, 0xA5) {}

  void operator()() {
    keep(file_.read().data());
    std::memset(result_.data(), 0, result_.size());
    keep(result_.data());
  }

 private:
  WholeFile file_;
  std::vector<unsigned char> result_;
};

}  // namespace bench
