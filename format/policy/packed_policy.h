// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

#include <vqs/policy_records.h>

namespace vqs {

/// A text in the driver's form.
struct PackedText {
  std::uint8_t flag;
  std::uint8_t reserved0[11];
  /// units of text including the terminating zero unit, 1 to 256
  std::uint16_t length;
  VqsChar16 text[VQS_POLICY_TEXT_UNITS];
  std::uint8_t reserved1[2];
};
static_assert(sizeof(PackedText) == 528);
static_assert(offsetof(PackedText, flag) == 0);
static_assert(offsetof(PackedText, length) == 12);
static_assert(offsetof(PackedText, text) == 14);

/// A policy as the driver sends and receives it. Its counts may be above their limits: check them before going by them.
struct PackedPolicy {
  VqsChar16 name[VQS_POLICY_NAME_UNITS];
  char description[VQS_POLICY_DESCRIPTION_SIZE];
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
  VqsPolicyCondition conditions[VQS_POLICY_MAX_CONDITIONS];
  PackedText texts[VQS_POLICY_MAX_TEXTS];
  VqsPolicyAction actions[VQS_POLICY_MAX_ACTIONS];
};
static_assert(sizeof(PackedPolicy) == 3972);
static_assert(offsetof(PackedPolicy, name) == 0);
static_assert(offsetof(PackedPolicy, description) == 128);
static_assert(offsetof(PackedPolicy, flag0) == 160);
static_assert(offsetof(PackedPolicy, id) == 164);
static_assert(offsetof(PackedPolicy, param0) == 168);
static_assert(offsetof(PackedPolicy, flag1) == 172);
static_assert(offsetof(PackedPolicy, flag2) == 173);
static_assert(offsetof(PackedPolicy, param1) == 176);
static_assert(offsetof(PackedPolicy, param2) == 180);
static_assert(offsetof(PackedPolicy, conditionCount) == 184);
static_assert(offsetof(PackedPolicy, actionCount) == 188);
static_assert(offsetof(PackedPolicy, textCount) == 192);
static_assert(offsetof(PackedPolicy, conditions) == 196);
static_assert(offsetof(PackedPolicy, texts) == 436);
static_assert(offsetof(PackedPolicy, actions) == 3076);

}  // namespace vqs
