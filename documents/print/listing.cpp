// SPDX-License-Identifier: Apache-2.0
#include "documents/print/listing.h"

#include "documents/policies/numbers.h"
#include "documents/print/print.h"

namespace documents {

ListedPolicy listed(const Policy& policy) {
  ListedPolicy listed;
  listed.id = policy.id;
  listed.name = readable(policy.name);
  listed.description = readable(policy.description);
  for (const auto& condition : policy.conditions) listed.conditions.push_back(inWords(condition));
  for (const auto& action : policy.actions) listed.actions.push_back(inWords(action));
  for (const auto& text : policy.texts) {
    listed.texts.push_back(readable(text.text));
    listed.textFlags.push_back(text.flag);
  }
  for (const auto& [name, value] : numbersOf(policy))
    if (value != 0) listed.others.push_back(std::string{name} + " " + std::to_string(value));
  return listed;
}

}  // namespace documents
