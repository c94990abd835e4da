// SPDX-License-Identifier: Apache-2.0
#include "documents/syntax/layout.h"

#include <algorithm>

#include "documents/documents.h"
#include "documents/syntax/one_line.h"

namespace documents {
namespace {

constexpr std::size_t kIndent = 2;

/// True when a line ends between two things.
bool hasLineEnd(std::string_view gap) { return gap.find_first_of("\r\n") != std::string_view::npos; }

/// True when a line of the gap is empty.
bool hasEmptyLine(std::string_view gap) {
  bool isAtStart = false;
  for (std::size_t i = 0; i < gap.size(); ++i) {
    if (gap[i] == '\r' && i + 1 < gap.size() && gap[i + 1] == '\n') continue;
    const bool isLineEnd = gap[i] == '\n' || gap[i] == '\r';
    if (isLineEnd && isAtStart) return true;
    if (isLineEnd || gap[i] == ',') isAtStart = isLineEnd;
  }
  return false;
}

bool holdsObjectsOnly(const Tree& tree, const Node& list) {
  for (NodeId child = list.firstChild; child != kNoNode; child = tree.node(child).next)
    if (tree.node(child).kind != NodeKind::kObject) return false;
  return true;
}

class Layout {
 public:
  explicit Layout(const Tree& tree) : tree_(tree) { text_.reserve(tree.text.size() + tree.text.size() / 4); }

  std::string run() {
    const Node& root = tree_.node(0);
    leadingComments(root.span.offset);
    beginLine(root.span.offset);
    value(root, false);
    trailingComments(tree_.text.size(), false);
    closingComments(tree_.text.size());
    text_ += '\n';
    return std::move(text_);
  }

 private:
  [[nodiscard]] std::string_view between(std::size_t begin, std::size_t end) const {
    return tree_.text.substr(begin, end - begin);
  }
  static std::size_t startOf(const Node& node) { return node.name.length != 0 ? node.name.offset : node.span.offset; }
  [[nodiscard]] bool hasCommentBefore(std::size_t offset) const {
    return nextComment_ < tree_.comments.size() && tree_.comments[nextComment_].span.offset < offset;
  }
  [[nodiscard]] const Comment& nextComment() const { return tree_.comments[nextComment_]; }
  [[nodiscard]] std::size_t column() const { return widthOf(std::string_view{text_}.substr(text_.rfind('\n') + 1)); }

  /// Begins a line for what starts there in the document, unless a comment before it has begun one.
  void beginLine(std::size_t start) {
    if (!isInLine_) {
      if (!text_.empty()) text_ += '\n';
      if (mayLeaveEmptyLine_ && hasEmptyLine(between(at_, start))) text_ += '\n';
      text_.append(kIndent * depth_, ' ');
    }
    isInLine_ = false;
    mayLeaveEmptyLine_ = true;
  }

  void putComment() {
    const Comment& comment = tree_.comments[nextComment_++];
    std::string_view written = tree_.slice(comment.span);
    at_ = comment.span.end();
    if (!comment.isBlock) {
      text_ += written.substr(0, written.find_last_not_of(" \t") + 1);
      return;
    }
    for (std::size_t end = written.find('\r'); end != std::string_view::npos; end = written.find('\r')) {
      text_.append(written.substr(0, end)) += '\n';
      written.remove_prefix(written.substr(end).starts_with("\r\n") ? end + 2 : end + 1);
    }
    text_ += written;
  }

  /// Comments that stand before something, on its line or on lines of their own.
  void leadingComments(std::size_t start) {
    while (hasCommentBefore(start)) {
      beginLine(nextComment().span.offset);
      const bool isBlock = nextComment().isBlock;
      putComment();
      const std::size_t next = hasCommentBefore(start) ? nextComment().span.offset : start;
      isInLine_ = isBlock && !hasLineEnd(between(at_, next));
      if (isInLine_) text_ += ' ';
    }
  }

  /// Comments on the line of what was written last. A block behind the comma and on the line of the next member is that
  /// one's.
  void trailingComments(std::size_t limit, bool isMemberNext) {
    bool isBehindComma = false;
    while (hasCommentBefore(limit)) {
      const std::string_view gap = between(at_, nextComment().span.offset);
      if (hasLineEnd(gap)) return;
      isBehindComma |= gap.find(',') != std::string_view::npos;
      if (isMemberNext && isBehindComma && !hasLineEnd(between(nextComment().span.end(), limit))) return;
      text_ += ' ';
      putComment();
    }
  }

  /// Comments on the line of an opening bracket, unless what is in the brackets begins on it too.
  void openingComments(std::size_t limit) {
    while (hasCommentBefore(limit)) {
      if (hasLineEnd(between(at_, nextComment().span.offset))) return;
      if (!hasLineEnd(between(nextComment().span.end(), limit))) return;
      text_ += ' ';
      putComment();
    }
  }

  /// Comments behind the last member, or between empty brackets.
  void closingComments(std::size_t limit) {
    while (hasCommentBefore(limit)) {
      beginLine(nextComment().span.offset);
      putComment();
    }
  }

  /// Comments between a name and its value, if one of them cannot stay there: before the member.
  void hoistComments(const Node& node) {
    const auto first = tree_.comments.begin() + static_cast<std::ptrdiff_t>(nextComment_);
    const auto isInside = [&](const Comment& comment) { return comment.span.offset < node.span.offset; };
    const auto last = std::find_if_not(first, tree_.comments.end(), isInside);
    if (std::all_of(first, last, [](const Comment& comment) { return comment.isBlock; })) return;
    for (auto count = last - first; count > 0; --count) {
      beginLine(node.name.offset);
      putComment();
      mayLeaveEmptyLine_ = false;
    }
  }

  void member(const Node& node) {
    leadingComments(startOf(node));
    if (node.name.length != 0) hoistComments(node);
    beginLine(startOf(node));
    if (node.name.length != 0) text_.append(tree_.slice(node.name)) += ": ";
    while (hasCommentBefore(node.span.offset)) {
      putComment();
      text_ += ' ';
    }
    value(node, node.next != kNoNode);
    if (node.next != kNoNode) text_ += ',';
  }

  void value(const Node& node, bool hasComma) {
    if (fitsOneLine(node, hasComma))
      putOneLine(tree_, node, text_);
    else
      spread(node);
    at_ = node.span.end();
  }

  [[nodiscard]] bool fitsOneLine(const Node& node, bool hasComma) const {
    const bool isList = node.kind == NodeKind::kArray;
    if (!isList && node.kind != NodeKind::kObject) return true;
    if (hasCommentBefore(node.span.end())) return false;
    if (node.count == 0) return true;
    if (depth_ < kSpreadLevels || (isList && holdsObjectsOnly(tree_, node))) return false;
    const std::size_t taken = column() + (hasComma ? 1 : 0);
    return taken <= kLineWidth && isWithin(tree_, node, kLineWidth - taken);
  }

  void spread(const Node& node) {
    const bool isList = node.kind == NodeKind::kArray;
    const std::size_t closing = node.span.end() - 1;
    text_ += isList ? '[' : '{';
    at_ = node.span.offset + 1;
    openingComments(node.firstChild != kNoNode ? startOf(tree_.node(node.firstChild)) : closing);
    ++depth_;
    mayLeaveEmptyLine_ = false;
    for (NodeId id = node.firstChild; id != kNoNode; id = tree_.node(id).next) {
      const Node& child = tree_.node(id);
      member(child);
      const bool isLast = child.next == kNoNode;
      trailingComments(isLast ? closing : startOf(tree_.node(child.next)), !isLast);
    }
    closingComments(closing);
    --depth_;
    mayLeaveEmptyLine_ = false;
    beginLine(closing);
    text_ += isList ? ']' : '}';
  }

  const Tree& tree_;
  std::string text_;
  std::size_t nextComment_ = 0;
  std::size_t depth_ = 0;
  /// where in the document the last thing ended that was written
  std::size_t at_ = 0;
  bool mayLeaveEmptyLine_ = false;
  /// a comment stands on the line before what comes next
  bool isInLine_ = false;
};

}  // namespace

std::string layOut(const Tree& tree) { return tree.nodes.empty() ? std::string{} : Layout{tree}.run(); }

FormatResult formatDocument(std::string_view text) {
  FormatResult result;
  const Tree tree = parse(text, result.findings);
  if (!hasErrors(result.findings)) result.text = layOut(tree);
  return result;
}

}  // namespace documents
