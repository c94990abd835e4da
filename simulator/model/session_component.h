// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/request.h"

namespace simulator {

/// Application inputs and outputs. So far: the announcement of a new session.
class SessionComponent {
 public:
  [[nodiscard]] Answer control(const Request& request) const;
};

}  // namespace simulator
