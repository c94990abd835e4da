// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>

#include "documents/editing/explanation.h"
#include "tool/lsp/client.h"
#include "tool/lsp/document.h"

/// What the editor gets to know about a document, in the protocol's terms. Offsets are bytes of the document's text.
namespace tool::lsp {

/// A diagnostic for each finding.
Json diagnosticsOf(const Document& document, const Client& client);

Json completionItems(const Document& document, std::size_t offset, const Client& client);

/// Null where there is nothing to be said.
Json hoverText(const Document& document, std::size_t offset, const Client& client);

/// Where the policy is whose id the place speaks of; null when there is none.
Json definition(const Document& document, std::size_t offset);

/// The policies and what is in them: as a tree, or as a list of the policies for an editor that knows no trees.
Json symbolsOf(const Document& document, const Client& client);
/// Adds the policies whose id and name have the query in them, in any case.
void addMatchingSymbols(Json& list, const Document& document, std::string_view query);

/// What makes the document canonical; nothing when it is, or cannot be read.
Json formattingEdits(const Document& document);

/// What mends the findings in a stretch, and all that can be mended without asking. `only` has the kinds that the
/// editor wants, or is null.
Json codeActions(const Document& document, documents::Span span, const Json& only, const Client& client);

/// An explanation as the protocol's markup: as Markdown, or without any.
std::string markdownOf(const documents::Explanation& explanation);
std::string plainTextOf(const documents::Explanation& explanation);
Json markup(bool isMarkdown, std::string text);

/// A finding as a diagnostic without related places.
Json diagnosticOf(const Document& document, const documents::Finding& finding);

}  // namespace tool::lsp
