// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/entry.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "documents/bind/number.h"
#include "documents/bind/strings.h"
#include "documents/text/quote.h"

namespace documents {
namespace {

constexpr WordKind otherOf(WordKind kind) {
  return kind == WordKind::kCondition ? WordKind::kAction : WordKind::kCondition;
}

/// "a condition"
std::string withArticle(WordKind kind) {
  return (kind == WordKind::kAction ? "an " : "a ") + std::string(nameOf(kind));
}

/// The number of a name such as "#77".
std::optional<std::int64_t> numberOf(std::string_view name) {
  if (!name.starts_with('#') || name.starts_with("#-")) return std::nullopt;
  return wholeNumber(name.substr(1));
}

/// The entry of "#77".
std::optional<Entry> bindByNumber(Context& context, NodeId member, const Path& path, WordKind kind,
                                  std::int64_t number) {
  const Node& node = context.node(member);
  if (number > std::numeric_limits<std::uint32_t>::max()) {
    context.refuse(Rule::kOutOfField, node.name, path,
                   [&] { return Words{"a " + std::string(nameOf(kind)) + "'s number goes from 0 to 4294967295"}; });
    return std::nullopt;
  }
  const auto id = static_cast<std::uint32_t>(number);
  const Word* word = wordOf(kind, id);
  if (word == nullptr) {
    context.sayUnknown(Rule::kUnknownNumber, node.name, path, [&] {
      return Words{"no " + std::string(nameOf(kind)) + " has the number " + std::to_string(id) + ": 0 to " +
                   std::to_string(wordsOf(kind).size() - 1) + " are known"};
    });
  } else {
    context.say(Rule::kNumberOfKnownName, node.name, path, [&] {
      return Words{
          std::string(nameOf(kind)) + " " + std::to_string(id) + " has a name: " + quote(word->name) + " is expected",
          {rewriteName(node.name, word->name, true)}};
    });
  }
  return Entry{id, word, member};
}

void refuseName(Context& context, Span span, const Path& path, WordKind kind, std::string_view written) {
  context.refuse(Rule::kUnknownName, span, path, [&] {
    const std::string sentence = quote(written) + " is no " + std::string(nameOf(kind));
    const auto nearest = nearestWords(kind, written);
    if (!nearest.empty()) return Words{sentence + perhaps(nearest), rewrites(span, nearest)};
    if (foldedWord(otherOf(kind), written) != nullptr) return Words{sentence + ": it is " + withArticle(otherOf(kind))};
    return Words{sentence + ": a name of the catalogue, or \"#\" and a number, is expected"};
  });
}

std::optional<Entry> bindByName(Context& context, NodeId member, const Path& path, WordKind kind,
                                std::string_view written) {
  const Span span = context.node(member).name;
  const Word* word = foldedWord(kind, written);
  if (word == nullptr) {
    refuseName(context, span, path, kind, written);
    return std::nullopt;
  }
  if (word->name != written) {
    context.say(Rule::kOtherCase, span, path, [&] {
      return Words{quote(written) + " is written " + quote(word->name), {rewriteName(span, word->name, true)}};
    });
  }
  return Entry{word->id, word, member};
}

std::optional<Entry> bindEntry(Context& context, NodeId member, const Path& path, WordKind kind) {
  const auto characters = Characters::ofName(context.tree(), context.node(member));
  const auto number = numberOf(characters.view());
  auto entry = number ? bindByNumber(context, member, path, kind, *number)
                      : bindByName(context, member, path, kind, characters.view());
  if (entry && entry->word != nullptr && !entry->word->isEnabled) {
    context.say(Rule::kNotEnabled, context.node(member).name, path,
                [&] { return Words{quote(entry->word->name) + " is not enabled in the catalogue"}; });
  }
  return entry;
}

bool isKnown(const Context& context, NodeId member, WordKind kind) {
  const auto characters = Characters::ofName(context.tree(), context.node(member));
  return foldedWord(kind, characters.view()) != nullptr || numberOf(characters.view());
}

/// Where the comma is between two members, past the comments.
std::optional<std::size_t> commaBetween(const Tree& tree, std::size_t from, std::size_t to) {
  const auto offsetOf = [](const Comment& comment) { return comment.span.offset; };
  auto comment = std::ranges::lower_bound(tree.comments, from, {}, offsetOf);
  for (std::size_t at = from; at < to; ++at) {
    if (tree.text[at] == ',') return at;
    if (comment == tree.comments.end() || comment->span.offset != at) continue;
    at = comment->span.end() - 1;
    ++comment;
  }
  return std::nullopt;
}

/// An object for each member, where all of them are known.
std::vector<Suggestion> split(const Context& context, NodeId element, WordKind kind) {
  Suggestion suggestion{.sentence = "write an object for each", .edits = {}, .isCertain = true};
  for (NodeId id = context.node(element).firstChild; id != kNoNode; id = context.node(id).next) {
    if (!isKnown(context, id, kind)) return {};
    const NodeId next = context.node(id).next;
    if (next == kNoNode) break;
    const auto comma = commaBetween(context.tree(), context.node(id).span.end(), context.node(next).name.offset);
    if (!comma) return {};
    suggestion.edits.push_back({.span = {.offset = *comma, .length = 1}, .replacement = " }, {"});
  }
  return {suggestion};
}

void refuseCount(Context& context, NodeId element, const Path& path, WordKind kind) {
  const Node& node = context.node(element);
  const std::size_t count = node.count;
  const Span brace{.offset = node.span.offset, .length = 1};
  const Span second = count == 0 ? brace : context.node(context.node(node.firstChild).next).name;
  context.refuse(Rule::kNotOneMember, second, path, [&] {
    const std::string sentence = withArticle(kind) + " is an object of one member: this one has " +
                                 (count == 0 ? "none" : std::to_string(count));
    // More than a policy can have are not what somebody meant to write.
    constexpr std::size_t kMost = VQS_POLICY_MAX_ACTIONS;
    return Words{sentence, count > 1 && count <= kMost ? split(context, element, kind) : std::vector<Suggestion>{}};
  });
}

}  // namespace

std::string_view nameOf(WordKind kind) { return kind == WordKind::kCondition ? "condition" : "action"; }

std::vector<Entry> bindEntries(Context& context, NodeId element, const Path& path, WordKind kind) {
  const Node& node = context.node(element);
  if (node.isBroken || node.kind != NodeKind::kObject) {
    refuseKind(context, element, path, withArticle(kind), "an object of one member");
    return {};
  }
  std::vector<Entry> entries;
  if (node.count == 0 && context.isIncomplete(element)) {
    context.refuseBroken();
    return {};
  }
  if (node.count != 1) refuseCount(context, element, path, kind);
  for (NodeId id = node.firstChild; id != kNoNode; id = context.node(id).next) {
    // Beside others, what is no name is more likely a field that is one level too high.
    if (node.count != 1 && !isKnown(context, id, kind)) continue;
    if (const auto entry = bindEntry(context, id, path, kind)) entries.push_back(*entry);
  }
  return entries;
}

}  // namespace documents
