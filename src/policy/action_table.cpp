// SPDX-License-Identifier: Apache-2.0
#include "src/policy/action_table.h"

#include "format/catalogue/actions.h"
#include "src/policy/catalogue_record.h"

namespace vqs {
namespace {

// Not const: vqsPbGetActions writes the driver's flags into it.
constinit std::array<QtfActionInfo, VQS_ACTION_TYPES> actions =
    records<QtfActionInfo>(kActionRows, commonRecord<QtfActionInfo>);

}  // namespace

std::span<QtfActionInfo, VQS_ACTION_TYPES> actionTable() { return actions; }

}  // namespace vqs
