// SPDX-License-Identifier: Apache-2.0
#include "src/policy/action_table.h"

#include "format/catalogue/actions.h"
#include "src/policy/catalogue_record.h"

namespace vqs {
namespace {

constexpr QtfActionInfo record(const ActionRow& row) {
  QtfActionInfo info{};
  info.Id = row.id;
  info.Enabled = row.enabled;
  info.Type = row.type;
  info.MinValue = row.min;
  info.MaxValue = row.max;
  copyText(info.Units, row.units);
  copyText(info.Name, row.name);
  info.OptionCount = static_cast<std::uint32_t>(row.options.size());
  info.Options = row.options.data();
  info.DriverFlag = row.driverFlag;
  info.Attr1 = row.attr1;
  return info;
}

// Not const: vqsPbGetActions writes the driver's flags into it.
constinit std::array<QtfActionInfo, VQS_ACTION_TYPES> actions = records<QtfActionInfo>(kActionRows, record);

}  // namespace

std::span<QtfActionInfo, VQS_ACTION_TYPES> actionTable() { return actions; }

}  // namespace vqs
