// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/path.h"

namespace documents {

Path Path::member(std::string_view name) const { return with({.name = name}); }

Path Path::element(std::size_t index) const { return with({.name = {}, .index = index}); }

Path Path::with(Step step) const {
  Path path = *this;
  path.steps_[path.count_++] = step;
  return path;
}

std::string Path::text() const {
  std::string text;
  for (std::size_t i = 0; i < count_; ++i) {
    const Step& step = steps_[i];
    if (step.name.empty()) {
      text += '[' + std::to_string(step.index) + ']';
      continue;
    }
    if (!text.empty()) text += '.';
    text += step.name;
  }
  return text;
}

}  // namespace documents
