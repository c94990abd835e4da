// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/difference_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "documents/vocabulary/vocabulary.h"
#include "tool/policies/finding_json.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

using documents::Difference;
using documents::FieldDifference;
using documents::PolicyDifference;

/// The sides as the lines call them.
struct Sides {
  std::string first;
  std::string second;
};

Sides sidesOf(const AnyPolicies& first, const AnyPolicies& second) {
  // Both may be called the same: two stores, or one file twice.
  if (first.shortName == second.shortName) return {.first = printable(first.name), .second = printable(second.name)};
  return {.first = printable(first.shortName), .second = printable(second.shortName)};
}

std::string called(std::uint32_t id, const std::string& name) { return fmt::format("{} {}", id, inQuotes(name)); }

/// The beginning of both that need not be said twice: up to where the value begins, "Skin Temperature op 4: ", "SPL ".
std::string sharedHead(const FieldDifference& field) {
  const auto differing = std::ranges::mismatch(field.first, field.second).in1;
  const std::string_view shared =
      std::string_view{field.first}.substr(0, static_cast<std::size_t>(differing - field.first.begin()));
  std::size_t length = 0;
  if (field.field == "when") {
    for (const std::string_view end : {": ", " is "})
      if (const auto at = shared.rfind(end); at != shared.npos) length = std::max(length, at + end.size());
  } else if (field.field == "do") {
    for (const auto& word : documents::actionWords())
      if (shared.starts_with(std::string{word.name} + ' ')) length = std::max(length, word.name.size() + 1);
  }
  return std::string{shared.substr(0, length)};
}

/// A value as it stands behind its field's name.
std::string shownValue(const FieldDifference& field, const std::string& value) {
  return field.field == "name" || field.field == "description" ? inQuotes(value) : printable(value);
}

std::string describeChange(const FieldDifference& field, const Sides& sides) {
  const std::string head = sharedHead(field);
  return fmt::format("{} {}{} in {}, {} in {}", printable(field.field), printable(head),
                     shownValue(field, field.first.substr(head.size())), sides.first,
                     shownValue(field, field.second.substr(head.size())), sides.second);
}

std::string describeField(const FieldDifference& field, const Sides& sides) {
  const auto name = printable(field.field);
  switch (field.kind) {
    case FieldDifference::Kind::kAdded:
      return fmt::format("{} {} only in {}", name, printable(field.second), sides.second);
    case FieldDifference::Kind::kRemoved:
      return fmt::format("{} {} only in {}", name, printable(field.first), sides.first);
    case FieldDifference::Kind::kMoved:
      return fmt::format("{} {} is number {} in {}, {} in {}", name, printable(field.first), field.firstIndex + 1,
                         sides.first, field.secondIndex + 1, sides.second);
    default:
      return describeChange(field, sides);
  }
}

std::vector<std::string> describeFields(const PolicyDifference& policy, const Sides& sides) {
  if (policy.kind == PolicyDifference::Kind::kOnlyInFirst) return {"only in " + sides.first};
  if (policy.kind == PolicyDifference::Kind::kOnlyInSecond) return {"only in " + sides.second};
  std::vector<std::string> lines;
  lines.reserve(policy.fields.size());
  for (const auto& field : policy.fields) lines.push_back(describeField(field, sides));
  return lines;
}

char signOf(PolicyDifference::Kind kind) {
  switch (kind) {
    case PolicyDifference::Kind::kOnlyInFirst:
      return '-';
    case PolicyDifference::Kind::kOnlyInSecond:
      return '+';
    default:
      return '~';
  }
}

/// A policy with the differences of its fields below each other.
std::string renderPolicyDifference(const PolicyDifference& policy, const Sides& sides, std::size_t width) {
  std::string text;
  std::string start = fmt::format("  {} {}", signOf(policy.kind), padded(called(policy.id, policy.name), width));
  for (const auto& line : describeFields(policy, sides)) {
    text.append(start).append("  ").append(line) += '\n';
    start.assign(displayWidth(start), ' ');
  }
  return text;
}

/// One long name shall not push all others away.
constexpr std::size_t kMostNameWidth = 48;

std::string renderPolicyDifferences(const Difference& difference, const Sides& sides) {
  std::size_t width = 0;
  for (const auto& policy : difference.policies)
    width = std::max(width, std::min(kMostNameWidth, displayWidth(called(policy.id, policy.name))));
  std::string text;
  for (const auto& policy : difference.policies) text += renderPolicyDifference(policy, sides, width);
  return text;
}

std::string renderVersions(const AnyPolicies& first, const AnyPolicies& second, const Sides& sides) {
  return fmt::format("  ~ version {} in {}, {} in {}\n", versionOf(first.policies()), sides.first,
                     versionOf(second.policies()), sides.second);
}

std::string placeOf(std::size_t index, std::size_t count) {
  if (index == 0) return "first";
  return index + 1 == count ? "last" : fmt::format("number {}", index + 1);
}

std::string renderMoved(const AnyPolicies& first, const AnyPolicies& second, const Difference& difference,
                        const Sides& sides, const DifferenceScope& scope) {
  std::string text = scope.withOrder ? "The order differs:" : "The order differs too (--order counts it):";
  const char* separator = " ";
  for (const auto& policy : difference.moved) {
    text += fmt::format("{}{} is {} in {}, {} in {}", separator, called(policy.id, policy.name),
                        placeOf(policy.secondIndex, second.policies().policies.size()), sides.second,
                        placeOf(policy.firstIndex, first.policies().policies.size()), sides.first);
    separator = "; ";
  }
  return text + ".\n";
}

std::size_t unionCount(const AnyPolicies& first, const Difference& difference) {
  const auto onlyInSecond =
      std::ranges::count(difference.policies, PolicyDifference::Kind::kOnlyInSecond, &PolicyDifference::kind);
  return first.policies().policies.size() + static_cast<std::size_t>(onlyInSecond);
}

std::string capitalized(std::string text) {
  if (text.starts_with("the ")) text.front() = 'T';
  return text;
}

/// "The Asm store differs from laptop.json in 2 of 16 policies."
std::string headlineOf(const AnyPolicies& first, const AnyPolicies& second, const Difference& difference,
                       const DifferenceScope& scope) {
  std::string where;
  if (!difference.policies.empty())
    where = fmt::format("in {} of {}", difference.policies.size(), countOfPolicies(unionCount(first, difference)));
  else
    where = difference.versionDiffers ? "in its version" : "in the order of its policies";
  if (isSame(difference, scope))
    return fmt::format("{} and {} say the same, {}.\n", capitalized(printable(second.name)), printable(first.name),
                       countOfPolicies(first.policies().policies.size()));
  return fmt::format("{} differs from {} {}.\n", capitalized(printable(second.name)), printable(first.name), where);
}

using Json = nlohmann::ordered_json;

Json sideAsJson(const AnyPolicies& side) {
  return {{"name", side.name},
          {"form", side.form()},
          {"version", side.hasVersion ? Json(versionOf(side.policies())) : Json(nullptr)},
          {"policies", side.policies().policies.size()}};
}

Json fieldAsJson(const FieldDifference& field) {
  const bool isInFirst = field.kind != FieldDifference::Kind::kAdded;
  const bool isInSecond = field.kind != FieldDifference::Kind::kRemoved;
  return {{"change", changeOf(field.kind)},
          {"field", field.field},
          {"first", isInFirst ? Json(field.first) : Json(nullptr)},
          {"second", isInSecond ? Json(field.second) : Json(nullptr)},
          {"firstIndex", isInFirst ? Json(field.firstIndex) : Json(nullptr)},
          {"secondIndex", isInSecond ? Json(field.secondIndex) : Json(nullptr)}};
}

Json policyDifferenceAsJson(const PolicyDifference& policy) {
  Json fields = Json::array();
  for (const auto& field : policy.fields) fields.push_back(fieldAsJson(field));
  return {{"change", changeOf(policy.kind)}, {"id", policy.id}, {"name", policy.name}, {"fields", std::move(fields)}};
}

}  // namespace

Difference compare(const AnyPolicies& first, const AnyPolicies& second) {
  auto difference = documents::compare(first.policies(), second.policies());
  if (!first.hasVersion || !second.hasVersion) difference.versionDiffers = false;
  return difference;
}

bool isSame(const Difference& difference, const DifferenceScope& scope) {
  return !difference.versionDiffers && difference.policies.empty() && (!scope.withOrder || difference.moved.empty());
}

std::string renderDifference(const AnyPolicies& first, const AnyPolicies& second, const Difference& difference,
                             const DifferenceScope& scope) {
  const auto sides = sidesOf(first, second);
  std::string text = headlineOf(first, second, difference, scope);
  if (difference.versionDiffers) text += renderVersions(first, second, sides);
  text += renderPolicyDifferences(difference, sides);
  if (!difference.moved.empty()) text += renderMoved(first, second, difference, sides, scope);
  return text;
}

Json differenceAsJson(const AnyPolicies& first, const AnyPolicies& second, const Difference& difference,
                      const DifferenceScope& scope) {
  Json policies = Json::array();
  for (const auto& policy : difference.policies) policies.push_back(policyDifferenceAsJson(policy));
  Json moved = Json::array();
  for (const auto& policy : difference.moved)
    moved.push_back({{"id", policy.id},
                     {"name", policy.name},
                     {"firstIndex", policy.firstIndex},
                     {"secondIndex", policy.secondIndex}});
  return {
      {"schema", kJsonSchema},        {"same", isSame(difference, scope)},           {"first", sideAsJson(first)},
      {"second", sideAsJson(second)}, {"versionDiffers", difference.versionDiffers}, {"policies", std::move(policies)},
      {"moved", std::move(moved)}};
}

}  // namespace tool
