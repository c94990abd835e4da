// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

namespace test {

/// A text with a place in it, which is written as "|".
struct MarkedText {
  explicit MarkedText(std::string marked) : text(std::move(marked)), offset(text.find('|')) { text.erase(offset, 1); }

  std::string text;
  std::size_t offset;
};

/// The head of a document with one policy, whose list of conditions or actions follows.
inline std::string inWhen(const std::string& rest) { return R"({ "policies": [ { "id": 1, "when": [ )" + rest; }
inline std::string inDo(const std::string& rest) { return R"({ "policies": [ { "id": 1, "do": [ )" + rest; }

}  // namespace test
