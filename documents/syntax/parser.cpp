// SPDX-License-Identifier: Apache-2.0
#include "documents/syntax/parser.h"

#include <algorithm>
#include <utility>

#include "documents/syntax/duplicates.h"
#include "documents/text/quote.h"

namespace documents {
namespace {

constexpr const char* kNameExpected = R"(a member's name in quotes or "}" is expected)";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

Suggestion insertion(std::size_t offset, std::string text, std::string sentence) {
  return {.sentence = std::move(sentence),
          .edits = {{.span = {.offset = offset, .length = 0}, .replacement = std::move(text)}},
          .isCertain = true};
}

Suggestion replacement(Span span, std::string text) {
  return {.sentence = "write " + text, .edits = {{.span = span, .replacement = std::move(text)}}, .isCertain = true};
}

bool isSingleQuoted(std::string_view word) { return word.size() > 1 && word.starts_with('\'') && word.ends_with('\''); }

/// To write a word in quotes, where that makes a string of just its text.
std::vector<Suggestion> inQuotes(Span span, std::string_view word) {
  const auto isSpecial = [](char byte) {
    return byte == '"' || byte == '\\' || static_cast<unsigned char>(byte) < 0x20;
  };
  if (std::ranges::any_of(word, isSpecial)) return {};
  if (isSingleQuoted(word)) word = word.substr(1, word.size() - 2);
  return {replacement(span, '"' + std::string{word} + '"')};
}

/// True for a word that somebody would use as a member's name without quotes.
bool isIdentifier(std::string_view word) {
  return std::ranges::all_of(word, [](char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
           byte == '_' || byte == '$' || byte == '-';
  });
}

constexpr char lower(char byte) { return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte; }

/// true, false or null, if the word is that in another case; otherwise empty.
std::string_view literalOf(std::string_view word) {
  for (const std::string_view literal : {"true", "false", "null"})
    if (std::ranges::equal(word, literal, {}, lower)) return literal;
  return {};
}

}  // namespace

void Parser::run(std::size_t skipped) {
  scanner_.skip(skipped);
  lastEnd_ = skipped;
  advance();
  // A comment without an end may have taken all of it: that was said.
  if (is(TokenKind::kEnd) && hasErrors(findings_)) return;
  if (is(TokenKind::kEnd)) return unexpected("the document is empty: a value is expected");
  if (startsValue())
    value(nullptr);
  else
    return unexpected("a value is expected");
  while (!levels_.empty() && !isFull(findings_)) step();
  if (isFull(findings_) || is(TokenKind::kEnd)) return;
  report(Rule::kBehindTheEnd, token_.span,
         "the document ends before " + quote(textOf(token_)) + ": nothing is expected here");
}

/// Reads something of the innermost list or object.
void Parser::step() {
  if (is(TokenKind::kEnd)) return unclosed();
  if (is(TokenKind::kComma)) return comma();
  if (isClosing()) return close();
  if (levels_.back().needsComma && !expectComma()) return;
  levels_.back().isLenient = false;
  if (levels_.back().isObject)
    member();
  else
    element();
}

void Parser::comma() {
  Level& level = levels_.back();
  if (!level.needsComma && !level.isLenient)
    unexpected(level.isObject ? kNameExpected : R"(a value or "]" is expected)");
  level.needsComma = level.isLenient = false;
  advance();
}

void Parser::close() {
  const bool isObject = is(TokenKind::kCloseObject);
  if (levels_.back().isObject != isObject) {
    const bool isOpen = std::ranges::any_of(levels_, [&](const Level& level) { return level.isObject == isObject; });
    unexpected("a comma or " + closingOf(levels_.back()) + " is expected");
    if (!isOpen) return advance();
    while (levels_.back().isObject != isObject) finish(lastEnd_);
  }
  finish(token_.span.end());
  lastEnd_ = token_.span.end();
  advance();
}

/// Something stands where a comma should be. False when it was left out, with what follows it.
bool Parser::expectComma() {
  Level& level = levels_.back();
  level.needsComma = false;
  if (level.isLenient) return true;
  const std::string sentence = "a comma or " + closingOf(level) + " is expected";
  const bool isNext = is(TokenKind::kString) || (!level.isObject && startsValue() && !is(TokenKind::kWord));
  if (isNext) {
    unexpected(sentence, {insertion(lastEnd_, ",", "insert a comma")});
    return true;
  }
  unexpected(sentence);
  resynchronise();
  return false;
}

void Parser::member() {
  const Token name = token_;
  if (!is(TokenKind::kString) && !isNameWithoutQuotes(name)) {
    unexpected(kNameExpected);
    return resynchronise();
  }
  lastEnd_ = name.span.end();
  advance();
  if (name.isWithoutEnd) return beLenient();
  if (name.kind != TokenKind::kString && !nameWithoutQuotes(name)) return;
  if (takeColon(name)) value(&name);
}

bool Parser::isNameWithoutQuotes(const Token& token) const {
  return token.kind > TokenKind::kString && (isIdentifier(textOf(token)) || isSingleQuoted(textOf(token)));
}

/// Says that a word should be a name in quotes, if a colon makes a name of it; otherwise it is left out.
bool Parser::nameWithoutQuotes(const Token& name) {
  const std::string_view word = textOf(name);
  if (!is(TokenKind::kColon)) {
    report(Rule::kUnexpected, name.span, kNameExpected);
    resynchronise();
    return false;
  }
  if (!name.isBroken)
    report(Rule::kUnexpected, name.span, "a member's name stands in quotes", inQuotes(name.span, word));
  return true;
}

void Parser::element() {
  if (startsValue()) return value(nullptr);
  unexpected(R"(a value or "]" is expected)");
  resynchronise();
}

/// True when a value can follow; otherwise the member has none.
bool Parser::takeColon(const Token& name) {
  if (is(TokenKind::kColon)) {
    lastEnd_ = token_.span.end();
    advance();
    return true;
  }
  if (is(TokenKind::kWord) && textOf(token_) == "=") {
    unexpected("a colon is expected", {replacement(token_.span, ":")});
    advance();
    return true;
  }
  const bool isNextMember = is(TokenKind::kString) && token_.startsLine;
  if (startsValue() && !isNextMember) {
    unexpected("a colon is expected", {insertion(lastEnd_, ":", "insert a colon")});
    return true;
  }
  unexpected("a colon is expected");
  addMissing(&name);
  return false;
}

/// Reads a value where one is expected; `name` when it is a member's.
void Parser::value(const Token* name) {
  switch (token_.kind) {
    case TokenKind::kOpenObject:
    case TokenKind::kOpenList:
      return open(name);
    case TokenKind::kString:
      add(NodeKind::kString, token_, name);
      break;
    case TokenKind::kNumber:
      add(NodeKind::kNumber, token_, name);
      break;
    case TokenKind::kBoolean:
      add(NodeKind::kBoolean, token_, name);
      break;
    case TokenKind::kNull:
      add(NodeKind::kNull, token_, name);
      break;
    case TokenKind::kWord:
      wordValue(name);
      break;
    default:
      unexpected("a value is expected");
      addMissing(name);
      if (is(TokenKind::kColon)) resynchronise();
      return;
  }
  if (!levels_.empty()) levels_.back().isLenient = token_.isWithoutEnd;
  lastEnd_ = token_.span.end();
  advance();
}

void Parser::wordValue(const Token* name) {
  const std::string_view word = textOf(token_);
  if (const auto literal = literalOf(word); !literal.empty()) {
    unexpected("true, false and null are written in small letters", {replacement(token_.span, std::string{literal})});
  } else if (isSingleQuoted(word)) {
    unexpected("a string stands in double quotes", inQuotes(token_.span, word));
  } else {
    // It may have been meant as a string: nobody can be sure.
    auto suggestions = isIdentifier(word) ? inQuotes(token_.span, word) : std::vector<Suggestion>{};
    for (Suggestion& suggestion : suggestions) suggestion.isCertain = false;
    unexpected(quote(word) + " is no value: a string in quotes, a number, a list or an object is expected",
               std::move(suggestions));
  }
  token_.isBroken = true;
  add(NodeKind::kString, token_, name);
}

void Parser::open(const Token* name) {
  if (levels_.size() == kMostLevels) return tooDeep(name);
  const bool isObject = is(TokenKind::kOpenObject);
  const NodeId id = add(isObject ? NodeKind::kObject : NodeKind::kArray, token_, name);
  levels_.push_back({.id = id, .isObject = isObject});
  lastEnd_ = token_.span.end();
  advance();
}

void Parser::tooDeep(const Token* name) {
  report(Rule::kTooDeep, token_.span,
         "lists and objects are nested too deeply: " + std::to_string(kMostLevels) + " levels are read");
  const bool isObject = is(TokenKind::kOpenObject);
  Token token = token_;
  token.isBroken = true;
  const NodeId id = add(isObject ? NodeKind::kObject : NodeKind::kArray, token, name);
  skipNested();
  tree_.nodes[id].span.length = lastEnd_ - token.span.offset;
}

/// Leaves out a list or an object with everything in it.
void Parser::skipNested() {
  std::size_t depth = 0;
  do {
    if (isOpening()) ++depth;
    if (isClosing()) --depth;
    lastEnd_ = token_.span.end();
    advance();
  } while (depth != 0 && !is(TokenKind::kEnd) && !isFull(findings_));
}

/// Leaves out what cannot be read: to the next comma, closing bracket or line.
void Parser::resynchronise() {
  bool isFirst = true;
  while (!is(TokenKind::kEnd) && !is(TokenKind::kComma) && !isClosing() && !isFull(findings_)) {
    if (!isFirst && token_.startsLine) break;
    isFirst = false;
    if (isOpening())
      skipNested();
    else
      advance();
  }
  beLenient();
}

/// The innermost list or object ends.
void Parser::finish(std::size_t end) {
  const Level level = levels_.back();
  levels_.pop_back();
  Node& node = tree_.nodes[level.id];
  node.span.length = end - node.span.offset;
  if (level.isObject) reportDuplicates(level.id);
}

void Parser::unclosed() {
  const Level& level = levels_.back();
  // A string or a comment without an end has taken the rest of the document: that was said.
  const bool isSwallowed =
      !findings_.empty() &&
      (findings_.back().rule == Rule::kCommentWithoutEnd ||
       (findings_.back().rule == Rule::kStringWithoutEnd && findings_.back().span.end() == tree_.text.size()));
  if (!isSwallowed) {
    const auto line = positionOf(tree_.node(level.id).span.offset).line;
    report(Rule::kUnexpected, token_.span,
           std::string{level.isObject ? "the object" : "the list"} + " that begins in line " + std::to_string(line) +
               " has no end: " + closingOf(level) + " is expected");
  }
  while (!levels_.empty()) finish(lastEnd_);
}

NodeId Parser::add(NodeKind kind, const Token& token, const Token* name) {
  const auto id = static_cast<NodeId>(tree_.nodes.size());
  Node& node = tree_.nodes.emplace_back(Node{.kind = kind});
  node.hasEscapes = token.hasEscapes;
  node.isBroken = token.isBroken;
  node.span = token.span;
  if (name != nullptr) {
    node.name = name->span;
    node.hasEscapesInName = name->hasEscapes;
  }
  if (levels_.empty()) return id;
  Level& level = levels_.back();
  (level.last == kNoNode ? tree_.nodes[level.id].firstChild : tree_.nodes[level.last].next) = id;
  ++tree_.nodes[level.id].count;
  level.last = id;
  level.needsComma = true;
  return id;
}

/// A value for a member that has none, so that the member is known to be there.
void Parser::addMissing(const Token* name) {
  add(NodeKind::kNull, {.kind = TokenKind::kNull, .isBroken = true, .span = {.offset = lastEnd_, .length = 0}}, name);
  if (!levels_.empty()) levels_.back().isLenient = true;
}

void Parser::reportDuplicates(NodeId object) {
  const auto duplicates = duplicatesOf(tree_, object);
  if (duplicates.empty()) return;
  for (const auto& [first, again] : duplicates) {
    if (isFull(findings_)) return;
    const Position place = positionOf(tree_.node(first).name.offset);
    report(Rule::kDuplicateMember, tree_.node(again).name,
           "the object already has a member " + quote(nameOf(tree_, tree_.node(again))) + ", in line " +
               std::to_string(place.line) + ", column " + std::to_string(place.column) +
               ": one of each name is expected");
  }
}

Position Parser::positionOf(std::size_t offset) {
  if (!lines_) lines_.emplace(tree_.text);
  return lines_->positionOf(offset);
}

void Parser::report(Rule rule, Span span, std::string sentence, std::vector<Suggestion> suggestions) {
  addFinding(findings_, {.rule = rule,
                         .severity = Severity::kError,
                         .span = span,
                         .path = {},
                         .sentence = std::move(sentence),
                         .suggestions = std::move(suggestions)});
}

/// Says what is expected in place of the token. At the end of the text it is what stays open that is told.
void Parser::unexpected(std::string sentence, std::vector<Suggestion> suggestions) {
  if (is(TokenKind::kEnd) && !levels_.empty()) return;
  report(Rule::kUnexpected, token_.span, std::move(sentence), std::move(suggestions));
}

namespace {

/// How many values a text has, or more. Those of a small one are guessed, since growing costs little there.
std::size_t likelyNodes(std::string_view text) {
  constexpr std::size_t kSmall = std::size_t{1} << 20;
  if (text.size() <= kSmall) return text.size() / 16 + 1;
  return 1 + static_cast<std::size_t>(
                 std::ranges::count_if(text, [](char byte) { return byte == ',' || byte == '[' || byte == '{'; }));
}

}  // namespace

Tree parse(std::string_view text, Findings& findings) {
  Tree tree{.text = text};
  const std::size_t before = findings.size();
  const auto refuse = [&](Rule rule, Span span, std::string sentence) {
    addFinding(findings, {.rule = rule,
                          .severity = Severity::kError,
                          .span = span,
                          .path = {},
                          .sentence = std::move(sentence),
                          .suggestions = {}});
  };
  if (text.size() > kMostBytes) {
    refuse(Rule::kTooLarge, {},
           "the document has " + std::to_string(text.size()) + " bytes: " + std::to_string(kMostBytes) +
               " at most are read");
    return tree;
  }
  if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) {
    refuse(Rule::kBrokenUtf8, {.offset = 0, .length = 2}, "the document is UTF-16: UTF-8 is expected");
    return tree;
  }
  tree.nodes.reserve(likelyNodes(text));
  Parser{tree, findings}.run(text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
  // Objects are looked at as a whole when they end.
  std::stable_sort(findings.begin() + static_cast<std::ptrdiff_t>(before), findings.end(),
                   [](const Finding& a, const Finding& b) { return a.span.offset < b.span.offset; });
  return tree;
}

}  // namespace documents
