// SPDX-License-Identifier: Apache-2.0
#include "documents/schema/entries.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "documents/schema/number_pattern.h"
#include "documents/schema/values.h"

namespace documents {
namespace {

constexpr std::uint32_t kMostOfField = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint32_t kMostOfByte = std::numeric_limits<std::uint8_t>::max();

constexpr std::uint32_t kAnyOperator = 31;

JsonValue operatorSchema(std::uint32_t operators) {
  JsonValue numbers = JsonValue::list();
  for (std::uint32_t op = 0; operators >> op != 0; ++op)
    if ((operators >> op & 1) != 0) numbers.add(JsonValue::number(op));
  return described(JsonValue::object({{"enum", std::move(numbers)}}), "The comparison.");
}

JsonValue field(Definitions& definitions) {
  return definitions.refer("field", described(numberSchema(0, kMostOfField), "0 to 4294967295."));
}

JsonValue smallField(Definitions& definitions) {
  return definitions.refer("small-field", described(numberSchema(0, kMostOfByte), "0 to 255."));
}

JsonValue secondOperand(Definitions& definitions) {
  return definitions.refer("second-operand", described(numberSchema(0, kMostOfField), "The second operand."));
}

/// What stands beside a reference does not count, so that it takes a list of one.
JsonValue describedReference(std::string_view description, const JsonValue& reference) {
  return JsonValue::object({{"description", JsonValue::text(description)}, {"allOf", JsonValue::list({reference})}});
}

/// The value where it is left out.
bool admitsZero(const Word& word) {
  if (word.form == ValueForm::kOption) return optionText(word, 0).has_value();
  return word.least <= 0 && word.most >= 0;
}

bool needsOperator(const Word& word) { return word.kind == WordKind::kCondition && !word.onlyOperator(); }

/// What a record of the word has to have.
void addRequired(JsonValue& schema, const Word& word) {
  JsonValue names = JsonValue::list();
  if (needsOperator(word)) names.add(JsonValue::text("op"));
  if (!admitsZero(word)) names.add(JsonValue::text("value"));
  if (!names.isEmpty()) schema.add("required", std::move(names));
}

JsonValue record(std::vector<JsonMember> fields) {
  return JsonValue::object({{"type", JsonValue::text("object")},
                            {"additionalProperties", JsonValue::boolean(false)},
                            {"properties", JsonValue::object(std::move(fields))}});
}

JsonValue conditionRecord(std::uint32_t operators, JsonValue value, Definitions& definitions) {
  return record(
      {{"op", operatorSchema(operators)}, {"value", std::move(value)}, {"value2", secondOperand(definitions)}});
}

/// What the records of all actions have alike. The value is left to others to describe and to suggest.
JsonValue actionFields(Definitions& definitions) {
  const JsonValue number = field(definitions);
  const JsonValue option = smallField(definitions);
  return definitions.refer("action-fields",
                           record({{"value", JsonValue::object({{"doNotSuggest", JsonValue::boolean(true)}})},
                                   {"value2", number},
                                   {"value3", number},
                                   {"value4", number},
                                   {"option1", option},
                                   {"option2", option},
                                   {"option3", option}}));
}

JsonValue actionRecord(JsonValue value, Definitions& definitions) {
  return JsonValue::object({{"allOf", JsonValue::list({actionFields(definitions)})},
                            {"properties", JsonValue::object({{"value", std::move(value)}})}});
}

JsonValue valueInRecord(const Word& word, const JsonValue& value) {
  JsonValue schema = describedReference("The value: " + describeValue(word) + '.', value);
  return std::move(schema.add("type", typesOf(word)));
}

/// What editors begin such an object with.
JsonValue conditionSnippets() {
  const JsonValue body = JsonValue::object({{"op", JsonValue::text("^$1")}, {"value", JsonValue::text("^$2")}});
  return JsonValue::list({JsonValue::object({{"label", JsonValue::text("op and value")}, {"body", body}})});
}

JsonValue conditionSchema(const Word& word, Definitions& definitions) {
  JsonValue value = valueSchema(word, definitions);
  JsonValue object = conditionRecord(word.operators, valueInRecord(word, value), definitions);
  addRequired(object, word);
  const std::string name = "condition-" + entryName(word);
  const auto only = word.onlyOperator();
  if (only)
    return definitions.refer(name + "-op-" + std::to_string(*only),
                             alternatives({std::move(value), std::move(object)}));
  object.add("defaultSnippets", conditionSnippets());
  return definitions.refer(name, std::move(object));
}

JsonValue actionSchema(const Word& word, Definitions& definitions) {
  JsonValue value = valueSchema(word, definitions);
  JsonValue object = actionRecord(valueInRecord(word, value), definitions);
  addRequired(object, word);
  return definitions.refer("action-" + entryName(word), alternatives({std::move(value), std::move(object)}));
}

JsonValue typesOfEntry(const Word& word) {
  if (needsOperator(word)) return JsonValue::text("object");
  return std::move(typesOf(word).add(JsonValue::text("object")));
}

JsonValue wordSchema(const Word& word, Definitions& definitions) {
  return word.kind == WordKind::kCondition ? conditionSchema(word, definitions) : actionSchema(word, definitions);
}

/// Of a number that no catalogue has.
JsonValue unknownSchema(WordKind kind, Definitions& definitions) {
  JsonValue value = field(definitions);
  if (kind == WordKind::kAction)
    return definitions.refer("action-unknown", alternatives({value, actionRecord(value, definitions)}));
  JsonValue object = conditionRecord(kAnyOperator, std::move(value), definitions);
  object.add("required", JsonValue::list({JsonValue::text("op")}));
  return definitions.refer("condition-unknown", std::move(object));
}

/// Which numbers mean one schema: "5|6|10".
struct NumbersOfSchema {
  JsonValue reference;
  std::string numbers;
};

void addNumber(std::vector<NumbersOfSchema>& groups, const JsonValue& reference, const std::string& number) {
  const auto known = std::ranges::find(groups, reference, &NumbersOfSchema::reference);
  if (known == groups.end())
    groups.push_back({reference, number});
  else
    known->numbers += '|' + number;
}

JsonValue numberedSchemas(const std::vector<NumbersOfSchema>& groups) {
  JsonValue schemas = JsonValue::object();
  for (const NumbersOfSchema& group : groups) schemas.add("^#(" + group.numbers + ")$", group.reference);
  return schemas;
}

}  // namespace

JsonValue entrySchema(WordKind kind, Definitions& definitions) {
  const auto words = wordsOf(kind);
  JsonValue named = JsonValue::object();
  std::vector<NumbersOfSchema> numbered;
  for (const Word& word : words) {
    const JsonValue reference = wordSchema(word, definitions);
    JsonValue schema = describedReference(describe(word), reference);
    schema.add("type", typesOfEntry(word));
    named.add(word.name, std::move(schema));
    addNumber(numbered, reference, std::to_string(word.id));
  }
  addNumber(numbered, unknownSchema(kind, definitions), numberPattern(words.size(), kMostOfField));
  return JsonValue::object({{"type", JsonValue::text("object")},
                            {"minProperties", JsonValue::number(1)},
                            {"maxProperties", JsonValue::number(1)},
                            {"additionalProperties", JsonValue::boolean(false)},
                            {"properties", std::move(named)},
                            {"patternProperties", numberedSchemas(numbered)}});
}

}  // namespace documents
