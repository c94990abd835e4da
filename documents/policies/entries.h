// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vqs/policy_records.h>

namespace documents {

/// Equal in all fields; what lies between the fields of an action's record is not looked at.
bool isSame(const VqsPolicyCondition& a, const VqsPolicyCondition& b);
bool isSame(const VqsPolicyAction& a, const VqsPolicyAction& b);

}  // namespace documents
