// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/policy_component.h"
#include "simulator/model/request.h"
#include "simulator/model/settings.h"
#include "simulator/model/surroundings.h"

namespace simulator {

/// Version words of the policy binary in force.
BinaryVersion binaryInForce(const BinarySettings& binary);

/// False for a binary that no driver can have in force.
bool isSound(const BinarySettings& binary);

/// Loads policy binaries: from a caller's memory, and those that the driver has.
class BinaryComponent {
 public:
  Answer control(const Context& context, const Request& request);

 private:
  static constexpr std::size_t kLargest = 307200;

  Answer loadDynamic(Surroundings& surroundings, const Request& request, BinarySettings& binary);

  /// What the caller's memory held; it may change while it is looked at.
  std::byte content_[kLargest]{};
};

}  // namespace simulator
