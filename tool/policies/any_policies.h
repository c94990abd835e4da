// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "documents/documents.h"
#include "tool/context.h"
#include "tool/driver/driver_session.h"
#include "tool/driver/stores.h"
#include "tool/policies/finding_text.h"
#include "tool/policies/input.h"

namespace tool {

/// Policies of a document, a policy binary, registry text or a store, and what there is to say about them.
struct AnyPolicies {
  /// as messages call them: "laptop.json", "the Asm store"
  std::string name;
  /// the same where the other side of a comparison was named before: "the store"
  std::string shortName;
  /// what was read; empty for a store
  Input input;
  documents::ReadResult read;
  bool isStore = false;
  /// False for the stores that the driver keeps no version of, and for an empty one.
  bool hasVersion = true;

  /// Those of what readAnyPolicies has returned, which has some.
  [[nodiscard]] const documents::PolicySet& policies() const {
    return *read.policies;  // NOLINT(bugprone-unchecked-optional-access)
  }
  /// For the findings' places.
  [[nodiscard]] FindingSource source() const;
  /// "document", "policy binary, revision 5", "registry text, revision 5", "store"
  [[nodiscard]] std::string form() const;
};

/// What a document, a policy binary or registry text says, with all that the catalogues have to say about it.
AnyPolicies readChecked(Input input, const documents::ReadOptions& options);

/// True for "store:asm": the policies of a store, which need the driver.
bool isStoreName(std::string_view path);

/// The policies of any form in a file, of standard input ("-") or a store ("store:asm"), whatever the catalogues say
/// about them. Throws a Failure that shows the findings when what was read says no policies.
AnyPolicies readAnyPolicies(const Context& context, const std::string& path);

/// The policies of a store, with the version where the driver keeps one of it. Throws a Failure when it cannot be read.
AnyPolicies readStorePolicies(const Session& session, const Store& store);

/// Nothing where no policies could be made of what was read.
std::optional<std::size_t> policyCountOf(const AnyPolicies& any);

/// "laptop-r5.bin: policy binary, revision 5, version 3.41, 16 policies".
std::string renderHeadline(const AnyPolicies& any);

/// "3.41".
std::string versionOf(const documents::PolicySet& policies);

}  // namespace tool
