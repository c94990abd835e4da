// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include <vqs/telemetry_records.h>

namespace vqs {

inline constexpr std::uint32_t kBytes = VQS_LOG_ELEMENT_BYTES;
inline constexpr std::uint32_t kInt32 = VQS_LOG_ELEMENT_INT32;
inline constexpr std::uint32_t kBool8 = VQS_LOG_ELEMENT_BOOL8;
inline constexpr std::uint32_t kUint16 = VQS_LOG_ELEMENT_UINT16;
inline constexpr std::uint32_t kUint32 = VQS_LOG_ELEMENT_UINT32;

// clang-format off
/// One key. The default values are the usual ones: a row names only what differs from them.
struct KeyRow {
  std::uint32_t id;
  const char* name;
  std::uint32_t type = kUint32;
  std::uint32_t count = 1;
  std::uint32_t param = 0;
};

/// In the order in which callers get them: keys 77 and 151 come later than their ids (compatibility.md: key-order).
inline constexpr std::array<KeyRow, VQS_LOG_KV_KEYS> kKVKeys = {{
    // the device and its user
    {.id = 1, .name = "DeviceState", .type = kBytes, .count = 12},
    {.id = 2, .name = "LidClosed", .type = kBytes, .count = 12},
    {.id = 3, .name = "PlatformType", .type = kBytes, .count = 12},
    {.id = 4, .name = "UserEngaged", .type = kBytes, .count = 4},
    {.id = 5, .name = "UserPresent", .type = kBytes, .count = 4},

    // displays
    {.id = 6, .name = "Display0Enabled", .type = kBytes, .count = 4},
    {.id = 7, .name = "Display1Enabled", .type = kBytes, .count = 4},
    {.id = 8, .name = "Display2Enabled", .type = kBytes, .count = 4},
    {.id = 9, .name = "Display3Enabled", .type = kBytes, .count = 4},
    {.id = 10, .name = "Display0Type", .type = kBytes, .count = 12},
    {.id = 11, .name = "Display1Type", .type = kBytes, .count = 12},
    {.id = 12, .name = "Display2Type", .type = kBytes, .count = 12},
    {.id = 13, .name = "Display3Type", .type = kBytes, .count = 12},

    // features
    {.id = 14, .name = "InBagPolicySupport", .type = kBytes, .count = 4},
    {.id = 15, .name = "InBagPolicyEnable", .type = kBytes, .count = 4},
    {.id = 16, .name = "StaticPowerSliderSupport", .type = kBytes, .count = 4},
    {.id = 17, .name = "StaticPowerSliderEnable", .type = kBytes, .count = 4},
    {.id = 18, .name = "ASMLiteSupport", .type = kBytes, .count = 4},
    {.id = 19, .name = "ASMLiteEnable", .type = kBytes, .count = 4},
    {.id = 20, .name = "PolicyBuilderSupport", .type = kBytes, .count = 4},
    {.id = 21, .name = "PolicyBuilderEnable", .type = kBytes, .count = 4},
    {.id = 22, .name = "ASMPolicySupport", .type = kBytes, .count = 4},
    {.id = 23, .name = "ASMPolicyEnable", .type = kBytes, .count = 4},

    // power and battery
    {.id = 24, .name = "PowerSource", .type = kBytes, .count = 4},
    {.id = 25, .name = "DesignedBatteryCapacity"},
    {.id = 26, .name = "FullBatteryCapacity"},
    {.id = 27, .name = "BatteryChargeRate", .type = kInt32},
    {.id = 28, .name = "BatteryChargeLevel"},

    // policies in force
    {.id = 29, .name = "PolicyPriority", .type = kInt32, .count = 100, .param = 10},
    {.id = 30, .name = "AsmPolicyPriority", .type = kInt32, .count = 100, .param = 10},

    // inputs and outputs
    {.id = 31, .name = "AppInput1"},
    {.id = 32, .name = "AppInput2"},
    {.id = 33, .name = "AppOutput1"},
    {.id = 34, .name = "AppOutput2"},
    {.id = 35, .name = "CustomInput1"},
    {.id = 36, .name = "CustomInput2"},
    {.id = 37, .name = "CustomOutput1"},
    {.id = 38, .name = "CustomOutput2"},
    {.id = 39, .name = "DebugOutput"},

    // workloads
    {.id = 40, .name = "WL_FS3D", .type = kBytes, .count = 4},
    {.id = 41, .name = "WL_PS", .type = kBytes, .count = 4},
    {.id = 42, .name = "WL_VIDEO", .type = kBytes, .count = 4},
    {.id = 43, .name = "WL_VR", .type = kBytes, .count = 4},
    {.id = 44, .name = "WL_COMPUTE", .type = kBytes, .count = 4},
    {.id = 45, .name = "WL_CUSTOM", .type = kBytes, .count = 4},
    {.id = 46, .name = "WL_W3D", .type = kBytes, .count = 4},

    // sensors
    {.id = 47, .name = "SensorStatus", .type = kUint16, .count = 4},
    {.id = 48, .name = "Sensor0Data", .count = 3},
    {.id = 49, .name = "Sensor1Data", .count = 3},
    {.id = 50, .name = "Sensor2Data", .count = 3},
    {.id = 51, .name = "Sensor3Data", .count = 3},

    // modes, what is connected
    {.id = 52, .name = "PowerMode", .type = kBytes, .count = 12},
    {.id = 53, .name = "DynamicMode", .type = kBytes, .count = 12},
    {.id = 54, .name = "MouseNum"},
    {.id = 55, .name = "KeyboardNum"},
    {.id = 56, .name = "DisplayNum"},
    {.id = 57, .name = "ambientLight"},
    {.id = 58, .name = "DisplayBrightness"},
    {.id = 59, .name = "FanID"},
    {.id = 60, .name = "PPMProfile"},

    // load
    {.id = 61, .name = "ProcessorQueueLength"},
    {.id = 62, .name = "ProcessorTimeAvg"},
    {.id = 63, .name = "ProcessorTimeMax"},
    {.id = 64, .name = "InterruptsPerSecondAvg"},
    {.id = 65, .name = "InterruptsPerSecondMax"},
    {.id = 66, .name = "GpuEngineRunningTime"},
    {.id = 67, .name = "UserInputDelay"},

    // binaries, residency
    {.id = 68, .name = "TABinaryOEMID", .type = kBytes, .count = 12},
    {.id = 69, .name = "averageC0"},
    {.id = 70, .name = "maxC0"},
    {.id = 71, .name = "gfxBusy"},

    // ASM
    {.id = 72, .name = "AsmPerfBias", .type = kBytes, .count = 12},
    {.id = 73, .name = "AsmBias", .type = kBytes, .count = 12},
    {.id = 74, .name = "ASMBinaryVersion", .type = kBytes, .count = 12},

    // binaries
    {.id = 75, .name = "TALoadStatus", .type = kInt32},
    {.id = 76, .name = "StaticBinaryLoadStatus", .type = kBytes, .count = 12},

    // processor power management
    {.id = 78, .name = "procThrottleMax_dense"},
    {.id = 79, .name = "procThrottleMin_dense"},
    {.id = 80, .name = "perfAutonomous", .type = kBytes, .count = 4},
    {.id = 81, .name = "perfEpp_dense"},
    {.id = 82, .name = "cpMinCores_dense"},
    {.id = 83, .name = "cpMaxCores_dense"},
    {.id = 77, .name = "procFreqMax_dense"},

    // power limits, NPU
    {.id = 84, .name = "teamsPowerCap"},
    {.id = 85, .name = "batteryTemperature"},
    {.id = 86, .name = "currentPowerLimit", .type = kInt32},
    {.id = 87, .name = "maxAsmPowerLimit", .type = kInt32},
    {.id = 88, .name = "npuPower"},
    {.id = 89, .name = "avgNpuClkFreq"},
    {.id = 90, .name = "avgNpuBusy", .count = 8},
    {.id = 91, .name = "avgFclkFreq"},
    {.id = 92, .name = "mpNpuFreq"},

    // processor power management
    {.id = 93, .name = "perfEpp_classic"},
    {.id = 94, .name = "cpMinCores_classic"},
    {.id = 95, .name = "cpMaxCores_classic"},
    {.id = 96, .name = "procFreqMax_classic"},

    // inputs and outputs
    {.id = 97, .name = "CustomInput3"},
    {.id = 98, .name = "CustomInput4"},
    {.id = 99, .name = "CustomInput5"},
    {.id = 100, .name = "CustomInput6"},
    {.id = 101, .name = "CustomInput7"},
    {.id = 102, .name = "CustomInput8"},
    {.id = 103, .name = "CustomInput9"},
    {.id = 104, .name = "CustomInput10"},
    {.id = 105, .name = "CustomOutput3"},
    {.id = 106, .name = "CustomOutput4"},
    {.id = 107, .name = "CustomOutput5"},
    {.id = 108, .name = "CustomOutput6"},
    {.id = 109, .name = "CustomOutput7"},
    {.id = 110, .name = "CustomOutput8"},
    {.id = 111, .name = "CustomOutput9"},
    {.id = 112, .name = "CustomOutput10"},

    // counters
    {.id = 113, .name = "HeteroSupport", .type = kBytes, .count = 4},
    {.id = 114, .name = "asmPerfStateCounters", .count = 4},
    {.id = 115, .name = "asmStateCounters", .count = 4},
    {.id = 116, .name = "powerModeCounters", .count = 9},
    {.id = 117, .name = "teamsPowerCapCounter"},
    {.id = 118, .name = "displayBrightnessCounter"},

    // values since the last reading
    {.id = 119, .name = "displayBrightnessValues_A", .count = 10},
    {.id = 120, .name = "batteryChargeLevels_A", .count = 20},
    {.id = 121, .name = "batteryChargeRates_A", .type = kInt32, .count = 20},
    {.id = 122, .name = "batteryTemperatures_A", .count = 20},
    {.id = 123, .name = "nvmeModel", .type = kBytes, .count = 40},
    {.id = 124, .name = "nvmeVendor", .type = kBytes, .count = 40},
    {.id = 125, .name = "nvmeTemperatures_A", .count = 20},

    // modes
    {.id = 126, .name = "GameMode", .type = kBytes, .count = 4},

    // processor power management
    {.id = 127, .name = "latencyHintPerf_dense"},
    {.id = 128, .name = "latencyHintPerf_classic"},
    {.id = 129, .name = "softParkLatency"},
    {.id = 130, .name = "smtUnparkPolicy", .type = kBytes, .count = 4},
    {.id = 131, .name = "heteroIncreaseTime"},
    {.id = 132, .name = "heteroDecreaseTime"},
    {.id = 133, .name = "cpDecreaseTime"},
    {.id = 134, .name = "cpIncreaseTime"},
    {.id = 135, .name = "schedulingPolicy", .type = kBytes, .count = 4},
    {.id = 136, .name = "shortSchedulingPolicy", .type = kBytes, .count = 4},
    {.id = 137, .name = "cpConcurrencyThreshold"},
    {.id = 138, .name = "perfMinPolicy_dense"},
    {.id = 139, .name = "perfMinPolicy_classic"},
    {.id = 140, .name = "perfMaxPolicy_dense"},
    {.id = 141, .name = "perfMaxPolicy_classic"},

    // NPU
    {.id = 142, .name = "NpuQOsHint", .type = kBytes, .count = 12},
    {.id = 143, .name = "NpuForceState", .type = kBytes, .count = 12},

    // processor power management
    {.id = 144, .name = "heteroIncreaseThreshold_dense"},
    {.id = 145, .name = "heteroIncreaseThreshold_classic"},
    {.id = 146, .name = "heteroDecreaseThreshold_dense"},
    {.id = 147, .name = "heteroDecreaseThreshold_classic"},

    // balance profile
    {.id = 148, .name = "BalanceProfileSupport", .type = kBytes, .count = 4},
    {.id = 149, .name = "BalanceProfileEnable", .type = kBytes, .count = 4},
    {.id = 150, .name = "BalanceProfileBinVersion", .type = kBytes, .count = 12},

    // levels
    {.id = 152, .name = "PeplLevel"},
    {.id = 153, .name = "ActivityBalance", .type = kBytes, .count = 8},
    {.id = 154, .name = "AsmLevel"},
    {.id = 151, .name = "BalanceProfilePolicyPriority", .type = kInt32, .count = 50, .param = 10},

    // processor power management
    {.id = 155, .name = "procThrottleMax_classic"},
    {.id = 156, .name = "procThrottleMin_classic"},

    // posture, firmware
    {.id = 157, .name = "laptopPlacement", .type = kBytes, .count = 12},
    {.id = 158, .name = "transportMode", .type = kBytes, .count = 8},
    {.id = 159, .name = "biosOnLapState", .type = kBytes, .count = 4},

    // processor, cameras, graphics
    {.id = 160, .name = "activeCoreBitmask"},
    {.id = 161, .name = "cameraIsStreamedByTeams", .type = kBytes, .count = 4},
    {.id = 162, .name = "cameraIsThrottledByTeams", .type = kBytes, .count = 4},
    {.id = 163, .name = "processorIdentifier", .type = kBytes, .count = 16},
    {.id = 164, .name = "gfxWorkload"},
    {.id = 165, .name = "gfxSupported", .type = kBytes, .count = 4},

    // cores
    {.id = 166, .name = "coreFreq", .type = kUint16, .count = 16},
    {.id = 167, .name = "corePower", .type = kUint16, .count = 16},
    {.id = 168, .name = "coreTemp", .type = kUint16, .count = 16},

    // temperatures, limits
    {.id = 169, .name = "GfxTemp", .type = kUint16},
    {.id = 170, .name = "SocTemp", .type = kUint16},
    {.id = 171, .name = "stapmOpnLimit", .type = kUint16},
    {.id = 172, .name = "stapmCurrentLimit", .type = kUint16},
    {.id = 173, .name = "cpuMaxFreq", .type = kUint16},
    {.id = 174, .name = "gpuMaxFreq", .type = kUint16},
    {.id = 175, .name = "skinTemp", .type = kUint16},

    // clocks, activity
    {.id = 176, .name = "gfxClkFreq", .type = kUint16},
    {.id = 177, .name = "socClkFreq", .type = kUint16},
    {.id = 178, .name = "vClkFreq", .type = kUint16},
    {.id = 179, .name = "vcnActivity", .type = kUint16},
    {.id = 180, .name = "avgVpeClkFreq"},

    // memory traffic
    {.id = 181, .name = "avgDramReads", .type = kUint16},
    {.id = 182, .name = "avgDramWrites", .type = kUint16},

    // residency
    {.id = 183, .name = "coreC0Residency", .type = kUint16, .count = 16},
    {.id = 184, .name = "reverseSortedC0Res", .count = 16},

    // power
    {.id = 185, .name = "apuPower"},
    {.id = 186, .name = "gfxPower"},
    {.id = 187, .name = "dGpuPower"},
    {.id = 188, .name = "avgSocketPower"},
    {.id = 189, .name = "allCorePower"},

    // metrics
    {.id = 190, .name = "filterAlphaValue"},
    {.id = 191, .name = "metricsCounter"},
    {.id = 192, .name = "memClkFreq", .type = kUint16},

    // NPU traffic
    {.id = 193, .name = "npuReads", .type = kUint16},
    {.id = 194, .name = "npuWrites", .type = kUint16},

    // throttling
    {.id = 195, .name = "throttleResidency_PROCHOT"},
    {.id = 196, .name = "throttleResidency_SPL"},
    {.id = 197, .name = "throttleResidency_FPPT"},
    {.id = 198, .name = "throttleResidency_SPPT"},
    {.id = 199, .name = "throttleResidency_THM_CORE"},
    {.id = 200, .name = "throttleResidency_THM_GFX"},
    {.id = 201, .name = "throttleResidency_THM_SOC"},

    // platform power, clocks
    {.id = 202, .name = "psys", .type = kUint16},
    {.id = 203, .name = "dClkFreq", .type = kUint16},
    {.id = 204, .name = "uvdActivity", .type = kUint16},

    // voltages, currents, powers
    {.id = 205, .name = "vddcrVddVoltage", .type = kUint16},
    {.id = 206, .name = "vddcrSocVoltage", .type = kUint16},
    {.id = 207, .name = "vddcrVddCurrent", .type = kUint16},
    {.id = 208, .name = "vddcrSocCurrent", .type = kUint16},
    {.id = 209, .name = "vddcrVddPower", .type = kUint16},
    {.id = 210, .name = "vddcrSocPower", .type = kUint16},

    // cache
    {.id = 211, .name = "l3Freq", .type = kUint16},
    {.id = 212, .name = "l3Temp", .type = kUint16},

    // throttling, current limits
    {.id = 213, .name = "ThrottlerStatus", .type = kUint16},
    {.id = 214, .name = "vddTdc", .type = kUint16},
    {.id = 215, .name = "socTdc", .type = kUint16},
    {.id = 216, .name = "vddEdc", .type = kUint16},
    {.id = 217, .name = "socEdc", .type = kUint16},

    // temperature
    {.id = 218, .name = "curTemp", .type = kUint16},

    // limits of power limits
    {.id = 219, .name = "splMinLimit"},
    {.id = 220, .name = "splMaxLimit"},
    {.id = 221, .name = "spptMinLimit"},
    {.id = 222, .name = "spptMaxLimit"},
    {.id = 223, .name = "fpptMinLimit"},
    {.id = 224, .name = "fpptMaxLimit"},
    {.id = 225, .name = "spptApuOnlyMinLimit"},
    {.id = 226, .name = "spptApuOnlyMaxLimit"},

    // NPU
    {.id = 227, .name = "npuActiveColumnMask", .type = kUint16},
    {.id = 228, .name = "npuWorkload"},
}};

inline constexpr std::array<KeyRow, VQS_LOG_EX_KV_KEYS> kExKVKeys = {{
    // the device and its user
    {.id = 1, .name = "DeviceState"},
    {.id = 2, .name = "PlatformType"},
    {.id = 3, .name = "LidState", .type = kBool8},
    {.id = 4, .name = "UserEngaged", .type = kBool8},
    {.id = 5, .name = "UserPresent", .type = kBool8},

    // presence, posture
    {.id = 6, .name = "HPDProb"},
    {.id = 7, .name = "HPDDist"},
    {.id = 8, .name = "Angle"},

    // displays
    {.id = 9, .name = "DisplayNum"},
    {.id = 10, .name = "DisplayType", .count = 4},
    {.id = 11, .name = "DisplayState", .type = kBool8, .count = 4},

    // power slider, policies
    {.id = 12, .name = "PowerSliderPosition"},
    {.id = 13, .name = "ActivePolicyPrio", .count = 7},

    // what is connected
    {.id = 14, .name = "MouseNum"},
    {.id = 15, .name = "KeyboardNum"},

    // light, fan, profile
    {.id = 16, .name = "AmbientLight"},
    {.id = 17, .name = "DisplayBrightness"},
    {.id = 18, .name = "FanID"},
    {.id = 19, .name = "PPMProfile"},

    // firmware
    {.id = 20, .name = "BiosInput", .count = 2},
    {.id = 21, .name = "BiosOutput", .count = 2},

    // power and battery
    {.id = 22, .name = "PowerSource", .type = kBool8},
    {.id = 23, .name = "DesignedBatCap"},
    {.id = 24, .name = "FullBatCap"},
    {.id = 25, .name = "BatChargeRate", .type = kInt32},
    {.id = 26, .name = "BatChargeLevel"},

    // clocks, activity
    {.id = 27, .name = "GfxClkFreq", .type = kUint16},
    {.id = 28, .name = "SocClkFreq", .type = kUint16},
    {.id = 29, .name = "MemClkFreq", .type = kUint16, .param = 10},
    {.id = 30, .name = "GfxActivity", .type = kUint16, .param = 10},
    {.id = 31, .name = "UdvActivity", .type = kUint16},

    // voltages, currents, powers
    {.id = 32, .name = "VddcrVoltage", .type = kUint16, .count = 2},
    {.id = 33, .name = "VddcrCurrent", .type = kUint16, .count = 2},
    {.id = 34, .name = "VddcrPower", .type = kUint16, .count = 2},

    // cores
    {.id = 35, .name = "CoreFreq", .type = kUint16, .count = 16},
    {.id = 36, .name = "CorePower", .type = kUint16, .count = 16},
    {.id = 37, .name = "CoreTemp", .type = kUint16, .count = 16},

    // temperatures, limits
    {.id = 38, .name = "GfxTemp", .type = kUint16},
    {.id = 39, .name = "SocTemp", .type = kUint16},
    {.id = 40, .name = "ThrottlerStatus", .type = kUint16},
    {.id = 41, .name = "SocketPower", .type = kUint16},
    {.id = 42, .name = "StapmLimit", .type = kUint16},

    // power
    {.id = 43, .name = "ApuPower"},
    {.id = 44, .name = "DgpuPower"},

    // temperature, camera, binaries
    {.id = 45, .name = "SkinTemp", .type = kUint16},
    {.id = 46, .name = "CameraStatus", .type = kUint16},
    {.id = 47, .name = "PolicyBinaryLoaded", .type = kBool8},

    // NPU
    {.id = 48, .name = "NpuPower", .type = kInt32},
    {.id = 49, .name = "NpuClkFreq", .type = kInt32},
    {.id = 50, .name = "NpuBusy", .type = kInt32},
}};
// clang-format on

constexpr std::uint32_t elementWidth(std::uint32_t elementType) {
  switch (elementType) {
    case kBytes:
    case kBool8:
      return 1;
    case kUint16:
      return 2;
    default:
      return 4;
  }
}

/// Bytes of a key's value in the log: those of its elements, rounded up to a multiple of 4.
constexpr std::int32_t valueSize(const KeyRow& key) {
  return static_cast<std::int32_t>((key.count * elementWidth(key.type) + 3) / 4 * 4);
}

template <std::size_t N>
constexpr std::array<std::int32_t, N + 1> valueSizes(const std::array<KeyRow, N>& keys) {
  std::array<std::int32_t, N + 1> sizes{};
  for (const auto& key : keys) sizes[key.id] = valueSize(key);
  return sizes;
}

/// For three keys of the Ex log the driver leaves more room than their elements need (compatibility.md:
/// ex-value-sizes).
constexpr auto exSizes() {
  auto sizes = valueSizes(kExKVKeys);
  sizes[20] = 40;  // BiosInput
  sizes[21] = 40;  // BiosOutput
  sizes[50] = 32;  // NpuBusy
  return sizes;
}

template <std::size_t N>
constexpr bool namesEveryIdOnce(const std::array<KeyRow, N>& keys) {
  std::array<bool, N + 1> seen{};
  for (const auto& key : keys) {
    if (key.id == 0 || key.id > N || seen[key.id]) return false;
    seen[key.id] = true;
  }
  return true;
}
static_assert(namesEveryIdOnce(kKVKeys));
static_assert(namesEveryIdOnce(kExKVKeys));
static_assert(std::ranges::is_sorted(kExKVKeys, {}, &KeyRow::id));

/// Bytes of each key's value in the log, by key id; index 0 holds 0.
inline constexpr auto kKVValueSizes = valueSizes(kKVKeys);
inline constexpr auto kExKVValueSizes = exSizes();

}  // namespace vqs
