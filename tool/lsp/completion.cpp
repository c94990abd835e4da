// SPDX-License-Identifier: Apache-2.0
#include "documents/editing/completion.h"

#include <fmt/format.h>

#include "tool/lsp/answers.h"

namespace tool::lsp {
namespace {

/// The protocol's numbers of what a proposal is shown as.
enum ItemKind { kFunction = 3, kField = 5, kValue = 12, kSnippet = 15, kEnumMember = 20, kEvent = 23 };
enum TextFormat { kPlain = 1, kWithStops = 2 };

ItemKind itemKindOf(documents::Proposal::Kind kind) {
  using Kind = documents::Proposal::Kind;
  switch (kind) {
    case Kind::kCondition:
      return kEvent;
    case Kind::kAction:
      return kFunction;
    case Kind::kOption:
      return kEnumMember;
    case Kind::kMember:
      return kField;
    case Kind::kNumber:
      return kValue;
    case Kind::kPiece:
      break;
  }
  return kSnippet;
}

/// What the item itself does not show.
std::string documentationOf(const documents::Explanation& explanation, bool isMarkdown) {
  auto rest = explanation;
  rest.title.clear();
  return isMarkdown ? markdownOf(rest) : plainTextOf(rest);
}

/// Editors sort by text: the catalogue's order stays, with what is rare behind it.
std::string sortTextOf(const documents::Proposal& proposal, std::size_t index) {
  return fmt::format("{}{:04}", proposal.isRare ? 1 : 0, index);
}

Json itemOf(const documents::Proposal& proposal, const Json& range, const Client& client, std::size_t index) {
  Json item = {{"label", proposal.label},
               {"kind", itemKindOf(proposal.kind)},
               {"detail", proposal.explanation.detail},
               {"sortText", sortTextOf(proposal, index)},
               {"filterText", proposal.label},
               {"insertTextFormat", client.hasSnippets ? kWithStops : kPlain},
               {"textEdit", {{"range", range}, {"newText", client.hasSnippets ? proposal.snippet : proposal.text}}}};
  auto documentation = documentationOf(proposal.explanation, client.hasMarkdownInCompletion);
  if (!documentation.empty()) item["documentation"] = markup(client.hasMarkdownInCompletion, std::move(documentation));
  return item;
}

}  // namespace

Json completionItems(const Document& document, std::size_t offset, const Client& client) {
  const auto completion = documents::completionAt(document.text(), offset);
  const Json range = document.placed.rangeOf(completion.span);
  Json items = Json::array();
  for (const auto& proposal : completion.proposals) items.push_back(itemOf(proposal, range, client, items.size()));
  return items;
}

}  // namespace tool::lsp
