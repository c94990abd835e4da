// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include "documents/editing/symbols.h"
#include "tool/lsp/answers.h"
#include "tool/terminal/nearest.h"

namespace tool::lsp {
namespace {

/// The protocol's numbers of what a symbol is shown as.
enum SymbolKind { kPolicy = 19, kCondition = 24, kAction = 12, kText = 15 };

SymbolKind symbolKindOf(documents::EntrySymbol::Kind kind) {
  switch (kind) {
    case documents::EntrySymbol::Kind::kCondition:
      return kCondition;
    case documents::EntrySymbol::Kind::kAction:
      return kAction;
    case documents::EntrySymbol::Kind::kText:
      break;
  }
  return kText;
}

documents::Tree treeOf(const Document& document) {
  documents::Findings again;
  return documents::parse(document.text(), again);
}

std::string labelOf(const documents::PolicySymbol& policy) {
  const std::string id = policy.id ? std::to_string(*policy.id) : "no id";
  return policy.name.empty() ? id : id + ' ' + policy.name;
}

/// What a policy is known by: its id, its name, or where it begins.
documents::Span selectionOf(const documents::PolicySymbol& policy) {
  if (policy.idSpan.length != 0) return policy.idSpan;
  if (policy.nameSpan.length != 0) return policy.nameSpan;
  return {.offset = policy.span.offset, .length = 1};
}

Json symbolOf(const Document& document, const documents::EntrySymbol& entry) {
  // A symbol has to have a name.
  return {{"name", entry.name.empty() ? "\"\"" : entry.name},
          {"detail", entry.value},
          {"kind", symbolKindOf(entry.kind)},
          {"range", document.placed.rangeOf(entry.span)},
          {"selectionRange", document.placed.rangeOf(entry.nameSpan)}};
}

Json symbolOf(const Document& document, const documents::PolicySymbol& policy) {
  Json children = Json::array();
  for (const auto& entry : policy.entries) children.push_back(symbolOf(document, entry));
  return {{"name", labelOf(policy)},
          {"detail", policy.description},
          {"kind", kPolicy},
          {"range", document.placed.rangeOf(policy.span)},
          {"selectionRange", document.placed.rangeOf(selectionOf(policy))},
          {"children", std::move(children)}};
}

Json flatSymbolOf(const Document& document, const documents::PolicySymbol& policy) {
  return {{"name", labelOf(policy)}, {"kind", kPolicy}, {"location", document.locationOf(policy.span)}};
}

}  // namespace

Json definition(const Document& document, std::size_t offset) {
  const auto tree = treeOf(document);
  const auto id = documents::idAt(tree, offset);
  if (!id) return nullptr;
  const auto policies = documents::symbolsOf(tree);
  const auto* const policy = documents::policyOf(policies, *id);
  return policy == nullptr ? Json{} : document.locationOf(policy->idSpan);
}

Json symbolsOf(const Document& document, const Client& client) {
  Json symbols = Json::array();
  for (const auto& policy : documents::symbolsOf(treeOf(document)))
    symbols.push_back(client.hasSymbolTree ? symbolOf(document, policy) : flatSymbolOf(document, policy));
  return symbols;
}

void addMatchingSymbols(Json& list, const Document& document, std::string_view query) {
  const std::string wanted = folded(query);
  for (const auto& policy : documents::symbolsOf(treeOf(document)))
    if (folded(labelOf(policy)).find(wanted) != std::string::npos) list.push_back(flatSymbolOf(document, policy));
}

}  // namespace tool::lsp
