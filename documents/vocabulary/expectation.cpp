// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "documents/vocabulary/vocabulary.h"

namespace documents {
namespace {

/// A sentence lists as many options as can be taken in at a glance.
constexpr std::size_t kMostListed = 10;

std::string quotedOption(const QtfOptionInfo& option) {
  return '"' + std::string(textOf(option)) + "\" (" + std::to_string(static_cast<std::uint32_t>(option.Value)) + ')';
}

/// What stands between an option and the one before it.
std::string_view separatorBefore(std::size_t index, std::size_t last) {
  if (index == 0) return "";
  return index == last ? " or " : ", ";
}

std::string listOf(std::span<const QtfOptionInfo> options) {
  std::string list;
  const bool isCut = options.size() > kMostListed;
  const std::size_t listed = isCut ? kMostListed - 1 : options.size();
  // Where the list is cut, what is left out is its last part.
  const std::size_t last = isCut ? listed : listed - 1;
  for (std::size_t i = 0; i < listed; ++i) {
    list += separatorBefore(i, last);
    list += quotedOption(options[i]);
  }
  if (isCut) list += " or one of " + std::to_string(options.size() - listed) + " others";
  return list;
}

std::string rangeOf(const Word& word) {
  if (word.least == word.most) return std::to_string(word.least);
  std::string range = "a number from " + std::to_string(word.least) + " to " + std::to_string(word.most);
  if (!word.units.empty()) range.append(", in ").append(word.units).append(",");
  return range;
}

}  // namespace

std::string expectation(const Word& word) {
  switch (word.form) {
    case ValueForm::kOption:
      return listOf(word.options) + " is expected";
    case ValueForm::kBits:
      return "a list of " + listOf(word.options) + " is expected";
    case ValueForm::kUnsigned:
    case ValueForm::kSigned:
      break;
  }
  return rangeOf(word) + " is expected";
}

}  // namespace documents
