// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "tool/commands/command.h"
#include "tool/driver/stores.h"
#include "tool/policies/policy_file.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

struct StoreLoadArguments {
  std::string store;
  std::string file;
  bool replace = false;
  bool reset = false;
};

/// Nothing may be sent before all of the file is known to be sendable.
void requireEndedTexts(const PolicyFile& file, const std::string& path) {
  for (const auto& policy : file.policies)
    for (const auto& text : std::span{policy.texts}.first(policy.textCount))
      if (std::ranges::find(text.text, VqsChar16{0}) == std::end(text.text))
        throw Failure{fmt::format("{}: a text of policy {} has no end, the driver takes texts of at most 255 units",
                                  path, designate(policy))};
}

void requireDistinctIds(const PolicyFile& file, const std::string& path) {
  std::set<std::uint32_t> seen;
  for (const auto& policy : file.policies)
    if (!seen.insert(policy.id).second)
      throw Failure{
          fmt::format("{}: policy {} has an id that is twice in the file, nothing was changed: --replace keeps "
                      "the later of the two",
                      path, designate(policy))};
}

void requireNewIds(const PolicyFile& file, const std::set<std::uint32_t>& present, const Store& store) {
  for (const auto& policy : file.policies)
    if (present.contains(policy.id))
      throw Failure{
          fmt::format("policy {} has an id that is in the {} store already, nothing was changed: use --replace "
                      "to replace such policies or --reset to empty the store first",
                      designate(policy), store.title)};
}

std::set<std::uint32_t> idsOf(std::span<const VqsPolicyV2> policies) {
  std::set<std::uint32_t> ids;
  for (const auto& policy : policies) ids.insert(policy.id);
  return ids;
}

std::uint32_t send(const Session& session, const Store& store, const VqsPolicyV2& policy, bool replace,
                   const std::string& what) {
  VqsVersionedPolicy record{};
  record.structureVersion = 2;
  record.policy.v2 = policy;
  std::uint32_t verdict = 0;
  const vqsStatus status =
      replace ? vqsPbReplacePolicyV2(session.get(), policy.id, &record, sizeof(record), &verdict, store.id)
              : vqsPbAddPolicyV2(session.get(), &record, sizeof(record), &verdict, store.id);
  require(status, what);
  return verdict;
}

void sendAll(const Session& session, const Store& store, const std::vector<VqsPolicyV2>& policies,
             std::set<std::uint32_t> present) {
  for (std::size_t loaded = 0; loaded < policies.size(); ++loaded) {
    const auto& policy = policies[loaded];
    const auto what = fmt::format("policy {} was not taken into the {} store, {} of {} were loaded before it",
                                  designate(policy), store.title, loaded, policies.size());
    const bool isPresent = !present.insert(policy.id).second;
    if (const auto verdict = send(session, store, policy, isPresent, what); verdict != 0)
      throw Failure{fmt::format("{}: the driver refused it, {}", what, describeVerdict(verdict))};
  }
}

void setVersions(const Session& session, const PolicyFile& file) {
  const auto what = fmt::format("the policies were loaded, but the Asm store's version {}.{} was not set",
                                file.version1, file.version2);
  std::uint32_t verdict = 0;
  require(vqsSetBinaryVersion(session.get(), file.version1, file.version2, &verdict, VQS_POLICY_STORE_ASM), what);
  if (verdict != 0) throw Failure{fmt::format("{}: the driver answered {}", what, verdict)};
}

std::set<std::uint32_t> prepareStore(const Session& session, const Store& store, const StoreLoadArguments& arguments,
                                     const PolicyFile& file) {
  requireEndedTexts(file, arguments.file);
  if (!arguments.replace) requireDistinctIds(file, arguments.file);
  if (arguments.reset) {
    resetStore(session, store);
    return {};
  }
  auto present = idsOf(readPolicies(session, store).policies());
  if (!arguments.replace) requireNewIds(file, present, store);
  return present;
}

std::string load(const Session& session, const Store& store, const StoreLoadArguments& arguments,
                 const PolicyFile& file) {
  const auto present = prepareStore(session, store, arguments, file);
  sendAll(session, store, file.policies, present);
  if (store.id == VQS_POLICY_STORE_ASM) setVersions(session, file);
  const std::size_t count = file.policies.size();
  return fmt::format("{} from {} {} in the {} store now ({} in all).\n", countOfPolicies(count),
                     printable(fileName(arguments.file)), count == 1 ? "is" : "are", store.title,
                     countPolicies(session, store));
}

void runLoad(Context& context, const StoreLoadArguments& arguments) {
  const auto& store = storeNamed(arguments.store);
  const auto file = readPolicyFile(arguments.file);
  withDriver(context, [&](const Session& session) { context.out = load(session, store, arguments, file); });
}

}  // namespace

void setUpStoreLoad(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<StoreLoadArguments>();
  addStoreArgument(command, arguments->store);
  command.add_option("FILE", arguments->file, "The policy binary, of revision 3, 4 or 5")->required()->type_name("");
  auto* replace =
      command.add_flag("--replace", arguments->replace, "Replace policies whose ids are in the store already");
  command.add_flag("--reset", arguments->reset, "Remove every policy of the store first")->excludes(replace);
  command.footer(
      "Without --replace or --reset, a file with an id that is in the store already is refused\n"
      "and nothing is changed. The Asm store takes over the file's version as well.\n\n"
      "Examples:\n"
      "  vqs store load asm laptop-r5.bin\n"
      "  vqs store load pb laptop-r5.bin --replace");
  command.callback([&context, arguments] { runLoad(context, *arguments); });
}

}  // namespace tool
