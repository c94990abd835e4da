// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/any_policies.h"

#include <fmt/format.h>

#include <span>
#include <utility>

#include "tool/driver/store_version.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

using Form = documents::ReadResult::Form;

constexpr std::string_view kStorePrefix = "store:";

/// The policies of a store as documents have them.
documents::PolicySet policiesOf(const Session& session, const Store& store, bool& hasVersion) {
  const auto stored = readPolicies(session, store);
  documents::PolicySet set;
  for (const auto& policy : stored.policies()) set.policies.push_back(documents::fromRecord(policy));
  const auto versions = stored.policies().empty() ? std::nullopt : readStoreVersion(session, store);
  hasVersion = versions.has_value();
  if (versions) {
    set.version1 = versions->first;
    set.version2 = versions->second;
  }
  return set;
}

AnyPolicies ofInput(Input input, documents::ReadResult read) {
  return {.name = input.name,
          .shortName = input.name,
          .input = std::move(input),
          .read = std::move(read),
          .isStore = false,
          .hasVersion = true};
}

}  // namespace

FindingSource AnyPolicies::source() const {
  return {.name = input.path == "-" ? "<stdin>" : name,
          .text = read.textOf(input.bytes),
          .hasLines = read.form != Form::kBinary};
}

std::string AnyPolicies::form() const {
  if (isStore) return "store";
  switch (read.form) {
    case Form::kBinary:
      return fmt::format("policy binary, revision {}", read.revision);
    case Form::kRegistryText:
      return fmt::format("registry text, revision {}", read.revision);
    default:
      return "document";
  }
}

AnyPolicies readChecked(Input input, const documents::ReadOptions& options) {
  auto read = documents::checkPolicies(input.bytes, options);
  return ofInput(std::move(input), std::move(read));
}

bool isStoreName(std::string_view path) { return path.starts_with(kStorePrefix); }

AnyPolicies readAnyPolicies(const Context& context, const std::string& path) {
  if (isStoreName(path)) {
    const auto& store = storeNamed(path.substr(kStorePrefix.size()));
    AnyPolicies any;
    withDriver(context, [&](const Session& session) { any = readStorePolicies(session, store); });
    return any;
  }
  auto input = readInput(path);
  auto read = documents::readPolicies(input.bytes, {.structureVersion = 2, .allowUnknown = true});
  auto any = ofInput(std::move(input), std::move(read));
  if (any.read.policies) return any;
  throw Failure{fmt::format("{} cannot be read: {}", any.name, describe(countFindings(any.read.findings))),
                ExitCode::kCouldNotRun, renderFindings(any.source(), any.read.findings)};
}

AnyPolicies readStorePolicies(const Session& session, const Store& store) {
  AnyPolicies any{.name = fmt::format("the {} store", store.title),
                  .shortName = "the store",
                  .input = {},
                  .read = {},
                  .isStore = true,
                  .hasVersion = true};
  any.read.policies = policiesOf(session, store, any.hasVersion);
  return any;
}

std::optional<std::size_t> policyCountOf(const AnyPolicies& any) {
  return any.read.policies ? std::optional{any.policies().policies.size()} : std::nullopt;
}

std::string renderHeadline(const AnyPolicies& any) {
  const auto& policies = any.policies();
  return fmt::format("{}: {}, {}{}\n", printable(any.name), any.form(),
                     any.hasVersion ? fmt::format("version {}, ", versionOf(policies)) : "",
                     countOfPolicies(policies.policies.size()));
}

std::string versionOf(const documents::PolicySet& policies) {
  return fmt::format("{}.{}", policies.version1, policies.version2);
}

}  // namespace tool
