// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/checks/checks.h"

namespace documents {
namespace {

using Check = void (*)(Context& context, const BoundSet& bound);

constexpr Check kChecks[] = {
    checkActionTwice, checkContradiction, checkDuplicateId, checkDuplicateName,
    checkIdZero,      checkNoConditions,  checkNoPolicies,
};

}  // namespace

void runChecks(Context& context, const BoundSet& bound) {
  for (const Check check : kChecks) check(context, bound);
}

Path policyPath(std::size_t index) { return Path{}.member("policies").element(index); }

}  // namespace documents
