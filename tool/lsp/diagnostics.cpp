// SPDX-License-Identifier: Apache-2.0
#include <optional>
#include <vector>

#include "documents/editing/symbols.h"
#include "tool/lsp/answers.h"

namespace tool::lsp {
namespace {

enum Severity { kError = 1, kWarning = 2 };

std::vector<std::optional<documents::RelatedPlace>> relatedPlacesOf(const Document& document) {
  documents::Findings again;
  return documents::relatedPlaces(documents::parse(document.text(), again), document.findings);
}

}  // namespace

Json diagnosticOf(const Document& document, const documents::Finding& finding) {
  return {{"range", document.placed.rangeOf(finding.span)},
          {"severity", finding.severity == documents::Severity::kError ? kError : kWarning},
          {"code", documents::codeOf(finding.rule)},
          {"source", "vqs"},
          {"message", finding.sentence}};
}

Json diagnosticsOf(const Document& document, const Client& client) {
  Json diagnostics = Json::array();
  for (const auto& finding : document.findings) diagnostics.push_back(diagnosticOf(document, finding));
  if (!client.hasRelatedInformation || diagnostics.empty()) return diagnostics;
  const auto related = relatedPlacesOf(document);
  for (std::size_t i = 0; i < related.size(); ++i)
    if (const auto& place = related[i])
      diagnostics[i]["relatedInformation"] =
          Json::array({{{"location", document.locationOf(place->span)}, {"message", place->sentence}}});
  return diagnostics;
}

}  // namespace tool::lsp
