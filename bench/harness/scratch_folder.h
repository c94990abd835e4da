// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace bench {

/// A folder for the files of one run, removed with everything in it.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(ScratchFolder&&) = delete;

  [[nodiscard]] std::string path(std::string_view name) const { return (folder_ / name).string(); }

 private:
  std::filesystem::path folder_;
};

}  // namespace bench
