// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "documents/bind/path.h"
#include "documents/documents.h"
#include "documents/syntax/tree.h"

namespace documents {

/// What a finding says.
struct Words {
  std::string sentence;
  std::vector<Suggestion> suggestions = {};
};

/// What all parts of the binder share: the document, and what is said about it. Words are made only where there is room
/// for another finding: the nearest names of a million wrong ones would take minutes.
class Context {
 public:
  Context(const Tree& tree, const ReadOptions& options, Findings& findings)
      : tree_(tree), options_(options), findings_(findings), syntaxFindings_(findings.size()) {}

  [[nodiscard]] const Tree& tree() const { return tree_; }
  [[nodiscard]] const Node& node(NodeId id) const { return tree_.node(id); }
  /// True for a list or an object in which the parser had to leave something out, so that what it lacks may be there.
  [[nodiscard]] bool isIncomplete(NodeId id) const;
  [[nodiscard]] const ReadOptions& options() const { return options_; }
  /// False when no record can hold what was found.
  [[nodiscard]] bool isHoldable() const { return isHoldable_; }

  /// Says something; `words` makes the Words.
  template <class Make>
  void say(Rule rule, Span span, const Path& path, const Make& words) {
    sayAs(rowOf(rule).severity, rule, span, path, words);
  }
  /// Says that the catalogues do not know something, which may have been allowed.
  template <class Make>
  void sayUnknown(Rule rule, Span span, const Path& path, const Make& words) {
    sayAs(options_.allowUnknown ? Severity::kWarning : Severity::kError, rule, span, path, words);
  }
  /// Says something that no record can hold.
  template <class Make>
  void refuse(Rule rule, Span span, const Path& path, const Make& words) {
    isHoldable_ = false;
    say(rule, span, path, words);
  }
  /// Of something that is broken, of which the parser has spoken.
  void refuseBroken() { isHoldable_ = false; }

 private:
  template <class Make>
  void sayAs(Severity severity, Rule rule, Span span, const Path& path, const Make& words) {
    if (!isFull(findings_)) add(severity, rule, span, path, words());
  }
  void add(Severity severity, Rule rule, Span span, const Path& path, Words words);

  const Tree& tree_;
  const ReadOptions& options_;
  Findings& findings_;
  /// those that the parser made, in the order of their places
  std::size_t syntaxFindings_;
  bool isHoldable_ = true;
};

/// To write something in place of a stretch.
Suggestion rewrite(Span span, std::string replacement, bool isCertain);

/// To write a name of the vocabulary or of a member, in quotes.
Suggestion rewriteName(Span span, std::string_view name, bool isCertain);

/// One suggestion for each name, and the end of a sentence that names them: `: perhaps "A", "B" or "C" is meant`.
std::vector<Suggestion> rewrites(Span span, const std::vector<std::string_view>& names);
std::string perhaps(const std::vector<std::string_view>& names);

/// `"A", "B" or "C"`
std::string alternatives(const std::vector<std::string_view>& names);

}  // namespace documents
