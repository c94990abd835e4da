// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/options.h"

#include <algorithm>
#include <charconv>
#include <span>

namespace simulator {
namespace {

struct FaultName {
  std::string_view name;
  LogFault fault;
};

constexpr FaultName kFaults[] = {{.name = "unknown-key", .fault = LogFault::kUnknownKey},
                                 {.name = "negative-key", .fault = LogFault::kNegativeKey},
                                 {.name = "no-end", .fault = LogFault::kNoEnd},
                                 {.name = "repeated-key", .fault = LogFault::kRepeatedKey},
                                 {.name = "empty", .fault = LogFault::kEmpty},
                                 {.name = "version", .fault = LogFault::kVersion}};

bool parseNumber(std::string_view text, std::uint64_t& number) {
  const std::span digits{text};
  const char* const last = digits.data() + digits.size();
  const auto [end, error] = std::from_chars(digits.data(), last, number);
  return error == std::errc{} && end == last;
}

bool parseFault(std::string_view name, LogFault& fault) {
  const auto* found = std::ranges::find(kFaults, name, &FaultName::name);
  if (found == std::end(kFaults)) return false;
  fault = found->fault;
  return true;
}

/// What comes before a separator, which is taken away together with it.
std::string_view takeUpTo(char separator, std::string_view& text) {
  const std::size_t length = std::min(text.find(separator), text.size());
  std::string_view taken = text;
  taken.remove_suffix(text.size() - length);
  text.remove_prefix(std::min(length + 1, text.size()));
  return taken;
}

bool parseWord(std::string_view word, Options& options) {
  const auto name = takeUpTo('=', word);
  if (name == "seed") return parseNumber(word, options.seed);
  if (name == "time") return parseNumber(word, options.time.emplace());
  if (name == "log") return parseFault(word, options.logFault);
  return false;
}

}  // namespace

Reason parseOptions(std::string_view words, Options& options) {
  while (!words.empty()) {
    const auto word = takeUpTo(',', words);
    if (!parseWord(word, options))
      return Reason{"\"%.*s\" is not understood", static_cast<int>(word.size()), word.data()};
  }
  return {};
}

}  // namespace simulator
