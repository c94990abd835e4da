// SPDX-License-Identifier: Apache-2.0
#include "policy/condition_table.h"

#include "policy/catalogue_row.h"

namespace vqs {
namespace {

// clang-format off
constexpr QtfOptionInfo kPowerSourceOptions[] = {{"AC Power", 0}, {"DC Power", 1}};
constexpr QtfOptionInfo kPowerModeOptions[] = {{"Battery Saver", 0}, {"Best Power Efficiency", 1}, {"Balanced", 2}, {"Best Performance", 3}, {"Energy Saver", 4}};
constexpr QtfOptionInfo kPlatformTypeOptions[] = {{"Unknown", 0}, {"Lid Close", 1}, {"Clamshell", 2}, {"Flat", 3}, {"Tent", 4}, {"Stand", 5}, {"Tablet", 6}, {"Book", 7}, {"Presentation", 8}, {"Pull Forward", 9}};
constexpr QtfOptionInfo kLaptopPlacementOptions[] = {{"On Table", 1}, {"On Lap Motion", 2}, {"In Bag", 3}, {"Out of Bag", 4}};
constexpr QtfOptionInfo kLidStateOptions[] = {{"Open", 0}, {"Closed", 1}};
constexpr QtfOptionInfo kAwayPresentOptions[] = {{"Away", 0}, {"Present", 1}};
constexpr QtfOptionInfo kDockingStateOptions[] = {{"Undocked", 0}, {"Docked", 1}};
constexpr QtfOptionInfo kAppDetectionOptions[] = {{"<Application Name>.exe", 0}};
constexpr QtfOptionInfo kAppStateOptions[] = {{"Foreground", 1}, {"Background", 2}, {"Full Screen", 4}, {"Windowed", 8}, {"Encode", 16}, {"Decode", 32}};
constexpr QtfOptionInfo kWorkloadPolicyOptions[] = {{"Default", 0}, {"Full screen 3D", 1}, {"Power Saving", 2}, {"Video", 4}, {"VR", 8}, {"Compute", 16}, {"Custom", 32}, {"Windowed 3D", 64}};
constexpr QtfOptionInfo kS0i3EntryOptions[] = {{"Default", 0}, {"Entering S0i3", 1}};
constexpr QtfOptionInfo kOffOnOptions[] = {{"Off", 0}, {"On", 1}};
constexpr QtfOptionInfo kDisplayTypeOptions[] = {{"Uninit", -2}, {"Other", -1}, {"HD15", 0}, {"SVIDEO", 1}, {"Composite", 2}, {"Component", 3}, {"DVI", 4}, {"HDMI", 5}, {"LVDS", 6}, {"D JPN", 8}, {"SDI", 9}, {"DP External", 10}, {"DP Embedded", 11}, {"UDI External", 12}, {"UDI Embedded", 13}, {"SDTV", 14}, {"Miracast", 15}, {"Indirect Wired", 16}, {"Internal", INT32_MIN}};
constexpr QtfOptionInfo kAsmStateOptions[] = {{"Performance", 0}, {"Balanced", 1}, {"Virtually Silent", 2}, {"Non-Interactive", 3}};
constexpr QtfOptionInfo kRegKeyOptions[] = {{"<regkey_name>==<value>", -1}};
constexpr QtfOptionInfo kHeteroStateOptions[] = {{"Nonsupported", 0}, {"Supported", 1}};
constexpr QtfOptionInfo kNpuWorkloadTypeOptions[] = {{"Best Effort", 1}, {"Real-time", 2}};
constexpr QtfOptionInfo kAsmLevelOptions[] = {{"Level 1", 1}, {"Level 2", 2}, {"Level 3", 3}, {"Level 4", 4}, {"Level 5", 5}, {"Level 6", 6}};
constexpr QtfOptionInfo kActivityBalanceOptions[] = {{"LOW", 0}, {"MED", 1}, {"HIGH", 2}};
constexpr QtfOptionInfo kTransportModeOptions[] = {{"Unknown", 0}, {"In", 1}, {"Out", 2}, {"Undef", 3}};

constexpr ConditionRow kRows[] = {
    {.id = 0, .name = "Power Source", .type = kEnumeration, .operators = kSameOnly, .max = 1, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kPowerSourceOptions},
    {.id = 1, .name = "Power Mode", .type = kEnumeration, .operators = kSameOnly, .max = 4, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kPowerModeOptions},
    {.id = 2, .name = "Platform Type", .type = kEnumeration, .operators = kSameOnly, .max = 9, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kPlatformTypeOptions},
    {.id = 3, .name = "Laptop Placement", .type = kEnumeration, .operators = kSameOnly, .min = 1, .max = 4, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kLaptopPlacementOptions},
    {.id = 4, .name = "Lid State", .type = kEnumeration, .operators = kSameOnly, .max = 1, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kLidStateOptions},
    {.id = 5, .name = "Socket Power", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .units = "mW", .enabled = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 6, .name = "Skin Temperature", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .units = "centi-C", .enabled = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 7, .name = "User Presence", .type = 0, .operators = kSameOnly, .max = 1, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kAwayPresentOptions},
    {.id = 8, .name = "Display Number", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 9, .name = "Docking State", .type = kUnsigned, .operators = kSameOnly, .max = 1, .attr2 = 2, .options = kDockingStateOptions},
    {.id = 10, .name = "Battery Percentage", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .units = "%", .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 11, .name = "BIOS Input 1", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 12, .name = "BIOS Input 2", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 13, .name = "App Detection", .type = 6, .operators = kSameOnly, .enabled = 1, .driverFlag = 1, .attr3 = 2, .attr4 = 1, .options = kAppDetectionOptions},
    {.id = 14, .name = "App State", .type = kBitSet, .operators = kSameOrNot, .max = 63, .enabled = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kAppStateOptions},
    {.id = 15, .name = "Indirect Policy", .type = kUnsigned, .operators = kSameOnly, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 16, .name = "Workload Policy", .type = kEnumeration, .operators = kSameOnly, .max = 127, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kWorkloadPolicyOptions},
    {.id = 17, .name = "Average Power", .type = 5, .operators = kAllOperators, .max = kUnbounded, .units = "mW", .enabled = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 18, .name = "User Engaged", .type = kEnumeration, .operators = kSameOnly, .max = 1, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kAwayPresentOptions},
    {.id = 19, .name = "Mouse Count", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 20, .name = "Keyboard Count", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 21, .name = "Designed Battery Capacity", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .units = "mWh", .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 22, .name = "Fully Charged Battery Capacity", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .units = "mWh", .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 23, .name = "Battery Health", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .units = "%", .enabled = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 24, .name = "Battery Drain Rate", .type = kSigned, .operators = kAllOperators, .min = kLowestSigned, .max = 0x7FFFFFFF, .units = "mW", .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 25, .name = "App Input 1", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 26, .name = "App Input 2", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 27, .name = "Ambient Light", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 28, .name = "Processor Queue Length", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 29, .name = "Processor Time Average", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .units = "ms", .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 30, .name = "Processor Time Max", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .units = "ms", .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 31, .name = "Processor Interrupts/s Avg.", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 32, .name = "Processor Interrupts/s Max", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 33, .name = "GPU Engine Running Time", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .units = "ms", .attr1 = 1, .attr2 = 2},
    {.id = 34, .name = "GPU Engine Utilization Percent", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .units = "%", .attr1 = 1, .attr2 = 2},
    {.id = 35, .name = "User Input Delay", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 36, .name = "Average C0 Residency", .type = kUnsigned, .operators = kAllOperators, .max = 100, .units = "%", .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 37, .name = "Max C0 Residency", .type = kUnsigned, .operators = kAllOperators, .max = 100, .units = "%", .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 38, .name = "S0I3 Entry", .type = kEnumeration, .operators = kSameOnly, .max = 1, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kS0i3EntryOptions},
    {.id = 39, .name = "GFX Activity", .type = kUnsigned, .operators = kAllOperators, .max = 100, .units = "%", .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 40, .name = "Camera State", .type = kEnumeration, .operators = kSameOnly, .max = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kOffOnOptions},
    {.id = 41, .name = "Display Type", .type = kEnumeration, .operators = kSameOnly, .max = 0x80000000, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kDisplayTypeOptions},
    {.id = 42, .name = "Display State", .type = kEnumeration, .operators = kSameOnly, .max = 1, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kOffOnOptions},
    {.id = 43, .name = "ASM Performance State", .type = kEnumeration, .operators = kSameOnly, .max = 3, .attr1 = 1, .attr2 = 2, .options = kAsmStateOptions},
    {.id = 44, .name = "ASM State", .type = kEnumeration, .operators = kSameOnly, .max = 3, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kAsmStateOptions},
    {.id = 45, .name = "Reg key", .type = 11, .operators = kSameOnly, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr2 = 1, .attr3 = 1, .options = kRegKeyOptions},
    {.id = 46, .name = "App CPU Busy", .type = 8, .operators = kAllOperators, .max = 100, .units = "%", .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 47, .name = "Background Active App", .type = 6, .operators = kSameOnly, .enabled = 1, .attr2 = 2, .attr3 = 1},
    {.id = 48, .name = "Indexed Sensor Data", .type = 15, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 49, .name = "Indexed Sensor Status", .type = 14, .operators = kAllOperators, .max = 65535, .enabled = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 50, .name = "Sorted C0 Residency", .type = 12, .operators = kAllOperators, .max = kUnbounded, .units = "%", .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 51, .name = "Alpha Filtered Socket Power", .type = 12, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 52, .name = "BIOS Input 3", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 53, .name = "BIOS Input 4", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 54, .name = "BIOS Input 5", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 55, .name = "BIOS Input 6", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 56, .name = "BIOS Input 7", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 57, .name = "BIOS Input 8", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 58, .name = "BIOS Input 9", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 59, .name = "BIOS Input 10", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 60, .name = "Hetero State", .type = kEnumeration, .operators = kSameOnly, .max = 1, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kHeteroStateOptions},
    {.id = 61, .name = "NPU Workload Type", .type = kEnumeration, .operators = kSameOnly, .max = 3, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kNpuWorkloadTypeOptions},
    {.id = 62, .name = "NPU Busy [Avg]", .type = kUnsigned, .operators = kAllOperators, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 63, .name = "NPU Busy [Max]", .type = kUnsigned, .operators = kAllOperators, .max = 100, .units = "%", .enabled = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 64, .name = "NPU Power", .type = kUnsigned, .operators = kAllOperators, .max = kUnbounded, .units = "mW", .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 65, .name = "ASM Level", .type = kEnumeration, .operators = kAllOperators, .min = 1, .max = 6, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kAsmLevelOptions},
    {.id = 66, .name = "Game Mode", .type = kEnumeration, .operators = kSameOnly, .max = 1, .enabled = 1, .attr1 = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1, .options = kOffOnOptions},
    {.id = 67, .name = "NPU Column", .type = kUnsigned, .operators = kAllOperators, .max = 7, .enabled = 1, .driverFlag = 1, .attr2 = 2, .attr3 = 1},
    {.id = 68, .name = "Activity Balance", .type = kEnumeration, .operators = kSameOnly, .max = 2, .attr1 = 1, .attr2 = 2, .options = kActivityBalanceOptions},
    {.id = 69, .name = "PEPL Level", .type = kUnsigned, .operators = kAllOperators, .min = 1, .max = 10, .attr1 = 1, .attr2 = 2},
    {.id = 70, .name = "VCN Activity", .type = kUnsigned, .operators = kAllOperators, .max = 100, .units = "%", .attr1 = 1},
    {.id = 71, .name = "Transport Mode", .type = kEnumeration, .operators = kSameOnly, .max = 3, .attr1 = 1, .attr2 = 2, .options = kTransportModeOptions},
    {.id = 72, .name = "ASM Supported", .type = 0, .operators = kSameOnly, .max = 1, .enabled = 1, .driverFlag = 1},
};
// clang-format on

static_assert(std::size(kRows) == VQS_CONDITION_TYPES);
static_assert(idsAreIndexes(kRows));

constexpr QtfConditionInfo record(const ConditionRow& row) {
  QtfConditionInfo info{};
  info.Id = row.id;
  info.Enabled = row.enabled;
  info.Type = row.type;
  info.OperatorMask = row.operators;
  info.MinValue = row.min;
  info.MaxValue = row.max;
  copyText(info.Units, row.units);
  copyText(info.Name, row.name);
  info.OptionCount = static_cast<std::uint32_t>(row.options.size());
  info.Options = row.options.data();
  info.Attr1 = row.attr1;
  info.DriverFlag = row.driverFlag;
  info.Attr2 = row.attr2;
  info.Attr3 = row.attr3;
  info.Attr4 = row.attr4;
  return info;
}

// The driver's flags are written into it.
constinit std::array<QtfConditionInfo, VQS_CONDITION_TYPES> conditions = records<QtfConditionInfo>(kRows, record);

}  // namespace

std::span<QtfConditionInfo, VQS_CONDITION_TYPES> conditionTable() { return conditions; }

}  // namespace vqs
