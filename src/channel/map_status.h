// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include <vqs/status.h>

namespace vqs {

/// Folds an internal result into a status: nothing outside the public codes ever leaves an "Ex" export.
vqsStatus mapStatus(std::int32_t result);

/// As mapStatus, for what has a status's type already.
inline vqsStatus folded(vqsStatus status) { return mapStatus(static_cast<std::int32_t>(status)); }

}  // namespace vqs
