// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/number.h"

#include <algorithm>
#include <charconv>

#include "documents/bind/strings.h"
#include "documents/text/quote.h"

namespace documents {
namespace {

/// More digits than any field's numbers have.
constexpr std::size_t kMostDigits = 18;
constexpr std::int64_t kTooLarge = std::numeric_limits<std::int64_t>::max();

constexpr bool isDigit(char character) { return character >= '0' && character <= '9'; }

bool takeSign(std::string_view& written) {
  if (!written.starts_with('-')) return false;
  written.remove_prefix(1);
  return true;
}

std::string_view takeDigits(std::string_view& written) {
  const auto end = std::ranges::find_if_not(written, isDigit);
  const auto digits = written.substr(0, static_cast<std::size_t>(end - written.begin()));
  written.remove_prefix(digits.size());
  return digits;
}

/// A number as it may stand in a sentence: one of a million digits is cut.
std::string shortened(std::string_view written) {
  constexpr std::size_t kMost = 24;
  if (written.size() <= kMost) return std::string(written);
  return std::string(written.substr(0, kMost)) + "...";
}

/// A number in quotes where one without belongs: nothing else can have been meant.
std::vector<Suggestion> withoutQuotes(const Context& context, const Node& node, const NumberField& field) {
  if (node.kind != NodeKind::kString) return {};
  const auto characters = Characters::ofString(context.tree(), node);
  const auto value = wholeNumber(characters.view());
  if (!value || *value < field.least || *value > field.most) return {};
  return {rewrite(node.span, std::string(characters.view()), true)};
}

void refuseNotWhole(Context& context, const Node& node, const Path& path) {
  context.refuse(Rule::kNotWhole, node.span, path, [&] {
    const auto written = context.tree().slice(node.span);
    Words words{shortened(written) + " is not written as a whole number: digits alone are expected"};
    if (auto digits = digitsOf(written)) words.suggestions.push_back(rewrite(node.span, std::move(*digits), true));
    return words;
  });
}

/// An option that the catalogue lists with a value below zero, and somebody wrote as such.
std::vector<Suggestion> optionBelowZero(Span span, const Word* word, std::int64_t value) {
  if (word == nullptr || value >= 0 || value < std::numeric_limits<std::int32_t>::min()) return {};
  const auto text = optionText(*word, static_cast<std::uint32_t>(value));
  if (!text) return {};
  return {rewriteName(span, *text, true)};
}

}  // namespace

std::optional<std::int64_t> wholeNumber(std::string_view written) {
  const bool isNegative = takeSign(written);
  const auto digits = takeDigits(written);
  const bool hasLeadingZero = digits.size() > 1 && digits.front() == '0';
  if (digits.empty() || hasLeadingZero || !written.empty()) return std::nullopt;
  std::int64_t value = kTooLarge;
  if (digits.size() <= kMostDigits) std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return isNegative ? -value : value;
}

std::optional<std::string> digitsOf(std::string_view written) {
  std::string digits = takeSign(written) ? "-" : "";
  const std::size_t signs = digits.size();
  digits += takeDigits(written);
  std::string_view fraction;
  if (written.starts_with('.')) {
    written.remove_prefix(1);
    fraction = takeDigits(written);
  }
  int exponent = 0;
  if (!written.empty()) {
    written.remove_prefix(written.starts_with("e+") || written.starts_with("E+") ? 2 : 1);
    const auto [end, error] = std::from_chars(written.data(), written.data() + written.size(), exponent);
    if (error != std::errc{} || end != written.data() + written.size()) return std::nullopt;
  }
  if (exponent < 0) return std::nullopt;
  const std::size_t places = std::min(fraction.size(), static_cast<std::size_t>(exponent));
  digits += fraction.substr(0, places);
  if (fraction.find_first_not_of('0', places) != std::string_view::npos) return std::nullopt;
  const auto zeros = static_cast<std::size_t>(exponent) - places;
  if (digits.size() + zeros > kMostDigits) return std::nullopt;
  digits.append(zeros, '0');
  // Zeros that lead were no digits of the number: 0.1e2 is 1.
  const std::size_t first = std::min(digits.find_first_not_of('0', signs), digits.size() - 1);
  digits.erase(signs, first - signs);
  return digits;
}

std::string NumberField::subject() const { return word == nullptr ? quote(name) : "the value of " + quote(word->name); }

std::string NumberField::expected() const {
  if (word != nullptr) return expectation(*word);
  return "a number from " + std::to_string(least) + " to " + std::to_string(most) + " is expected";
}

std::optional<std::int64_t> bindNumber(Context& context, NodeId id, const Path& path, const NumberField& field) {
  const Node& node = context.node(id);
  if (node.isBroken) {
    context.refuseBroken();
    return std::nullopt;
  }
  if (node.kind != NodeKind::kNumber) {
    context.refuse(Rule::kWrongKind, node.span, path, [&] {
      return Words{field.subject() + " cannot be " + std::string(nameOfKind(node.kind)) + ": " + field.expected(),
                   withoutQuotes(context, node, field)};
    });
    return std::nullopt;
  }
  const auto written = context.tree().slice(node.span);
  const auto value = wholeNumber(written);
  if (!value) {
    refuseNotWhole(context, node, path);
    return std::nullopt;
  }
  if (*value >= field.least && *value <= field.most) return value;
  context.refuse(Rule::kOutOfField, node.span, path, [&] {
    return Words{field.subject() + " cannot be " + shortened(written) + ": " + field.expected(),
                 optionBelowZero(node.span, field.word, *value)};
  });
  return std::nullopt;
}

std::string_view nameOfKind(NodeKind kind) {
  switch (kind) {
    case NodeKind::kNull:
      return "null";
    case NodeKind::kBoolean:
      return "true or false";
    case NodeKind::kNumber:
      return "a number";
    case NodeKind::kString:
      return "a string";
    case NodeKind::kArray:
      return "a list";
    case NodeKind::kObject:
      break;
  }
  return "an object";
}

void refuseKind(Context& context, NodeId id, const Path& path, std::string_view subject, std::string_view expected) {
  const Node& node = context.node(id);
  if (node.isBroken) return context.refuseBroken();
  context.refuse(Rule::kWrongKind, node.span, path, [&] {
    return Words{std::string(subject) + " cannot be " + std::string(nameOfKind(node.kind)) + ": " +
                 std::string(expected) + " is expected"};
  });
}

}  // namespace documents
