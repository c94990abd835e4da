// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include <vqs/policy_binary.h>
#include "tool/commands/command.h"
#include "tool/driver/stores.h"
#include "tool/policies/policy_file.h"
#include "tool/policies/registry_text.h"
#include "tool/system/files.h"
#include "tool/system/output_file.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/numbers.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

struct StoreSaveArguments {
  std::string store;
  std::string file;
  std::optional<std::string> version;
  bool registry = false;
};

struct Versions {
  std::uint16_t first = 0;
  std::uint16_t second = 0;
};

Versions parseVersions(const std::string& text) {
  const auto dot = text.find('.');
  if (dot != text.npos) {
    const auto first = parseNumber<std::uint16_t>(std::string_view{text}.substr(0, dot));
    const auto second = parseNumber<std::uint16_t>(std::string_view{text}.substr(dot + 1));
    if (first && second) return {.first = *first, .second = *second};
  }
  throw UsageError{
      fmt::format("--version {}: two numbers of 0 to 65535 are expected, as in --version 3.41", inQuotes(text))};
}

vqsStatus write(const Session& session, const Store& store, Versions versions, const std::string& path, bool registry) {
  const std::string target = platform::libraryPath(path);
  const std::uint8_t asText = registry ? 1 : 0;
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
void writeWhole(const Session& session, const Store& store, Versions versions, const OutputFile& file, bool registry) {
  require(write(session, store, versions, file.path(), registry),
          fmt::format("the {} store was not saved", store.title));
  file.requireSpace();
}

/// Writes the store's policy binary and reads it back.
PolicyFile writeBinary(const Session& session, const Store& store, Versions versions, const OutputFile& file,
                       std::span<const VqsPolicyV2> policies) {
  writeWhole(session, store, versions, file, false);
  const auto written = parsePolicies(readBytes(file.path()));
  if (written && written->policies.size() == policies.size()) return *written;
  throw Failure{fmt::format("the {} store was not saved: {}", store.title, reasonForRefusal(policies))};
}

/// Writes registry text and compares it with the binary that it holds.
void writeRegistry(const Session& session, const Store& store, Versions versions, const OutputFile& file,
                   const std::vector<std::byte>& binary) {
  writeWhole(session, store, versions, file, true);
  if (bytesOfRegistryText(readBytes(file.path())) == binary) return;
  throw Failure{
      fmt::format("the {} store was not saved: the registry text does not hold its policies, it may have "
                  "changed meanwhile",
                  store.title)};
}

std::string save(const Session& session, const Store& store, Versions versions, const StoreSaveArguments& arguments) {
  const auto policies = readPolicies(session, store);
  if (policies.empty())
    throw Failure{fmt::format("the {} store is empty, there is nothing to save: {} was not written", store.title,
                              arguments.file)};
  OutputFile file{arguments.file};
  const auto written = writeBinary(session, store, versions, file, policies);
  if (arguments.registry) writeRegistry(session, store, versions, file, readBytes(file.path()));
  file.commit();
  return fmt::format("{} of the {} store {} in {} now ({}version {}.{}).\n", countOfPolicies(policies.size()),
                     store.title, policies.size() == 1 ? "is" : "are", printable(fileName(arguments.file)),
                     arguments.registry ? "registry text, " : "", written.version1, written.version2);
}

void runSave(Context& context, const StoreSaveArguments& arguments) {
  const auto& store = storeNamed(arguments.store);
  const auto versions = arguments.version ? parseVersions(*arguments.version) : Versions{};
  if (arguments.registry && store.id == VQS_POLICY_STORE_PB)
    throw UsageError{"--registry: the interface offers registry text for asm and balance-profile only"};
  withDriver(context, [&](const Session& session) { context.out = save(session, store, versions, arguments); });
}

}  // namespace

void addStoreSave(CLI::App& group, Context& context) {
  auto& command = addCommand(group, "save", "Save the policies of a store in a policy binary.");
  const auto arguments = std::make_shared<StoreSaveArguments>();
  addStoreArgument(command, arguments->store);
  command.add_option("FILE", arguments->file, "The file to write; an existing one is replaced, whole or not at all")
      ->required()
      ->type_name("");
  command.add_flag("--registry", arguments->registry,
                   "Write registry export text that holds the binary (asm and balance-profile)");
  command
      .add_option("--version", arguments->version,
                  "The file's two version numbers, each 0 to 65535; 0.0 when left out, which for asm stands for the "
                  "version that the driver keeps")
      ->type_name("A.B");
  command.footer(
      "Examples:\n"
      "  vqs store save asm laptop.bin\n"
      "  vqs store save pb laptop.bin --version 3.41\n"
      "  vqs store save asm laptop.reg --registry");
  command.callback([&context, arguments] { runSave(context, *arguments); });
}

}  // namespace tool
