// SPDX-License-Identifier: Apache-2.0
#include "tool/terminal/live_output.h"

#include <fmt/format.h>

#include <algorithm>

#include "tool/system/process.h"
#include "tool/terminal/text.h"
#include "tool/terminal/text_table.h"

namespace tool {
namespace {

/// One word, whatever the value holds.
std::string asWord(const std::optional<std::string>& value) {
  if (!value) return "-";
  return value->empty() || value->find_first_of(" \"\\") != value->npos ? inQuotes(*value) : *value;
}

std::string asLine(const std::vector<ShownValue>& values) {
  std::vector<std::string> words;
  words.reserve(values.size());
  for (const auto& [name, value] : values) words.push_back(name + '=' + asWord(value));
  return fmt::format("{}\n", fmt::join(words, " "));
}

/// The lines that a terminal has room for, in which none is broken and the top does not scroll away.
std::vector<std::string> fitted(std::vector<std::string> lines, const platform::TerminalSize& size) {
  const std::size_t room = size.lines - 1;
  if (lines.size() > room) {
    const std::size_t hidden = lines.size() - room + 1;
    lines.resize(room);
    if (!lines.empty()) lines.back() = fmt::format("... {} more need a taller terminal", hidden);
  }
  for (auto& line : lines) line.resize(std::min(line.size(), size.columns - 1));
  return lines;
}

std::vector<std::string> asBlock(const std::vector<ShownValue>& values, const platform::TerminalSize& size) {
  TextTable table{{{"NAME", Align::kLeft}, {"VALUE", Align::kLeft}}};
  for (const auto& [name, value] : values) table.add({name, value.value_or("-")});
  return fitted(table.lines(), size);
}

}  // namespace

LiveOutput::LiveOutput(Output& output) : output_{output} {
  if (!output.isFile()) terminal_.emplace();
}

void LiveOutput::show(const std::vector<ShownValue>& values) {
  const auto size = terminal_ ? terminal_->size() : std::nullopt;
  if (!size) return output_.write(asLine(values));
  const auto lines = asBlock(values, *size);
  std::string frame = lines_ != 0 ? fmt::format("\r\x1b[{}A", lines_) : "";
  for (const auto& line : lines) frame += line + "\x1b[K\n";
  output_.write(frame + "\x1b[J");
  lines_ = lines.size();
}

void LiveOutput::leave() {
  if (lines_ != 0) output_.write("\n");
}

}  // namespace tool
