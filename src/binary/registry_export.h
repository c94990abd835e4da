// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>

#include <vqs/status.h>

namespace vqs {

/// Which registry value an export text sets: the one that holds the policies of this store.
enum class RegistryExportKind : std::uint32_t { kNone = 0, kAsm = 1, kBalanceProfile = 2 };

/// Writes a binary as registry export text to an open stream: VQS_SUCCESS, VQS_REQUEST_FAILED for kNone, or
/// VQS_INVALID_PARAMETER.
vqsStatus writeRegistryExport(std::FILE* stream, std::span<const std::byte> binary, RegistryExportKind kind);

}  // namespace vqs
