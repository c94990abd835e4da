// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "documents/findings/finding.h"
#include "documents/syntax/tree.h"

namespace documents {

enum class TokenKind : std::uint8_t {
  kEnd,
  kOpenObject,
  kCloseObject,
  kOpenList,
  kCloseList,
  kComma,
  kColon,
  kString,
  kNumber,
  kBoolean,
  kNull,
  /// everything that is none of the above, as far as it hangs together
  kWord
};

struct Token {
  TokenKind kind = TokenKind::kEnd;
  /// of a string: as Node::hasEscapes
  bool hasEscapes = false;
  /// a finding says what is wrong with it
  bool isBroken = false;
  /// a string that the line's end ends
  bool isWithoutEnd = false;
  /// first of its line
  bool startsLine = false;
  Span span{};
};

/// Cuts a document into tokens, and says what is wrong inside of them. Comments go to the tree.
class Scanner {
 public:
  Scanner(Tree& tree, Findings& findings) : text_(tree.text), comments_(tree.comments), findings_(findings) {}

  Token next();
  /// Leaves out bytes that are no part of the document.
  void skip(std::size_t bytes) { at_ += bytes; }

 private:
  bool skipBlanks();
  bool skipComment();
  void skipLineComment();
  void skipBlockComment();
  void skipCharacter();
  std::size_t skipBroken();
  Token single(TokenKind kind);
  Token string();
  void escape(Token& token);
  void unicodeEscape(Token& token, std::size_t start);
  void control(Token& token);
  Token singleQuoted();
  Token word();
  void report(Rule rule, Span span, std::string sentence, std::vector<Suggestion> suggestions = {});

  [[nodiscard]] bool isAtEnd() const { return at_ == text_.size(); }
  [[nodiscard]] bool isAt(std::string_view what) const { return text_.substr(at_).starts_with(what); }
  [[nodiscard]] Span since(std::size_t start) const { return {.offset = start, .length = at_ - start}; }

  std::string_view text_;
  std::vector<Comment>& comments_;
  Findings& findings_;
  std::size_t at_ = 0;
};

}  // namespace documents
