// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

/// The records of policies as the driver sees them: little-endian. The records of other families are written down in
/// the files of their components.
namespace simulator {

static_assert(std::endian::native == std::endian::little, "records are copied to and from the wire as they are");

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

enum PolicyOperation : std::uint32_t {
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
