// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vqs/catalogue_records.h>

// Options that condition and action types have alike.

namespace vqs {

// clang-format off
inline constexpr QtfOptionInfo kActivityBalanceOptions[] = {
    {"LOW", 0},
    {"MED", 1},
    {"HIGH", 2},
};
inline constexpr QtfOptionInfo kAsmLevelOptions[] = {
    {"Level 1", 1},
    {"Level 2", 2},
    {"Level 3", 3},
    {"Level 4", 4},
    {"Level 5", 5},
    {"Level 6", 6},
};
inline constexpr QtfOptionInfo kAsmStateOptions[] = {
    {"Performance", 0},
    {"Balanced", 1},
    {"Virtually Silent", 2},
    {"Non-Interactive", 3},
};
// clang-format on

}  // namespace vqs
