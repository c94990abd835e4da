// SPDX-License-Identifier: Apache-2.0
#include "documents/editing/hover.h"

#include "tool/lsp/answers.h"

namespace tool::lsp {

Json hoverText(const Document& document, std::size_t offset, const Client& client) {
  const auto hover = documents::hoverAt(document.text(), offset, document.findings);
  if (!hover) return nullptr;
  const bool isMarkdown = client.hasMarkdownInHover;
  std::string text;
  for (const auto& explanation : hover->explanations) {
    if (!text.empty()) text += isMarkdown ? "\n\n---\n\n" : "\n\n";
    text += isMarkdown ? markdownOf(explanation) : plainTextOf(explanation);
  }
  return {{"contents", markup(isMarkdown, std::move(text))}, {"range", document.placed.rangeOf(hover->span)}};
}

}  // namespace tool::lsp
