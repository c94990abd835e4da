// SPDX-License-Identifier: Apache-2.0
#include "tool/driver/store_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include <vqs/policy_binary.h>
#include "documents/files/registry_file.h"
#include "tool/policies/policy_file.h"
#include "tool/system/files.h"
#include "tool/system/output_file.h"
#include "tool/terminal/errors.h"

namespace tool {
namespace {

vqsStatus write(const Session& session, const Store& store, vqs::BinaryVersions versions, const std::string& path,
                bool asRegistryText) {
  const std::string target = platform::libraryPath(path);
  const std::uint8_t asText = asRegistryText ? 1 : 0;
  switch (store.id) {
    case VQS_POLICY_STORE_PB:
      return vqsPbCreateBinaryFromDriver(session.get(), target.c_str(), versions.first, versions.second);
    case VQS_POLICY_STORE_ASM:
      return vqsAsmCreateBinaryFromDriver(session.get(), target.c_str(), versions.first, versions.second, asText);
    default:
      return vqsBalanceProfileCreateBinaryFromDriver(session.get(), target.c_str(), versions.first, versions.second,
                                                     asText);
  }
}

/// Why a store's policies make no file that could be read again.
std::string reasonForRefusal(std::span<const VqsPolicyV2> policies) {
  const auto unconditional = std::ranges::find(policies, 0U, &VqsPolicyV2::conditionCount);
  if (unconditional != policies.end())
    return fmt::format("policy {} has no conditions, and no file with such a policy can be read",
                       designate(*unconditional));
  if (policies.size() > VQS_POLICY_BINARY_MAX_POLICIES)
    return fmt::format("a file holds at most {} policies", +VQS_POLICY_BINARY_MAX_POLICIES);
  return "what was written cannot be read back";
}

/// Writes the store, and makes sure that all of it is in the file: the library does not report errors of writing.
void writeWhole(const Session& session, const Store& store, vqs::BinaryVersions versions, const OutputFile& file,
                const std::string& target, bool asRegistryText) {
  const vqsStatus written = write(session, store, versions, file.path(), asRegistryText);
  // The library has asked for the number of policies already: it is asked for again only when that is what is wrong.
  if (written != VQS_SUCCESS && countPolicies(session, store) == 0)
    throw Failure{
        fmt::format("the {} store is empty, there is nothing to save: {} was not written", store.title, target)};
  require(written, fmt::format("the {} store was not saved", store.title));
  file.requireSpace();
}

/// The policy binary in a file that was written; nothing when there is none in it.
std::optional<PolicyFileSummary> readBack(const OutputFile& file, bool asRegistryText) {
  const auto content = readBytes(file.path());
  if (!asRegistryText) return summarize(content);
  documents::Findings findings;
  const auto text =
      documents::readRegistryText({reinterpret_cast<const char*>(content.data()), content.size()}, findings);
  // A warning is too much, too: what was just written has one value and ends in a whole line.
  return text && findings.empty() ? summarize(text->binary) : std::nullopt;
}

}  // namespace

SavedStore saveStore(const Session& session, const Store& store, vqs::BinaryVersions versions,
                     const std::string& target, bool asRegistryText) {
  // The library fetches the policies for the file: asking for them here as well would double the requests.
  OutputFile file{target};
  writeWhole(session, store, versions, file, target, asRegistryText);
  const auto written = readBack(file, asRegistryText);
  if (!written)
    throw Failure{fmt::format("the {} store was not saved: {}", store.title,
                              reasonForRefusal(readPolicies(session, store).policies()))};
  file.commit();
  return {.count = written->policyCount, .versions = written->versions};
}

}  // namespace tool
