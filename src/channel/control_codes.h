// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vqs {

/// Device type 0x8022, buffered transfer, any access.
constexpr std::uint32_t controlCode(std::uint32_t function) { return 0x80220000U + 4 * function; }

inline constexpr std::uint32_t kCodeQueryFeatureStatus = controlCode(0x800);
inline constexpr std::uint32_t kCodeItsAutoModeTable = controlCode(0x803);
inline constexpr std::uint32_t kCodeBattery = controlCode(0x804);
inline constexpr std::uint32_t kCodeInBagPolicyTable = controlCode(0x805);
inline constexpr std::uint32_t kCodeStaticSliderTable = controlCode(0x806);
inline constexpr std::uint32_t kCodeAsmLiteTable = controlCode(0x807);
inline constexpr std::uint32_t kCodeDynamicSlider = controlCode(0x808);
inline constexpr std::uint32_t kCodeEventRegistration = controlCode(0x809);
inline constexpr std::uint32_t kCodeBiosEvent = controlCode(0x80A);
inline constexpr std::uint32_t kCodeBiosEventV2 = controlCode(0x80B);
inline constexpr std::uint32_t kCodePbModify = controlCode(0x80D);
inline constexpr std::uint32_t kCodePolicyLookup = controlCode(0x810);
inline constexpr std::uint32_t kCodeCatalogueSupport = controlCode(0x811);
inline constexpr std::uint32_t kCodeOemId = controlCode(0x813);
inline constexpr std::uint32_t kCodeAsmRead = controlCode(0x814);
inline constexpr std::uint32_t kCodeAsmModify = controlCode(0x815);
inline constexpr std::uint32_t kCodeLog = controlCode(0x816);
inline constexpr std::uint32_t kCodeLogSupport = controlCode(0x817);
inline constexpr std::uint32_t kCodeOverrideInput = controlCode(0x818);
inline constexpr std::uint32_t kCodePbRead = controlCode(0x819);
inline constexpr std::uint32_t kCodeAppIo = controlCode(0x81A);
inline constexpr std::uint32_t kCodeTaControl = controlCode(0x81B);
inline constexpr std::uint32_t kCodePolicyBinary = controlCode(0x81C);
inline constexpr std::uint32_t kCodePolling = controlCode(0x81F);
inline constexpr std::uint32_t kCodeSimulateSensorUpdate = controlCode(0x820);
inline constexpr std::uint32_t kCodeSensorData = controlCode(0x821);
inline constexpr std::uint32_t kCodeDebugOutput = controlCode(0x822);
inline constexpr std::uint32_t kCodeTaskbarIcon = controlCode(0x823);
inline constexpr std::uint32_t kCodeStaticSliderTableV4 = controlCode(0x824);
inline constexpr std::uint32_t kCodeProgramSE1 = controlCode(0x825);
inline constexpr std::uint32_t kCodeOverrideKeyValue = controlCode(0x826);
inline constexpr std::uint32_t kCodeOverrideKeyListSize = controlCode(0x827);
inline constexpr std::uint32_t kCodeOverrideKeyList = controlCode(0x828);
inline constexpr std::uint32_t kCodeOverrideKeyMetadata = controlCode(0x829);
inline constexpr std::uint32_t kCodeBalanceProfileRead = controlCode(0x82A);
inline constexpr std::uint32_t kCodeBalanceProfileModify = controlCode(0x82B);

static_assert(kCodeQueryFeatureStatus == 0x80222000);
static_assert(kCodeItsAutoModeTable == 0x8022200C);
static_assert(kCodeBattery == 0x80222010);
static_assert(kCodeInBagPolicyTable == 0x80222014);
static_assert(kCodeStaticSliderTable == 0x80222018);
static_assert(kCodeAsmLiteTable == 0x8022201C);
static_assert(kCodeDynamicSlider == 0x80222020);
static_assert(kCodeEventRegistration == 0x80222024);
static_assert(kCodeBiosEvent == 0x80222028);
static_assert(kCodeBiosEventV2 == 0x8022202C);
static_assert(kCodePbModify == 0x80222034);
static_assert(kCodePolicyLookup == 0x80222040);
static_assert(kCodeCatalogueSupport == 0x80222044);
static_assert(kCodeOemId == 0x8022204C);
static_assert(kCodeAsmRead == 0x80222050);
static_assert(kCodeAsmModify == 0x80222054);
static_assert(kCodeLog == 0x80222058);
static_assert(kCodeLogSupport == 0x8022205C);
static_assert(kCodeOverrideInput == 0x80222060);
static_assert(kCodePbRead == 0x80222064);
static_assert(kCodeAppIo == 0x80222068);
static_assert(kCodeTaControl == 0x8022206C);
static_assert(kCodePolicyBinary == 0x80222070);
static_assert(kCodePolling == 0x8022207C);
static_assert(kCodeSimulateSensorUpdate == 0x80222080);
static_assert(kCodeSensorData == 0x80222084);
static_assert(kCodeDebugOutput == 0x80222088);
static_assert(kCodeTaskbarIcon == 0x8022208C);
static_assert(kCodeStaticSliderTableV4 == 0x80222090);
static_assert(kCodeProgramSE1 == 0x80222094);
static_assert(kCodeOverrideKeyValue == 0x80222098);
static_assert(kCodeOverrideKeyListSize == 0x8022209C);
static_assert(kCodeOverrideKeyList == 0x802220A0);
static_assert(kCodeOverrideKeyMetadata == 0x802220A4);
static_assert(kCodeBalanceProfileRead == 0x802220A8);
static_assert(kCodeBalanceProfileModify == 0x802220AC);

}  // namespace vqs
