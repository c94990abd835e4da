// SPDX-License-Identifier: Apache-2.0
#include <utility>

#include "tool/lsp/answers.h"

namespace tool::lsp {
namespace {

/// Text that Markdown takes for nothing else.
std::string escapedMarkdown(std::string_view text) {
  constexpr std::string_view kSpecial = "\\`*_<>[]#|~&";
  std::string result;
  for (const char character : text) {
    if (kSpecial.find(character) != std::string_view::npos) result += '\\';
    result += character;
  }
  return result;
}

std::string asIs(std::string_view text) { return std::string{text}; }

/// A paragraph each, and then the items.
std::string render(const documents::Explanation& explanation, std::string text,
                   std::string (*escaped)(std::string_view text)) {
  const auto separate = [&](std::string_view separator) {
    if (!text.empty()) text += separator;
  };
  for (const auto& paragraph : explanation.paragraphs) {
    separate("\n\n");
    text += escaped(paragraph);
  }
  for (std::size_t i = 0; i < explanation.items.size(); ++i) {
    separate(i == 0 ? "\n\n" : "\n");
    text += "- " + escaped(explanation.items[i]);
  }
  return text;
}

/// What stands before the explanation where nothing else shows it.
std::string heading(const documents::Explanation& explanation, std::string_view mark,
                    std::string (*escaped)(std::string_view text)) {
  if (explanation.title.empty()) return {};
  return std::string{mark} + escaped(explanation.title) + std::string{mark} + ": " + escaped(explanation.detail);
}

}  // namespace

std::string markdownOf(const documents::Explanation& explanation) {
  return render(explanation, heading(explanation, "**", escapedMarkdown), escapedMarkdown);
}

std::string plainTextOf(const documents::Explanation& explanation) {
  return render(explanation, heading(explanation, "", asIs), asIs);
}

Json markup(bool isMarkdown, std::string text) {
  return {{"kind", isMarkdown ? "markdown" : "plaintext"}, {"value", std::move(text)}};
}

}  // namespace tool::lsp
