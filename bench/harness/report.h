// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <string>

#include "bench/aims.h"
#include "bench/harness/comparison.h"

namespace bench {

/// What was measured, as lines of fields: work, unit, aim, figure, verdict, and what the figure comes from.
class Report {
 public:
  /// A figure, and what it comes from. Of several for one item the worst counts.
  void add(Item item, double figure, std::string basis = "");
  /// How many times as long the first side takes.
  void addRatio(Item item, const Comparison& comparison);
  /// How many times as long the second side takes.
  void addLead(Item item, const Comparison& comparison);
  /// How much longer the first side takes, in nanoseconds.
  void addSurplus(Item item, const Comparison& comparison);

  void print() const;
  /// False when an item was not measured.
  [[nodiscard]] bool isComplete() const;

 private:
  struct Entry {
    bool isMeasured = false;
    double figure = 0;
    std::string basis;
  };

  [[nodiscard]] const Entry& entryOf(Item item) const { return entries_[static_cast<std::size_t>(item)]; }
  [[nodiscard]] std::string_view verdictOn(const Aim& aim) const;

  std::array<Entry, kAims.size()> entries_;
};

}  // namespace bench
