// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "vqs/telemetry.h"

namespace vqs {

/// What is known of the keys, in the order in which they are handed out.
std::span<const QtfLogKeyInfo, VQS_LOG_KV_KEYS> kvKeys();
std::span<const QtfLogKeyInfo, VQS_LOG_EX_KV_KEYS> exKVKeys();

/// Bytes of each key's value in the log, by key id; index 0 holds 0.
std::span<const std::int32_t, VQS_LOG_KV_KEYS + 1> kvValueSizes();
std::span<const std::int32_t, VQS_LOG_EX_KV_KEYS + 1> exKVValueSizes();

}  // namespace vqs
