// SPDX-License-Identifier: Apache-2.0
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>
#include <system_error>

namespace test {

TemporaryFolder::TemporaryFolder() {
  std::random_device random;
  do {
    folder_ = std::filesystem::temp_directory_path() / ("vqs-test-" + std::to_string(random()));
  } while (!std::filesystem::create_directory(folder_));
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

std::string TemporaryFolder::write(std::string_view name, const Bytes& content) const {
  std::ofstream stream{folder_ / name, std::ios::binary};
  stream.write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
  EXPECT_TRUE(stream.good());
  return path(name);
}

Bytes readFile(const std::string& path) {
  std::ifstream stream{path, std::ios::binary};
  EXPECT_TRUE(stream.is_open()) << path;
  const std::string content{std::istreambuf_iterator<char>{stream}, {}};
  return {content.begin(), content.end()};
}

bool fileExists(const std::string& path) { return std::filesystem::exists(path); }

std::string samplePath(std::string_view name) {
  // Under Wine the path lacks its drive, and programs that are started elsewhere would not find it.
  return (std::filesystem::absolute(VQS_SAMPLES) / name).string();
}

Bytes sample(std::string_view name) { return readFile(samplePath(name)); }

}  // namespace test
