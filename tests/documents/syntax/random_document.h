// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <random>
#include <string>
#include <vector>

namespace documents {

/// Random JSON, the same in every run.
class RandomDocument {
 public:
  explicit RandomDocument(unsigned seed) : random_(seed) {}

  /// The tokens of a value. Names are not used twice in an object.
  std::vector<std::string> tokens();
  /// The tokens with blanks, and with comments if so wanted, before, between and behind them.
  std::string spaced(const std::vector<std::string>& tokens, bool hasComments);
  /// A comment at one gap, gap 0 being before the first token.
  static std::string withOneComment(const std::vector<std::string>& tokens, std::size_t gap,
                                    const std::string& comment);
  /// A change or some: bytes taken out, put in, doubled or replaced.
  std::string mutated(std::string text);

  std::size_t below(std::size_t count) { return std::uniform_int_distribution<std::size_t>{0, count - 1}(random_); }

 private:
  void appendValue(std::vector<std::string>& tokens, int depth);
  void appendList(std::vector<std::string>& tokens, int depth);
  void appendObject(std::vector<std::string>& tokens, int depth);
  std::string string();
  std::string number();
  std::string blank();
  std::string comment();

  std::mt19937 random_;
};

}  // namespace documents
