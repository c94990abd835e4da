// SPDX-License-Identifier: Apache-2.0
#include "documents/editing/completion.h"

#include <algorithm>
#include <utility>

#include "documents/editing/cursor.h"

namespace documents {
namespace {

/// A value, written out and as a snippet.
struct Value {
  std::string text;
  std::string snippet;
};

std::string inQuotes(std::string_view text) { return '"' + std::string{text} + '"'; }

/// Text in a snippet that is to be nothing but itself.
std::string literal(std::string_view text, std::string_view special = "\\$}") {
  std::string result;
  for (const char character : text) {
    if (special.find(character) != std::string_view::npos) result += '\\';
    result += character;
  }
  return result;
}

/// `${1:least}`
std::string placeholder(int stop, std::string_view text) {
  return "${" + std::to_string(stop) + ':' + literal(text) + '}';
}

/// `${1|"AC Power","DC Power"|}`
std::string choice(int stop, const std::vector<std::string>& texts) {
  std::string result = "${" + std::to_string(stop) + '|';
  for (std::size_t i = 0; i < texts.size(); ++i) result += (i == 0 ? "" : ",") + literal(texts[i], "\\,|");
  return result + "|}";
}

std::vector<std::string> optionTexts(const Word& word) {
  std::vector<std::string> texts;
  for (const auto& option : word.options) texts.push_back(inQuotes(textOf(option)));
  return texts;
}

std::vector<std::string> comparisons(const Word& word) {
  constexpr std::uint32_t kBits = 32;
  std::vector<std::string> texts;
  for (std::uint32_t op = 0; op < kBits; ++op)
    if ((word.operators >> op & 1U) != 0) texts.push_back(std::to_string(op));
  return texts;
}

/// The value of a type without its comparison.
Value plainValue(const Word& word, int stop) {
  if (word.options.empty()) {
    const std::string least = std::to_string(word.least);
    return {.text = least, .snippet = placeholder(stop, least)};
  }
  const auto texts = optionTexts(word);
  if (word.form == ValueForm::kBits)
    return {.text = '[' + texts.front() + ']', .snippet = '[' + choice(stop, texts) + ']'};
  return {.text = texts.front(), .snippet = choice(stop, texts)};
}

/// The value with its comparison, where it needs one.
Value wholeValue(const Word& word) {
  if (word.kind == WordKind::kAction || word.onlyOperator()) return plainValue(word, 1);
  const auto ops = comparisons(word);
  const Value value = plainValue(word, 2);
  return {.text = R"({ "op": )" + ops.front() + R"(, "value": )" + value.text + " }",
          .snippet = R"({ "op": )" + choice(1, ops) + R"(, "value": )" + value.snippet + R"( \})"};
}

bool isTaken(const Cursor& cursor, std::string_view name) {
  return std::ranges::find(cursor.others, name) != cursor.others.end();
}

/// Makes the proposals for a place.
class Proposals {
 public:
  Proposals(const Cursor& cursor, std::size_t offset) : cursor_(cursor) {
    result_.span = cursor.span;
    if (!cursor.isString) return;
    ++result_.span.offset;
    result_.span.length -= cursor.isClosed ? 2 : 1;
    isInString_ = offset > cursor.span.offset;
  }

  Completion make() {
    // In front of a string somebody is about to write something else.
    if (cursor_.isString && !isInString_) return {.span = cursor_.span, .proposals = {}};
    if (cursor_.part == Cursor::Part::kName) names();
    if (cursor_.part == Cursor::Part::kValue) values();
    return std::move(result_);
  }

 private:
  void names() {
    if (cursor_.scope == Scope::kEntry) return words();
    for (const auto& member : allMembers())
      if (memberOf(cursor_.scope, cursor_.kind, member.name) == &member && !isTaken(cursor_, member.name))
        addName(Proposal::Kind::kMember, explain(member), memberValue(member));
  }

  void words() {
    // A condition or action has one member.
    if (!cursor_.others.empty()) return;
    for (const auto& word : wordsOf(cursor_.kind)) {
      addName(kindOf(word), explain(word), wholeValue(word));
      result_.proposals.back().isRare = !word.isEnabled;
    }
  }

  void values() {
    switch (cursor_.scope) {
      case Scope::kEntry:
        return entryValue();
      case Scope::kFields:
        return fieldValue();
      case Scope::kOptions:
        if (cursor_.word != nullptr) options();
        return;
      case Scope::kEntries:
        return entries();
      case Scope::kPolicies:
        return addPiece("policy", R"({ "id": 1, "name": "", "when": [], "do": [] })",
                        R"({ "id": ${1:1}, "name": "$2", "when": [{ $3 \}], "do": [{ $4 \}] \})");
      case Scope::kTexts:
        return addPiece("text with a flag", R"({ "text": "", "flag": 1 })", R"({ "text": "$1", "flag": ${2:1} \})");
      default:
        return;
    }
  }

  void entryValue() {
    if (cursor_.word == nullptr) return;
    const Word& word = *cursor_.word;
    const bool needsOperator = word.kind == WordKind::kCondition && !word.onlyOperator();
    if (needsOperator || word.form == ValueForm::kBits) {
      const Value value = wholeValue(word);
      addPiece(needsOperator ? "comparison and value" : "list of options", value.text, value.snippet);
    }
    if (!needsOperator) value();
  }

  void fieldValue() {
    if (cursor_.word == nullptr) return;
    if (cursor_.member == "value") return value();
    if (cursor_.member != "op" || cursor_.kind != WordKind::kCondition) return;
    for (const auto& op : comparisons(*cursor_.word)) addNumber(op, "comparison");
  }

  void value() {
    const Word& word = *cursor_.word;
    if (!word.options.empty()) return options();
    addNumber(std::to_string(word.least), "the least");
    // What has no upper bound has no value that anybody would want there.
    if (word.most != word.least && word.most < std::int64_t{vqs::kUnbounded})
      addNumber(std::to_string(word.most), "the most");
  }

  void options() {
    for (const auto& option : cursor_.word->options) {
      const std::string text{textOf(option)};
      if (cursor_.scope == Scope::kOptions && isTaken(cursor_, text)) continue;
      add(Proposal::Kind::kOption, text, explain(*cursor_.word, option), {.text = text, .snippet = literal(text)});
    }
  }

  void entries() {
    for (const auto& word : wordsOf(cursor_.kind)) {
      const Value value = wholeValue(word);
      const std::string name = inQuotes(word.name);
      addPiece(std::string{word.name}, "{ " + name + ": " + value.text + " }",
               "{ " + literal(name) + ": " + value.snippet + R"( \})");
      result_.proposals.back().explanation = explain(word);
      result_.proposals.back().kind = kindOf(word);
      result_.proposals.back().isRare = !word.isEnabled;
    }
  }

  static Proposal::Kind kindOf(const Word& word) {
    return word.kind == WordKind::kCondition ? Proposal::Kind::kCondition : Proposal::Kind::kAction;
  }

  static Value memberValue(const MemberRow& member) {
    return {.text = std::string{member.value}, .snippet = std::string{member.snippet}};
  }

  /// A name, with its value unless it has one.
  void addName(Proposal::Kind kind, Explanation explanation, const Value& value) {
    const std::string name = explanation.title;
    Value written{.text = name, .snippet = literal(name)};
    if (!cursor_.hasColon) {
      const std::string separator = R"(": )";
      written = {.text = name + separator + value.text, .snippet = literal(name) + separator + value.snippet};
      if (!isInString_) {
        written.text.insert(0, 1, '"');
        written.snippet.insert(0, 1, '"');
      } else if (cursor_.isClosed) {
        result_.span.length = cursor_.span.length - 1;
      }
      result_.proposals.push_back({.kind = kind,
                                   .label = name,
                                   .explanation = std::move(explanation),
                                   .text = std::move(written.text),
                                   .snippet = std::move(written.snippet)});
      return;
    }
    add(kind, name, std::move(explanation), written);
  }

  /// A string, with the quotes that are not there yet.
  void add(Proposal::Kind kind, std::string label, Explanation explanation, const Value& content) {
    const std::string before = isInString_ ? "" : "\"";
    const std::string behind = cursor_.isClosed ? "" : "\"";
    result_.proposals.push_back({.kind = kind,
                                 .label = std::move(label),
                                 .explanation = std::move(explanation),
                                 .text = before + content.text + behind,
                                 .snippet = before + content.snippet + behind});
  }

  /// Something that is no string, and has no place in one.
  void addPiece(std::string label, std::string text, std::string snippet) {
    if (isInString_) return;
    Explanation explanation{.title = label, .detail = text, .paragraphs = {}, .items = {}};
    result_.proposals.push_back({.kind = Proposal::Kind::kPiece,
                                 .label = std::move(label),
                                 .explanation = std::move(explanation),
                                 .text = std::move(text),
                                 .snippet = std::move(snippet)});
  }

  void addNumber(const std::string& number, std::string_view meaning) {
    addPiece(number, number, number);
    if (isInString_) return;
    result_.proposals.back().kind = Proposal::Kind::kNumber;
    result_.proposals.back().explanation.detail = meaning;
  }

  const Cursor& cursor_;
  bool isInString_ = false;
  Completion result_;
};

}  // namespace

Completion completionAt(std::string_view text, std::size_t offset) {
  const Cursor cursor = cursorAt(text, offset);
  return Proposals{cursor, offset}.make();
}

}  // namespace documents
