// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/policy_text.h"

#include <fmt/format.h>

#include "documents/print/listing.h"
#include "documents/print/print.h"
#include "tool/terminal/render.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

constexpr std::size_t kWidth = 100;
constexpr std::size_t kIndent = 4;
constexpr std::size_t kHeadingWidth = 6;
constexpr std::size_t kDescriptionColumn = 55;
constexpr std::string_view kSeparator = " · ";

/// Entries in as many lines as they need, behind a heading.
class Section {
 public:
  explicit Section(const char* heading)
      : line_{std::string(kIndent, ' ') + padded(heading, kHeadingWidth)}, start_{displayWidth(line_)} {}

  void add(const std::string& entry, bool onItsOwnLine) {
    const bool fits = displayWidth(line_) + displayWidth(kSeparator) + displayWidth(entry) <= kWidth;
    if (!isEmpty_ && (onItsOwnLine || !fits)) breakLine();
    if (!isLineEmpty_) line_ += kSeparator;
    line_ += entry;
    isEmpty_ = isLineEmpty_ = false;
  }

  [[nodiscard]] std::string text() const { return isEmpty_ ? "" : text_ + line_ + '\n'; }

 private:
  void breakLine() {
    text_ += line_ + '\n';
    line_.assign(start_, ' ');
    isLineEmpty_ = true;
  }

  std::string text_;
  std::string line_;
  std::size_t start_;
  bool isEmpty_ = true;
  bool isLineEmpty_ = true;
};

std::string headlineOf(const documents::ListedPolicy& policy) {
  std::string line = fmt::format("{:<2}  {}", policy.id, policy.name.empty() ? "\"\"" : printable(policy.name));
  if (policy.description.empty()) return line + '\n';
  return padded(line, kDescriptionColumn - 2) + "  " + printable(policy.description) + '\n';
}

std::string textsOf(const documents::ListedPolicy& policy) {
  Section section{"text"};
  for (std::size_t i = 0; i < policy.texts.size(); ++i) {
    const auto flag = policy.textFlags[i];
    section.add(inQuotes(policy.texts[i]) + (flag != 0 ? fmt::format(" (flag {})", flag) : ""), false);
  }
  return section.text();
}

std::string entriesOf(const char* heading, const std::vector<std::string>& entries, bool onLinesOfTheirOwn) {
  Section section{heading};
  for (const auto& entry : entries) section.add(printable(entry), onLinesOfTheirOwn);
  return section.text();
}

/// Gives each object of an array the words of its entry.
template <class Entry>
void addWords(nlohmann::ordered_json& objects, const std::vector<Entry>& entries) {
  for (std::size_t i = 0; i < entries.size(); ++i) objects[i]["words"] = documents::inWords(entries[i]);
}

}  // namespace

std::string renderInWords(const documents::Policy& policy) {
  const auto listed = documents::listed(policy);
  return headlineOf(listed) + entriesOf("when", listed.conditions, true) + entriesOf("do", listed.actions, false) +
         textsOf(listed) + entriesOf("with", listed.others, false);
}

std::string renderInWords(const documents::PolicySet& policies) {
  std::string text;
  for (const auto& policy : policies.policies) text += '\n' + renderInWords(policy);
  return text;
}

nlohmann::ordered_json policiesAsJson(const documents::PolicySet& policies) {
  auto array = nlohmann::ordered_json::array();
  for (const auto& policy : policies.policies) {
    const auto record = documents::toRecord(policy);
    auto object = std::move(toJson(std::span{&record, 1}).front());
    // Documents take descriptions for UTF-8.
    object["description"] = documents::readable(policy.description);
    addWords(object["conditions"], policy.conditions);
    addWords(object["actions"], policy.actions);
    array.push_back(std::move(object));
  }
  return array;
}

}  // namespace tool
