// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "documents/compare/difference.h"
#include "documents/files/registry.h"
#include "documents/findings/finding.h"
#include "documents/policies/policy_set.h"

/// Policies in words. Bytes and text in, values, text and findings out: nothing here opens a file or needs a driver,
/// and nothing is thrown but std::bad_alloc.
namespace documents {

/// What a document is checked against beside the catalogues.
struct ReadOptions {
  /// The layout that the policies are for. Versions 0 and 1 hold 8-bit text: names of 63 bytes, texts of 32.
  std::uint32_t structureVersion = 2;
  /// What the catalogues do not know ("#77", an option's number that is none) is a warning and no error.
  bool allowUnknown = false;
};

/// What a document, a policy binary or registry text says.
struct ReadResult {
  /// Nothing where no record can hold what was read. With errors against the catalogue there are policies all the same.
  std::optional<PolicySet> policies = {};
  Findings findings = {};
  /// What was recognised.
  enum class Form : std::uint8_t { kDocument, kBinary, kRegistryText } form = Form::kDocument;
  /// The revision of a policy binary, also of one in registry text; otherwise 0.
  std::uint16_t revision = 0;
  /// Registry text in UTF-16 as UTF-8: the findings' places are in it. Of everything else they are in what was read.
  std::optional<std::string> converted = {};

  /// The text that the findings' places are in, of the bytes that were read.
  [[nodiscard]] std::string_view textOf(std::span<const std::byte> bytes) const {
    if (converted) return *converted;
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
  }
};

/// Reads a document and checks it: every finding in one run, in the order of their places.
ReadResult readDocument(std::string_view text, const ReadOptions& options = {});

/// Reads any of the forms: a policy binary begins with its header, registry text with its first line, with or without a
/// byte order mark, in UTF-8 or UTF-16; everything else is taken for a document.
ReadResult readPolicies(std::span<const std::byte> bytes, const ReadOptions& options = {});

/// The same, with all that the catalogues have to say: policies that are not written in words are looked at as the
/// document that they would be. Such findings have a path, and a place and suggestions only where they are of the bytes
/// themselves.
ReadResult checkPolicies(std::span<const std::byte> bytes, const ReadOptions& options = {});

/// The document that says what the policies are, in its canonical form.
std::string printDocument(const PolicySet& policies);

/// A document in its canonical layout, comments kept; nothing, and findings, when it is not readable as JSON with
/// comments. Whether it makes sense as policies is not looked at.
struct FormatResult {
  std::optional<std::string> text;
  Findings findings;
};
FormatResult formatDocument(std::string_view text);

/// The text with the certain suggestions of these findings applied. Suggestions that overlap another are left out.
std::string applyCertainFixes(std::string_view text, const Findings& findings);

/// A policy binary of revision 5; empty when there are no policies or more than a file may have.
std::vector<std::byte> writeBinary(const PolicySet& policies);

/// Registry export text that holds this policy binary.
std::string writeRegistry(std::span<const std::byte> binary, RegistryValue value, RegistryEncoding encoding);

/// The JSON Schema (draft-07) of documents.
std::string documentSchema();

}  // namespace documents
