// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iterator>

#include "format/catalogue/options.h"
#include "format/catalogue/row.h"

namespace vqs {

// clang-format off
inline constexpr QtfOptionInfo kFanModeOptions[] = {
    {"Auto", 0},
    {"Manual", 1},
};

inline constexpr QtfOptionInfo kSystemStateOptions[] = {
    {"Enter S4", 0},
    {"Enter Screen Lock", 1},
};

inline constexpr QtfOptionInfo kLumoControlOptions[] = {
    {"Exit Lumo", 0},
    {"Enter Lumo", 1},
};

inline constexpr QtfOptionInfo kSilentProfileOptions[] = {
    {"Exit Silent Profile", 0},
    {"Enter Silent Profile", 1},
};

inline constexpr QtfOptionInfo kPpmProfileOptions[] = {
    {"Battery Saver PPM Profile", 0},
    {"Balanced PPM Profile", 1},
    {"Performance PPM Profile", 2},
};

inline constexpr QtfOptionInfo kDisabledEnabledOptions[] = {
    {"Disabled", 0},
    {"Enabled", 1},
};

inline constexpr QtfOptionInfo kResetPpmOptions[] = {
    {"Reset", 1},
};

inline constexpr QtfOptionInfo kTaskbarIconShapeOptions[] = {
    {"Undefined", 0},
    {"Circle", 1},
    {"Square", 2},
    {"Triangle", 3},
};

inline constexpr QtfOptionInfo kTaskbarIconColourOptions[] = {
    {"Undefined", 0},
    {"Red", 1},
    {"Orange", 2},
    {"Yellow", 3},
    {"Green", 4},
    // one value for three colours (compatibility.md: taskbar-colours)
    {"Blue", 5},
    {"Purple", 5},
    {"Pink", 5},
};

inline constexpr QtfOptionInfo kNpuPerformanceModeOptions[] = {
    {"Power Saver", 0},
    {"Balanced", 1},
    {"Performance", 2},
    {"Default", 3},
};

inline constexpr QtfOptionInfo kPpmSmtunparkpolicyOptions[] = {
    {"Core", 0},
    {"Core per thread", 1},
    {"Round robin", 2},
    {"Sequential", 3},
};

inline constexpr QtfOptionInfo kSchedulingOptions[] = {
    {"All Processors", 0},
    {"Performant Processors", 1},
    {"Prefer Performant Processors", 2},
    {"Efficient Processors", 3},
    {"Prefer Efficient Processors", 4},
    {"Automatic", 5},
};

/// "Custom Workload" is an enumeration without options (compatibility.md: action-options).
inline constexpr ActionRow kActionRows[] = {
    // fan
    {.id = 0, .name = "Fan Mode", .type = kEnumeration, .max = 1, .options = kFanModeOptions},
    {.id = 1, .name = "Fan Table Index"},

    // power limits
    {.id = 2, .name = "SPL", .units = "mW", .attr1 = 0},
    {.id = 3, .name = "SPPT", .units = "mW", .attr1 = 0},
    {.id = 4, .name = "FPPT", .units = "mW", .attr1 = 0},
    {.id = 5, .name = "SPPT APU Only", .units = "mW", .attr1 = 0},

    // skin temperature
    {.id = 6, .name = "STT Min", .units = "mW"},
    {.id = 7, .name = "STT Skin Temp APU", .units = "C"},
    {.id = 8, .name = "STT Skin Temp HS2", .units = "C"},

    // the system and its outputs
    {.id = 9, .name = "System State", .type = kEnumeration, .max = 1, .options = kSystemStateOptions},
    {.id = 10, .name = "Bios Output 1"},
    {.id = 11, .name = "Bios Output 2"},
    {.id = 12, .name = "Display Brightness", .max = 100, .units = "%"},
    {.id = 13, .name = "LUMO Control", .type = kEnumeration, .max = 1, .enabled = 0, .driverFlag = 0, .attr1 = 0,
     .options = kLumoControlOptions},
    {.id = 14, .name = "Indirect Policy"},
    {.id = 15, .name = "Silent Profile", .type = kEnumeration, .max = 1, .enabled = 0,
     .options = kSilentProfileOptions},

    // processor, outputs, workload
    {.id = 16, .name = "PPM Profile", .type = kEnumeration, .max = 2, .options = kPpmProfileOptions},
    {.id = 17, .name = "App Output 1"},
    {.id = 18, .name = "App Output 2"},
    {.id = 19, .name = "Cpu Freq Limit", .units = "MHz", .enabled = 0},
    {.id = 20, .name = "Custom Workload", .type = kEnumeration, .max = 0, .enabled = 0, .driverFlag = 0, .attr1 = 0},

    // skin temperature, constants
    {.id = 21, .name = "STT M1", .enabled = 0, .driverFlag = 0, .attr1 = 0},
    {.id = 22, .name = "STT M2", .enabled = 0, .driverFlag = 0, .attr1 = 0},
    {.id = 23, .name = "STT C APU", .enabled = 0, .driverFlag = 0, .attr1 = 0},
    {.id = 24, .name = "STT Alpha APU", .enabled = 0, .driverFlag = 0, .attr1 = 0},
    {.id = 25, .name = "STT Error Coeff", .enabled = 0, .driverFlag = 0, .attr1 = 0},
    {.id = 26, .name = "STT Error Rate Coeff", .enabled = 0, .driverFlag = 0, .attr1 = 0},

    // ASM
    {.id = 27, .name = "ASM State (Performance Bias)", .type = kEnumeration, .max = 3, .enabled = 0,
     .driverFlag = 0, .attr1 = 0, .options = kAsmStateOptions},
    {.id = 28, .name = "ASM State", .type = kEnumeration, .max = 3, .enabled = 0, .options = kAsmStateOptions},

    // processor power management
    {.id = 29, .name = "PPM PROCFREQMAX DENSE", .units = "MHz"},
    {.id = 30, .name = "PPM PROCTHROTTLEMIN DENSE", .max = 100, .units = "%"},
    {.id = 31, .name = "PPM PROCTHROTTLEMAX DENSE", .max = 100, .units = "%"},
    {.id = 32, .name = "PPM PERFAUTONOMOUS", .type = kEnumeration, .max = 1, .options = kDisabledEnabledOptions},
    {.id = 33, .name = "PPM PERFEPP DENSE", .max = 100, .units = "%"},
    {.id = 34, .name = "PPM CPMINCORES DENSE", .max = 100, .units = "%"},
    {.id = 35, .name = "PPM CPMAXCORES DENSE", .max = 100, .units = "%"},
    {.id = 36, .name = "Reset PPM", .type = kEnumeration, .max = 1, .enabled = 0, .driverFlag = 0, .attr1 = 0,
     .options = kResetPpmOptions},

    // debug output, cap
    {.id = 37, .name = "Debug Output"},
    {.id = 38, .name = "P3T", .units = "mW"},

    // sensors
    {.id = 39, .name = "Sensor 1 Config 1"},
    {.id = 40, .name = "Sensor 1 Config 2"},
    {.id = 41, .name = "Sensor 1 Config 3"},
    {.id = 42, .name = "Sensor 2 Config 1"},
    {.id = 43, .name = "Sensor 2 Config 2"},
    {.id = 44, .name = "Sensor 2 Config 3"},
    {.id = 45, .name = "Sensor 3 Config 1"},
    {.id = 46, .name = "Sensor 3 Config 2"},
    {.id = 47, .name = "Sensor 3 Config 3"},
    {.id = 48, .name = "Sensor 4 Config 1"},
    {.id = 49, .name = "Sensor 4 Config 2"},
    {.id = 50, .name = "Sensor 4 Config 3"},

    // ASM, taskbar icon
    {.id = 51, .name = "Enable ASM", .type = kEnumeration, .max = 1, .driverFlag = 0,
     .options = kDisabledEnabledOptions},
    {.id = 52, .name = "Taskbar Icon Shape", .type = kEnumeration, .max = 3, .enabled = 0,
     .options = kTaskbarIconShapeOptions},
    {.id = 53, .name = "Taskbar Icon Colour", .type = kEnumeration, .max = 5, .enabled = 0,
     .options = kTaskbarIconColourOptions},

    // QTF limits
    {.id = 54, .name = "QTF SPPT Limit", .units = "mW", .enabled = 0},
    {.id = 55, .name = "QTF SPPT Limit APU Only", .units = "mW", .enabled = 0},
    {.id = 56, .name = "QTF Power State Setting", .max = 15, .enabled = 0},

    // firmware outputs
    {.id = 57, .name = "Bios Output 3"},
    {.id = 58, .name = "Bios Output 4"},
    {.id = 59, .name = "Bios Output 5"},
    {.id = 60, .name = "Bios Output 6"},
    {.id = 61, .name = "Bios Output 7"},
    {.id = 62, .name = "Bios Output 8"},
    {.id = 63, .name = "Bios Output 9"},
    {.id = 64, .name = "Bios Output 10"},

    // processor power management
    {.id = 65, .name = "PPM PERFEPP CLASSIC", .max = 100, .units = "%"},
    {.id = 66, .name = "PPM CPMINCORES CLASSIC", .max = 100, .units = "%"},
    {.id = 67, .name = "PPM CPMAXCORES CLASSIC", .max = 100, .units = "%"},
    {.id = 68, .name = "PPM PROCFREQMAX CLASSIC", .units = "MHz"},

    // fan, NPU, ASM
    {.id = 69, .name = "Fan Table Index 2", .enabled = 0},
    {.id = 70, .name = "NPU Performance Mode", .type = kEnumeration, .max = 3, .options = kNpuPerformanceModeOptions},
    {.id = 71, .name = "ASM Level", .type = kEnumeration, .min = 1, .max = 6, .enabled = 0,
     .options = kAsmLevelOptions},

    // processor power management
    {.id = 72, .name = "PPM LATENCYHINTPERF DENSE", .max = 100, .units = "%"},
    {.id = 73, .name = "PPM LATENCYHINTPERF CLASSIC", .max = 100, .units = "%"},
    {.id = 74, .name = "PPM SOFTPARKLATENCY", .units = "micro sec."},
    {.id = 75, .name = "PPM SMTUNPARKPOLICY", .type = kEnumeration, .max = 3, .options = kPpmSmtunparkpolicyOptions},
    {.id = 76, .name = "PPM HETEROINCREASETIME", .max = 100},
    {.id = 77, .name = "PPM HETERODECREASETIME", .max = 100},
    {.id = 78, .name = "PPM CPDECREASETIME", .max = 100},
    {.id = 79, .name = "PPM CPINCREASETIME", .max = 100},
    {.id = 80, .name = "PPM SCHEDPOLICY", .type = kEnumeration, .max = 5, .options = kSchedulingOptions},
    {.id = 81, .name = "PPM SHORTSCHEDPOLICY", .type = kEnumeration, .max = 5, .options = kSchedulingOptions},
    {.id = 82, .name = "PPM CPCONCURRENCY", .max = 100, .units = "%"},
    {.id = 83, .name = "PPM PERFMINPOLICY DENSE", .max = 100, .units = "%"},
    {.id = 84, .name = "PPM PERFMINPOLICY CLASSIC", .max = 100, .units = "%"},
    {.id = 85, .name = "PPM PERFMAXPOLICY DENSE", .max = 100, .units = "%"},
    {.id = 86, .name = "PPM PERFMAXPOLICY CLASSIC", .max = 100, .units = "%"},
    {.id = 87, .name = "PPM HETEROINCREASETHRESHOLD DENSE", .max = 9},
    {.id = 88, .name = "PPM HETEROINCREASETHRESHOLD CLASSIC", .max = 9},
    {.id = 89, .name = "PPM HETERODECREASETHRESHOLD DENSE", .max = 9},
    {.id = 90, .name = "PPM HETERODECREASETHRESHOLD CLASSIC", .max = 9},

    // ASM, activity, efficiency
    {.id = 91, .name = "ASM BINARY VERSION", .driverFlag = 0},
    {.id = 92, .name = "Activity Balance", .type = kEnumeration, .max = 2, .enabled = 0, .driverFlag = 0,
     .attr1 = 0, .options = kActivityBalanceOptions},
    {.id = 93, .name = "PEPL Level", .min = 1, .max = 10, .enabled = 0, .driverFlag = 0},
    // The kind of its value is no other action's.
    {.id = 94, .name = "APP EFFICIENCY MODE", .type = 10, .max = 1, .driverFlag = 0, .attr1 = 0,
     .options = kDisabledEnabledOptions},

    // processor power management
    {.id = 95, .name = "PPM PROCTHROTTLEMIN CLASSIC", .max = 100, .units = "%"},
    {.id = 96, .name = "PPM PROCTHROTTLEMAX CLASSIC", .max = 100, .units = "%"},

    // QTF limits
    {.id = 97, .name = "QTF SPPT TC", .min = 1, .max = 300, .units = "100ms"},
    {.id = 98, .name = "QTF SPPT APU Only TC", .min = 1, .max = 300, .units = "100ms"},
    {.id = 99, .name = "QTF FPPT TC", .min = 1, .max = 300, .units = "100ms"},
    {.id = 100, .name = "QTF FPPT Limit", .min = 1, .units = "mW"},

    // processor power management
    {.id = 101, .name = "PPM CPDECREASEPOL"},
    {.id = 102, .name = "PPM CPDISTRIBUTION"},
    {.id = 103, .name = "PPM CPHEADROOM"},
    {.id = 104, .name = "PPM CPINCREASEPOL"},
    {.id = 105, .name = "PPM CPOVERUTIL"},
    {.id = 106, .name = "PPM CPPERF DENSE", .max = 100, .units = "%"},
    {.id = 107, .name = "PPM CPPERF CLASSIC", .max = 100, .units = "%"},
    {.id = 108, .name = "PPM DISTRIBUTEUTIL"},
    {.id = 109, .name = "PPM HETEROCLASS0FLOORPERF"},
    {.id = 110, .name = "PPM HETEROCLASS1INITIALPERF"},
    {.id = 111, .name = "PPM HETEROPOLICY"},
    {.id = 112, .name = "PPM IDLECHECK"},
    {.id = 113, .name = "PPM IDLEDEMOTE"},
    {.id = 114, .name = "PPM IDLEDISABLE"},
    {.id = 115, .name = "PPM IDLEPROMOTE"},
    {.id = 116, .name = "PPM IDLESCALING"},
    {.id = 117, .name = "PPM IDLESTATEMAX"},
    {.id = 118, .name = "PPM LATENCYHINTUNPARK DENSE"},
    {.id = 119, .name = "PPM LATENCYHINTUNPARK CLASSIC"},
    {.id = 120, .name = "PPM PERFAUTONOMOUSWINDOW"},
    {.id = 121, .name = "PPM PERFBOOSTMODE"},
    {.id = 122, .name = "PPM PERFBOOSTPOL"},
    {.id = 123, .name = "PPM PERFCHECK"},
    {.id = 124, .name = "PPM PERFDECPOL DENSE"},
    {.id = 125, .name = "PPM PERFDECPOL CLASSIC"},
    {.id = 126, .name = "PPM PERFDECTHRESHOLD DENSE", .max = 100, .units = "%"},
    {.id = 127, .name = "PPM PERFDECTHRESHOLD CLASSIC", .max = 100, .units = "%"},
    {.id = 128, .name = "PPM PERFDECTIME DENSE"},
    {.id = 129, .name = "PPM PERFDECTIME CLASSIC"},
    {.id = 130, .name = "PPM PERFDUTYCYCLING"},
    {.id = 131, .name = "PPM PERFHISTORY DENSE"},
    {.id = 132, .name = "PPM PERFHISTORY CLASSIC"},
    {.id = 133, .name = "PPM PERFINCPOL DENSE"},
    {.id = 134, .name = "PPM PERFINCPOL CLASSIC"},
    {.id = 135, .name = "PPM PERFINCTHRESHOLD DENSE", .max = 100, .units = "%"},
    {.id = 136, .name = "PPM PERFINCTHRESHOLD CLASSIC", .max = 100, .units = "%"},
    {.id = 137, .name = "PPM PERFINCTIME DENSE"},
    {.id = 138, .name = "PPM PERFINCTIME CLASSIC"},
    {.id = 139, .name = "PPM SYSCOOLPOL"},
    {.id = 140, .name = "PPM THROTTLING"},
    {.id = 141, .name = "PPM COMPLEXUNPARKPOLICY"},
    {.id = 142, .name = "PPM HETEROCONTAINMENTDECREASETIME"},
    {.id = 143, .name = "PPM HETEROCONTAINMENTEFFIMPUTILTHRESH"},
    {.id = 144, .name = "PPM HETEROCONTAINHYBIMPUTILTHRESH"},
    {.id = 145, .name = "PPM HETEROCONTAINMENTINCREASETIME"},
    {.id = 146, .name = "PPM HETEROCONTAINMENTPOLICY"},
    {.id = 147, .name = "PPM HETEROEFFCONTAINTHRESH"},
    {.id = 148, .name = "PPM HETEROHYBCONTAINTHRESH"},
    {.id = 149, .name = "PPM LATENCYHINTEPP DENSE", .max = 100, .units = "%"},
    {.id = 150, .name = "PPM LATENCYHINTEPP CLASSIC", .max = 100, .units = "%"},
    {.id = 151, .name = "PPM LATENCYHINTEPP LP", .max = 100, .units = "%"},
    {.id = 152, .name = "PPM LATENCYHINTPERF LP", .max = 100, .units = "%"},
    {.id = 153, .name = "PPM LONGTHREADARCHCLASSLOTHRESH"},
    {.id = 154, .name = "PPM LONGTHREADARCHCLASSUPTHRESH"},
    {.id = 155, .name = "PPM MODULEUNPARKPOLICY"},
    {.id = 156, .name = "PPM PERFEPP LP", .max = 100, .units = "%"},
    {.id = 157, .name = "PPM PROCFREQMAX LP", .units = "MHz"},
    {.id = 158, .name = "PPM PROCTHROTTLEMAX LP", .max = 100, .units = "%"},
    {.id = 159, .name = "PPM PROCTHROTTLEMIN LP", .max = 100, .units = "%"},
    {.id = 160, .name = "PPM RESOURCEPRIORITY DENSE"},
    {.id = 161, .name = "PPM RESOURCEPRIORITY CLASSIC"},
    {.id = 162, .name = "PPM RESOURCEPRIORITY LP"},
    {.id = 163, .name = "PPM RESTRICTIONCOUNT"},
    {.id = 164, .name = "PPM SHORTTHREADARCHCLASSLOTHRESH"},
    {.id = 165, .name = "PPM SHORTTHREADARCHCLASSUPTHRESH"},
    {.id = 166, .name = "PPM SHORTTHREADRUNTIMETHRESH"},
    {.id = 167, .name = "PPM WPSMINEFFTHRESH"},
};
// clang-format on

static_assert(std::size(kActionRows) == VQS_ACTION_TYPES);
static_assert(idsAreIndexes(kActionRows));

}  // namespace vqs
