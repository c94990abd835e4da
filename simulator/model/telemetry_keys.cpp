// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/telemetry_keys.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "simulator/model/controls.h"
#include "simulator/model/surroundings.h"

namespace simulator {
namespace {

constexpr const char* kYes[] = {"Yes"};
constexpr const char* kNo[] = {"No"};
constexpr const char* kNoYes[] = {"No", "Yes"};
constexpr const char* kOffOn[] = {"Off", "On"};
constexpr const char* kActive[] = {"Active"};
constexpr const char* kPostures[] = {"Clamshell", "Lid Close"};
constexpr const char* kInternalDisplays[] = {"None", "LVDS"};
constexpr const char* kExternalDisplays[] = {"None", "HDMI"};
constexpr const char* kPowerSources[] = {"AC", "DC"};
constexpr const char* kPowerModeTexts[] = {"Saver", "Efficiency", "Balanced", "Performance", "Energy"};
constexpr const char* kBalanced[] = {"Balanced"};
constexpr const char* kStaticLoadTexts[] = {"Loaded", "Replaced", "Replaced"};
constexpr const char* kStaticVersion[] = {"1.0"};
constexpr const char* kOemIds[] = {kOemId};
constexpr const char* kNvmeModels[] = {"Simulated NVMe 512 GB"};
constexpr const char* kNvmeVendors[] = {"VexoQTF"};
constexpr const char* kRoundRobin[] = {"RR"};
constexpr const char* kAutomatic[] = {"Aut"};
constexpr const char* kNone[] = {"None"};
constexpr const char* kMedium[] = {"MED"};
constexpr const char* kPlacements[] = {"On Table"};
constexpr const char* kOut[] = {"Out"};
constexpr const char* kProcessors[] = {"Simulated CPU"};

// clang-format off
constexpr std::array<TelemetryKey, kKeyValueKeys> kKeyValueRows = {{
    {.id = 1, .type = ElementType::kBytes, .count = 12, .texts = kActive},  // DeviceState
    {.id = 2, .type = ElementType::kBytes, .count = 12, .signal = signal::lidClosed, .texts = kNoYes},  // LidClosed
    {.id = 3, .type = ElementType::kBytes, .count = 12, .signal = signal::lidClosed, .texts = kPostures},  // PlatformType
    {.id = 4, .type = ElementType::kBytes, .count = 4, .signal = signal::userEngaged, .texts = kNoYes},  // UserEngaged
    {.id = 5, .type = ElementType::kBytes, .count = 4, .signal = signal::userPresent, .texts = kNoYes},  // UserPresent
    {.id = 6, .type = ElementType::kBytes, .count = 4, .signal = signal::displayEnabled, .texts = kNoYes},  // Display0Enabled
    {.id = 7, .type = ElementType::kBytes, .count = 4, .signal = signal::displayEnabled, .first = 1, .texts = kNoYes},  // Display1Enabled
    {.id = 8, .type = ElementType::kBytes, .count = 4, .signal = signal::displayEnabled, .first = 2, .texts = kNoYes},  // Display2Enabled
    {.id = 9, .type = ElementType::kBytes, .count = 4, .signal = signal::displayEnabled, .first = 3, .texts = kNoYes},  // Display3Enabled
    {.id = 10, .type = ElementType::kBytes, .count = 12, .signal = signal::displayEnabled, .texts = kInternalDisplays},  // Display0Type
    {.id = 11, .type = ElementType::kBytes, .count = 12, .signal = signal::displayEnabled, .first = 1, .texts = kExternalDisplays},  // Display1Type
    {.id = 12, .type = ElementType::kBytes, .count = 12, .signal = signal::displayEnabled, .first = 2, .texts = kExternalDisplays},  // Display2Type
    {.id = 13, .type = ElementType::kBytes, .count = 12, .signal = signal::displayEnabled, .first = 3, .texts = kExternalDisplays},  // Display3Type
    {.id = 14, .type = ElementType::kBytes, .count = 4, .texts = kYes},  // InBagPolicySupport
    {.id = 15, .type = ElementType::kBytes, .count = 4, .signal = signal::featureActive, .first = 1, .texts = kNoYes},  // InBagPolicyEnable
    {.id = 16, .type = ElementType::kBytes, .count = 4, .texts = kYes},  // StaticPowerSliderSupport
    {.id = 17, .type = ElementType::kBytes, .count = 4, .signal = signal::featureActive, .first = 2, .texts = kNoYes},  // StaticPowerSliderEnable
    {.id = 18, .type = ElementType::kBytes, .count = 4, .texts = kYes},  // ASMLiteSupport
    {.id = 19, .type = ElementType::kBytes, .count = 4, .signal = signal::featureActive, .first = 3, .texts = kNoYes},  // ASMLiteEnable
    {.id = 20, .type = ElementType::kBytes, .count = 4, .texts = kYes},  // PolicyBuilderSupport
    {.id = 21, .type = ElementType::kBytes, .count = 4, .signal = signal::featureActive, .first = 6, .texts = kNoYes},  // PolicyBuilderEnable
    {.id = 22, .type = ElementType::kBytes, .count = 4, .texts = kYes},  // ASMPolicySupport
    {.id = 23, .type = ElementType::kBytes, .count = 4, .signal = signal::featureActive, .first = 7, .texts = kNoYes},  // ASMPolicyEnable
    {.id = 24, .type = ElementType::kBytes, .count = 4, .signal = signal::powerSource, .texts = kPowerSources},  // PowerSource
    {.id = 25, .type = ElementType::kUint32, .count = 1, .constant = kDesignedCapacity},  // DesignedBatteryCapacity
    {.id = 26, .type = ElementType::kUint32, .count = 1, .constant = kFullCapacity},  // FullBatteryCapacity
    {.id = 27, .type = ElementType::kInt32, .count = 1, .signal = signal::chargeRate},  // BatteryChargeRate
    {.id = 28, .type = ElementType::kUint32, .count = 1, .signal = signal::chargeLevel},  // BatteryChargeLevel
    {.id = 29, .type = ElementType::kInt32, .count = 100, .signal = signal::pbPolicyId},  // PolicyPriority
    {.id = 30, .type = ElementType::kInt32, .count = 100, .signal = signal::asmPolicyId},  // AsmPolicyPriority
    {.id = 31, .type = ElementType::kUint32, .count = 1, .signal = signal::appInput},  // AppInput1
    {.id = 32, .type = ElementType::kUint32, .count = 1, .signal = signal::appInput, .first = 1},  // AppInput2
    {.id = 33, .type = ElementType::kUint32, .count = 1, .signal = signal::appOutput},  // AppOutput1
    {.id = 34, .type = ElementType::kUint32, .count = 1, .signal = signal::appOutput, .first = 1},  // AppOutput2
    {.id = 35, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput},  // CustomInput1
    {.id = 36, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 1},  // CustomInput2
    {.id = 37, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput},  // CustomOutput1
    {.id = 38, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 1},  // CustomOutput2
    {.id = 39, .type = ElementType::kUint32, .count = 1, .signal = signal::seconds},  // DebugOutput
    {.id = 40, .type = ElementType::kBytes, .count = 4, .texts = kNo},  // WL_FS3D
    {.id = 41, .type = ElementType::kBytes, .count = 4, .texts = kNo},  // WL_PS
    {.id = 42, .type = ElementType::kBytes, .count = 4, .texts = kNo},  // WL_VIDEO
    {.id = 43, .type = ElementType::kBytes, .count = 4, .texts = kNo},  // WL_VR
    {.id = 44, .type = ElementType::kBytes, .count = 4, .texts = kNo},  // WL_COMPUTE
    {.id = 45, .type = ElementType::kBytes, .count = 4, .texts = kNo},  // WL_CUSTOM
    {.id = 46, .type = ElementType::kBytes, .count = 4, .texts = kNo},  // WL_W3D
    {.id = 47, .type = ElementType::kUint16, .count = 4, .signal = signal::sensorStatus},  // SensorStatus
    {.id = 48, .type = ElementType::kUint32, .count = 3, .signal = signal::sensorWord},  // Sensor0Data
    {.id = 49, .type = ElementType::kUint32, .count = 3, .signal = signal::sensorWord, .first = 3},  // Sensor1Data
    {.id = 50, .type = ElementType::kUint32, .count = 3, .signal = signal::sensorWord, .first = 6},  // Sensor2Data
    {.id = 51, .type = ElementType::kUint32, .count = 3, .signal = signal::sensorWord, .first = 9},  // Sensor3Data
    {.id = 52, .type = ElementType::kBytes, .count = 12, .signal = signal::powerMode, .texts = kPowerModeTexts},  // PowerMode
    {.id = 53, .type = ElementType::kBytes, .count = 12, .signal = signal::dynamicSlider, .texts = kOffOn},  // DynamicMode
    {.id = 54, .type = ElementType::kUint32, .count = 1, .signal = signal::mouseNumber},  // MouseNum
    {.id = 55, .type = ElementType::kUint32, .count = 1, .signal = signal::keyboardNumber},  // KeyboardNum
    {.id = 56, .type = ElementType::kUint32, .count = 1, .signal = signal::displayNumber},  // DisplayNum
    {.id = 57, .type = ElementType::kUint32, .count = 1, .signal = signal::ambientLight},  // ambientLight
    {.id = 58, .type = ElementType::kUint32, .count = 1, .signal = signal::brightness},  // DisplayBrightness
    {.id = 59, .type = ElementType::kUint32, .count = 1},  // FanID
    {.id = 60, .type = ElementType::kUint32, .count = 1, .constant = 1},  // PPMProfile
    {.id = 61, .type = ElementType::kUint32, .count = 1, .signal = signal::queueLength},  // ProcessorQueueLength
    {.id = 62, .type = ElementType::kUint32, .count = 1, .signal = signal::processorTime},  // ProcessorTimeAvg
    {.id = 63, .type = ElementType::kUint32, .count = 1, .signal = signal::highestProcessorTime},  // ProcessorTimeMax
    {.id = 64, .type = ElementType::kUint32, .count = 1, .signal = signal::interrupts},  // InterruptsPerSecondAvg
    {.id = 65, .type = ElementType::kUint32, .count = 1, .signal = signal::highestInterrupts},  // InterruptsPerSecondMax
    {.id = 66, .type = ElementType::kUint32, .count = 1, .signal = signal::gfxTime},  // GpuEngineRunningTime
    {.id = 67, .type = ElementType::kUint32, .count = 1, .constant = 8},  // UserInputDelay
    {.id = 68, .type = ElementType::kBytes, .count = 12, .texts = kOemIds},  // TABinaryOEMID
    {.id = 69, .type = ElementType::kUint32, .count = 1, .signal = signal::cpuActivity},  // averageC0
    {.id = 70, .type = ElementType::kUint32, .count = 1, .signal = signal::sortedCoreActivity},  // maxC0
    {.id = 71, .type = ElementType::kUint32, .count = 1, .signal = signal::gfxActivity},  // gfxBusy
    {.id = 72, .type = ElementType::kBytes, .count = 12, .texts = kBalanced},  // AsmPerfBias
    {.id = 73, .type = ElementType::kBytes, .count = 12, .texts = kBalanced},  // AsmBias
    {.id = 74, .type = ElementType::kBytes, .count = 12, .write = signal::binaryVersion},  // ASMBinaryVersion
    {.id = 75, .type = ElementType::kInt32, .count = 1, .signal = signal::taStatus},  // TALoadStatus
    {.id = 76, .type = ElementType::kBytes, .count = 12, .signal = signal::binarySource, .texts = kStaticLoadTexts},  // StaticBinaryLoadStatus
    {.id = 77, .type = ElementType::kUint32, .count = 1},  // procFreqMax_dense
    {.id = 78, .type = ElementType::kUint32, .count = 1, .constant = 100},  // procThrottleMax_dense
    {.id = 79, .type = ElementType::kUint32, .count = 1, .constant = 5},  // procThrottleMin_dense
    {.id = 80, .type = ElementType::kBytes, .count = 4, .texts = kYes},  // perfAutonomous
    {.id = 81, .type = ElementType::kUint32, .count = 1, .constant = 33},  // perfEpp_dense
    {.id = 82, .type = ElementType::kUint32, .count = 1, .constant = 10},  // cpMinCores_dense
    {.id = 83, .type = ElementType::kUint32, .count = 1, .constant = 100},  // cpMaxCores_dense
    {.id = 84, .type = ElementType::kUint32, .count = 1},  // teamsPowerCap
    {.id = 85, .type = ElementType::kUint32, .count = 1, .signal = signal::batteryTemperature},  // batteryTemperature
    {.id = 86, .type = ElementType::kInt32, .count = 1, .constant = 15000},  // currentPowerLimit
    {.id = 87, .type = ElementType::kInt32, .count = 1, .constant = 25000},  // maxAsmPowerLimit
    {.id = 88, .type = ElementType::kUint32, .count = 1, .signal = signal::npuPower},  // npuPower
    {.id = 89, .type = ElementType::kUint32, .count = 1, .signal = signal::npuFrequency},  // avgNpuClkFreq
    {.id = 90, .type = ElementType::kUint32, .count = 8, .signal = signal::npuActivity},  // avgNpuBusy
    {.id = 91, .type = ElementType::kUint32, .count = 1, .constant = 1600},  // avgFclkFreq
    {.id = 92, .type = ElementType::kUint32, .count = 1, .signal = signal::npuFrequency},  // mpNpuFreq
    {.id = 93, .type = ElementType::kUint32, .count = 1, .constant = 33},  // perfEpp_classic
    {.id = 94, .type = ElementType::kUint32, .count = 1, .constant = 10},  // cpMinCores_classic
    {.id = 95, .type = ElementType::kUint32, .count = 1, .constant = 100},  // cpMaxCores_classic
    {.id = 96, .type = ElementType::kUint32, .count = 1},  // procFreqMax_classic
    {.id = 97, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 2},  // CustomInput3
    {.id = 98, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 3},  // CustomInput4
    {.id = 99, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 4},  // CustomInput5
    {.id = 100, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 5},  // CustomInput6
    {.id = 101, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 6},  // CustomInput7
    {.id = 102, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 7},  // CustomInput8
    {.id = 103, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 8},  // CustomInput9
    {.id = 104, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 9},  // CustomInput10
    {.id = 105, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 2},  // CustomOutput3
    {.id = 106, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 3},  // CustomOutput4
    {.id = 107, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 4},  // CustomOutput5
    {.id = 108, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 5},  // CustomOutput6
    {.id = 109, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 6},  // CustomOutput7
    {.id = 110, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 7},  // CustomOutput8
    {.id = 111, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 8},  // CustomOutput9
    {.id = 112, .type = ElementType::kUint32, .count = 1, .signal = signal::customInput, .first = 9},  // CustomOutput10
    {.id = 113, .type = ElementType::kBytes, .count = 4, .texts = kNo},  // HeteroSupport
    {.id = 114, .type = ElementType::kUint32, .count = 4},  // asmPerfStateCounters
    {.id = 115, .type = ElementType::kUint32, .count = 4},  // asmStateCounters
    {.id = 116, .type = ElementType::kUint32, .count = 9, .signal = signal::powerModeSeconds},  // powerModeCounters
    {.id = 117, .type = ElementType::kUint32, .count = 1},  // teamsPowerCapCounter
    {.id = 118, .type = ElementType::kUint32, .count = 1},  // displayBrightnessCounter
    {.id = 119, .type = ElementType::kUint32, .count = 10, .signal = signal::brightnessHistory},  // displayBrightnessValues_A
    {.id = 120, .type = ElementType::kUint32, .count = 20, .signal = signal::levelHistory},  // batteryChargeLevels_A
    {.id = 121, .type = ElementType::kInt32, .count = 20, .signal = signal::rateHistory},  // batteryChargeRates_A
    {.id = 122, .type = ElementType::kUint32, .count = 20, .signal = signal::batteryTemperatureHistory},  // batteryTemperatures_A
    {.id = 123, .type = ElementType::kBytes, .count = 40, .texts = kNvmeModels},  // nvmeModel
    {.id = 124, .type = ElementType::kBytes, .count = 40, .texts = kNvmeVendors},  // nvmeVendor
    {.id = 125, .type = ElementType::kUint32, .count = 20, .signal = signal::nvmeTemperatureHistory},  // nvmeTemperatures_A
    {.id = 126, .type = ElementType::kBytes, .count = 4, .signal = signal::gameMode, .texts = kOffOn},  // GameMode
    {.id = 127, .type = ElementType::kUint32, .count = 1, .constant = 99},  // latencyHintPerf_dense
    {.id = 128, .type = ElementType::kUint32, .count = 1, .constant = 99},  // latencyHintPerf_classic
    {.id = 129, .type = ElementType::kUint32, .count = 1, .constant = 1000},  // softParkLatency
    {.id = 130, .type = ElementType::kBytes, .count = 4, .texts = kRoundRobin},  // smtUnparkPolicy
    {.id = 131, .type = ElementType::kUint32, .count = 1, .constant = 1},  // heteroIncreaseTime
    {.id = 132, .type = ElementType::kUint32, .count = 1, .constant = 1},  // heteroDecreaseTime
    {.id = 133, .type = ElementType::kUint32, .count = 1, .constant = 1},  // cpDecreaseTime
    {.id = 134, .type = ElementType::kUint32, .count = 1, .constant = 1},  // cpIncreaseTime
    {.id = 135, .type = ElementType::kBytes, .count = 4, .texts = kAutomatic},  // schedulingPolicy
    {.id = 136, .type = ElementType::kBytes, .count = 4, .texts = kAutomatic},  // shortSchedulingPolicy
    {.id = 137, .type = ElementType::kUint32, .count = 1, .constant = 95},  // cpConcurrencyThreshold
    {.id = 138, .type = ElementType::kUint32, .count = 1, .constant = 5},  // perfMinPolicy_dense
    {.id = 139, .type = ElementType::kUint32, .count = 1, .constant = 5},  // perfMinPolicy_classic
    {.id = 140, .type = ElementType::kUint32, .count = 1, .constant = 100},  // perfMaxPolicy_dense
    {.id = 141, .type = ElementType::kUint32, .count = 1, .constant = 100},  // perfMaxPolicy_classic
    {.id = 142, .type = ElementType::kBytes, .count = 12, .texts = kNone},  // NpuQOsHint
    {.id = 143, .type = ElementType::kBytes, .count = 12, .texts = kNone},  // NpuForceState
    {.id = 144, .type = ElementType::kUint32, .count = 1, .constant = 8},  // heteroIncreaseThreshold_dense
    {.id = 145, .type = ElementType::kUint32, .count = 1, .constant = 8},  // heteroIncreaseThreshold_classic
    {.id = 146, .type = ElementType::kUint32, .count = 1, .constant = 6},  // heteroDecreaseThreshold_dense
    {.id = 147, .type = ElementType::kUint32, .count = 1, .constant = 6},  // heteroDecreaseThreshold_classic
    {.id = 148, .type = ElementType::kBytes, .count = 4, .texts = kYes},  // BalanceProfileSupport
    {.id = 149, .type = ElementType::kBytes, .count = 4, .signal = signal::featureActive, .first = 9, .texts = kNoYes},  // BalanceProfileEnable
    {.id = 150, .type = ElementType::kBytes, .count = 12, .texts = kStaticVersion},  // BalanceProfileBinVersion
    {.id = 151, .type = ElementType::kInt32, .count = 50, .signal = signal::balanceProfilePolicyId},  // BalanceProfilePolicyPriority
    {.id = 152, .type = ElementType::kUint32, .count = 1, .constant = 5},  // PeplLevel
    {.id = 153, .type = ElementType::kBytes, .count = 8, .texts = kMedium},  // ActivityBalance
    {.id = 154, .type = ElementType::kUint32, .count = 1, .constant = 3},  // AsmLevel
    {.id = 155, .type = ElementType::kUint32, .count = 1, .constant = 100},  // procThrottleMax_classic
    {.id = 156, .type = ElementType::kUint32, .count = 1, .constant = 5},  // procThrottleMin_classic
    {.id = 157, .type = ElementType::kBytes, .count = 12, .texts = kPlacements},  // laptopPlacement
    {.id = 158, .type = ElementType::kBytes, .count = 8, .texts = kOut},  // transportMode
    {.id = 159, .type = ElementType::kBytes, .count = 4, .texts = kNo},  // biosOnLapState
    {.id = 160, .type = ElementType::kUint32, .count = 1, .constant = 0xFFFF},  // activeCoreBitmask
    {.id = 161, .type = ElementType::kBytes, .count = 4, .texts = kNo},  // cameraIsStreamedByTeams
    {.id = 162, .type = ElementType::kBytes, .count = 4, .texts = kNo},  // cameraIsThrottledByTeams
    {.id = 163, .type = ElementType::kBytes, .count = 16, .texts = kProcessors},  // processorIdentifier
    {.id = 164, .type = ElementType::kUint32, .count = 1, .signal = signal::gfxActivity},  // gfxWorkload
    {.id = 165, .type = ElementType::kBytes, .count = 4, .texts = kYes},  // gfxSupported
    {.id = 166, .type = ElementType::kUint16, .count = 16, .signal = signal::coreFrequency},  // coreFreq
    {.id = 167, .type = ElementType::kUint16, .count = 16, .signal = signal::corePower},  // corePower
    {.id = 168, .type = ElementType::kUint16, .count = 16, .signal = signal::coreTemperature},  // coreTemp
    {.id = 169, .type = ElementType::kUint16, .count = 1, .signal = signal::socTemperature},  // GfxTemp
    {.id = 170, .type = ElementType::kUint16, .count = 1, .signal = signal::socTemperature},  // SocTemp
    {.id = 171, .type = ElementType::kUint16, .count = 1, .constant = 15000},  // stapmOpnLimit
    {.id = 172, .type = ElementType::kUint16, .count = 1, .constant = 15000},  // stapmCurrentLimit
    {.id = 173, .type = ElementType::kUint16, .count = 1, .constant = 4200},  // cpuMaxFreq
    {.id = 174, .type = ElementType::kUint16, .count = 1, .constant = 2200},  // gpuMaxFreq
    {.id = 175, .type = ElementType::kUint16, .count = 1, .signal = signal::skinTemperature},  // skinTemp
    {.id = 176, .type = ElementType::kUint16, .count = 1, .signal = signal::gfxFrequency},  // gfxClkFreq
    {.id = 177, .type = ElementType::kUint16, .count = 1, .constant = 1200},  // socClkFreq
    {.id = 178, .type = ElementType::kUint16, .count = 1, .constant = 400},  // vClkFreq
    {.id = 179, .type = ElementType::kUint16, .count = 1},  // vcnActivity
    {.id = 180, .type = ElementType::kUint32, .count = 1, .constant = 400},  // avgVpeClkFreq
    {.id = 181, .type = ElementType::kUint16, .count = 1, .signal = signal::memoryReads},  // avgDramReads
    {.id = 182, .type = ElementType::kUint16, .count = 1, .signal = signal::memoryWrites},  // avgDramWrites
    {.id = 183, .type = ElementType::kUint16, .count = 16, .signal = signal::coreActivity},  // coreC0Residency
    {.id = 184, .type = ElementType::kUint32, .count = 16, .signal = signal::sortedCoreActivity},  // reverseSortedC0Res
    {.id = 185, .type = ElementType::kUint32, .count = 1, .signal = signal::apuPower},  // apuPower
    {.id = 186, .type = ElementType::kUint32, .count = 1, .signal = signal::gfxPower},  // gfxPower
    {.id = 187, .type = ElementType::kUint32, .count = 1},  // dGpuPower
    {.id = 188, .type = ElementType::kUint32, .count = 1, .signal = signal::apuPower},  // avgSocketPower
    {.id = 189, .type = ElementType::kUint32, .count = 1, .signal = signal::allCorePower},  // allCorePower
    {.id = 190, .type = ElementType::kUint32, .count = 1, .constant = 10},  // filterAlphaValue
    {.id = 191, .type = ElementType::kUint32, .count = 1, .signal = signal::seconds},  // metricsCounter
    {.id = 192, .type = ElementType::kUint16, .count = 1, .constant = 3200},  // memClkFreq
    {.id = 193, .type = ElementType::kUint16, .count = 1, .signal = signal::npuActivity},  // npuReads
    {.id = 194, .type = ElementType::kUint16, .count = 1, .signal = signal::npuActivity},  // npuWrites
    {.id = 195, .type = ElementType::kUint32, .count = 1, .signal = signal::throttled},  // throttleResidency_PROCHOT
    {.id = 196, .type = ElementType::kUint32, .count = 1, .signal = signal::throttled, .first = 1},  // throttleResidency_SPL
    {.id = 197, .type = ElementType::kUint32, .count = 1, .signal = signal::throttled, .first = 2},  // throttleResidency_FPPT
    {.id = 198, .type = ElementType::kUint32, .count = 1, .signal = signal::throttled, .first = 3},  // throttleResidency_SPPT
    {.id = 199, .type = ElementType::kUint32, .count = 1, .signal = signal::throttled, .first = 4},  // throttleResidency_THM_CORE
    {.id = 200, .type = ElementType::kUint32, .count = 1, .signal = signal::throttled, .first = 5},  // throttleResidency_THM_GFX
    {.id = 201, .type = ElementType::kUint32, .count = 1, .signal = signal::throttled, .first = 6},  // throttleResidency_THM_SOC
    {.id = 202, .type = ElementType::kUint16, .count = 1, .signal = signal::systemPower},  // psys
    {.id = 203, .type = ElementType::kUint16, .count = 1, .constant = 400},  // dClkFreq
    {.id = 204, .type = ElementType::kUint16, .count = 1},  // uvdActivity
    {.id = 205, .type = ElementType::kUint16, .count = 1, .signal = signal::railVoltage},  // vddcrVddVoltage
    {.id = 206, .type = ElementType::kUint16, .count = 1, .signal = signal::railVoltage, .first = 1},  // vddcrSocVoltage
    {.id = 207, .type = ElementType::kUint16, .count = 1, .signal = signal::railCurrent},  // vddcrVddCurrent
    {.id = 208, .type = ElementType::kUint16, .count = 1, .signal = signal::railCurrent, .first = 1},  // vddcrSocCurrent
    {.id = 209, .type = ElementType::kUint16, .count = 1, .signal = signal::railPower},  // vddcrVddPower
    {.id = 210, .type = ElementType::kUint16, .count = 1, .signal = signal::railPower, .first = 1},  // vddcrSocPower
    {.id = 211, .type = ElementType::kUint16, .count = 1, .signal = signal::coreFrequency},  // l3Freq
    {.id = 212, .type = ElementType::kUint16, .count = 1, .signal = signal::socTemperature},  // l3Temp
    {.id = 213, .type = ElementType::kUint16, .count = 1, .signal = signal::throttlerBits},  // ThrottlerStatus
    {.id = 214, .type = ElementType::kUint16, .count = 1, .constant = 45000},  // vddTdc
    {.id = 215, .type = ElementType::kUint16, .count = 1, .constant = 15000},  // socTdc
    {.id = 216, .type = ElementType::kUint16, .count = 1, .constant = 65000},  // vddEdc
    {.id = 217, .type = ElementType::kUint16, .count = 1, .constant = 20000},  // socEdc
    {.id = 218, .type = ElementType::kUint16, .count = 1, .signal = signal::socTemperature},  // curTemp
    {.id = 219, .type = ElementType::kUint32, .count = 1, .constant = 5000},  // splMinLimit
    {.id = 220, .type = ElementType::kUint32, .count = 1, .constant = 30000},  // splMaxLimit
    {.id = 221, .type = ElementType::kUint32, .count = 1, .constant = 5000},  // spptMinLimit
    {.id = 222, .type = ElementType::kUint32, .count = 1, .constant = 35000},  // spptMaxLimit
    {.id = 223, .type = ElementType::kUint32, .count = 1, .constant = 5000},  // fpptMinLimit
    {.id = 224, .type = ElementType::kUint32, .count = 1, .constant = 45000},  // fpptMaxLimit
    {.id = 225, .type = ElementType::kUint32, .count = 1, .constant = 5000},  // spptApuOnlyMinLimit
    {.id = 226, .type = ElementType::kUint32, .count = 1, .constant = 30000},  // spptApuOnlyMaxLimit
    {.id = 227, .type = ElementType::kUint16, .count = 1, .constant = 0xFF},  // npuActiveColumnMask
    {.id = 228, .type = ElementType::kUint32, .count = 1, .signal = signal::npuActivity},  // npuWorkload
}};

constexpr std::array<TelemetryKey, kExKeyValueKeys> kExKeyValueRows = {{
    {.id = 1, .type = ElementType::kUint32, .count = 1},  // DeviceState
    {.id = 2, .type = ElementType::kUint32, .count = 1, .constant = 2},  // PlatformType
    {.id = 3, .type = ElementType::kBool8, .count = 1, .signal = signal::lidClosed},  // LidState
    {.id = 4, .type = ElementType::kBool8, .count = 1, .signal = signal::userEngaged},  // UserEngaged
    {.id = 5, .type = ElementType::kBool8, .count = 1, .signal = signal::userPresent},  // UserPresent
    {.id = 6, .type = ElementType::kUint32, .count = 1, .constant = 90},  // HPDProb
    {.id = 7, .type = ElementType::kUint32, .count = 1, .constant = 600},  // HPDDist
    {.id = 8, .type = ElementType::kUint32, .count = 1, .signal = signal::sensorWord, .first = 6},  // Angle
    {.id = 9, .type = ElementType::kUint32, .count = 1, .signal = signal::displayNumber},  // DisplayNum
    {.id = 10, .type = ElementType::kUint32, .count = 4, .signal = signal::displayType},  // DisplayType
    {.id = 11, .type = ElementType::kBool8, .count = 4, .signal = signal::displayEnabled},  // DisplayState
    {.id = 12, .type = ElementType::kUint32, .count = 1, .signal = signal::powerMode},  // PowerSliderPosition
    {.id = 13, .type = ElementType::kUint32, .count = 7, .signal = signal::pbPolicyId},  // ActivePolicyPrio
    {.id = 14, .type = ElementType::kUint32, .count = 1, .signal = signal::mouseNumber},  // MouseNum
    {.id = 15, .type = ElementType::kUint32, .count = 1, .signal = signal::keyboardNumber},  // KeyboardNum
    {.id = 16, .type = ElementType::kUint32, .count = 1, .signal = signal::ambientLight},  // AmbientLight
    {.id = 17, .type = ElementType::kUint32, .count = 1, .signal = signal::brightness},  // DisplayBrightness
    {.id = 18, .type = ElementType::kUint32, .count = 1},  // FanID
    {.id = 19, .type = ElementType::kUint32, .count = 1, .constant = 1},  // PPMProfile
    {.id = 20, .type = ElementType::kUint32, .count = 2, .signal = signal::firmwareEvents, .step = 40},  // BiosInput
    {.id = 21, .type = ElementType::kUint32, .count = 2, .step = 40},  // BiosOutput
    {.id = 22, .type = ElementType::kBool8, .count = 1, .signal = signal::powerSource},  // PowerSource
    {.id = 23, .type = ElementType::kUint32, .count = 1, .constant = kDesignedCapacity},  // DesignedBatCap
    {.id = 24, .type = ElementType::kUint32, .count = 1, .constant = kFullCapacity},  // FullBatCap
    {.id = 25, .type = ElementType::kInt32, .count = 1, .signal = signal::chargeRate},  // BatChargeRate
    {.id = 26, .type = ElementType::kUint32, .count = 1, .signal = signal::chargeLevel},  // BatChargeLevel
    {.id = 27, .type = ElementType::kUint16, .count = 1, .signal = signal::gfxFrequency},  // GfxClkFreq
    {.id = 28, .type = ElementType::kUint16, .count = 1, .constant = 1200},  // SocClkFreq
    {.id = 29, .type = ElementType::kUint16, .count = 1, .constant = 3200},  // MemClkFreq
    {.id = 30, .type = ElementType::kUint16, .count = 1, .signal = signal::gfxActivity},  // GfxActivity
    {.id = 31, .type = ElementType::kUint16, .count = 1},  // UdvActivity
    {.id = 32, .type = ElementType::kUint16, .count = 2, .signal = signal::railVoltage},  // VddcrVoltage
    {.id = 33, .type = ElementType::kUint16, .count = 2, .signal = signal::railCurrent},  // VddcrCurrent
    {.id = 34, .type = ElementType::kUint16, .count = 2, .signal = signal::railPower},  // VddcrPower
    {.id = 35, .type = ElementType::kUint16, .count = 16, .signal = signal::coreFrequency},  // CoreFreq
    {.id = 36, .type = ElementType::kUint16, .count = 16, .signal = signal::corePower},  // CorePower
    {.id = 37, .type = ElementType::kUint16, .count = 16, .signal = signal::coreTemperature},  // CoreTemp
    {.id = 38, .type = ElementType::kUint16, .count = 1, .signal = signal::socTemperature},  // GfxTemp
    {.id = 39, .type = ElementType::kUint16, .count = 1, .signal = signal::socTemperature},  // SocTemp
    {.id = 40, .type = ElementType::kUint16, .count = 1, .signal = signal::throttlerBits},  // ThrottlerStatus
    {.id = 41, .type = ElementType::kUint16, .count = 1, .signal = signal::systemPower},  // SocketPower
    {.id = 42, .type = ElementType::kUint16, .count = 1, .constant = 15000},  // StapmLimit
    {.id = 43, .type = ElementType::kUint32, .count = 1, .signal = signal::apuPower},  // ApuPower
    {.id = 44, .type = ElementType::kUint32, .count = 1},  // DgpuPower
    {.id = 45, .type = ElementType::kUint16, .count = 1, .signal = signal::skinTemperature},  // SkinTemp
    {.id = 46, .type = ElementType::kUint16, .count = 1},  // CameraStatus
    {.id = 47, .type = ElementType::kBool8, .count = 1, .signal = signal::binaryIsLoaded},  // PolicyBinaryLoaded
    {.id = 48, .type = ElementType::kInt32, .count = 1, .signal = signal::npuPower},  // NpuPower
    {.id = 49, .type = ElementType::kInt32, .count = 1, .signal = signal::npuFrequency},  // NpuClkFreq
    {.id = 50, .type = ElementType::kInt32, .count = 1, .signal = signal::npuActivity, .step = 32},  // NpuBusy
}};
// clang-format on

template <std::size_t kSize>
constexpr bool areIdsInOrder(const std::array<TelemetryKey, kSize>& rows) {
  for (std::size_t i = 0; i < kSize; ++i)
    if (rows[i].id != i + 1) return false;
  return true;
}
static_assert(areIdsInOrder(kKeyValueRows));
static_assert(areIdsInOrder(kExKeyValueRows));

/// Texts end with a zero.
constexpr bool doTextsFit(const TelemetryKey& key) {
  return std::ranges::all_of(key.texts, [&](const char* text) { return std::string_view{text}.size() < key.count; });
}
static_assert(std::ranges::all_of(kKeyValueRows, doTextsFit));

template <std::size_t kSize>
constexpr std::size_t areaNeeded(const std::array<TelemetryKey, kSize>& rows) {
  std::size_t size = sizeof(std::uint32_t);
  for (const auto& row : rows) size += sizeof(std::uint32_t) + valueSize(row);
  return size;
}
static_assert(areaNeeded(kKeyValueRows) <= kLogAreaSize[static_cast<std::size_t>(LogKind::kKeyValue)]);
static_assert(areaNeeded(kExKeyValueRows) <= kLogAreaSize[static_cast<std::size_t>(LogKind::kExKeyValue)]);

}  // namespace

std::span<const TelemetryKey, kKeyValueKeys> keyValueKeys() { return kKeyValueRows; }
std::span<const TelemetryKey, kExKeyValueKeys> exKeyValueKeys() { return kExKeyValueRows; }

}  // namespace simulator
