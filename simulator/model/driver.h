// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/policy_component.h"
#include "simulator/model/session_component.h"

namespace simulator {

/// The simulated driver. Its owner provides the memory, 4.8 MB of it, and lets in one call at a time; an object of zero
/// bytes is a fresh driver.
class Driver {
 public:
  /// Carries out one request. `buffer` holds the input, is at least as long as the longer of both lengths, and
  /// receives the answer from its beginning; on failure its content means nothing and nothing has changed.
  Answer control(SessionId session, std::uint32_t code, std::span<std::byte> buffer, std::uint32_t inputLength,
                 std::uint32_t outputLength);

  [[nodiscard]] PolicyComponent& policies() { return policies_; }
  [[nodiscard]] const PolicyComponent& policies() const { return policies_; }

 private:
  PolicyComponent policies_;
  SessionComponent sessions_;
};

}  // namespace simulator
