// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>

#include "documents/documents.h"
#include "tool/lsp/placed_text.h"

namespace tool::lsp {

/// A document as an editor has it, and what is to be said about it.
struct Document {
  Document(std::string itsUri, Json itsVersion, std::string text, const documents::ReadOptions& itsOptions)
      : uri(std::move(itsUri)),
        version(std::move(itsVersion)),
        placed(std::move(text)),
        options(itsOptions),
        findings(documents::readDocument(placed.text(), options).findings) {}

  [[nodiscard]] const std::string& text() const { return placed.text(); }
  [[nodiscard]] Json locationOf(documents::Span span) const { return {{"uri", uri}, {"range", placed.rangeOf(span)}}; }

  std::string uri;
  /// the editor's number of this state
  Json version;
  PlacedText placed;
  documents::ReadOptions options;
  documents::Findings findings;
};

}  // namespace tool::lsp
