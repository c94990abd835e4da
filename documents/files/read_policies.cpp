// SPDX-License-Identifier: Apache-2.0
#include "documents/documents.h"
#include "documents/files/binary_file.h"
#include "documents/files/registry_file.h"
#include "format/binary/header.h"
#include "format/binary/registry_reader.h"

namespace documents {
namespace {

ReadResult readBinaryForm(std::span<const std::byte> bytes) {
  ReadResult result{.form = ReadResult::Form::kBinary, .revision = vqs::revisionOf(bytes)};
  result.policies = readBinaryFile(bytes, result.findings);
  return result;
}

ReadResult readRegistryForm(std::string_view text) {
  ReadResult result{.form = ReadResult::Form::kRegistryText};
  const auto file = readRegistryText(text, result.findings);
  if (!file) return result;
  Findings ofBinary;
  result.revision = vqs::revisionOf(file->binary);
  result.policies = readBinaryFile(file->binary, ofBinary);
  // A place in the binary says nothing in the text.
  for (auto& finding : ofBinary) {
    finding.span = file->span;
    addFinding(result.findings, std::move(finding));
  }
  return result;
}

}  // namespace

ReadResult readPolicies(std::span<const std::byte> bytes, const ReadOptions& options) {
  if (isPolicyBinary(bytes)) return readBinaryForm(bytes);
  const std::string_view text{reinterpret_cast<const char*>(bytes.data()), bytes.size()};
  if (vqs::isRegistryText(text)) return readRegistryForm(text);
  if (auto converted = registryTextFromUtf16(bytes)) {
    auto result = readRegistryForm(*converted);
    result.converted = std::move(*converted);
    return result;
  }
  return readDocument(text, options);
}

ReadResult checkPolicies(std::span<const std::byte> bytes, const ReadOptions& options) {
  auto result = readPolicies(bytes, options);
  if (result.form == ReadResult::Form::kDocument || !result.policies) return result;
  // The document is nowhere: places in it would say nothing, nor would changes of it.
  for (auto& finding : readDocument(printDocument(*result.policies), options).findings) {
    finding.span = {};
    finding.suggestions.clear();
    addFinding(result.findings, std::move(finding));
  }
  return result;
}

}  // namespace documents
