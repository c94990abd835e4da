// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tool/lsp/json_rpc.h"

namespace tool::lsp {

/// What an editor can do with an answer.
struct Client {
  bool hasSnippets = false;
  bool hasMarkdownInCompletion = false;
  bool hasMarkdownInHover = false;
  bool hasSymbolTree = false;
  bool hasCodeActions = false;
  bool hasVersionedEdits = false;
  bool hasRelatedInformation = false;
};

/// What an editor says of itself when it introduces itself.
Client clientOf(const Json& parameters);

}  // namespace tool::lsp
