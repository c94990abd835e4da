// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

#include <vqs/policy_records.h>

/// A text in the driver's form.
struct VqsPackedText {
  std::uint8_t flag;
  std::uint8_t reserved0[11];
  /// units of text including the terminating zero unit, 1 to 256
  std::uint16_t length;
  VqsChar16 text[VQS_POLICY_TEXT_UNITS];
  std::uint8_t reserved1[2];
};
static_assert(sizeof(VqsPackedText) == 528);
static_assert(offsetof(VqsPackedText, flag) == 0);
static_assert(offsetof(VqsPackedText, length) == 12);
static_assert(offsetof(VqsPackedText, text) == 14);

/// A policy as the driver sends and receives it. Its counts may be above their limits: check them before going by them.
struct VqsPackedPolicy {
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
  VqsPackedText texts[VQS_POLICY_MAX_TEXTS];
  VqsPolicyAction actions[VQS_POLICY_MAX_ACTIONS];
};
static_assert(sizeof(VqsPackedPolicy) == 3972);
static_assert(offsetof(VqsPackedPolicy, name) == 0);
static_assert(offsetof(VqsPackedPolicy, description) == 128);
static_assert(offsetof(VqsPackedPolicy, flag0) == 160);
static_assert(offsetof(VqsPackedPolicy, id) == 164);
static_assert(offsetof(VqsPackedPolicy, param0) == 168);
static_assert(offsetof(VqsPackedPolicy, flag1) == 172);
static_assert(offsetof(VqsPackedPolicy, flag2) == 173);
static_assert(offsetof(VqsPackedPolicy, param1) == 176);
static_assert(offsetof(VqsPackedPolicy, param2) == 180);
static_assert(offsetof(VqsPackedPolicy, conditionCount) == 184);
static_assert(offsetof(VqsPackedPolicy, actionCount) == 188);
static_assert(offsetof(VqsPackedPolicy, textCount) == 192);
static_assert(offsetof(VqsPackedPolicy, conditions) == 196);
static_assert(offsetof(VqsPackedPolicy, texts) == 436);
static_assert(offsetof(VqsPackedPolicy, actions) == 3076);
