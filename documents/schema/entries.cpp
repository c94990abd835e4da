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

JsonValue field(Definitions& definitions) { return definitions.refer("field", numberSchema(0, kMostOfField)); }

JsonValue smallField(Definitions& definitions) {
  return definitions.refer("small-field", numberSchema(0, kMostOfByte));
}

JsonValue record(std::vector<JsonMember> fields) {
  return JsonValue::object({{"type", JsonValue::text("object")},
                            {"additionalProperties", JsonValue::boolean(false)},
                            {"properties", JsonValue::object(std::move(fields))}});
}

JsonValue conditionRecord(std::uint32_t operators, JsonValue value, Definitions& definitions) {
  return record({{"op", operatorSchema(operators)}, {"value", std::move(value)}, {"value2", field(definitions)}});
}

JsonValue actionRecord(JsonValue value, Definitions& definitions) {
  const JsonValue number = field(definitions);
  const JsonValue option = smallField(definitions);
  return record({{"value", std::move(value)},
                 {"value2", number},
                 {"value3", number},
                 {"value4", number},
                 {"option1", option},
                 {"option2", option},
                 {"option3", option}});
}

JsonValue conditionSchema(const Word& word, Definitions& definitions) {
  JsonValue value = valueSchema(word, definitions);
  JsonValue object = conditionRecord(word.operators, value, definitions);
  const auto only = word.onlyOperator();
  std::string name = "condition-" + valueName(word);
  if (!only) {
    object.add("required", JsonValue::list({JsonValue::text("op")}));
    return definitions.refer(name, std::move(object));
  }
  name += "-op-" + std::to_string(*only);
  return definitions.refer(name, alternatives({std::move(value), std::move(object)}));
}

JsonValue actionSchema(const Word& word, Definitions& definitions) {
  JsonValue value = valueSchema(word, definitions);
  JsonValue object = actionRecord(value, definitions);
  return definitions.refer("action-" + valueName(word), alternatives({std::move(value), std::move(object)}));
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
    // What stands beside a reference does not count, so that it takes a list of one.
    named.add(word.name, JsonValue::object({{"description", JsonValue::text(describe(word))},
                                            {"allOf", JsonValue::list({reference})}}));
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
