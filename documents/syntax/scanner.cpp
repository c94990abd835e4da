// SPDX-License-Identifier: Apache-2.0
#include "documents/syntax/scanner.h"

#include <array>
#include <utility>

#include "documents/syntax/number.h"
#include "documents/text/quote.h"
#include "documents/text/utf.h"

namespace documents {
namespace {

enum class StringByte : std::uint8_t { kPlain, kQuote, kBackslash, kControl, kMany };

constexpr auto kStringBytes = [] {
  std::array<StringByte, 256> bytes{};
  for (std::size_t i = 0; i < 0x20; ++i) bytes[i] = StringByte::kControl;
  for (std::size_t i = 0x80; i < 0x100; ++i) bytes[i] = StringByte::kMany;
  bytes['"'] = StringByte::kQuote;
  bytes['\\'] = StringByte::kBackslash;
  return bytes;
}();

/// What a byte does outside of strings.
enum class Byte : std::uint8_t { kWord, kBlank, kLineEnd, kPunctuation, kSlash, kMany };

constexpr auto kBytes = [] {
  std::array<Byte, 256> bytes{};
  for (std::size_t i = 0x80; i < 0x100; ++i) bytes[i] = Byte::kMany;
  for (const char blank : {' ', '\t'}) bytes[static_cast<std::size_t>(blank)] = Byte::kBlank;
  for (const char lineEnd : {'\n', '\r'}) bytes[static_cast<std::size_t>(lineEnd)] = Byte::kLineEnd;
  for (const char mark : {'{', '}', '[', ']', ',', ':', '"'})
    bytes[static_cast<std::size_t>(mark)] = Byte::kPunctuation;
  bytes['/'] = Byte::kSlash;
  return bytes;
}();

constexpr std::size_t indexOf(char byte) { return static_cast<unsigned char>(byte); }
constexpr Byte kindOf(char byte) { return kBytes[indexOf(byte)]; }
constexpr bool isLineEnd(char byte) { return byte == '\n' || byte == '\r'; }

constexpr bool isHexDigit(char byte) {
  return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'f') || (byte >= 'A' && byte <= 'F');
}

/// A control character as an escape.
std::string escapeOf(char control) {
  switch (control) {
    case '\t':
      return "\\t";
    case '\b':
      return "\\b";
    case '\f':
      return "\\f";
    default: {
      const std::string text = quote({&control, 1});
      return text.substr(1, text.size() - 2);
    }
  }
}

}  // namespace

Token Scanner::next() {
  bool startsLine = at_ == 0;
  for (;;) {
    startsLine |= skipBlanks();
    if (isAtEnd()) break;
    const Byte byte = kindOf(text_[at_]);
    const bool isSkipped = byte == Byte::kSlash ? skipComment() : byte == Byte::kMany && skipBroken() != 0;
    if (!isSkipped) break;
  }
  Token token;
  if (isAtEnd()) {
    token.span = {.offset = at_, .length = 0};
  } else {
    switch (text_[at_]) {
      case '{':
        token = single(TokenKind::kOpenObject);
        break;
      case '}':
        token = single(TokenKind::kCloseObject);
        break;
      case '[':
        token = single(TokenKind::kOpenList);
        break;
      case ']':
        token = single(TokenKind::kCloseList);
        break;
      case ',':
        token = single(TokenKind::kComma);
        break;
      case ':':
        token = single(TokenKind::kColon);
        break;
      case '"':
        token = string();
        break;
      case '\'':
        token = singleQuoted();
        break;
      default:
        token = word();
    }
  }
  token.startsLine = startsLine;
  return token;
}

/// True when a line ended in them.
bool Scanner::skipBlanks() {
  bool isNewLine = false;
  for (; at_ < text_.size(); ++at_) {
    const Byte byte = kindOf(text_[at_]);
    if (byte == Byte::kLineEnd)
      isNewLine = true;
    else if (byte != Byte::kBlank)
      break;
  }
  return isNewLine;
}

bool Scanner::skipComment() {
  if (isAt("//")) {
    skipLineComment();
    return true;
  }
  if (isAt("/*")) {
    skipBlockComment();
    return true;
  }
  return false;
}

void Scanner::skipLineComment() {
  const std::size_t start = at_;
  while (at_ < text_.size() && !isLineEnd(text_[at_])) skipCharacter();
  comments_.push_back({.span = since(start), .isBlock = false});
}

void Scanner::skipBlockComment() {
  const std::size_t start = at_;
  at_ += 2;
  while (at_ < text_.size() && !(text_[at_] == '*' && isAt("*/"))) skipCharacter();
  if (isAtEnd()) {
    report(Rule::kCommentWithoutEnd, {.offset = start, .length = 2}, "the comment has no end: \"*/\" is expected");
  } else {
    at_ += 2;
  }
  comments_.push_back({.span = since(start), .isBlock = true});
}

/// One character of a comment, or bytes that are none.
void Scanner::skipCharacter() {
  if (kindOf(text_[at_]) != Byte::kMany)
    ++at_;
  else if (skipBroken() == 0)
    at_ += nextCharacter(text_.substr(at_))->bytes;
}

/// Bytes that are no UTF-8, and a finding about them; how many there were.
std::size_t Scanner::skipBroken() {
  const std::size_t start = at_;
  while (at_ < text_.size() && static_cast<unsigned char>(text_[at_]) >= 0x80 && !nextCharacter(text_.substr(at_)))
    ++at_;
  if (at_ != start) report(Rule::kBrokenUtf8, since(start), "these bytes are no UTF-8, in which documents are written");
  return at_ - start;
}

Token Scanner::single(TokenKind kind) { return {.kind = kind, .span = {.offset = at_++, .length = 1}}; }

Token Scanner::string() {
  const std::size_t start = at_++;
  Token token{.kind = TokenKind::kString};
  for (;;) {
    while (at_ < text_.size() && kStringBytes[indexOf(text_[at_])] == StringByte::kPlain) ++at_;
    if (isAtEnd() || isLineEnd(text_[at_])) {
      token.isWithoutEnd = token.isBroken = true;
      report(Rule::kStringWithoutEnd, since(start), "the string has no end: a quote is expected before the line's end");
      break;
    }
    const StringByte byte = kStringBytes[indexOf(text_[at_])];
    if (byte == StringByte::kQuote) {
      ++at_;
      break;
    }
    if (byte == StringByte::kBackslash) {
      escape(token);
    } else if (byte == StringByte::kControl) {
      control(token);
    } else if (skipBroken() != 0) {
      token.hasEscapes = token.isBroken = true;
    } else {
      at_ += nextCharacter(text_.substr(at_))->bytes;
    }
  }
  token.span = since(start);
  return token;
}

void Scanner::escape(Token& token) {
  const std::size_t start = at_++;
  token.hasEscapes = true;
  // The end of a string without an end: that is what is said about it.
  if (isAtEnd() || isLineEnd(text_[at_])) return;
  if (text_[at_] == 'u') return unicodeEscape(token, start);
  if (std::string_view{"\"\\/bfnrt"}.find(text_[at_]) != std::string_view::npos) {
    ++at_;
    return;
  }
  token.isBroken = true;
  const auto character = nextCharacter(text_.substr(at_));
  if (character) at_ += character->bytes;
  report(Rule::kUnknownEscape, since(start),
         "there is no such escape: \\\", \\\\, \\/, \\b, \\f, \\n, \\r, \\t or \\u with four digits is expected",
         {{.sentence = "write \"\\\\\" for a backslash",
           .edits = {{.span = {.offset = start, .length = 1}, .replacement = "\\\\"}}}});
}

void Scanner::unicodeEscape(Token& token, std::size_t start) {
  constexpr std::size_t kDigits = 4;
  ++at_;
  std::size_t count = 0;
  for (; count < kDigits && at_ < text_.size() && isHexDigit(text_[at_]); ++at_) ++count;
  if (count == kDigits) return;
  token.isBroken = true;
  report(Rule::kUnknownEscape, since(start), "four hexadecimal digits are expected behind \"\\u\"");
}

void Scanner::control(Token& token) {
  token.isBroken = true;
  std::string escaped = escapeOf(text_[at_]);
  const Span span{.offset = at_++, .length = 1};
  std::string sentence = "a control character stands in a string as an escape: " + escaped + " is expected";
  report(Rule::kControlCharacter, span, std::move(sentence),
         {{.sentence = "write " + escaped, .edits = {{.span = span, .replacement = escaped}}, .isCertain = true}});
}

/// As other languages write strings: a word for this one, however many blanks it holds.
Token Scanner::singleQuoted() {
  std::size_t end = at_ + 1;
  while (end < text_.size() && text_[end] != '\'' && !isLineEnd(text_[end])) ++end;
  if (end == text_.size() || text_[end] != '\'' || validUtf8(text_.substr(at_, end - at_)) != end - at_) return word();
  const std::size_t start = std::exchange(at_, end + 1);
  return {.kind = TokenKind::kWord, .span = since(start)};
}

Token Scanner::word() {
  const std::size_t start = at_;
  for (; at_ < text_.size(); ++at_) {
    const Byte byte = kindOf(text_[at_]);
    if (byte == Byte::kWord) continue;
    if (byte == Byte::kSlash && !isAt("//") && !isAt("/*")) continue;
    const auto character = byte == Byte::kMany ? nextCharacter(text_.substr(at_)) : std::nullopt;
    if (!character) break;
    at_ += character->bytes - 1;
  }
  Token token{.kind = TokenKind::kWord, .span = since(start)};
  const std::string_view word = text_.substr(start, token.span.length);
  if (word == "true" || word == "false") {
    token.kind = TokenKind::kBoolean;
  } else if (word == "null") {
    token.kind = TokenKind::kNull;
  } else if (looksLikeNumber(word)) {
    token.kind = TokenKind::kNumber;
    token.isBroken = !isNumber(word);
    if (token.isBroken) addFinding(findings_, malformedNumber(word, token.span));
  }
  return token;
}

void Scanner::report(Rule rule, Span span, std::string sentence, std::vector<Suggestion> suggestions) {
  addFinding(findings_, {.rule = rule,
                         .severity = Severity::kError,
                         .span = span,
                         .path = {},
                         .sentence = std::move(sentence),
                         .suggestions = std::move(suggestions)});
}

}  // namespace documents
