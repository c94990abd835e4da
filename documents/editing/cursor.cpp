// SPDX-License-Identifier: Apache-2.0
#include "documents/editing/cursor.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

#include "documents/syntax/scanner.h"

namespace documents {
namespace {

/// A list or an object that is open.
struct Level {
  bool isObject = true;
  Scope scope = Scope::kNone;
  WordKind kind = WordKind::kCondition;
  const Word* word = nullptr;
  /// the name of the member at hand, and what of the member there is
  std::string member;
  bool hasColon = false;
  bool hasValue = false;
  /// names of an object, strings of a list
  std::vector<std::string> texts;

  [[nodiscard]] bool expectsValue() const { return !isObject || (hasColon && !hasValue); }
};

struct ScopeRow {
  Scope scope;
  /// empty for the elements of a list, and for any member
  std::string_view member;
  bool isObject;
  Scope inner;
};

// clang-format off
constexpr ScopeRow kScopes[] = {
    {Scope::kDocument, "policies", false, Scope::kPolicies},
    {Scope::kPolicies, "",         true,  Scope::kPolicy},
    {Scope::kPolicy,   "when",     false, Scope::kEntries},
    {Scope::kPolicy,   "do",       false, Scope::kEntries},
    {Scope::kPolicy,   "texts",    false, Scope::kTexts},
    {Scope::kEntries,  "",         true,  Scope::kEntry},
    {Scope::kEntry,    "",         true,  Scope::kFields},
    {Scope::kEntry,    "",         false, Scope::kOptions},
    {Scope::kFields,   "value",    false, Scope::kOptions},
    {Scope::kTexts,    "",         true,  Scope::kText},
};
// clang-format on

Scope innerScope(const Level& outer, bool isObject) {
  const auto isMeant = [&](const ScopeRow& row) {
    return row.scope == outer.scope && row.isObject == isObject && (row.member.empty() || row.member == outer.member);
  };
  const auto* const row = std::ranges::find_if(kScopes, isMeant);
  return row == std::end(kScopes) ? Scope::kNone : row->inner;
}

/// A type whatever the case it is written in, which is another's to complain about.
const Word* wordAt(const Level& entry) { return foldedWord(entry.kind, entry.member); }

/// Follows the tokens of a document to a place, and then to the end of the list or object that the place is in.
class Walk {
 public:
  Walk(std::string_view text, std::size_t offset) : tree_{.text = text}, offset_(offset) { readFrom(0); }

  Cursor run() {
    while (token_.kind != TokenKind::kEnd && !touches() && token_.span.end() <= offset_) {
      take();
      advance();
    }
    if (isInComment() || levels_.empty()) return {};
    Cursor cursor = between();
    if (touches()) enter(cursor);
    lookAhead(cursor);
    return cursor;
  }

 private:
  void readFrom(std::size_t offset) {
    scanner_ = std::make_unique<Scanner>(tree_, findings_);
    scanner_->skip(offset);
    advance();
  }
  void advance() { token_ = scanner_->next(); }

  [[nodiscard]] bool isText() const { return token_.kind >= TokenKind::kString; }
  [[nodiscard]] std::string content(Span span) const { return std::string{unquoted(tree_.slice(span))}; }

  /// True when the place is in the token: between the quotes of a string, or at an end of a word.
  [[nodiscard]] bool touches() const {
    if (!isText() || offset_ < token_.span.offset) return false;
    const bool hasOpenEnd = token_.kind != TokenKind::kString || token_.isWithoutEnd;
    return offset_ < token_.span.end() || (hasOpenEnd && offset_ == token_.span.end());
  }

  [[nodiscard]] bool isInComment() const {
    return std::ranges::any_of(tree_.comments, [&](const Comment& comment) {
      const bool hasEnd = comment.isBlock && tree_.slice(comment.span).ends_with("*/");
      return offset_ > comment.span.offset && offset_ < comment.span.end() + (hasEnd ? 0 : 1);
    });
  }

  void take() {
    switch (token_.kind) {
      case TokenKind::kOpenObject:
      case TokenKind::kOpenList:
        return open(token_.kind == TokenKind::kOpenObject);
      case TokenKind::kCloseObject:
      case TokenKind::kCloseList:
        return close(token_.kind == TokenKind::kCloseObject);
      default:
        if (!levels_.empty()) takeIn(levels_.back());
    }
  }

  void takeIn(Level& level) {
    if (token_.kind == TokenKind::kComma) {
      level.member.clear();
      level.hasColon = level.hasValue = false;
    } else if (token_.kind == TokenKind::kColon) {
      level.hasColon = true;
    } else if (level.expectsValue()) {
      level.hasValue = true;
      if (!level.isObject) level.texts.push_back(content(token_.span));
    } else {
      level.member = content(token_.span);
      level.hasColon = level.hasValue = false;
      level.texts.push_back(level.member);
    }
  }

  void open(bool isObject) {
    // Nobody is helped as deep as that.
    if (levels_.size() == kMostLevels) {
      ++deeper_;
      return;
    }
    Level level;
    level.isObject = isObject;
    if (levels_.empty()) {
      level.scope = isObject ? Scope::kDocument : Scope::kNone;
    } else {
      Level& outer = levels_.back();
      outer.hasValue = true;
      level.scope = innerScope(outer, isObject);
      level.kind = level.scope == Scope::kEntries && outer.member == "do" ? WordKind::kAction : outer.kind;
      level.word = outer.scope == Scope::kEntry ? wordAt(outer) : outer.word;
    }
    levels_.push_back(std::move(level));
  }

  /// Closes what is open inside of it too.
  void close(bool isObject) {
    if (deeper_ > 0) {
      --deeper_;
      return;
    }
    const auto last = std::ranges::find(levels_.rbegin(), levels_.rend(), isObject, &Level::isObject);
    if (last != levels_.rend()) levels_.erase(std::prev(last.base()), levels_.end());
  }

  /// The place, as if there were nothing behind it.
  [[nodiscard]] Cursor between() const {
    const Level& level = levels_.back();
    Cursor cursor;
    cursor.scope = deeper_ > 0 ? Scope::kNone : level.scope;
    cursor.kind = level.kind;
    cursor.word = level.word;
    cursor.span.offset = offset_;
    cursor.others = level.texts;
    if (level.expectsValue() && !level.hasValue)
      cursor.part = Cursor::Part::kValue;
    else if (level.isObject && level.member.empty())
      cursor.part = Cursor::Part::kName;
    if (!level.isObject) return cursor;
    cursor.member = level.member;
    if (level.scope == Scope::kEntry) cursor.word = wordAt(level);
    return cursor;
  }

  /// The place in a token, behind which the token that follows is read.
  void enter(Cursor& cursor) {
    const Token token = std::exchange(token_, {});
    advance();
    cursor.isString = token.kind == TokenKind::kString;
    // A quote right in front of a word is the first of another string.
    const bool isStolen = isText() && token_.span.offset == token.span.end();
    cursor.isClosed = cursor.isString && !token.isWithoutEnd && !isStolen;
    cursor.span = token.span;
    if (cursor.isString && !cursor.isClosed) {
      cursor.span.length = offset_ - token.span.offset;
      readFrom(offset_);
    }
    cursor.part = levels_.back().expectsValue() ? Cursor::Part::kValue : Cursor::Part::kName;
    if (cursor.part == Cursor::Part::kName) cursor.member = content(cursor.span);
  }

  /// Adds what the list or object still holds.
  void lookAhead(Cursor& cursor) {
    cursor.hasColon = cursor.part == Cursor::Part::kName && token_.kind == TokenKind::kColon;
    const bool isObject = levels_.back().isObject;
    std::size_t depth = 0;
    std::string latest;
    for (; token_.kind != TokenKind::kEnd; advance()) {
      const bool isOpening = token_.kind == TokenKind::kOpenObject || token_.kind == TokenKind::kOpenList;
      const bool isClosing = token_.kind == TokenKind::kCloseObject || token_.kind == TokenKind::kCloseList;
      if (isClosing && depth == 0) return;
      depth = depth + (isOpening ? 1 : 0) - (isClosing ? 1 : 0);
      if (depth > 0) continue;
      if (isText() && !isObject) cursor.others.push_back(content(token_.span));
      if (isText() && isObject) latest = content(token_.span);
      if (token_.kind == TokenKind::kColon && !latest.empty()) cursor.others.push_back(std::exchange(latest, {}));
    }
  }

  Tree tree_;
  Findings findings_;
  std::size_t offset_;
  std::unique_ptr<Scanner> scanner_;
  Token token_;
  std::vector<Level> levels_;
  /// lists and objects that are open beyond the levels that are looked at
  std::size_t deeper_ = 0;
};

}  // namespace

Cursor cursorAt(std::string_view text, std::size_t offset) { return Walk{text, std::min(offset, text.size())}.run(); }

std::string_view unquoted(std::string_view written) {
  if (!written.starts_with('"')) return written;
  written.remove_prefix(1);
  if (written.ends_with('"')) written.remove_suffix(1);
  return written;
}

}  // namespace documents
