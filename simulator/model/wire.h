// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

/// Control codes, and the records of policies as the driver sees them: little-endian. The records of other families
/// are written down in the files of their components.
namespace simulator {

static_assert(std::endian::native == std::endian::little, "records are copied to and from the wire as they are");

enum : std::uint32_t {
  kCodeFeatureStatus = 0x80222000,
  kCodeAutoModeTable = 0x8022200C,
  kCodeBattery = 0x80222010,
  kCodeInBagTable = 0x80222014,
  kCodeSliderTable = 0x80222018,
  kCodeAsmLiteTable = 0x8022201C,
  kCodeDynamicSlider = 0x80222020,
  kCodeEventRegistration = 0x80222024,
  kCodeFirmwareEvent = 0x80222028,
  kCodeFirmwareEventV2 = 0x8022202C,
  kCodePolicyModifyPb = 0x80222034,
  kCodePolicyLookup = 0x80222040,
  kCodeCatalogueSupport = 0x80222044,
  kCodeOemId = 0x8022204C,
  kCodePolicyReadAsm = 0x80222050,
  kCodePolicyModifyAsm = 0x80222054,
  kCodeLog = 0x80222058,
  kCodeLogSupport = 0x8022205C,
  kCodeOverride = 0x80222060,
  kCodePolicyReadPb = 0x80222064,
  kCodeAppIo = 0x80222068,
  kCodeTaControl = 0x8022206C,
  kCodePolicyBinary = 0x80222070,
  kCodePolling = 0x8022207C,
  kCodeSensorUpdate = 0x80222080,
  kCodeSensorData = 0x80222084,
  kCodeDebugOutput = 0x80222088,
  kCodeTaskbarIcon = 0x8022208C,
  kCodeSliderV4Table = 0x80222090,
  kCodeSe1 = 0x80222094,
  kCodeOverrideValue = 0x80222098,
  kCodeOverrideListSize = 0x8022209C,
  kCodeOverrideList = 0x802220A0,
  kCodeOverrideMetadata = 0x802220A4,
  kCodePolicyReadBalanceProfile = 0x802220A8,
  kCodePolicyModifyBalanceProfile = 0x802220AC
};

struct PolicyCondition {
  std::uint32_t conditionId;
  std::uint32_t op;
  std::uint32_t value;
  std::uint32_t value2;
};
static_assert(sizeof(PolicyCondition) == 16);

struct PolicyText {
  std::uint8_t flag;
  std::uint8_t reserved0[11];
  /// units including the terminating zero
  std::uint16_t length;
  char16_t text[256];
  std::uint8_t reserved1[2];
};
static_assert(sizeof(PolicyText) == 528);
static_assert(offsetof(PolicyText, length) == 12);
static_assert(offsetof(PolicyText, text) == 14);
static_assert(offsetof(PolicyText, reserved1) == 526);

struct PolicyAction {
  std::uint32_t actionId;
  std::uint32_t value;
  std::uint32_t value2;
  std::uint8_t option1;
  std::uint8_t option2;
  std::uint8_t reserved0[2];
  std::uint32_t value3;
  std::uint8_t option3;
  std::uint8_t reserved1[3];
  std::uint32_t value4;
};
static_assert(sizeof(PolicyAction) == 28);
static_assert(offsetof(PolicyAction, reserved0) == 14);
static_assert(offsetof(PolicyAction, value3) == 16);
static_assert(offsetof(PolicyAction, reserved1) == 21);
static_assert(offsetof(PolicyAction, value4) == 24);

struct PackedPolicy {
  char16_t name[64];
  char description[32];
  std::uint8_t flag0;
  std::uint8_t reserved0[3];
  std::uint32_t id;
  std::uint32_t param0;
  std::uint8_t flag1;
  std::uint8_t flag2;
  std::uint8_t reserved1[2];
  std::uint32_t param1;
  std::uint32_t param2;
  std::uint32_t conditionCount;
  std::uint32_t actionCount;
  std::uint32_t textCount;
  PolicyCondition conditions[15];
  PolicyText texts[5];
  PolicyAction actions[32];
};
static_assert(sizeof(PackedPolicy) == 3972);
static_assert(offsetof(PackedPolicy, description) == 128);
static_assert(offsetof(PackedPolicy, flag0) == 160);
static_assert(offsetof(PackedPolicy, id) == 164);
static_assert(offsetof(PackedPolicy, flag1) == 172);
static_assert(offsetof(PackedPolicy, conditionCount) == 184);
static_assert(offsetof(PackedPolicy, actionCount) == 188);
static_assert(offsetof(PackedPolicy, textCount) == 192);
static_assert(offsetof(PackedPolicy, conditions) == 196);
static_assert(offsetof(PackedPolicy, texts) == 436);
static_assert(offsetof(PackedPolicy, actions) == 3076);

enum : std::uint32_t {
  kPolicyAdd = 1,
  kPolicyReset = 3,
  kPolicyStatus = 4,
  kPolicyDelete = 5,
  kPolicySetVersion = 6,
  kPolicyGetVersion = 7
};

/// What stands behind the policy of a modify request.
struct PolicyModifyTail {
  std::uint32_t policyCount;
  std::uint32_t result;
  std::uint8_t countOnly;
  std::uint8_t reserved0[3];
  std::uint32_t versionWord1;
  std::uint32_t versionWord2;
  /// The status entries of a longer request begin here.
  std::uint8_t statusEntries[4];
};
static_assert(sizeof(PolicyModifyTail) == 24);

struct PolicyModifyRecord {
  std::uint32_t operation;
  PackedPolicy policy;
  PolicyModifyTail tail;
};
static_assert(sizeof(PolicyModifyRecord) == 4000);
static_assert(offsetof(PolicyModifyRecord, policy) == 4);
static_assert(offsetof(PolicyModifyRecord, policy) + offsetof(PackedPolicy, id) == 168);
static_assert(offsetof(PolicyModifyRecord, tail) == 3976);
static_assert(offsetof(PolicyModifyRecord, tail.result) == 3980);
static_assert(offsetof(PolicyModifyRecord, tail.countOnly) == 3984);
static_assert(offsetof(PolicyModifyRecord, tail.versionWord1) == 3988);
static_assert(offsetof(PolicyModifyRecord, tail.statusEntries) == 3996);

struct PolicyStatusEntry {
  std::uint32_t statusValue;
  std::uint8_t statusFlagA;
  std::uint8_t statusFlagB;
  std::uint8_t reserved0[2];
  std::uint32_t statusValue2;
  std::uint8_t name[128];
};
static_assert(sizeof(PolicyStatusEntry) == 140);
static_assert(offsetof(PolicyStatusEntry, statusValue2) == 8);
static_assert(offsetof(PolicyStatusEntry, name) == 12);

inline constexpr std::size_t kPoliciesPerChunk = 5;

struct PolicyReadHead {
  std::uint8_t countQuery;
  std::uint8_t reserved0[3];
  std::uint32_t policyCount;
  std::uint32_t chunkIndex;
};
static_assert(sizeof(PolicyReadHead) == 12);

struct PolicyReadRecord {
  PolicyReadHead head;
  PackedPolicy policies[kPoliciesPerChunk];
};
static_assert(sizeof(PolicyReadRecord) == 19872);
static_assert(offsetof(PolicyReadRecord, policies) == 12);

struct PolicyLookupRecord {
  std::uint32_t reserved0;
  std::uint32_t key;
  std::uint8_t reserved1[3972];
  std::uint32_t store;
};
static_assert(sizeof(PolicyLookupRecord) == 3984);
static_assert(offsetof(PolicyLookupRecord, store) == 3980);

}  // namespace simulator
