// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "documents/syntax/tree.h"

namespace documents {

/// The characters of a string or of a member's name: a view of the document where they stand there as they are.
class Characters {
 public:
  static Characters ofString(const Tree& tree, const Node& node);
  static Characters ofName(const Tree& tree, const Node& node);

  [[nodiscard]] std::string_view view() const { return isPlain_ ? plain_ : std::string_view(made_); }

 private:
  explicit Characters(std::string_view plain) : plain_(plain) {}
  explicit Characters(std::string made) : isPlain_(false), made_(std::move(made)) {}

  bool isPlain_ = true;
  std::string_view plain_;
  std::string made_;
};

}  // namespace documents
