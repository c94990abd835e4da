// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <optional>

#include "tool/commands/command.h"
#include "tool/driver/store_file.h"
#include "tool/policies/policy_file.h"
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

vqs::BinaryVersions parseVersions(const std::string& text) {
  const auto dot = text.find('.');
  if (dot != text.npos) {
    const auto first = parseNumber<std::uint16_t>(std::string_view{text}.substr(0, dot));
    const auto second = parseNumber<std::uint16_t>(std::string_view{text}.substr(dot + 1));
    if (first && second) return {.first = *first, .second = *second};
  }
  throw UsageError{
      fmt::format("--version {}: two numbers of 0 to 65535 are expected, as in --version 3.41", inQuotes(text))};
}

std::string save(const Session& session, const Store& store, vqs::BinaryVersions versions,
                 const StoreSaveArguments& arguments) {
  const auto saved = saveStore(session, store, versions, arguments.file, arguments.registry);
  return fmt::format("{} of the {} store {} in {} now ({}version {}.{}).\n", countOfPolicies(saved.count), store.title,
                     saved.count == 1 ? "is" : "are", printable(fileName(arguments.file)),
                     arguments.registry ? "registry text, " : "", saved.versions.first, saved.versions.second);
}

void runSave(Context& context, const StoreSaveArguments& arguments) {
  const auto& store = storeNamed(arguments.store);
  const auto versions = arguments.version ? parseVersions(*arguments.version) : vqs::BinaryVersions{};
  if (arguments.registry && store.id == VQS_POLICY_STORE_PB)
    throw UsageError{"--registry: the interface offers registry text for asm and balance-profile only"};
  withDriver(context, [&](const Session& session) { context.out = save(session, store, versions, arguments); });
}

}  // namespace

void setUpStoreSave(CLI::App& command, Context& context) {
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
