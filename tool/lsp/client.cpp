// SPDX-License-Identifier: Apache-2.0
#include "tool/lsp/client.h"

#include <algorithm>

namespace tool::lsp {
namespace {

/// What stands at a path below "capabilities"; nothing where there is none.
Json at(const Json& parameters, const std::string& path) {
  const Json::json_pointer pointer{"/capabilities/" + path};
  return parameters.contains(pointer) ? parameters.at(pointer) : Json{};
}

bool can(const Json& parameters, const std::string& path) { return at(parameters, path) == true; }

bool hasMarkdown(const Json& parameters, const std::string& path) {
  const Json formats = at(parameters, path);
  return formats.is_array() && std::ranges::find(formats, Json("markdown")) != formats.end();
}

}  // namespace

Client clientOf(const Json& parameters) {
  return {
      .hasSnippets = can(parameters, "textDocument/completion/completionItem/snippetSupport"),
      .hasMarkdownInCompletion = hasMarkdown(parameters, "textDocument/completion/completionItem/documentationFormat"),
      .hasMarkdownInHover = hasMarkdown(parameters, "textDocument/hover/contentFormat"),
      .hasSymbolTree = can(parameters, "textDocument/documentSymbol/hierarchicalDocumentSymbolSupport"),
      .hasCodeActions = at(parameters, "textDocument/codeAction/codeActionLiteralSupport").is_object(),
      .hasVersionedEdits = can(parameters, "workspace/workspaceEdit/documentChanges"),
      .hasRelatedInformation = can(parameters, "textDocument/publishDiagnostics/relatedInformation"),
  };
}

}  // namespace tool::lsp
