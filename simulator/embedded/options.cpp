// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/options.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace simulator {
namespace {

struct FaultName {
  std::string_view name;
  LogFault fault;
};

constexpr FaultName kFaults[] = {{.name = "unknown-key", .fault = LogFault::unknownKey},
                                 {.name = "negative-key", .fault = LogFault::negativeKey},
                                 {.name = "no-end", .fault = LogFault::noEnd},
                                 {.name = "repeated-key", .fault = LogFault::repeatedKey},
                                 {.name = "empty", .fault = LogFault::empty},
                                 {.name = "version", .fault = LogFault::version}};

[[noreturn]] void refuse(std::string_view word) {
  throw OptionsError('"' + std::string{word} + "\" is not understood");
}

std::uint64_t parseNumber(std::string_view text, std::string_view word) {
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) refuse(word);
  return number;
}

LogFault parseFault(std::string_view name, std::string_view word) {
  const auto* found = std::ranges::find(kFaults, name, &FaultName::name);
  if (found == std::end(kFaults)) refuse(word);
  return found->fault;
}

void parseWord(std::string_view word, Options& options) {
  const std::size_t equals = std::min(word.find('='), word.size());
  const auto name = word.substr(0, equals);
  const auto value = word.substr(std::min(equals + 1, word.size()));
  if (name == "seed")
    options.seed = parseNumber(value, word);
  else if (name == "time")
    options.time = parseNumber(value, word);
  else if (name == "log")
    options.logFault = parseFault(value, word);
  else
    refuse(word);
}

}  // namespace

Options parseOptions(std::string_view words) {
  Options options;
  while (!words.empty()) {
    const std::size_t comma = std::min(words.find(','), words.size());
    parseWord(words.substr(0, comma), options);
    words.remove_prefix(std::min(comma + 1, words.size()));
  }
  return options;
}

}  // namespace simulator
