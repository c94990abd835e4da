// SPDX-License-Identifier: Apache-2.0
#include "documents/schema/number_pattern.h"

#include <algorithm>
#include <cstddef>

namespace documents {
namespace {

std::string digitFrom(char first, char last) {
  if (first == last) return {first};
  return {'[', first, '-', last, ']'};
}

std::string anyDigits(std::size_t least, std::size_t most) {
  if (most == 0) return "";
  if (most == 1 && least == 1) return "[0-9]";
  if (least == most) return "[0-9]{" + std::to_string(least) + '}';
  return "[0-9]{" + std::to_string(least) + ',' + std::to_string(most) + '}';
}

std::string anyDigits(std::size_t count) { return anyDigits(count, count); }

void addAlternative(std::string& pattern, const std::string& alternative) {
  if (!pattern.empty()) pattern += '|';
  pattern += alternative;
}

/// Numbers of as many digits that share their beginning, from a place on of each digit's choice.
void addOfOneLength(std::string& pattern, const std::string& least, const std::string& most) {
  const std::size_t length = least.size();
  const auto shared = static_cast<std::size_t>(std::ranges::mismatch(least, most).in1 - least.begin());
  if (shared == length) return addAlternative(pattern, least);
  const bool isLeastRound = least.find_first_not_of('0', shared + 1) == std::string::npos;
  const bool isMostRound = most.find_first_not_of('9', shared + 1) == std::string::npos;
  // Below: those that begin as the least does; then those whose digit at the place lies between; then as the most does.
  const auto first = static_cast<char>(least[shared] + (isLeastRound ? 0 : 1));
  const auto last = static_cast<char>(most[shared] - (isMostRound ? 0 : 1));
  if (!isLeastRound)
    addOfOneLength(pattern, least, least.substr(0, shared + 1) + std::string(length - shared - 1, '9'));
  if (first <= last)
    addAlternative(pattern, least.substr(0, shared) + digitFrom(first, last) + anyDigits(length - shared - 1));
  if (!isMostRound) addOfOneLength(pattern, most.substr(0, shared + 1) + std::string(length - shared - 1, '0'), most);
}

}  // namespace

std::string numberPattern(std::uint64_t least, std::uint64_t most) {
  const std::string last = std::to_string(most);
  std::string pattern;
  std::string first = std::to_string(least);
  while (first.size() < last.size()) {
    // From a power of ten on, every number of fewer digits than the last one is meant.
    const bool isPower = first.front() == '1' && first.find_first_not_of('0', 1) == std::string::npos;
    const std::size_t length = isPower ? last.size() - 1 : first.size();
    if (isPower)
      addAlternative(pattern, "[1-9]" + anyDigits(first.size() - 1, length - 1));
    else
      addOfOneLength(pattern, first, std::string(length, '9'));
    first = '1' + std::string(length, '0');
  }
  addOfOneLength(pattern, first, last);
  return pattern;
}

}  // namespace documents
