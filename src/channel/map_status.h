// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include <vqs/status.h>

namespace vqs {

/// Folds an internal result into a status: nothing outside the public codes ever leaves an "Ex" export.
vqsStatus QtfMapStatus(std::int32_t result);

/// As QtfMapStatus, for what has a status's type already.
inline vqsStatus folded(vqsStatus status) { return QtfMapStatus(static_cast<std::int32_t>(status)); }

}  // namespace vqs
