// SPDX-License-Identifier: Apache-2.0
#include "src/policy/condition_table.h"

#include "format/catalogue/conditions.h"
#include "src/policy/catalogue_record.h"

namespace vqs {
namespace {

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

// Not const: vqsPbGetConditions writes the driver's flags into it.
constinit std::array<QtfConditionInfo, VQS_CONDITION_TYPES> conditions =
    records<QtfConditionInfo>(kConditionRows, record);

}  // namespace

std::span<QtfConditionInfo, VQS_CONDITION_TYPES> conditionTable() { return conditions; }

}  // namespace vqs
