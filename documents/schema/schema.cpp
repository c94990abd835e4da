// SPDX-License-Identifier: Apache-2.0
#include "documents/schema/schema.h"

#include <cstdint>
#include <limits>
#include <utility>

#include <vqs/policy_binary_records.h>
#include <vqs/policy_records.h>
#include "documents/schema/entries.h"
#include "documents/schema/number_pattern.h"
#include "documents/schema/values.h"

namespace documents {
namespace {

/// No text of a record holds its end.
constexpr std::string_view kWithoutEnd = "^[^\\u0000]*$";

JsonValue stringOfAnyLength() {
  return JsonValue::object({{"type", JsonValue::text("string")}, {"pattern", JsonValue::text(kWithoutEnd)}});
}

/// A limit of UTF-16 units, as one of characters: what takes two units is let through.
JsonValue stringOfAtMost(std::int64_t units) {
  return std::move(stringOfAnyLength().add("maxLength", JsonValue::number(units)));
}

JsonValue listOf(JsonValue elements, std::int64_t least, std::int64_t most) {
  JsonValue schema = JsonValue::object({{"type", JsonValue::text("array")}, {"items", std::move(elements)}});
  if (least != 0) schema.add("minItems", JsonValue::number(least));
  return std::move(schema.add("maxItems", JsonValue::number(most)));
}

JsonValue texts(std::initializer_list<std::string_view> strings) {
  JsonValue list = JsonValue::list();
  for (const std::string_view string : strings) list.add(JsonValue::text(string));
  return list;
}

JsonValue objectOf(std::initializer_list<std::string_view> required, std::vector<JsonMember> members) {
  JsonValue schema = JsonValue::object({{"type", JsonValue::text("object")}});
  if (required.size() != 0) schema.add("required", texts(required));
  schema.add("additionalProperties", JsonValue::boolean(false));
  return std::move(schema.add("properties", JsonValue::object(std::move(members))));
}

JsonValue textSchema() {
  const JsonValue text = stringOfAtMost(VQS_POLICY_TEXT_UNITS - 1);
  const JsonValue flag = numberSchema(0, VQS_POLICY_MAX_TEXT_FLAG);
  return alternatives({text, objectOf({}, {{"text", text}, {"flag", described(flag, "The text's flag.")}})});
}

JsonValue fieldOf(std::int64_t most) { return described(numberSchema(0, most), "Kept and not interpreted."); }

JsonValue policySchema(Definitions& definitions) {
  constexpr std::int64_t kMostOfField = std::numeric_limits<std::uint32_t>::max();
  constexpr std::int64_t kMostOfByte = std::numeric_limits<std::uint8_t>::max();
  const JsonValue condition = definitions.refer("condition", entrySchema(WordKind::kCondition, definitions));
  const JsonValue action = definitions.refer("action", entrySchema(WordKind::kAction, definitions));
  const JsonValue text = definitions.refer("text", textSchema());
  return objectOf(
      {"id", "when"},
      {{"id", described(numberSchema(0, kMostOfField), "The policy's number: no other in the document has it.")},
       {"name", described(stringOfAtMost(VQS_POLICY_NAME_UNITS - 1), "Its name, of at most 63 units of UTF-16.")},
       {"description", described(stringOfAnyLength(), "A few words about it: 31 bytes of UTF-8, what is more is cut.")},
       {"when", described(listOf(condition, 1, VQS_POLICY_MAX_CONDITIONS), "1 to 15 conditions.")},
       {"do", described(listOf(action, 0, VQS_POLICY_MAX_ACTIONS), "Up to 32 actions.")},
       {"texts",
        described(listOf(text, 0, VQS_POLICY_MAX_TEXTS), "Up to 5 texts of at most 255 units of UTF-16 each.")},
       {"flag0", fieldOf(kMostOfByte)},
       {"flag1", fieldOf(kMostOfByte)},
       {"flag2", fieldOf(kMostOfByte)},
       {"param0", fieldOf(kMostOfField)},
       {"param1", fieldOf(kMostOfField)},
       {"param2", fieldOf(kMostOfField)}});
}

JsonValue versionSchema() {
  const std::string number = '(' + numberPattern(0, std::numeric_limits<std::uint16_t>::max()) + ')';
  const JsonValue schema = JsonValue::object(
      {{"type", JsonValue::text("string")}, {"pattern", JsonValue::text('^' + number + "\\." + number + '$')}});
  return described(schema, "The version of the policies: two numbers of 0 to 65535, as in \"3.41\".");
}

}  // namespace

std::string makeSchema() {
  Definitions definitions;
  const JsonValue policy = definitions.refer("policy", policySchema(definitions));
  JsonValue schema = objectOf(
      {"policies"},
      {{"$schema", JsonValue::object({{"description", JsonValue::text("Where this schema is, for editors.")}})},
       {"version", versionSchema()},
       {"policies", described(listOf(policy, 1, VQS_POLICY_BINARY_MAX_POLICIES), "1 to 400 policies.")}});
  JsonValue document = JsonValue::object({{"$schema", JsonValue::text("http://json-schema.org/draft-07/schema#")},
                                          {"title", JsonValue::text("Policies in words")},
                                          // These two are for editors.
                                          {"allowComments", JsonValue::boolean(true)},
                                          {"allowTrailingCommas", JsonValue::boolean(true)}});
  document.addAll(std::move(schema));
  document.add("definitions", definitions.take());
  return document.laidOut();
}

}  // namespace documents
