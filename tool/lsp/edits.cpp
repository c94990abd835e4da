// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "tool/lsp/answers.h"
#include "tool/policies/correction.h"

namespace tool::lsp {
namespace {

constexpr std::string_view kQuickFix = "quickfix";
constexpr std::string_view kFixAll = "source.fixAll";

Json editOf(const Document& document, const documents::Edit& edit) {
  return {{"range", document.placed.rangeOf(edit.span)}, {"newText", edit.replacement}};
}

Json editsOf(const Document& document, const std::vector<documents::Edit>& edits) {
  Json list = Json::array();
  for (const auto& edit : edits) list.push_back(editOf(document, edit));
  return list;
}

/// Edits of a document, of the state that they are for where the editor can say that it has changed since.
Json workspaceEdit(const Document& document, const Client& client, Json edits) {
  if (!client.hasVersionedEdits) return {{"changes", {{document.uri, std::move(edits)}}}};
  const Json changed = {{"textDocument", {{"uri", document.uri}, {"version", document.version}}},
                        {"edits", std::move(edits)}};
  return {{"documentChanges", Json::array({changed})}};
}

/// A kind stands for all whose names begin with it: "source" for "source.fixAll".
bool isWanted(std::string_view kind, const Json& only) {
  if (!only.is_array()) return true;
  return std::ranges::any_of(only, [kind](const Json& wanted) {
    if (!wanted.is_string()) return false;
    const auto& prefix = wanted.get_ref<const std::string&>();
    if (!kind.starts_with(prefix)) return false;
    return prefix.empty() || prefix.size() == kind.size() || kind[prefix.size()] == '.';
  });
}

std::string titleOf(std::string sentence) {
  const bool isLower = !sentence.empty() && sentence.front() >= 'a' && sentence.front() <= 'z';
  if (isLower) sentence.front() = static_cast<char>(sentence.front() - 'a' + 'A');
  return sentence;
}

Json quickFix(const Document& document, const documents::Finding& finding, const documents::Suggestion& suggestion,
              const Client& client) {
  return {{"title", titleOf(suggestion.sentence)},
          {"kind", kQuickFix},
          {"diagnostics", Json::array({diagnosticOf(document, finding)})},
          {"isPreferred", suggestion.isCertain},
          {"edit", workspaceEdit(document, client, editsOf(document, suggestion.edits))}};
}

void addQuickFixes(Json& actions, const Document& document, documents::Span span, const Client& client) {
  for (const auto& finding : document.findings) {
    if (finding.span.end() < span.offset || finding.span.offset > span.end()) continue;
    for (const auto& suggestion : finding.suggestions)
      actions.push_back(quickFix(document, finding, suggestion, client));
  }
}

void addFixAll(Json& actions, const Document& document, const Client& client) {
  const auto mended = correctedText(document.text(), document.findings, document.options);
  if (mended == document.text()) return;
  actions.push_back(
      {{"title", "Apply every fix that is certain"},
       {"kind", kFixAll},
       {"edit", workspaceEdit(document, client, editsOf(document, {smallestEdit(document.text(), mended)}))}});
}

}  // namespace

Json formattingEdits(const Document& document) {
  const auto formatted = documents::formatDocument(document.text());
  if (!formatted.text || *formatted.text == document.text()) return Json::array();
  return editsOf(document, {smallestEdit(document.text(), *formatted.text)});
}

Json codeActions(const Document& document, documents::Span span, const Json& only, const Client& client) {
  Json actions = Json::array();
  if (isWanted(kQuickFix, only)) addQuickFixes(actions, document, span, client);
  if (isWanted(kFixAll, only)) addFixAll(actions, document, client);
  return actions;
}

}  // namespace tool::lsp
