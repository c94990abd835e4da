// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iterator>

#include "format/catalogue/options.h"
#include "format/catalogue/row.h"

namespace vqs {

// clang-format off
inline constexpr QtfOptionInfo kPowerSourceOptions[] = {
    {"AC Power", 0},
    {"DC Power", 1},
};

inline constexpr QtfOptionInfo kPowerModeOptions[] = {
    {"Battery Saver", 0},
    {"Best Power Efficiency", 1},
    {"Balanced", 2},
    {"Best Performance", 3},
    {"Energy Saver", 4},
};

inline constexpr QtfOptionInfo kPlatformTypeOptions[] = {
    {"Unknown", 0},
    {"Lid Close", 1},
    {"Clamshell", 2},
    {"Flat", 3},
    {"Tent", 4},
    {"Stand", 5},
    {"Tablet", 6},
    {"Book", 7},
    {"Presentation", 8},
    {"Pull Forward", 9},
};

inline constexpr QtfOptionInfo kLaptopPlacementOptions[] = {
    {"On Table", 1},
    {"On Lap Motion", 2},
    {"In Bag", 3},
    {"Out of Bag", 4},
};

inline constexpr QtfOptionInfo kLidStateOptions[] = {
    {"Open", 0},
    {"Closed", 1},
};

inline constexpr QtfOptionInfo kAwayPresentOptions[] = {
    {"Away", 0},
    {"Present", 1},
};

inline constexpr QtfOptionInfo kDockingStateOptions[] = {
    {"Undocked", 0},
    {"Docked", 1},
};

inline constexpr QtfOptionInfo kAppDetectionOptions[] = {
    {"<Application Name>.exe", 0},
};

inline constexpr QtfOptionInfo kAppStateOptions[] = {
    {"Foreground", 1},
    {"Background", 2},
    {"Full Screen", 4},
    {"Windowed", 8},
    {"Encode", 16},
    {"Decode", 32},
};

inline constexpr QtfOptionInfo kWorkloadPolicyOptions[] = {
    {"Default", 0},
    {"Full screen 3D", 1},
    {"Power Saving", 2},
    {"Video", 4},
    {"VR", 8},
    {"Compute", 16},
    {"Custom", 32},
    {"Windowed 3D", 64},
};

inline constexpr QtfOptionInfo kS0i3EntryOptions[] = {
    {"Default", 0},
    {"Entering S0i3", 1},
};

inline constexpr QtfOptionInfo kOffOnOptions[] = {
    {"Off", 0},
    {"On", 1},
};

inline constexpr QtfOptionInfo kDisplayTypeOptions[] = {
    {"Uninit", -2},
    {"Other", -1},
    {"HD15", 0},
    {"SVIDEO", 1},
    {"Composite", 2},
    {"Component", 3},
    {"DVI", 4},
    {"HDMI", 5},
    {"LVDS", 6},
    {"D JPN", 8},
    {"SDI", 9},
    {"DP External", 10},
    {"DP Embedded", 11},
    {"UDI External", 12},
    {"UDI Embedded", 13},
    {"SDTV", 14},
    {"Miracast", 15},
    {"Indirect Wired", 16},
    {"Internal", INT32_MIN},
};

inline constexpr QtfOptionInfo kRegKeyOptions[] = {
    {"<regkey_name>==<value>", -1},
};

inline constexpr QtfOptionInfo kHeteroStateOptions[] = {
    {"Nonsupported", 0},
    {"Supported", 1},
};

inline constexpr QtfOptionInfo kNpuWorkloadTypeOptions[] = {
    {"Best Effort", 1},
    {"Real-time", 2},
};

inline constexpr QtfOptionInfo kTransportModeOptions[] = {
    {"Unknown", 0},
    {"In", 1},
    {"Out", 2},
    {"Undef", 3},
};

/// Ranges, kinds and options of four rows do not agree, and stay so: "Docking State", "Display Type", "NPU Workload
/// Type" and "ASM Level" (compatibility.md: condition-options).
inline constexpr ConditionRow kConditionRows[] = {
    // power and posture
    {.id = 0, .name = "Power Source", .type = kEnumeration, .operators = kSameOnly, .max = 1,
     .options = kPowerSourceOptions},
    {.id = 1, .name = "Power Mode", .type = kEnumeration, .operators = kSameOnly, .max = 4,
     .options = kPowerModeOptions},
    {.id = 2, .name = "Platform Type", .type = kEnumeration, .operators = kSameOnly, .max = 9,
     .options = kPlatformTypeOptions},
    {.id = 3, .name = "Laptop Placement", .type = kEnumeration, .operators = kSameOnly, .min = 1, .max = 4,
     .options = kLaptopPlacementOptions},
    {.id = 4, .name = "Lid State", .type = kEnumeration, .operators = kSameOnly, .max = 1, .options = kLidStateOptions},

    // temperature, presence, what is connected
    {.id = 5, .name = "Socket Power", .units = "mW", .attr1 = 0},
    {.id = 6, .name = "Skin Temperature", .units = "centi-C", .attr1 = 0},
    {.id = 7, .name = "User Presence", .type = 0, .operators = kSameOnly, .max = 1, .options = kAwayPresentOptions},
    {.id = 8, .name = "Display Number"},
    {.id = 9, .name = "Docking State", .operators = kSameOnly, .max = 1, .enabled = 0, .attr1 = 0, .driverFlag = 0,
     .attr3 = 0, .options = kDockingStateOptions},

    // battery and firmware inputs
    {.id = 10, .name = "Battery Percentage", .units = "%"},
    {.id = 11, .name = "BIOS Input 1"},
    {.id = 12, .name = "BIOS Input 2"},

    // applications and workloads
    {.id = 13, .name = "App Detection", .type = 6, .operators = kSameOnly, .max = 0, .attr1 = 0, .attr2 = 0,
     .attr3 = 2, .attr4 = 1, .options = kAppDetectionOptions},
    {.id = 14, .name = "App State", .type = kBitSet, .operators = kSameOrNot, .max = 63, .attr1 = 0,
     .options = kAppStateOptions},
    {.id = 15, .name = "Indirect Policy", .operators = kSameOnly, .attr1 = 0},
    {.id = 16, .name = "Workload Policy", .type = kEnumeration, .operators = kSameOnly, .max = 127, .enabled = 0,
     .options = kWorkloadPolicyOptions},

    // power and the user
    {.id = 17, .name = "Average Power", .type = 5, .units = "mW", .attr1 = 0},
    {.id = 18, .name = "User Engaged", .type = kEnumeration, .operators = kSameOnly, .max = 1,
     .options = kAwayPresentOptions},

    // what is connected
    {.id = 19, .name = "Mouse Count"},
    {.id = 20, .name = "Keyboard Count"},

    // battery
    {.id = 21, .name = "Designed Battery Capacity", .units = "mWh"},
    {.id = 22, .name = "Fully Charged Battery Capacity", .units = "mWh"},
    {.id = 23, .name = "Battery Health", .units = "%", .attr1 = 0},
    {.id = 24, .name = "Battery Drain Rate", .type = kSigned, .min = kLowestSigned, .max = 0x7FFFFFFF, .units = "mW"},

    // application inputs, light
    {.id = 25, .name = "App Input 1"},
    {.id = 26, .name = "App Input 2"},
    {.id = 27, .name = "Ambient Light"},

    // load
    {.id = 28, .name = "Processor Queue Length", .enabled = 0},
    {.id = 29, .name = "Processor Time Average", .units = "ms", .enabled = 0},
    {.id = 30, .name = "Processor Time Max", .units = "ms", .enabled = 0},
    {.id = 31, .name = "Processor Interrupts/s Avg.", .enabled = 0},
    {.id = 32, .name = "Processor Interrupts/s Max", .enabled = 0},
    {.id = 33, .name = "GPU Engine Running Time", .units = "ms", .enabled = 0, .driverFlag = 0, .attr3 = 0},
    {.id = 34, .name = "GPU Engine Utilization Percent", .units = "%", .enabled = 0, .driverFlag = 0, .attr3 = 0},
    {.id = 35, .name = "User Input Delay", .enabled = 0},
    {.id = 36, .name = "Average C0 Residency", .max = 100, .units = "%", .enabled = 0},
    {.id = 37, .name = "Max C0 Residency", .max = 100, .units = "%", .enabled = 0},

    // states of the platform
    {.id = 38, .name = "S0I3 Entry", .type = kEnumeration, .operators = kSameOnly, .max = 1,
     .options = kS0i3EntryOptions},
    {.id = 39, .name = "GFX Activity", .max = 100, .units = "%"},
    {.id = 40, .name = "Camera State", .type = kEnumeration, .operators = kSameOnly, .max = 1, .enabled = 0,
     .options = kOffOnOptions},
    {.id = 41, .name = "Display Type", .type = kEnumeration, .operators = kSameOnly, .max = 0x80000000,
     .options = kDisplayTypeOptions},
    {.id = 42, .name = "Display State", .type = kEnumeration, .operators = kSameOnly, .max = 1,
     .options = kOffOnOptions},

    // ASM, registry, applications
    {.id = 43, .name = "ASM Performance State", .type = kEnumeration, .operators = kSameOnly, .max = 3,
     .enabled = 0, .driverFlag = 0, .attr3 = 0, .options = kAsmStateOptions},
    {.id = 44, .name = "ASM State", .type = kEnumeration, .operators = kSameOnly, .max = 3,
     .options = kAsmStateOptions},
    {.id = 45, .name = "Reg key", .type = 11, .operators = kSameOnly, .attr1 = 0, .attr2 = 1,
     .options = kRegKeyOptions},
    {.id = 46, .name = "App CPU Busy", .type = 8, .max = 100, .units = "%", .enabled = 0, .attr1 = 0},
    {.id = 47, .name = "Background Active App", .type = 6, .operators = kSameOnly, .max = 0, .attr1 = 0,
     .driverFlag = 0},

    // sensors and filtered values
    {.id = 48, .name = "Indexed Sensor Data", .type = 15, .attr1 = 0},
    {.id = 49, .name = "Indexed Sensor Status", .type = 14, .max = 65535, .attr1 = 0},
    {.id = 50, .name = "Sorted C0 Residency", .type = 12, .units = "%", .enabled = 0, .attr1 = 0},
    {.id = 51, .name = "Alpha Filtered Socket Power", .type = 12, .attr1 = 0},

    // firmware inputs
    {.id = 52, .name = "BIOS Input 3"},
    {.id = 53, .name = "BIOS Input 4"},
    {.id = 54, .name = "BIOS Input 5"},
    {.id = 55, .name = "BIOS Input 6"},
    {.id = 56, .name = "BIOS Input 7"},
    {.id = 57, .name = "BIOS Input 8"},
    {.id = 58, .name = "BIOS Input 9"},
    {.id = 59, .name = "BIOS Input 10"},

    // kinds of processors
    {.id = 60, .name = "Hetero State", .type = kEnumeration, .operators = kSameOnly, .max = 1,
     .options = kHeteroStateOptions},
    {.id = 61, .name = "NPU Workload Type", .type = kEnumeration, .operators = kSameOnly, .max = 3,
     .options = kNpuWorkloadTypeOptions},
    {.id = 62, .name = "NPU Busy [Avg]", .max = 100, .units = "%", .attr1 = 0},
    {.id = 63, .name = "NPU Busy [Max]", .max = 100, .units = "%", .attr1 = 0},
    {.id = 64, .name = "NPU Power", .units = "mW"},

    // levels and modes
    {.id = 65, .name = "ASM Level", .type = kEnumeration, .min = 1, .max = 6, .options = kAsmLevelOptions},
    {.id = 66, .name = "Game Mode", .type = kEnumeration, .operators = kSameOnly, .max = 1, .options = kOffOnOptions},
    {.id = 67, .name = "NPU Column", .max = 7, .attr1 = 0},
    {.id = 68, .name = "Activity Balance", .type = kEnumeration, .operators = kSameOnly, .max = 2, .enabled = 0,
     .driverFlag = 0, .attr3 = 0, .options = kActivityBalanceOptions},
    {.id = 69, .name = "PEPL Level", .min = 1, .max = 10, .enabled = 0, .driverFlag = 0, .attr3 = 0},
    {.id = 70, .name = "VCN Activity", .max = 100, .units = "%", .enabled = 0, .driverFlag = 0, .attr2 = 0, .attr3 = 0},
    {.id = 71, .name = "Transport Mode", .type = kEnumeration, .operators = kSameOnly, .max = 3, .enabled = 0,
     .driverFlag = 0, .attr3 = 0, .options = kTransportModeOptions},
    {.id = 72, .name = "ASM Supported", .type = 0, .operators = kSameOnly, .max = 1, .attr1 = 0, .attr2 = 0,
     .attr3 = 0},
};
// clang-format on

static_assert(std::size(kConditionRows) == VQS_CONDITION_TYPES);
static_assert(idsAreIndexes(kConditionRows));

}  // namespace vqs
