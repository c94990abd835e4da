// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "documents/syntax/scanner.h"
#include "documents/syntax/tree.h"

namespace documents {

/// Makes a tree of tokens, without recursion. After an error it goes on where a comma, a closing bracket or a line
/// begins.
class Parser {
 public:
  Parser(Tree& tree, Findings& findings) : tree_(tree), findings_(findings), scanner_(tree, findings) {}

  void run(std::size_t skipped);

 private:
  /// A list or an object that is still open.
  struct Level {
    NodeId id;
    NodeId last = kNoNode;
    bool isObject;
    /// a value came last, so that only a comma or the end can follow
    bool needsComma = false;
    /// what came last was broken, so that a comma that is missing is no news
    bool isLenient = false;
  };

  void advance() { token_ = scanner_.next(); }
  void step();
  void comma();
  void close();
  bool expectComma();
  void member();
  [[nodiscard]] bool isNameWithoutQuotes(const Token& token) const;
  bool nameWithoutQuotes(const Token& name);
  void element();
  bool takeColon(const Token& name);
  void value(const Token* name);
  void wordValue(const Token* name);
  void open(const Token* name);
  void tooDeep(const Token* name);
  void resynchronise();
  void skipNested();
  void finish(std::size_t end);
  void unclosed();

  /// Lets what comes next come without a comma.
  void beLenient() { levels_.back().needsComma = levels_.back().isLenient = true; }
  NodeId add(NodeKind kind, const Token& token, const Token* name);
  void addMissing(const Token* name);
  void reportDuplicates(NodeId object);
  void report(Rule rule, Span span, std::string sentence, std::vector<Suggestion> suggestions = {});
  void unexpected(std::string sentence, std::vector<Suggestion> suggestions = {});

  Position positionOf(std::size_t offset);

  [[nodiscard]] bool is(TokenKind kind) const { return token_.kind == kind; }
  [[nodiscard]] bool isOpening() const { return is(TokenKind::kOpenObject) || is(TokenKind::kOpenList); }
  [[nodiscard]] bool isClosing() const { return is(TokenKind::kCloseObject) || is(TokenKind::kCloseList); }
  [[nodiscard]] bool startsValue() const { return isOpening() || token_.kind >= TokenKind::kString; }
  [[nodiscard]] std::string_view textOf(const Token& token) const { return tree_.slice(token.span); }
  static std::string closingOf(const Level& level) { return level.isObject ? "\"}\"" : "\"]\""; }

  Tree& tree_;
  Findings& findings_;
  Scanner scanner_;
  Token token_;
  std::vector<Level> levels_;
  /// where the last token ended that is part of a value
  std::size_t lastEnd_ = 0;
  /// made when a sentence needs it
  std::optional<LineTable> lines_;
};

}  // namespace documents
