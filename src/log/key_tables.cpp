// SPDX-License-Identifier: Apache-2.0
#include "log/key_tables.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vqs {
namespace {

constexpr std::uint32_t kBytes = VQS_LOG_ELEMENT_BYTES;
constexpr std::uint32_t kInt32 = VQS_LOG_ELEMENT_INT32;
constexpr std::uint32_t kBool8 = VQS_LOG_ELEMENT_BOOL8;
constexpr std::uint32_t kUint16 = VQS_LOG_ELEMENT_UINT16;
constexpr std::uint32_t kUint32 = VQS_LOG_ELEMENT_UINT32;

// clang-format off
constexpr std::array<QtfLogKeyInfo, 228> kKVKeys = {{
    {.KeyId = 1, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "DeviceState"},
    {.KeyId = 2, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "LidClosed"},
    {.KeyId = 3, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "PlatformType"},
    {.KeyId = 4, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "UserEngaged"},
    {.KeyId = 5, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "UserPresent"},
    {.KeyId = 6, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "Display0Enabled"},
    {.KeyId = 7, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "Display1Enabled"},
    {.KeyId = 8, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "Display2Enabled"},
    {.KeyId = 9, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "Display3Enabled"},
    {.KeyId = 10, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "Display0Type"},
    {.KeyId = 11, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "Display1Type"},
    {.KeyId = 12, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "Display2Type"},
    {.KeyId = 13, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "Display3Type"},
    {.KeyId = 14, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "InBagPolicySupport"},
    {.KeyId = 15, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "InBagPolicyEnable"},
    {.KeyId = 16, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "StaticPowerSliderSupport"},
    {.KeyId = 17, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "StaticPowerSliderEnable"},
    {.KeyId = 18, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "ASMLiteSupport"},
    {.KeyId = 19, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "ASMLiteEnable"},
    {.KeyId = 20, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "PolicyBuilderSupport"},
    {.KeyId = 21, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "PolicyBuilderEnable"},
    {.KeyId = 22, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "ASMPolicySupport"},
    {.KeyId = 23, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "ASMPolicyEnable"},
    {.KeyId = 24, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "PowerSource"},
    {.KeyId = 25, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "DesignedBatteryCapacity"},
    {.KeyId = 26, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "FullBatteryCapacity"},
    {.KeyId = 27, .ElementType = kInt32, .ElementCount = 1, .Param = 0, .Name = "BatteryChargeRate"},
    {.KeyId = 28, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "BatteryChargeLevel"},
    {.KeyId = 29, .ElementType = kInt32, .ElementCount = 100, .Param = 10, .Name = "PolicyPriority"},
    {.KeyId = 30, .ElementType = kInt32, .ElementCount = 100, .Param = 10, .Name = "AsmPolicyPriority"},
    {.KeyId = 31, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "AppInput1"},
    {.KeyId = 32, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "AppInput2"},
    {.KeyId = 33, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "AppOutput1"},
    {.KeyId = 34, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "AppOutput2"},
    {.KeyId = 35, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomInput1"},
    {.KeyId = 36, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomInput2"},
    {.KeyId = 37, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomOutput1"},
    {.KeyId = 38, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomOutput2"},
    {.KeyId = 39, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "DebugOutput"},
    {.KeyId = 40, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "WL_FS3D"},
    {.KeyId = 41, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "WL_PS"},
    {.KeyId = 42, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "WL_VIDEO"},
    {.KeyId = 43, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "WL_VR"},
    {.KeyId = 44, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "WL_COMPUTE"},
    {.KeyId = 45, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "WL_CUSTOM"},
    {.KeyId = 46, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "WL_W3D"},
    {.KeyId = 47, .ElementType = kUint16, .ElementCount = 4, .Param = 0, .Name = "SensorStatus"},
    {.KeyId = 48, .ElementType = kUint32, .ElementCount = 3, .Param = 0, .Name = "Sensor0Data"},
    {.KeyId = 49, .ElementType = kUint32, .ElementCount = 3, .Param = 0, .Name = "Sensor1Data"},
    {.KeyId = 50, .ElementType = kUint32, .ElementCount = 3, .Param = 0, .Name = "Sensor2Data"},
    {.KeyId = 51, .ElementType = kUint32, .ElementCount = 3, .Param = 0, .Name = "Sensor3Data"},
    {.KeyId = 52, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "PowerMode"},
    {.KeyId = 53, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "DynamicMode"},
    {.KeyId = 54, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "MouseNum"},
    {.KeyId = 55, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "KeyboardNum"},
    {.KeyId = 56, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "DisplayNum"},
    {.KeyId = 57, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "ambientLight"},
    {.KeyId = 58, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "DisplayBrightness"},
    {.KeyId = 59, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "FanID"},
    {.KeyId = 60, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "PPMProfile"},
    {.KeyId = 61, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "ProcessorQueueLength"},
    {.KeyId = 62, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "ProcessorTimeAvg"},
    {.KeyId = 63, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "ProcessorTimeMax"},
    {.KeyId = 64, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "InterruptsPerSecondAvg"},
    {.KeyId = 65, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "InterruptsPerSecondMax"},
    {.KeyId = 66, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "GpuEngineRunningTime"},
    {.KeyId = 67, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "UserInputDelay"},
    {.KeyId = 68, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "TABinaryOEMID"},
    {.KeyId = 69, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "averageC0"},
    {.KeyId = 70, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "maxC0"},
    {.KeyId = 71, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "gfxBusy"},
    {.KeyId = 72, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "AsmPerfBias"},
    {.KeyId = 73, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "AsmBias"},
    {.KeyId = 74, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "ASMBinaryVersion"},
    {.KeyId = 75, .ElementType = kInt32, .ElementCount = 1, .Param = 0, .Name = "TALoadStatus"},
    {.KeyId = 76, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "StaticBinaryLoadStatus"},
    {.KeyId = 78, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "procThrottleMax_dense"},
    {.KeyId = 79, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "procThrottleMin_dense"},
    {.KeyId = 80, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "perfAutonomous"},
    {.KeyId = 81, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "perfEpp_dense"},
    {.KeyId = 82, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "cpMinCores_dense"},
    {.KeyId = 83, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "cpMaxCores_dense"},
    // Out of its place, and kept so: readers of the list have always found it here.
    {.KeyId = 77, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "procFreqMax_dense"},
    {.KeyId = 84, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "teamsPowerCap"},
    {.KeyId = 85, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "batteryTemperature"},
    {.KeyId = 86, .ElementType = kInt32, .ElementCount = 1, .Param = 0, .Name = "currentPowerLimit"},
    {.KeyId = 87, .ElementType = kInt32, .ElementCount = 1, .Param = 0, .Name = "maxAsmPowerLimit"},
    {.KeyId = 88, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "npuPower"},
    {.KeyId = 89, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "avgNpuClkFreq"},
    {.KeyId = 90, .ElementType = kUint32, .ElementCount = 8, .Param = 0, .Name = "avgNpuBusy"},
    {.KeyId = 91, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "avgFclkFreq"},
    {.KeyId = 92, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "mpNpuFreq"},
    {.KeyId = 93, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "perfEpp_classic"},
    {.KeyId = 94, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "cpMinCores_classic"},
    {.KeyId = 95, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "cpMaxCores_classic"},
    {.KeyId = 96, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "procFreqMax_classic"},
    {.KeyId = 97, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomInput3"},
    {.KeyId = 98, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomInput4"},
    {.KeyId = 99, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomInput5"},
    {.KeyId = 100, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomInput6"},
    {.KeyId = 101, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomInput7"},
    {.KeyId = 102, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomInput8"},
    {.KeyId = 103, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomInput9"},
    {.KeyId = 104, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomInput10"},
    {.KeyId = 105, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomOutput3"},
    {.KeyId = 106, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomOutput4"},
    {.KeyId = 107, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomOutput5"},
    {.KeyId = 108, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomOutput6"},
    {.KeyId = 109, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomOutput7"},
    {.KeyId = 110, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomOutput8"},
    {.KeyId = 111, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomOutput9"},
    {.KeyId = 112, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "CustomOutput10"},
    {.KeyId = 113, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "HeteroSupport"},
    {.KeyId = 114, .ElementType = kUint32, .ElementCount = 4, .Param = 0, .Name = "asmPerfStateCounters"},
    {.KeyId = 115, .ElementType = kUint32, .ElementCount = 4, .Param = 0, .Name = "asmStateCounters"},
    {.KeyId = 116, .ElementType = kUint32, .ElementCount = 9, .Param = 0, .Name = "powerModeCounters"},
    {.KeyId = 117, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "teamsPowerCapCounter"},
    {.KeyId = 118, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "displayBrightnessCounter"},
    {.KeyId = 119, .ElementType = kUint32, .ElementCount = 10, .Param = 0, .Name = "displayBrightnessValues_A"},
    {.KeyId = 120, .ElementType = kUint32, .ElementCount = 20, .Param = 0, .Name = "batteryChargeLevels_A"},
    {.KeyId = 121, .ElementType = kInt32, .ElementCount = 20, .Param = 0, .Name = "batteryChargeRates_A"},
    {.KeyId = 122, .ElementType = kUint32, .ElementCount = 20, .Param = 0, .Name = "batteryTemperatures_A"},
    {.KeyId = 123, .ElementType = kBytes, .ElementCount = 40, .Param = 0, .Name = "nvmeModel"},
    {.KeyId = 124, .ElementType = kBytes, .ElementCount = 40, .Param = 0, .Name = "nvmeVendor"},
    {.KeyId = 125, .ElementType = kUint32, .ElementCount = 20, .Param = 0, .Name = "nvmeTemperatures_A"},
    {.KeyId = 126, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "GameMode"},
    {.KeyId = 127, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "latencyHintPerf_dense"},
    {.KeyId = 128, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "latencyHintPerf_classic"},
    {.KeyId = 129, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "softParkLatency"},
    {.KeyId = 130, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "smtUnparkPolicy"},
    {.KeyId = 131, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "heteroIncreaseTime"},
    {.KeyId = 132, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "heteroDecreaseTime"},
    {.KeyId = 133, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "cpDecreaseTime"},
    {.KeyId = 134, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "cpIncreaseTime"},
    {.KeyId = 135, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "schedulingPolicy"},
    {.KeyId = 136, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "shortSchedulingPolicy"},
    {.KeyId = 137, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "cpConcurrencyThreshold"},
    {.KeyId = 138, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "perfMinPolicy_dense"},
    {.KeyId = 139, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "perfMinPolicy_classic"},
    {.KeyId = 140, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "perfMaxPolicy_dense"},
    {.KeyId = 141, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "perfMaxPolicy_classic"},
    {.KeyId = 142, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "NpuQOsHint"},
    {.KeyId = 143, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "NpuForceState"},
    {.KeyId = 144, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "heteroIncreaseThreshold_dense"},
    {.KeyId = 145, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "heteroIncreaseThreshold_classic"},
    {.KeyId = 146, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "heteroDecreaseThreshold_dense"},
    {.KeyId = 147, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "heteroDecreaseThreshold_classic"},
    {.KeyId = 148, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "BalanceProfileSupport"},
    {.KeyId = 149, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "BalanceProfileEnable"},
    {.KeyId = 150, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "BalanceProfileBinVersion"},
    // Ids 152 to 154 stand before 151, and are kept so.
    {.KeyId = 152, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "PeplLevel"},
    {.KeyId = 153, .ElementType = kBytes, .ElementCount = 8, .Param = 0, .Name = "ActivityBalance"},
    {.KeyId = 154, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "AsmLevel"},
    {.KeyId = 151, .ElementType = kInt32, .ElementCount = 50, .Param = 10, .Name = "BalanceProfilePolicyPriority"},
    {.KeyId = 155, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "procThrottleMax_classic"},
    {.KeyId = 156, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "procThrottleMin_classic"},
    {.KeyId = 157, .ElementType = kBytes, .ElementCount = 12, .Param = 0, .Name = "laptopPlacement"},
    {.KeyId = 158, .ElementType = kBytes, .ElementCount = 8, .Param = 0, .Name = "transportMode"},
    {.KeyId = 159, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "biosOnLapState"},
    {.KeyId = 160, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "activeCoreBitmask"},
    {.KeyId = 161, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "cameraIsStreamedByTeams"},
    {.KeyId = 162, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "cameraIsThrottledByTeams"},
    {.KeyId = 163, .ElementType = kBytes, .ElementCount = 16, .Param = 0, .Name = "processorIdentifier"},
    {.KeyId = 164, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "gfxWorkload"},
    {.KeyId = 165, .ElementType = kBytes, .ElementCount = 4, .Param = 0, .Name = "gfxSupported"},
    {.KeyId = 166, .ElementType = kUint16, .ElementCount = 16, .Param = 0, .Name = "coreFreq"},
    {.KeyId = 167, .ElementType = kUint16, .ElementCount = 16, .Param = 0, .Name = "corePower"},
    {.KeyId = 168, .ElementType = kUint16, .ElementCount = 16, .Param = 0, .Name = "coreTemp"},
    {.KeyId = 169, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "GfxTemp"},
    {.KeyId = 170, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "SocTemp"},
    {.KeyId = 171, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "stapmOpnLimit"},
    {.KeyId = 172, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "stapmCurrentLimit"},
    {.KeyId = 173, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "cpuMaxFreq"},
    {.KeyId = 174, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "gpuMaxFreq"},
    {.KeyId = 175, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "skinTemp"},
    {.KeyId = 176, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "gfxClkFreq"},
    {.KeyId = 177, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "socClkFreq"},
    {.KeyId = 178, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "vClkFreq"},
    {.KeyId = 179, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "vcnActivity"},
    {.KeyId = 180, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "avgVpeClkFreq"},
    {.KeyId = 181, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "avgDramReads"},
    {.KeyId = 182, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "avgDramWrites"},
    {.KeyId = 183, .ElementType = kUint16, .ElementCount = 16, .Param = 0, .Name = "coreC0Residency"},
    {.KeyId = 184, .ElementType = kUint32, .ElementCount = 16, .Param = 0, .Name = "reverseSortedC0Res"},
    {.KeyId = 185, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "apuPower"},
    {.KeyId = 186, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "gfxPower"},
    {.KeyId = 187, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "dGpuPower"},
    {.KeyId = 188, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "avgSocketPower"},
    {.KeyId = 189, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "allCorePower"},
    {.KeyId = 190, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "filterAlphaValue"},
    {.KeyId = 191, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "metricsCounter"},
    {.KeyId = 192, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "memClkFreq"},
    {.KeyId = 193, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "npuReads"},
    {.KeyId = 194, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "npuWrites"},
    {.KeyId = 195, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "throttleResidency_PROCHOT"},
    {.KeyId = 196, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "throttleResidency_SPL"},
    {.KeyId = 197, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "throttleResidency_FPPT"},
    {.KeyId = 198, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "throttleResidency_SPPT"},
    {.KeyId = 199, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "throttleResidency_THM_CORE"},
    {.KeyId = 200, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "throttleResidency_THM_GFX"},
    {.KeyId = 201, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "throttleResidency_THM_SOC"},
    {.KeyId = 202, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "psys"},
    {.KeyId = 203, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "dClkFreq"},
    {.KeyId = 204, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "uvdActivity"},
    {.KeyId = 205, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "vddcrVddVoltage"},
    {.KeyId = 206, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "vddcrSocVoltage"},
    {.KeyId = 207, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "vddcrVddCurrent"},
    {.KeyId = 208, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "vddcrSocCurrent"},
    {.KeyId = 209, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "vddcrVddPower"},
    {.KeyId = 210, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "vddcrSocPower"},
    {.KeyId = 211, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "l3Freq"},
    {.KeyId = 212, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "l3Temp"},
    {.KeyId = 213, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "ThrottlerStatus"},
    {.KeyId = 214, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "vddTdc"},
    {.KeyId = 215, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "socTdc"},
    {.KeyId = 216, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "vddEdc"},
    {.KeyId = 217, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "socEdc"},
    {.KeyId = 218, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "curTemp"},
    {.KeyId = 219, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "splMinLimit"},
    {.KeyId = 220, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "splMaxLimit"},
    {.KeyId = 221, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "spptMinLimit"},
    {.KeyId = 222, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "spptMaxLimit"},
    {.KeyId = 223, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "fpptMinLimit"},
    {.KeyId = 224, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "fpptMaxLimit"},
    {.KeyId = 225, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "spptApuOnlyMinLimit"},
    {.KeyId = 226, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "spptApuOnlyMaxLimit"},
    {.KeyId = 227, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "npuActiveColumnMask"},
    {.KeyId = 228, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "npuWorkload"},
}};

constexpr std::array<QtfLogKeyInfo, 50> kExKVKeys = {{
    {.KeyId = 1, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "DeviceState"},
    {.KeyId = 2, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "PlatformType"},
    {.KeyId = 3, .ElementType = kBool8, .ElementCount = 1, .Param = 0, .Name = "LidState"},
    {.KeyId = 4, .ElementType = kBool8, .ElementCount = 1, .Param = 0, .Name = "UserEngaged"},
    {.KeyId = 5, .ElementType = kBool8, .ElementCount = 1, .Param = 0, .Name = "UserPresent"},
    {.KeyId = 6, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "HPDProb"},
    {.KeyId = 7, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "HPDDist"},
    {.KeyId = 8, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "Angle"},
    {.KeyId = 9, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "DisplayNum"},
    {.KeyId = 10, .ElementType = kUint32, .ElementCount = 4, .Param = 0, .Name = "DisplayType"},
    {.KeyId = 11, .ElementType = kBool8, .ElementCount = 4, .Param = 0, .Name = "DisplayState"},
    {.KeyId = 12, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "PowerSliderPosition"},
    {.KeyId = 13, .ElementType = kUint32, .ElementCount = 7, .Param = 0, .Name = "ActivePolicyPrio"},
    {.KeyId = 14, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "MouseNum"},
    {.KeyId = 15, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "KeyboardNum"},
    {.KeyId = 16, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "AmbientLight"},
    {.KeyId = 17, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "DisplayBrightness"},
    {.KeyId = 18, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "FanID"},
    {.KeyId = 19, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "PPMProfile"},
    {.KeyId = 20, .ElementType = kUint32, .ElementCount = 2, .Param = 0, .Name = "BiosInput"},
    {.KeyId = 21, .ElementType = kUint32, .ElementCount = 2, .Param = 0, .Name = "BiosOutput"},
    {.KeyId = 22, .ElementType = kBool8, .ElementCount = 1, .Param = 0, .Name = "PowerSource"},
    {.KeyId = 23, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "DesignedBatCap"},
    {.KeyId = 24, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "FullBatCap"},
    {.KeyId = 25, .ElementType = kInt32, .ElementCount = 1, .Param = 0, .Name = "BatChargeRate"},
    {.KeyId = 26, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "BatChargeLevel"},
    {.KeyId = 27, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "GfxClkFreq"},
    {.KeyId = 28, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "SocClkFreq"},
    {.KeyId = 29, .ElementType = kUint16, .ElementCount = 1, .Param = 10, .Name = "MemClkFreq"},
    {.KeyId = 30, .ElementType = kUint16, .ElementCount = 1, .Param = 10, .Name = "GfxActivity"},
    {.KeyId = 31, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "UdvActivity"},
    {.KeyId = 32, .ElementType = kUint16, .ElementCount = 2, .Param = 0, .Name = "VddcrVoltage"},
    {.KeyId = 33, .ElementType = kUint16, .ElementCount = 2, .Param = 0, .Name = "VddcrCurrent"},
    {.KeyId = 34, .ElementType = kUint16, .ElementCount = 2, .Param = 0, .Name = "VddcrPower"},
    {.KeyId = 35, .ElementType = kUint16, .ElementCount = 16, .Param = 0, .Name = "CoreFreq"},
    {.KeyId = 36, .ElementType = kUint16, .ElementCount = 16, .Param = 0, .Name = "CorePower"},
    {.KeyId = 37, .ElementType = kUint16, .ElementCount = 16, .Param = 0, .Name = "CoreTemp"},
    {.KeyId = 38, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "GfxTemp"},
    {.KeyId = 39, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "SocTemp"},
    {.KeyId = 40, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "ThrottlerStatus"},
    {.KeyId = 41, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "SocketPower"},
    {.KeyId = 42, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "StapmLimit"},
    {.KeyId = 43, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "ApuPower"},
    {.KeyId = 44, .ElementType = kUint32, .ElementCount = 1, .Param = 0, .Name = "DgpuPower"},
    {.KeyId = 45, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "SkinTemp"},
    {.KeyId = 46, .ElementType = kUint16, .ElementCount = 1, .Param = 0, .Name = "CameraStatus"},
    {.KeyId = 47, .ElementType = kBool8, .ElementCount = 1, .Param = 0, .Name = "PolicyBinaryLoaded"},
    {.KeyId = 48, .ElementType = kInt32, .ElementCount = 1, .Param = 0, .Name = "NpuPower"},
    {.KeyId = 49, .ElementType = kInt32, .ElementCount = 1, .Param = 0, .Name = "NpuClkFreq"},
    {.KeyId = 50, .ElementType = kInt32, .ElementCount = 1, .Param = 0, .Name = "NpuBusy"},
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

/// A value takes its elements' bytes, rounded up to whole words.
constexpr std::int32_t valueSize(const QtfLogKeyInfo& key) {
  return static_cast<std::int32_t>((key.ElementCount * elementWidth(key.ElementType) + 3) / 4 * 4);
}

template <std::size_t N>
constexpr std::array<std::int32_t, N + 1> valueSizes(const std::array<QtfLogKeyInfo, N>& keys) {
  std::array<std::int32_t, N + 1> sizes{};
  for (const auto& key : keys) sizes[key.KeyId] = valueSize(key);
  return sizes;
}

/// Three keys of the Ex log take more room than their elements need.
constexpr auto exSizes() {
  auto sizes = valueSizes(kExKVKeys);
  sizes[20] = 40;  // BiosInput
  sizes[21] = 40;  // BiosOutput
  sizes[50] = 32;  // NpuBusy
  return sizes;
}

template <std::size_t N>
constexpr bool namesEveryIdOnce(const std::array<QtfLogKeyInfo, N>& keys) {
  std::array<bool, N + 1> seen{};
  for (const auto& key : keys) {
    if (key.KeyId == 0 || key.KeyId > N || seen[key.KeyId]) return false;
    seen[key.KeyId] = true;
  }
  return true;
}
static_assert(namesEveryIdOnce(kKVKeys));
static_assert(namesEveryIdOnce(kExKVKeys));
static_assert(std::ranges::is_sorted(kExKVKeys, {}, &QtfLogKeyInfo::KeyId));

constexpr auto kKVSizes = valueSizes(kKVKeys);
constexpr auto kExKVSizes = exSizes();

}  // namespace

std::span<const QtfLogKeyInfo, VQS_LOG_KV_KEYS> kvKeys() { return kKVKeys; }
std::span<const QtfLogKeyInfo, VQS_LOG_EX_KV_KEYS> exKVKeys() { return kExKVKeys; }
std::span<const std::int32_t, VQS_LOG_KV_KEYS + 1> kvValueSizes() { return kKVSizes; }
std::span<const std::int32_t, VQS_LOG_EX_KV_KEYS + 1> exKVValueSizes() { return kExKVSizes; }

}  // namespace vqs
