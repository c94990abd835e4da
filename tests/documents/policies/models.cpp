// SPDX-License-Identifier: Apache-2.0
#include "tests/documents/policies/models.h"

#include "tests/support/samples.h"

namespace documents {

Policy policyOf(const test::Policy& model) {
  Policy policy;
  policy.id = model.id;
  policy.name = model.name;
  policy.description = model.description;
  for (const auto& [conditionId, op, value, value2] : model.conditions)
    policy.conditions.push_back({.conditionId = conditionId, .op = op, .value = value, .value2 = value2});
  for (const auto& action : model.actions)
    policy.actions.push_back({.actionId = action.actionId,
                              .value = action.value,
                              .value2 = action.value2,
                              .option1 = action.option1,
                              .option2 = action.option2,
                              .reserved0 = {},
                              .value3 = action.value3,
                              .option3 = action.option3,
                              .reserved1 = {},
                              .value4 = action.value4});
  for (const auto& [text, flag] : model.texts) policy.texts.push_back({.text = text, .flag = flag});
  policy.flag0 = model.flag0;
  policy.flag1 = model.flag1;
  policy.flag2 = model.flag2;
  policy.param0 = model.param0;
  policy.param1 = model.param1;
  policy.param2 = model.param2;
  return policy;
}

PolicySet sampleSet(std::string_view json) {
  const auto content = test::sampleContent(json);
  PolicySet set{.version1 = content.version1, .version2 = content.version2, .policies = {}};
  for (const auto& model : content.policies) set.policies.push_back(policyOf(model));
  return set;
}

Policy namedPolicy(std::uint32_t id, std::u16string_view name) {
  Policy policy;
  policy.id = id;
  policy.name = name;
  return policy;
}

}  // namespace documents
