// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "documents/bind/bound.h"
#include "documents/bind/context.h"

namespace documents {

/// Runs all checks of policies as wholes: what no single value shows. A new one gets a file, a line here and a row in
/// the table of checks.cpp.
void runChecks(Context& context, const BoundSet& bound);

void checkActionTwice(Context& context, const BoundSet& bound);
void checkContradiction(Context& context, const BoundSet& bound);
void checkDuplicateId(Context& context, const BoundSet& bound);
void checkDuplicateName(Context& context, const BoundSet& bound);
void checkIdZero(Context& context, const BoundSet& bound);
void checkNoConditions(Context& context, const BoundSet& bound);
void checkNoPolicies(Context& context, const BoundSet& bound);

/// "policies[3]"
Path policyPath(std::size_t index);

}  // namespace documents
