// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "documents/findings/rules.h"

namespace documents {

/// A stretch of a document, in bytes from its start.
struct Span {
  std::size_t offset = 0;
  std::size_t length = 0;

  [[nodiscard]] std::size_t end() const { return offset + length; }
  bool operator==(const Span&) const = default;
};

/// What to write instead of a stretch.
struct Edit {
  Span span;
  std::string replacement;
};

/// A change that would mend a finding.
struct Suggestion {
  /// what it does, as an order: `write "Power Source"`
  std::string sentence;
  std::vector<Edit> edits;
  /// nothing else can have been meant, so that a tool may apply it without asking
  bool isCertain = false;
};

/// One thing to be said about a document.
struct Finding {
  Rule rule;
  Severity severity;
  Span span;
  /// where it is as a member: "policies[2].when[4].value"; empty for the document as a whole
  std::string path{};
  /// what is wrong and what was expected: one sentence without a full stop
  std::string sentence;
  std::vector<Suggestion> suggestions{};
};

using Findings = std::vector<Finding>;

/// Adds a finding. The last one that there is room for becomes kTooManyFindings, and what comes behind it is dropped.
void addFinding(Findings& findings, Finding finding);

/// True when nothing more is added.
bool isFull(const Findings& findings);

/// True when one of them is an error.
bool hasErrors(const Findings& findings);

/// A place as people and editors count: from 1 on.
struct Position {
  std::size_t line;
  /// in characters
  std::size_t column;
  /// in units of UTF-16, from 0 on, as editors' protocols count
  std::size_t unit;
};

/// Where the lines of a text begin. It keeps a view of the text. Lines end in LF, CR LF or CR; a byte order mark is no
/// part of the first line, and a byte that is no UTF-8 counts as a character.
class LineTable {
 public:
  explicit LineTable(std::string_view text);

  [[nodiscard]] Position positionOf(std::size_t offset) const;
  /// The bytes from the text's start to a line (from 1 on) and a unit of UTF-16 in it; the line's end when it is
  /// shorter, the text's end when there is no such line.
  [[nodiscard]] std::size_t offsetOf(std::size_t line, std::size_t unit) const;
  /// A line without its end.
  [[nodiscard]] std::string_view line(std::size_t number) const;
  [[nodiscard]] std::size_t count() const { return starts_.size(); }

 private:
  /// Characters and units of UTF-16 before a byte.
  struct Mark {
    std::size_t offset = 0;
    std::size_t characters = 0;
    std::size_t units = 0;
  };
  [[nodiscard]] Mark markAt(std::size_t offset) const;
  [[nodiscard]] std::size_t endOfLine(std::size_t index) const;

  std::string_view text_;
  std::vector<std::size_t> starts_;
  /// some of the text's, so that a place in a line of megabytes is found without counting from its start
  std::vector<Mark> marks_;
};

}  // namespace documents
