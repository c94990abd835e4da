// SPDX-License-Identifier: Apache-2.0
#include "src/policy/condition_table.h"

#include "format/catalogue/conditions.h"
#include "src/policy/catalogue_record.h"

namespace vqs {
namespace {

constexpr QtfConditionInfo record(const ConditionRow& row) {
  auto info = commonRecord<QtfConditionInfo>(row);
  info.OperatorMask = row.operators;
  info.Attr2 = row.attr2;
  info.Attr3 = row.attr3;
  info.Attr4 = row.attr4;
  return info;
}

// Not const: vqsPbGetConditions writes the driver's flags into it.
constinit std::array<QtfConditionInfo, VQS_CONDITION_TYPES> conditions =
    records<QtfConditionInfo>(kConditionRows, record);

}  // namespace

std::span<QtfConditionInfo, VQS_CONDITION_TYPES> conditionTable() { return conditions; }

}  // namespace vqs
