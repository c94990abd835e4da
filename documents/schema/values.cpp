// SPDX-License-Identifier: Apache-2.0
#include "documents/schema/values.h"

#include <algorithm>
#include <utility>

namespace documents {
namespace {

JsonValue optionTexts(const Word& word) {
  JsonValue texts = JsonValue::list();
  JsonValue descriptions = JsonValue::list();
  for (const QtfOptionInfo& option : word.options) {
    texts.add(JsonValue::text(textOf(option)));
    descriptions.add(JsonValue::text("Stored as " + std::to_string(static_cast<std::uint32_t>(option.Value)) + "."));
  }
  // Editors show the second list beside the first; validators pass over it.
  return JsonValue::object({{"enum", std::move(texts)}, {"enumDescriptions", std::move(descriptions)}});
}

/// The numbers of the options: a range where they are one, because editors would offer each number of a list.
JsonValue optionNumbers(const Word& word) {
  std::vector<std::uint32_t> numbers;
  for (const QtfOptionInfo& option : word.options) numbers.push_back(static_cast<std::uint32_t>(option.Value));
  std::ranges::sort(numbers);
  numbers.erase(std::ranges::unique(numbers).begin(), numbers.end());
  if (numbers.back() - numbers.front() == numbers.size() - 1) return numberSchema(numbers.front(), numbers.back());
  JsonValue list = JsonValue::list();
  for (const std::uint32_t number : numbers) list.add(JsonValue::number(number));
  return JsonValue::object({{"enum", std::move(list)}});
}

JsonValue bitsSchema(const Word& word) {
  JsonValue elements = alternatives({optionTexts(word), numberSchema(0, word.allBits())});
  JsonValue list = JsonValue::object(
      {{"type", JsonValue::text("array")}, {"items", std::move(elements)}, {"uniqueItems", JsonValue::boolean(true)}});
  return alternatives({std::move(list), optionTexts(word), numberSchema(0, word.allBits())});
}

char nameCharacter(char character) {
  if (character >= 'A' && character <= 'Z') return static_cast<char>(character - 'A' + 'a');
  const bool isKept = (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9');
  return isKept ? character : '-';
}

std::string nameOf(std::string_view text) {
  std::string name(text);
  std::ranges::transform(name, name.begin(), nameCharacter);
  return name;
}

std::string range(const Word& word) { return std::to_string(word.least) + " to " + std::to_string(word.most); }

std::string describeOperators(std::uint32_t operators) {
  std::string list;
  for (std::uint32_t op = 0; operators >> op != 0; ++op) {
    if ((operators >> op & 1) == 0) continue;
    const bool isLast = operators >> op == 1;
    if (!list.empty()) list += isLast ? " or " : ", ";
    list += std::to_string(op);
  }
  return "Comparison " + list + '.';
}

/// The range of a word without options, or the first of the words that have these options.
std::string valueName(const Word& word) {
  if (word.options.empty()) return std::to_string(word.least) + "-" + std::to_string(word.most);
  return nameOf(word.name);
}

}  // namespace

JsonValue numberSchema(std::int64_t least, std::int64_t most) {
  return JsonValue::object({{"type", JsonValue::text("integer")},
                            {"minimum", JsonValue::number(least)},
                            {"maximum", JsonValue::number(most)}});
}

JsonValue alternatives(std::vector<JsonValue> schemas) {
  return JsonValue::object({{"anyOf", JsonValue::list(std::move(schemas))}});
}

JsonValue described(JsonValue schema, std::string_view description) {
  return std::move(schema.add("description", JsonValue::text(description)));
}

std::string entryName(const Word& word) {
  if (!word.options.empty() || word.units.empty()) return valueName(word);
  return valueName(word) + '-' + (word.units == "%" ? "percent" : nameOf(word.units));
}

JsonValue typesOf(const Word& word) {
  JsonValue types = JsonValue::list();
  if (!word.options.empty()) types.add(JsonValue::text("string"));
  types.add(JsonValue::text("integer"));
  if (word.form == ValueForm::kBits) types.add(JsonValue::text("array"));
  return types;
}

JsonValue valueSchema(const Word& word, Definitions& definitions) {
  const auto schema = [&word] {
    if (word.form == ValueForm::kOption) return alternatives({optionTexts(word), optionNumbers(word)});
    if (word.form == ValueForm::kBits) return bitsSchema(word);
    return numberSchema(word.least, word.most);
  };
  return definitions.refer("value-" + valueName(word), schema());
}

std::string describeValue(const Word& word) {
  if (word.form == ValueForm::kOption) return "one of " + std::to_string(word.options.size()) + " options";
  if (word.form == ValueForm::kBits) return "any of " + std::to_string(word.options.size()) + " options together";
  if (word.least == word.most) return std::to_string(word.least);
  if (word.units.empty()) return range(word);
  return range(word) + ' ' + std::string(word.units);
}

std::string describe(const Word& word) {
  std::string text = word.kind == WordKind::kCondition ? "Condition " : "Action ";
  text += std::to_string(word.id) + ": " + describeValue(word) + '.';
  if (word.kind == WordKind::kCondition) text += ' ' + describeOperators(word.operators);
  if (!word.isEnabled) text += " Not enabled in the catalogue.";
  return text;
}

}  // namespace documents
