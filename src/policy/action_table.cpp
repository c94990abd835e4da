// SPDX-License-Identifier: Apache-2.0
#include "policy/action_table.h"

#include "policy/catalogue_row.h"

namespace vqs {
namespace {

// clang-format off
constexpr QtfOptionInfo kFanModeOptions[] = {{"Auto", 0}, {"Manual", 1}};
constexpr QtfOptionInfo kSystemStateOptions[] = {{"Enter S4", 0}, {"Enter Screen Lock", 1}};
constexpr QtfOptionInfo kLumoControlOptions[] = {{"Exit Lumo", 0}, {"Enter Lumo", 1}};
constexpr QtfOptionInfo kSilentProfileOptions[] = {{"Exit Silent Profile", 0}, {"Enter Silent Profile", 1}};
constexpr QtfOptionInfo kPpmProfileOptions[] = {{"Battery Saver PPM Profile", 0}, {"Balanced PPM Profile", 1}, {"Performance PPM Profile", 2}};
constexpr QtfOptionInfo kAsmStateOptions[] = {{"Performance", 0}, {"Balanced", 1}, {"Virtually Silent", 2}, {"Non-Interactive", 3}};
constexpr QtfOptionInfo kDisabledEnabledOptions[] = {{"Disabled", 0}, {"Enabled", 1}};
constexpr QtfOptionInfo kResetPpmOptions[] = {{"Reset", 1}};
constexpr QtfOptionInfo kTaskbarIconShapeOptions[] = {{"Undefined", 0}, {"Circle", 1}, {"Square", 2}, {"Triangle", 3}};
constexpr QtfOptionInfo kTaskbarIconColourOptions[] = {{"Undefined", 0}, {"Red", 1}, {"Orange", 2}, {"Yellow", 3}, {"Green", 4}, {"Blue", 5}, {"Purple", 5}, {"Pink", 5}};
constexpr QtfOptionInfo kNpuPerformanceModeOptions[] = {{"Power Saver", 0}, {"Balanced", 1}, {"Performance", 2}, {"Default", 3}};
constexpr QtfOptionInfo kAsmLevelOptions[] = {{"Level 1", 1}, {"Level 2", 2}, {"Level 3", 3}, {"Level 4", 4}, {"Level 5", 5}, {"Level 6", 6}};
constexpr QtfOptionInfo kPpmSmtunparkpolicyOptions[] = {{"Core", 0}, {"Core per thread", 1}, {"Round robin", 2}, {"Sequential", 3}};
constexpr QtfOptionInfo kSchedulingOptions[] = {{"All Processors", 0}, {"Performant Processors", 1}, {"Prefer Performant Processors", 2}, {"Efficient Processors", 3}, {"Prefer Efficient Processors", 4}, {"Automatic", 5}};
constexpr QtfOptionInfo kActivityBalanceOptions[] = {{"LOW", 0}, {"MED", 1}, {"HIGH", 2}};

constexpr ActionRow kRows[] = {
    {.id = 0, .name = "Fan Mode", .type = kEnumeration, .max = 1, .enabled = 1, .driverFlag = 1, .attr1 = 1, .options = kFanModeOptions},
    {.id = 1, .name = "Fan Table Index", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 2, .name = "SPL", .type = kUnsigned, .max = kUnbounded, .units = "mW", .enabled = 1, .driverFlag = 1},
    {.id = 3, .name = "SPPT", .type = kUnsigned, .max = kUnbounded, .units = "mW", .enabled = 1, .driverFlag = 1},
    {.id = 4, .name = "FPPT", .type = kUnsigned, .max = kUnbounded, .units = "mW", .enabled = 1, .driverFlag = 1},
    {.id = 5, .name = "SPPT APU Only", .type = kUnsigned, .max = kUnbounded, .units = "mW", .enabled = 1, .driverFlag = 1},
    {.id = 6, .name = "STT Min", .type = kUnsigned, .max = kUnbounded, .units = "mW", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 7, .name = "STT Skin Temp APU", .type = kUnsigned, .max = kUnbounded, .units = "C", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 8, .name = "STT Skin Temp HS2", .type = kUnsigned, .max = kUnbounded, .units = "C", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 9, .name = "System State", .type = kEnumeration, .max = 1, .enabled = 1, .driverFlag = 1, .attr1 = 1, .options = kSystemStateOptions},
    {.id = 10, .name = "Bios Output 1", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 11, .name = "Bios Output 2", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 12, .name = "Display Brightness", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 13, .name = "LUMO Control", .type = kEnumeration, .max = 1, .options = kLumoControlOptions},
    {.id = 14, .name = "Indirect Policy", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 15, .name = "Silent Profile", .type = kEnumeration, .max = 1, .driverFlag = 1, .attr1 = 1, .options = kSilentProfileOptions},
    {.id = 16, .name = "PPM Profile", .type = kEnumeration, .max = 2, .enabled = 1, .driverFlag = 1, .attr1 = 1, .options = kPpmProfileOptions},
    {.id = 17, .name = "App Output 1", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 18, .name = "App Output 2", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 19, .name = "Cpu Freq Limit", .type = kUnsigned, .max = kUnbounded, .units = "MHz", .driverFlag = 1, .attr1 = 1},
    {.id = 20, .name = "Custom Workload", .type = kEnumeration},
    {.id = 21, .name = "STT M1", .type = kUnsigned, .max = kUnbounded},
    {.id = 22, .name = "STT M2", .type = kUnsigned, .max = kUnbounded},
    {.id = 23, .name = "STT C APU", .type = kUnsigned, .max = kUnbounded},
    {.id = 24, .name = "STT Alpha APU", .type = kUnsigned, .max = kUnbounded},
    {.id = 25, .name = "STT Error Coeff", .type = kUnsigned, .max = kUnbounded},
    {.id = 26, .name = "STT Error Rate Coeff", .type = kUnsigned, .max = kUnbounded},
    {.id = 27, .name = "ASM State (Performance Bias)", .type = kEnumeration, .max = 3, .options = kAsmStateOptions},
    {.id = 28, .name = "ASM State", .type = kEnumeration, .max = 3, .driverFlag = 1, .attr1 = 1, .options = kAsmStateOptions},
    {.id = 29, .name = "PPM PROCFREQMAX DENSE", .type = kUnsigned, .max = kUnbounded, .units = "MHz", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 30, .name = "PPM PROCTHROTTLEMIN DENSE", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 31, .name = "PPM PROCTHROTTLEMAX DENSE", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 32, .name = "PPM PERFAUTONOMOUS", .type = kEnumeration, .max = 1, .enabled = 1, .driverFlag = 1, .attr1 = 1, .options = kDisabledEnabledOptions},
    {.id = 33, .name = "PPM PERFEPP DENSE", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 34, .name = "PPM CPMINCORES DENSE", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 35, .name = "PPM CPMAXCORES DENSE", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 36, .name = "Reset PPM", .type = kEnumeration, .max = 1, .options = kResetPpmOptions},
    {.id = 37, .name = "Debug Output", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 38, .name = "P3T", .type = kUnsigned, .max = kUnbounded, .units = "mW", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 39, .name = "Sensor 1 Config 1", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 40, .name = "Sensor 1 Config 2", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 41, .name = "Sensor 1 Config 3", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 42, .name = "Sensor 2 Config 1", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 43, .name = "Sensor 2 Config 2", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 44, .name = "Sensor 2 Config 3", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 45, .name = "Sensor 3 Config 1", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 46, .name = "Sensor 3 Config 2", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 47, .name = "Sensor 3 Config 3", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 48, .name = "Sensor 4 Config 1", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 49, .name = "Sensor 4 Config 2", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 50, .name = "Sensor 4 Config 3", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 51, .name = "Enable ASM", .type = kEnumeration, .max = 1, .enabled = 1, .attr1 = 1, .options = kDisabledEnabledOptions},
    {.id = 52, .name = "Taskbar Icon Shape", .type = kEnumeration, .max = 3, .driverFlag = 1, .attr1 = 1, .options = kTaskbarIconShapeOptions},
    {.id = 53, .name = "Taskbar Icon Colour", .type = kEnumeration, .max = 5, .driverFlag = 1, .attr1 = 1, .options = kTaskbarIconColourOptions},
    {.id = 54, .name = "QTF SPPT Limit", .type = kUnsigned, .max = kUnbounded, .units = "mW", .driverFlag = 1, .attr1 = 1},
    {.id = 55, .name = "QTF SPPT Limit APU Only", .type = kUnsigned, .max = kUnbounded, .units = "mW", .driverFlag = 1, .attr1 = 1},
    {.id = 56, .name = "QTF Power State Setting", .type = kUnsigned, .max = 15, .driverFlag = 1, .attr1 = 1},
    {.id = 57, .name = "Bios Output 3", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 58, .name = "Bios Output 4", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 59, .name = "Bios Output 5", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 60, .name = "Bios Output 6", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 61, .name = "Bios Output 7", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 62, .name = "Bios Output 8", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 63, .name = "Bios Output 9", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 64, .name = "Bios Output 10", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 65, .name = "PPM PERFEPP CLASSIC", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 66, .name = "PPM CPMINCORES CLASSIC", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 67, .name = "PPM CPMAXCORES CLASSIC", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 68, .name = "PPM PROCFREQMAX CLASSIC", .type = kUnsigned, .max = kUnbounded, .units = "MHz", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 69, .name = "Fan Table Index 2", .type = kUnsigned, .max = kUnbounded, .driverFlag = 1, .attr1 = 1},
    {.id = 70, .name = "NPU Performance Mode", .type = kEnumeration, .max = 3, .enabled = 1, .driverFlag = 1, .attr1 = 1, .options = kNpuPerformanceModeOptions},
    {.id = 71, .name = "ASM Level", .type = kEnumeration, .min = 1, .max = 6, .driverFlag = 1, .attr1 = 1, .options = kAsmLevelOptions},
    {.id = 72, .name = "PPM LATENCYHINTPERF DENSE", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 73, .name = "PPM LATENCYHINTPERF CLASSIC", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 74, .name = "PPM SOFTPARKLATENCY", .type = kUnsigned, .max = kUnbounded, .units = "micro sec.", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 75, .name = "PPM SMTUNPARKPOLICY", .type = kEnumeration, .max = 3, .enabled = 1, .driverFlag = 1, .attr1 = 1, .options = kPpmSmtunparkpolicyOptions},
    {.id = 76, .name = "PPM HETEROINCREASETIME", .type = kUnsigned, .max = 100, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 77, .name = "PPM HETERODECREASETIME", .type = kUnsigned, .max = 100, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 78, .name = "PPM CPDECREASETIME", .type = kUnsigned, .max = 100, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 79, .name = "PPM CPINCREASETIME", .type = kUnsigned, .max = 100, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 80, .name = "PPM SCHEDPOLICY", .type = kEnumeration, .max = 5, .enabled = 1, .driverFlag = 1, .attr1 = 1, .options = kSchedulingOptions},
    {.id = 81, .name = "PPM SHORTSCHEDPOLICY", .type = kEnumeration, .max = 5, .enabled = 1, .driverFlag = 1, .attr1 = 1, .options = kSchedulingOptions},
    {.id = 82, .name = "PPM CPCONCURRENCY", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 83, .name = "PPM PERFMINPOLICY DENSE", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 84, .name = "PPM PERFMINPOLICY CLASSIC", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 85, .name = "PPM PERFMAXPOLICY DENSE", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 86, .name = "PPM PERFMAXPOLICY CLASSIC", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 87, .name = "PPM HETEROINCREASETHRESHOLD DENSE", .type = kUnsigned, .max = 9, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 88, .name = "PPM HETEROINCREASETHRESHOLD CLASSIC", .type = kUnsigned, .max = 9, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 89, .name = "PPM HETERODECREASETHRESHOLD DENSE", .type = kUnsigned, .max = 9, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 90, .name = "PPM HETERODECREASETHRESHOLD CLASSIC", .type = kUnsigned, .max = 9, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 91, .name = "ASM BINARY VERSION", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .attr1 = 1},
    {.id = 92, .name = "Activity Balance", .type = kEnumeration, .max = 2, .options = kActivityBalanceOptions},
    {.id = 93, .name = "PEPL Level", .type = kUnsigned, .min = 1, .max = 10, .attr1 = 1},
    {.id = 94, .name = "APP EFFICIENCY MODE", .type = 10, .max = 1, .enabled = 1, .options = kDisabledEnabledOptions},
    {.id = 95, .name = "PPM PROCTHROTTLEMIN CLASSIC", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 96, .name = "PPM PROCTHROTTLEMAX CLASSIC", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 97, .name = "QTF SPPT TC", .type = kUnsigned, .min = 1, .max = 300, .units = "100ms", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 98, .name = "QTF SPPT APU Only TC", .type = kUnsigned, .min = 1, .max = 300, .units = "100ms", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 99, .name = "QTF FPPT TC", .type = kUnsigned, .min = 1, .max = 300, .units = "100ms", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 100, .name = "QTF FPPT Limit", .type = kUnsigned, .min = 1, .max = kUnbounded, .units = "mW", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 101, .name = "PPM CPDECREASEPOL", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 102, .name = "PPM CPDISTRIBUTION", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 103, .name = "PPM CPHEADROOM", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 104, .name = "PPM CPINCREASEPOL", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 105, .name = "PPM CPOVERUTIL", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 106, .name = "PPM CPPERF DENSE", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 107, .name = "PPM CPPERF CLASSIC", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 108, .name = "PPM DISTRIBUTEUTIL", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 109, .name = "PPM HETEROCLASS0FLOORPERF", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 110, .name = "PPM HETEROCLASS1INITIALPERF", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 111, .name = "PPM HETEROPOLICY", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 112, .name = "PPM IDLECHECK", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 113, .name = "PPM IDLEDEMOTE", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 114, .name = "PPM IDLEDISABLE", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 115, .name = "PPM IDLEPROMOTE", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 116, .name = "PPM IDLESCALING", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 117, .name = "PPM IDLESTATEMAX", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 118, .name = "PPM LATENCYHINTUNPARK DENSE", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 119, .name = "PPM LATENCYHINTUNPARK CLASSIC", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 120, .name = "PPM PERFAUTONOMOUSWINDOW", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 121, .name = "PPM PERFBOOSTMODE", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 122, .name = "PPM PERFBOOSTPOL", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 123, .name = "PPM PERFCHECK", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 124, .name = "PPM PERFDECPOL DENSE", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 125, .name = "PPM PERFDECPOL CLASSIC", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 126, .name = "PPM PERFDECTHRESHOLD DENSE", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 127, .name = "PPM PERFDECTHRESHOLD CLASSIC", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 128, .name = "PPM PERFDECTIME DENSE", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 129, .name = "PPM PERFDECTIME CLASSIC", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 130, .name = "PPM PERFDUTYCYCLING", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 131, .name = "PPM PERFHISTORY DENSE", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 132, .name = "PPM PERFHISTORY CLASSIC", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 133, .name = "PPM PERFINCPOL DENSE", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 134, .name = "PPM PERFINCPOL CLASSIC", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 135, .name = "PPM PERFINCTHRESHOLD DENSE", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 136, .name = "PPM PERFINCTHRESHOLD CLASSIC", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 137, .name = "PPM PERFINCTIME DENSE", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 138, .name = "PPM PERFINCTIME CLASSIC", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 139, .name = "PPM SYSCOOLPOL", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 140, .name = "PPM THROTTLING", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 141, .name = "PPM COMPLEXUNPARKPOLICY", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 142, .name = "PPM HETEROCONTAINMENTDECREASETIME", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 143, .name = "PPM HETEROCONTAINMENTEFFIMPUTILTHRESH", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 144, .name = "PPM HETEROCONTAINHYBIMPUTILTHRESH", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 145, .name = "PPM HETEROCONTAINMENTINCREASETIME", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 146, .name = "PPM HETEROCONTAINMENTPOLICY", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 147, .name = "PPM HETEROEFFCONTAINTHRESH", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 148, .name = "PPM HETEROHYBCONTAINTHRESH", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 149, .name = "PPM LATENCYHINTEPP DENSE", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 150, .name = "PPM LATENCYHINTEPP CLASSIC", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 151, .name = "PPM LATENCYHINTEPP LP", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 152, .name = "PPM LATENCYHINTPERF LP", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 153, .name = "PPM LONGTHREADARCHCLASSLOTHRESH", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 154, .name = "PPM LONGTHREADARCHCLASSUPTHRESH", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 155, .name = "PPM MODULEUNPARKPOLICY", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 156, .name = "PPM PERFEPP LP", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 157, .name = "PPM PROCFREQMAX LP", .type = kUnsigned, .max = kUnbounded, .units = "MHz", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 158, .name = "PPM PROCTHROTTLEMAX LP", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 159, .name = "PPM PROCTHROTTLEMIN LP", .type = kUnsigned, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 160, .name = "PPM RESOURCEPRIORITY DENSE", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 161, .name = "PPM RESOURCEPRIORITY CLASSIC", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 162, .name = "PPM RESOURCEPRIORITY LP", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 163, .name = "PPM RESTRICTIONCOUNT", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 164, .name = "PPM SHORTTHREADARCHCLASSLOTHRESH", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 165, .name = "PPM SHORTTHREADARCHCLASSUPTHRESH", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 166, .name = "PPM SHORTTHREADRUNTIMETHRESH", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
    {.id = 167, .name = "PPM WPSMINEFFTHRESH", .type = kUnsigned, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr1 = 1},
};
// clang-format on

static_assert(std::size(kRows) == VQS_ACTION_TYPES);
static_assert(idsAreIndexes(kRows));

constexpr QtfActionInfo record(const ActionRow& row) {
  QtfActionInfo info{};
  info.Id = row.id;
  info.Enabled = row.enabled;
  info.Type = row.type;
  info.MinValue = row.min;
  info.MaxValue = row.max;
  copyText(info.Units, row.units);
  copyText(info.Name, row.name);
  info.OptionCount = static_cast<std::uint32_t>(row.options.size());
  info.Options = row.options.data();
  info.DriverFlag = row.driverFlag;
  info.Attr1 = row.attr1;
  return info;
}

// The driver's flags are written into it.
constinit std::array<QtfActionInfo, VQS_ACTION_TYPES> actions = records<QtfActionInfo>(kRows, record);

}  // namespace

std::span<QtfActionInfo, VQS_ACTION_TYPES> actionTable() { return actions; }

}  // namespace vqs
