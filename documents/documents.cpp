// SPDX-License-Identifier: Apache-2.0
#include "documents/documents.h"

#include "documents/bind/bind.h"
#include "documents/schema/schema.h"
#include "documents/syntax/tree.h"

namespace documents {

ReadResult readDocument(std::string_view text, const ReadOptions& options) {
  ReadResult result;
  const Tree tree = parse(text, result.findings);
  const bool isReadable = !hasErrors(result.findings);
  result.policies = bind(tree, options, result.findings);
  if (!isReadable) result.policies.reset();
  sortByPlace(result.findings);
  return result;
}

std::string documentSchema() { return makeSchema(); }

}  // namespace documents
