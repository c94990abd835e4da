// SPDX-License-Identifier: Apache-2.0
#include "bench/harness/scratch_folder.h"

#include <cstdlib>
#include <system_error>

#include "bench/harness/require.h"

namespace bench {

ScratchFolder::ScratchFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "vqs-bench-XXXXXX").string();
  require(mkdtemp(name.data()) != nullptr, "a folder for the run's files");
  folder_ = name;
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

}  // namespace bench
