// SPDX-License-Identifier: Apache-2.0
#include "documents/documents.h"
#include "documents/policies/numbers.h"
#include "documents/print/json_text.h"
#include "documents/print/print.h"

namespace documents {
namespace {

/// Writes an object or a list of one member a line, with commas between them.
class Lines {
 public:
  Lines(std::string& text, std::size_t depth) : text_{text}, indent_(2 * depth, ' ') {}

  /// Begins the next line.
  std::string& next() {
    text_ += isFirst_ ? "\n" : ",\n";
    isFirst_ = false;
    return text_ += indent_;
  }
  std::string& member(std::string_view name) { return next().append("\"").append(name).append("\": "); }
  void number(std::string_view name, std::uint32_t value) { member(name) += std::to_string(value); }

  void end(char bracket) {
    text_ += '\n';
    text_.append(indent_, 2).push_back(bracket);
  }

 private:
  std::string& text_;
  std::string indent_;
  bool isFirst_ = true;
};

constexpr std::size_t kPolicyDepth = 2;

template <class Entry>
void printEntries(std::string& text, const std::vector<Entry>& entries) {
  text += '[';
  Lines lines{text, kPolicyDepth + 2};
  for (const auto& entry : entries) lines.next() += documentEntry(entry);
  lines.end(']');
}

void printText(std::string& target, const PolicyText& text) {
  if (text.flag == 0) {
    appendQuoted(target, text.text);
    return;
  }
  target += "{ \"text\": ";
  appendQuoted(target, text.text);
  target += ", \"flag\": " + std::to_string(text.flag) + " }";
}

void printTexts(std::string& target, const std::vector<PolicyText>& texts) {
  std::string_view separator = "[";
  for (const auto& text : texts) {
    target += separator;
    printText(target, text);
    separator = ", ";
  }
  target += ']';
}

void printPolicy(std::string& text, const Policy& policy) {
  text += '{';
  Lines members{text, kPolicyDepth + 1};
  members.number("id", policy.id);
  if (!policy.name.empty()) appendQuoted(members.member("name"), policy.name);
  if (!policy.description.empty()) appendQuoted(members.member("description"), policy.description);
  if (!policy.conditions.empty()) printEntries(members.member("when"), policy.conditions);
  if (!policy.actions.empty()) printEntries(members.member("do"), policy.actions);
  if (!policy.texts.empty()) printTexts(members.member("texts"), policy.texts);
  for (const auto& [name, value] : numbersOf(policy))
    if (value != 0) members.number(name, value);
  members.end('}');
}

void printPolicies(std::string& text, const std::vector<Policy>& policies) {
  text += '[';
  if (policies.empty()) {
    text += ']';
    return;
  }
  Lines lines{text, kPolicyDepth};
  for (const auto& policy : policies) printPolicy(lines.next(), policy);
  lines.end(']');
}

std::string printed(const PolicySet& policies) {
  std::string text = "{";
  Lines members{text, 1};
  if (policies.version1 != 0 || policies.version2 != 0)
    members.member("version") +=
        '"' + std::to_string(policies.version1) + '.' + std::to_string(policies.version2) + '"';
  printPolicies(members.member("policies"), policies.policies);
  members.end('}');
  return text + '\n';
}

}  // namespace

std::string printDocument(const PolicySet& policies) {
  const std::string text = printed(policies);
  // Where lines are broken is decided in one place. What is too large to be read stays as it is.
  return formatDocument(text).text.value_or(text);
}

}  // namespace documents
