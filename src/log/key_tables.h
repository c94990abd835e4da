// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include <vqs/telemetry.h>

namespace vqs {

/// What is known of the keys, in the order in which they are handed out.
std::span<const QtfLogKeyInfo, VQS_LOG_KV_KEYS> kvKeys();
std::span<const QtfLogKeyInfo, VQS_LOG_EX_KV_KEYS> exKVKeys();

}  // namespace vqs
