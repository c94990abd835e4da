// SPDX-License-Identifier: Apache-2.0
#include "documents/editing/symbols.h"

#include <algorithm>
#include <map>
#include <string_view>

#include "documents/bind/number.h"
#include "documents/syntax/duplicates.h"

namespace documents {
namespace {

/// The conditions and actions whose value is the id of another policy.
constexpr std::string_view kRefersToPolicy = "Indirect Policy";

template <class Visit>
void forEachChild(const Tree& tree, const Node& node, const Visit& visit) {
  for (NodeId id = node.firstChild; id != kNoNode; id = tree.node(id).next) visit(tree.node(id));
}

const Node* memberOf(const Tree& tree, const Node& object, std::string_view name) {
  if (object.kind != NodeKind::kObject) return nullptr;
  for (NodeId id = object.firstChild; id != kNoNode; id = tree.node(id).next)
    if (nameOf(tree, tree.node(id)) == name) return &tree.node(id);
  return nullptr;
}

const Node* listOf(const Tree& tree, const Node& object, std::string_view name) {
  const Node* const list = memberOf(tree, object, name);
  return list != nullptr && list->kind == NodeKind::kArray ? list : nullptr;
}

const Node* stringOfMember(const Tree& tree, const Node& object, std::string_view name) {
  const Node* const value = memberOf(tree, object, name);
  return value != nullptr && value->kind == NodeKind::kString ? value : nullptr;
}

std::optional<std::uint32_t> numberOf(std::string_view written) {
  const auto number = wholeNumber(written);
  if (!number || *number < 0 || *number > std::int64_t{vqs::kUnbounded}) return std::nullopt;
  return static_cast<std::uint32_t>(*number);
}

/// As it is written, with what stands on several lines on one.
std::string onOneLine(std::string_view written) {
  std::string line;
  for (const char character : written) {
    const bool isBlank = character == ' ' || (character >= '\t' && character <= '\r');
    if (!isBlank)
      line += character;
    else if (!line.ends_with(' '))
      line += ' ';
  }
  return line;
}

void addEntries(const Tree& tree, const Node& policy, std::string_view list, EntrySymbol::Kind kind,
                PolicySymbol& symbol) {
  const Node* const entries = listOf(tree, policy, list);
  if (entries == nullptr) return;
  forEachChild(tree, *entries, [&](const Node& entry) {
    if (entry.kind != NodeKind::kObject || entry.firstChild == kNoNode) return;
    const Node& value = tree.node(entry.firstChild);
    symbol.entries.push_back({.kind = kind,
                              .name = nameOf(tree, value),
                              .value = onOneLine(tree.slice(value.span)),
                              .span = entry.span,
                              .nameSpan = value.name});
  });
}

void addTexts(const Tree& tree, const Node& policy, PolicySymbol& symbol) {
  const Node* const texts = listOf(tree, policy, "texts");
  if (texts == nullptr) return;
  forEachChild(tree, *texts, [&](const Node& element) {
    const Node* const text = element.kind == NodeKind::kString ? &element : stringOfMember(tree, element, "text");
    if (text == nullptr) return;
    symbol.entries.push_back({.kind = EntrySymbol::Kind::kText,
                              .name = stringOf(tree, *text),
                              .value = {},
                              .span = element.span,
                              .nameSpan = text->span});
  });
}

PolicySymbol symbolOf(const Tree& tree, const Node& policy) {
  PolicySymbol symbol;
  symbol.span = policy.span;
  if (const Node* const id = memberOf(tree, policy, "id")) {
    symbol.id = numberOf(tree.slice(id->span));
    symbol.idSpan = id->span;
  }
  if (const Node* const name = stringOfMember(tree, policy, "name")) {
    symbol.name = stringOf(tree, *name);
    symbol.nameSpan = name->span;
  }
  if (const Node* const description = stringOfMember(tree, policy, "description"))
    symbol.description = stringOf(tree, *description);
  addEntries(tree, policy, "when", EntrySymbol::Kind::kCondition, symbol);
  addEntries(tree, policy, "do", EntrySymbol::Kind::kAction, symbol);
  addTexts(tree, policy, symbol);
  return symbol;
}

bool isIn(Span span, std::size_t offset) { return span.offset <= offset && offset <= span.end(); }

/// The digits around a place in a text.
std::optional<std::uint32_t> numberAround(std::string_view text, std::size_t offset) {
  const auto isDigit = [&](std::size_t at) { return at < text.size() && text[at] >= '0' && text[at] <= '9'; };
  std::size_t begin = offset;
  while (begin > 0 && isDigit(begin - 1)) --begin;
  std::size_t end = offset;
  while (isDigit(end)) ++end;
  return numberOf(text.substr(begin, end - begin));
}

/// The members that a place is in, from the outside in.
std::vector<const Node*> pathTo(const Tree& tree, std::size_t offset) {
  std::vector<const Node*> path;
  for (NodeId id = tree.nodes.empty() ? kNoNode : 0; id != kNoNode;) {
    const Node& node = tree.node(id);
    if (!isIn(node.span, offset)) {
      id = path.empty() ? kNoNode : node.next;
      continue;
    }
    path.push_back(&node);
    id = node.firstChild;
  }
  return path;
}

/// The first of two entries that speak of the same.
std::optional<RelatedPlace> firstEntry(const PolicySymbol& policy, const Finding& finding, std::string sentence) {
  const auto again = std::ranges::find(policy.entries, finding.span, &EntrySymbol::nameSpan);
  if (again == policy.entries.end()) return std::nullopt;
  const auto isFirst = [&](const EntrySymbol& entry) {
    const bool differs = finding.rule != Rule::kContradiction || entry.value != again->value;
    return entry.kind == again->kind && entry.name == again->name && differs;
  };
  const auto first = std::find_if(policy.entries.begin(), again, isFirst);
  if (first == again) return std::nullopt;
  return RelatedPlace{.span = first->nameSpan, .sentence = std::move(sentence)};
}

/// What is looked up for every finding.
struct Known {
  std::vector<PolicySymbol> policies;
  /// the first members by the places of those that have their names again
  std::map<std::size_t, Span> firstMembers;
};

std::map<std::size_t, Span> firstMembersOf(const Tree& tree) {
  std::map<std::size_t, Span> members;
  for (NodeId id = 0; id < tree.nodes.size(); ++id)
    if (tree.node(id).kind == NodeKind::kObject)
      for (const auto& duplicate : duplicatesOf(tree, id))
        members.emplace(tree.node(duplicate.again).name.offset, tree.node(duplicate.first).name);
  return members;
}

std::optional<RelatedPlace> firstMember(const Known& known, const Finding& finding) {
  const auto first = known.firstMembers.find(finding.span.offset);
  if (first == known.firstMembers.end()) return std::nullopt;
  return RelatedPlace{.span = first->second, .sentence = "the first member of this name"};
}

std::optional<RelatedPlace> firstPolicy(const Known& known, const PolicySymbol& policy, const Finding& finding) {
  if (finding.rule == Rule::kDuplicateId) {
    const PolicySymbol* const first = policy.id ? policyOf(known.policies, *policy.id) : nullptr;
    if (first == nullptr || first == &policy) return std::nullopt;
    return RelatedPlace{.span = first->idSpan, .sentence = "the first policy with this id"};
  }
  const auto first = std::ranges::find(known.policies, policy.name, &PolicySymbol::name);
  if (&*first == &policy) return std::nullopt;
  return RelatedPlace{.span = first->nameSpan, .sentence = "the first policy with this name"};
}

std::optional<RelatedPlace> relatedPlace(const Known& known, const Finding& finding) {
  if (finding.rule == Rule::kDuplicateMember) return firstMember(known, finding);
  const auto isBefore = [&](const PolicySymbol& policy) { return policy.span.end() <= finding.span.offset; };
  const auto policy = std::ranges::partition_point(known.policies, isBefore);
  if (policy == known.policies.end() || !isIn(policy->span, finding.span.offset)) return std::nullopt;
  switch (finding.rule) {
    case Rule::kDuplicateId:
    case Rule::kDuplicateName:
      return firstPolicy(known, *policy, finding);
    case Rule::kActionTwice:
      return firstEntry(*policy, finding, "it is set here first");
    case Rule::kContradiction:
      return firstEntry(*policy, finding, "here it has to be something else");
    default:
      return std::nullopt;
  }
}

}  // namespace

std::vector<PolicySymbol> symbolsOf(const Tree& tree) {
  std::vector<PolicySymbol> symbols;
  const Node* const policies = tree.nodes.empty() ? nullptr : listOf(tree, tree.node(0), "policies");
  if (policies == nullptr) return symbols;
  forEachChild(tree, *policies, [&](const Node& policy) {
    if (policy.kind == NodeKind::kObject) symbols.push_back(symbolOf(tree, policy));
  });
  return symbols;
}

const PolicySymbol* policyOf(const std::vector<PolicySymbol>& policies, std::uint32_t id) {
  const auto found = std::ranges::find(policies, std::optional{id}, &PolicySymbol::id);
  return found == policies.end() ? nullptr : &*found;
}

std::optional<std::uint32_t> idAt(const Tree& tree, std::size_t offset) {
  const auto isHere = [offset](const Comment& comment) { return isIn(comment.span, offset); };
  if (std::ranges::any_of(tree.comments, isHere)) return numberAround(tree.text, offset);
  const auto path = pathTo(tree, offset);
  // The document, the list of policies, the policy, and its member.
  constexpr std::size_t kMember = 3;
  if (path.size() <= kMember || nameOf(tree, *path[1]) != "policies") return std::nullopt;
  const std::string member = nameOf(tree, *path[kMember]);
  if (member == "id" || member == "name" || member == "description") return numberAround(tree.text, offset);
  const bool isReference = std::ranges::any_of(
      path, [&](const Node* node) { return node->name.length != 0 && nameOf(tree, *node) == kRefersToPolicy; });
  const std::string last = nameOf(tree, *path.back());
  if (!isReference || (last != kRefersToPolicy && last != "value")) return std::nullopt;
  return numberOf(tree.slice(path.back()->span));
}

std::vector<std::optional<RelatedPlace>> relatedPlaces(const Tree& tree, const Findings& findings) {
  const bool hasDuplicates =
      std::ranges::any_of(findings, [](const Finding& finding) { return finding.rule == Rule::kDuplicateMember; });
  const Known known{.policies = symbolsOf(tree),
                    .firstMembers = hasDuplicates ? firstMembersOf(tree) : std::map<std::size_t, Span>{}};
  std::vector<std::optional<RelatedPlace>> places;
  places.reserve(findings.size());
  for (const auto& finding : findings) places.push_back(relatedPlace(known, finding));
  return places;
}

}  // namespace documents
