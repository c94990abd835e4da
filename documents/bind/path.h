// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace documents {

/// Where a value is in a document, by the names of records' fields: "policies[2].when[4].value". It is text only when
/// there is something to say, and values are many.
class Path {
 public:
  /// The name has to outlive the path: a literal.
  [[nodiscard]] Path member(std::string_view name) const;
  [[nodiscard]] Path element(std::size_t index) const;
  /// of its last member
  [[nodiscard]] std::string_view name() const { return steps_[count_ - 1].name; }
  /// of its last element
  [[nodiscard]] std::size_t index() const { return steps_[count_ - 1].index; }
  [[nodiscard]] std::string text() const;

 private:
  struct Step {
    std::string_view name;
    std::size_t index = 0;
  };
  [[nodiscard]] Path with(Step step) const;

  /// policies, its element, when, its element, value, its element
  std::array<Step, 6> steps_;
  std::size_t count_ = 0;
};

}  // namespace documents
