// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vqs {

/// Device type 0x8022, buffered transfer, any access.
constexpr std::uint32_t controlCode(std::uint32_t function) { return 0x80220000U + 4 * function; }

inline constexpr std::uint32_t kCodePbModify = controlCode(0x80D);
inline constexpr std::uint32_t kCodePolicyLookup = controlCode(0x810);
inline constexpr std::uint32_t kCodeAsmRead = controlCode(0x814);
inline constexpr std::uint32_t kCodeAsmModify = controlCode(0x815);
inline constexpr std::uint32_t kCodeLog = controlCode(0x816);
inline constexpr std::uint32_t kCodePbRead = controlCode(0x819);
inline constexpr std::uint32_t kCodeAppIo = controlCode(0x81A);
inline constexpr std::uint32_t kCodeBalanceProfileRead = controlCode(0x82A);
inline constexpr std::uint32_t kCodeBalanceProfileModify = controlCode(0x82B);

static_assert(kCodePbModify == 0x80222034);
static_assert(kCodePolicyLookup == 0x80222040);
static_assert(kCodeAsmRead == 0x80222050);
static_assert(kCodeAsmModify == 0x80222054);
static_assert(kCodeLog == 0x80222058);
static_assert(kCodePbRead == 0x80222064);
static_assert(kCodeAppIo == 0x80222068);
static_assert(kCodeBalanceProfileRead == 0x802220A8);
static_assert(kCodeBalanceProfileModify == 0x802220AC);

}  // namespace vqs
