// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "simulator/embedded/state_file.h"
#include "simulator/embedded/state_layout.h"
#include "simulator/model/driver.h"

namespace simulator {

/// A driver that lives in a state file: whatever it is told is in the file at once, and stays there however its process
/// ends.
class KeptDriver {
 public:
  /// Takes the driver out of a file, which is made if need be. A file of an older format, or without all
  /// of today's blocks, is written anew.
  Reason open(const char* path, std::uint32_t longestWait);
  void close() { file_.close(); }

  /// While it is open.
  [[nodiscard]] Driver& driver() const;

 private:
  Reason openOnce(const char* path, std::uint32_t longestWait, bool& isReplaced);
  Reason enter();
  Reason convert(const char* path, const StateHead& head);

  StateFile file_;
};

}  // namespace simulator
