// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include <vqs/status.h>
#include "format/binary/layout.h"
#include "format/policy/packed_policy.h"

namespace vqs {

/// Builds the file in memory and writes it in one piece: VQS_SUCCESS, VQS_REQUEST_FAILED or VQS_INVALID_PARAMETER.
vqsStatus writePolicyBinary(std::span<const PackedPolicy> policies, BinaryVersions versions, const char* path);

}  // namespace vqs
