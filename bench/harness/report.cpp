// SPDX-License-Identifier: Apache-2.0
#include "bench/harness/report.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

namespace bench {
namespace {

/// Three digits that count, as 856, 25.7 or 1.83.
std::string number(double value) {
  char text[32];
  std::snprintf(text, sizeof(text), "%.*f", value < 10 ? 2 : value < 100 ? 1 : 0, value);
  return text;
}

/// As it is, when it is whole.
std::string count(double value) {
  char text[32];
  std::snprintf(text, sizeof(text), "%.3g", value);
  return text;
}

std::string time(double nanoseconds) {
  if (nanoseconds < 1e3) return number(nanoseconds) + " ns";
  if (nanoseconds < 1e6) return number(nanoseconds / 1e3) + " us";
  return number(nanoseconds / 1e6) + " ms";
}

std::string basisOf(const Comparison& comparison) { return time(comparison.first) + " / " + time(comparison.second); }

/// Limits are short numbers.
std::string limitText(const Aim& aim) {
  if (aim.bound == Bound::kNone) return "-";
  char text[32];
  std::snprintf(text, sizeof(text), "%s %g", aim.bound == Bound::kAtMost ? "<=" : ">=", aim.limit);
  return text;
}

std::string figureText(const Aim& aim, double figure) { return aim.isCount ? count(figure) : number(figure); }

bool isMet(const Aim& aim, double figure) {
  return aim.bound == Bound::kAtMost ? figure <= aim.limit : figure >= aim.limit;
}

bool isWorse(const Aim& aim, double figure, double than) {
  return aim.bound == Bound::kAtLeast ? figure < than : figure > than;
}

}  // namespace

void Report::add(Item item, double figure, std::string basis) {
  Entry& entry = entries_[static_cast<std::size_t>(item)];
  if (entry.isMeasured && !isWorse(kAims[static_cast<std::size_t>(item)], figure, entry.figure)) return;
  entry = {.isMeasured = true, .figure = figure, .basis = std::move(basis)};
}

void Report::addRatio(Item item, const Comparison& comparison) { add(item, comparison.ratio(), basisOf(comparison)); }

void Report::addLead(Item item, const Comparison& comparison) {
  add(item, 1 / comparison.ratio(), basisOf(comparison));
}

void Report::addSurplus(Item item, const Comparison& comparison) {
  add(item, comparison.first - comparison.second, basisOf(comparison));
}

std::string_view Report::verdictOn(const Aim& aim) const {
  const Entry& entry = entryOf(aim.item);
  if (!entry.isMeasured) return "not measured";
  if (aim.bound == Bound::kNone) return "-";
  const bool isNoisy = !isMet(kAims[0], entryOf(Item::kSameTwice).figure);
  if (isNoisy && !aim.isCount) return "too noisy";
  return isMet(aim, entry.figure) ? "met" : "missed";
}

void Report::print() const {
  for (const Aim& aim : kAims) {
    const Entry& entry = entryOf(aim.item);
    std::cout << aim.work << '\t' << aim.unit << '\t' << limitText(aim) << '\t' << figureText(aim, entry.figure) << '\t'
              << verdictOn(aim) << '\t' << entry.basis << '\n';
  }
}

bool Report::isComplete() const { return std::ranges::all_of(entries_, &Entry::isMeasured); }

}  // namespace bench
