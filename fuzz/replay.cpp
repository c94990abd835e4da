// SPDX-License-Identifier: Apache-2.0
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool replay(const std::filesystem::path& path) {
  std::ifstream stream{path, std::ios::binary};
  if (!stream.is_open()) return false;
  const std::vector<char> input{std::istreambuf_iterator<char>{stream}, {}};
  const std::vector<std::uint8_t> bytes{input.begin(), input.end()};
  LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  int replayed = 0;
  for (int i = 1; i < count; ++i) {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator{arguments[i], error}) {
      if (!replay(entry.path())) {
        std::fprintf(stderr, "%s cannot be read\n", entry.path().c_str());
        return 1;
      }
      ++replayed;
    }
    if (error) std::fprintf(stderr, "%s: %s\n", arguments[i], error.message().c_str());
  }
  std::printf("replayed %d inputs\n", replayed);
  return replayed == 0 ? 1 : 0;
}
