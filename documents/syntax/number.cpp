// SPDX-License-Identifier: Apache-2.0
#include "documents/syntax/number.h"

#include <charconv>
#include <optional>
#include <string>

#include "documents/text/quote.h"

namespace documents {
namespace {

constexpr bool isDigit(char character) { return character >= '0' && character <= '9'; }

/// Takes digits from the front; false when there are none.
bool takeDigits(std::string_view& word) {
  std::size_t count = 0;
  while (count < word.size() && isDigit(word[count])) ++count;
  word.remove_prefix(count);
  return count != 0;
}

bool take(std::string_view& word, char first, char second) {
  if (word.empty() || (word.front() != first && word.front() != second)) return false;
  word.remove_prefix(1);
  return true;
}

bool isHex(std::string_view word) { return word.starts_with("0x") || word.starts_with("0X"); }

/// The number that was meant, where there is no doubt.
std::optional<std::string> mended(std::string_view word) {
  if (isHex(word)) {
    unsigned long long value = 0;
    const char* const end = word.data() + word.size();
    const auto [rest, error] = std::from_chars(word.data() + 2, end, value, 16);
    if (error != std::errc{} || rest != end) return std::nullopt;
    return std::to_string(value);
  }
  const bool isNegative = word.starts_with('-');
  if (isNegative || word.starts_with('+')) word.remove_prefix(1);
  std::string number{word};
  if (number.starts_with('.')) number.insert(0, 1, '0');
  if (number.ends_with('.')) number += '0';
  if (isNegative) number.insert(0, 1, '-');
  if (number.starts_with('+') || !isNumber(number)) return std::nullopt;
  return number;
}

std::string_view reasonAgainst(std::string_view word) {
  if (isHex(word)) return "numbers are decimal";
  if (word.starts_with('+')) return "a number does not begin with \"+\"";
  if (word.starts_with('-')) word.remove_prefix(1);
  if (word.starts_with('.') || word.ends_with('.')) return "a digit is expected on both sides of the point";
  if (word.size() > 1 && word[0] == '0' && isDigit(word[1]))
    return "a number does not begin with \"0\" and another digit";
  return "digits are expected, as in 12, -3 or 0.5";
}

}  // namespace

bool looksLikeNumber(std::string_view word) {
  if (word.empty()) return false;
  return isDigit(word[0]) || word[0] == '-' || word[0] == '+' ||
         (word[0] == '.' && word.size() > 1 && isDigit(word[1]));
}

bool isNumber(std::string_view word) {
  take(word, '-', '-');
  if (word.size() > 1 && word[0] == '0' && isDigit(word[1])) return false;
  if (!takeDigits(word)) return false;
  if (take(word, '.', '.') && !takeDigits(word)) return false;
  if (take(word, 'e', 'E')) {
    take(word, '+', '-');
    if (!takeDigits(word)) return false;
  }
  return word.empty();
}

Finding malformedNumber(std::string_view word, Span span) {
  Finding finding{.rule = Rule::kMalformedNumber,
                  .severity = Severity::kError,
                  .span = span,
                  .path = {},
                  .sentence = quote(word) + " is no number: " + std::string{reasonAgainst(word)},
                  .suggestions = {}};
  if (auto number = mended(word))
    finding.suggestions.push_back(
        {.sentence = "write " + *number, .edits = {{.span = span, .replacement = *number}}, .isCertain = true});
  return finding;
}

}  // namespace documents
