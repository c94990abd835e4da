// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <optional>

#include "tool/commands/command.h"
#include "tool/driver/store_update.h"
#include "tool/driver/stores.h"
#include "tool/policies/checked_policies.h"
#include "tool/policies/difference_text.h"
#include "tool/policies/finding_json.h"
#include "tool/policies/store_plan_text.h"
#include "tool/system/process.h"
#include "tool/terminal/consent.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/render.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

struct StoreApplyArguments {
  std::string store;
  std::string file;
  bool dryRun = false;
  bool yes = false;
  bool order = false;
  bool allowUnknown = false;
  bool json = false;
};

/// What is to be done, and how far it got.
struct Work {
  const Store& store;
  AnyPolicies wanted;
  DifferenceScope scope;
  /// what the store held when the requests were chosen
  AnyPolicies held;
  std::vector<StoreRequest> requests;
  /// what will not be in its place when they have been carried out
  documents::Difference afterwards;
  std::size_t rewritten = 0;
  Sending sending;
  /// what the store holds in the end; nothing when that was not read, or could not be
  std::optional<AnyPolicies> found;
};

/// Throws unless somebody has agreed to the requests, or can be asked.
void requireConsent(const Context& context, const StoreApplyArguments& arguments) {
  if (arguments.yes || arguments.dryRun || (!arguments.json && canAsk(context.output))) return;
  throw UsageError{
      "nobody can be asked whether to change the store, nothing was sent: use --yes to change it or --dry-run to see "
      "the requests"};
}

/// Throws a Failure that shows the findings unless the store can take what the file says.
AnyPolicies readWanted(const StoreApplyArguments& arguments) {
  auto wanted = readChecked(readInput(arguments.file), {.structureVersion = 2, .allowUnknown = arguments.allowUnknown});
  const auto findings = renderFindings(wanted.source(), wanted.read.findings);
  if (!wanted.read.policies || documents::hasErrors(wanted.read.findings))
    throw Failure{fmt::format("{} was not applied, nothing was sent: {}", wanted.name, describeFindings(wanted)),
                  ExitCode::kNo, findings};
  writeRemarks(findings);
  return wanted;
}

std::vector<StoreRequest> chooseRequests(const Work& work, const AnyPolicies& held, bool withOrder) {
  const auto& wanted = work.wanted.policies();
  const auto& policies = held.policies();
  const bool hasOtherVersion =
      !held.hasVersion || policies.version1 != wanted.version1 || policies.version2 != wanted.version2;
  return planStore(policies.policies, wanted.policies,
                   {.withOrder = withOrder, .setsVersion = work.store.id == VQS_POLICY_STORE_ASM && hasOtherVersion});
}

std::size_t countAdds(std::span<const StoreRequest> requests) {
  return static_cast<std::size_t>(std::ranges::count(requests, StoreRequest::Kind::kAdd, &StoreRequest::kind));
}

void plan(const Session& session, Work& work) {
  work.held = readStorePolicies(session, work.store);
  work.requests = chooseRequests(work, work.held, work.scope.withOrder);
  auto afterwards = work.wanted.policies();
  afterwards.policies = carriedOut(work.held.policies().policies, afterwards.policies, work.requests);
  work.afterwards = documents::compare(work.wanted.policies(), afterwards);
  work.rewritten = countAdds(chooseRequests(work, work.held, true));
}

std::string describePlan(const Work& work, bool isDryRun) {
  const auto order = describeOrder(work.afterwards, work.wanted.policies().policies.size(), work.rewritten);
  if (work.requests.empty())
    return fmt::format("The {} store holds what {} says already, nothing to send{}.\n", work.store.title,
                       printable(work.wanted.name), order);
  const std::string count = countOfRequests(work.requests.size());
  return fmt::format("{}: {}{}\n", isDryRun ? "would send " + count : count + " to send",
                     describeRequests(work.requests, work.wanted.policies()), order);
}

/// The store as it is. One request may fail, whatever it was that made the one before fail.
std::optional<AnyPolicies> readAfterwards(const Session& session, const Store& store) {
  for (int attempt = 0; attempt < 2; ++attempt) try {
      return readStorePolicies(session, store);
    } catch (const Failure&) {
      continue;
    }
  return std::nullopt;
}

void send(const Session& session, Work& work) {
  if (work.requests.empty()) {
    work.found = work.held;
    return;
  }
  const auto isInterrupted = [] { return !platform::waitUnlessInterrupted(std::chrono::milliseconds{0}); };
  work.sending = sendRequests(session, work.store, work.wanted.policies(), work.requests, isInterrupted);
  work.found = readAfterwards(session, work.store);
}

/// How to go on after a failure, as the end of a sentence.
std::string describeRest(const Work& work) {
  if (!work.found) return fmt::format("what the {} store holds now cannot be read", work.store.title);
  auto state = describeState(work.wanted, *work.found, compare(work.wanted, *work.found), work.scope);
  const std::size_t rest = chooseRequests(work, *work.found, work.scope.withOrder).size();
  if (rest == 0) return state;
  return fmt::format("{}; the same command sends the rest, {}", state, countOfRequests(rest));
}

std::string describeFailure(const Work& work) {
  const std::string what = work.sending.failure.empty() ? "the driver does not answer any more" : work.sending.failure;
  return fmt::format("{}; {} of {} carried out, {}", what, work.sending.carriedOut,
                     countOfRequests(work.requests.size()), describeRest(work));
}

std::string describeSuccess(const Work& work) {
  if (work.requests.empty() || !work.found) return {};
  const auto& wanted = work.wanted.policies();
  return fmt::format("The {} store holds what {} says now ({}{}).\n", work.store.title, printable(work.wanted.name),
                     countOfPolicies(wanted.policies.size()),
                     work.found->hasVersion ? ", version " + versionOf(wanted) : "");
}

nlohmann::ordered_json applyAsJson(const Work& work, bool isDryRun) {
  using Json = nlohmann::ordered_json;
  Json moved = Json::array();
  for (const auto& policy : work.afterwards.moved) moved.push_back({{"id", policy.id}, {"name", policy.name}});
  return {{"schema", kJsonSchema},
          {"store", work.store.name},
          {"file", work.wanted.name},
          {"dryRun", isDryRun},
          {"requests", requestsAsJson(work.requests, work.wanted.policies())},
          {"outOfOrder", std::move(moved)},
          {"carriedOut", work.sending.carriedOut},
          {"failure", work.sending.failure.empty() ? Json(nullptr) : Json(work.sending.failure)},
          {"difference", work.found
                             ? differenceAsJson(work.wanted, *work.found, compare(work.wanted, *work.found), work.scope)
                             : Json(nullptr)}};
}

/// Tells what has become of the requests, on standard error too where not all were carried out.
void report(Context& context, const Work& work) {
  if (!work.found || !work.sending.failure.empty()) {
    writeError(describeFailure(work));
    context.exitCode = work.found ? ExitCode::kCouldNotRun : ExitCode::kNoDriver;
    return;
  }
  const auto difference = compare(work.wanted, *work.found);
  const bool isAsWanted = isSame(difference, work.scope);
  context.exitCode = isAsWanted ? ExitCode::kDone : ExitCode::kNo;
  // Somebody else has changed the store meanwhile.
  context.out +=
      isAsWanted ? describeSuccess(work) : renderDifference(work.wanted, *work.found, difference, work.scope);
}

void sendAndReport(Context& context, const Session& session, Work& work) {
  send(session, work);
  report(context, work);
}

/// Shows the requests, and asks about them while the driver is open to others.
bool isAgreedTo(Context& context, Work& work) {
  withDriver(context, [&](const Session& session) { plan(session, work); });
  context.output.write(describePlan(work, false));
  if (work.requests.empty()) return false;
  if (ask(context.output, fmt::format("Change the {} store?", work.store.title))) return true;
  context.out = "Nothing was sent.\n";
  context.exitCode = ExitCode::kNo;
  return false;
}

void applyIfAgreedTo(Context& context, Work& work) {
  if (!isAgreedTo(context, work)) return;
  const auto shown = work.held.policies();
  platform::catchInterruptions();
  withDriver(context, [&](const Session& session) {
    plan(session, work);
    if (work.held.policies() != shown)
      throw Failure{fmt::format("the {} store has changed meanwhile, nothing was sent: try again", work.store.title)};
    sendAndReport(context, session, work);
  });
}

void applyUnasked(Context& context, Work& work, const StoreApplyArguments& arguments) {
  // Before the driver is opened, whose threads are to leave the interruption alone.
  if (!arguments.dryRun) platform::catchInterruptions();
  withDriver(context, [&](const Session& session) {
    plan(session, work);
    if (!arguments.json) context.output.write(describePlan(work, arguments.dryRun));
    if (!arguments.dryRun) sendAndReport(context, session, work);
  });
  if (arguments.json) context.out = renderJson(applyAsJson(work, arguments.dryRun));
}

void runApply(Context& context, const StoreApplyArguments& arguments) {
  const auto& store = storeNamed(arguments.store);
  requireConsent(context, arguments);
  Work work{.store = store,
            .wanted = readWanted(arguments),
            .scope = {.withOrder = arguments.order},
            .held = {},
            .requests = {},
            .afterwards = {},
            .sending = {},
            .found = {}};
  if (arguments.yes || arguments.dryRun)
    applyUnasked(context, work, arguments);
  else
    applyIfAgreedTo(context, work);
}

}  // namespace

void setUpStoreApply(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<StoreApplyArguments>();
  addStoreArgument(command, arguments->store);
  command
      .add_option("FILE", arguments->file,
                  "What the store is to hold: a document, a policy binary or registry text; - for standard input")
      ->required()
      ->type_name("");
  command.add_flag("--dry-run", arguments->dryRun, "Show the requests and send none");
  command.add_flag("--yes", arguments->yes, "Send the requests without asking");
  command.add_flag("--order", arguments->order, "Bring the policies into the file's order too");
  command.add_flag("--allow-unknown", arguments->allowUnknown,
                   "Let pass with a warning what the catalogues do not know");
  command.add_flag("--json", arguments->json,
                   "Print JSON instead of words; nobody is asked, so --yes or --dry-run is needed");
  addOutputOption(command, context);
  command.footer(
      "The fewest requests are sent. The driver appends what is added, so policies that change go\n"
      "to the end of the store; only --order counts places. The Asm store takes over the version.\n"
      "When a request fails, or Ctrl-C is pressed, the rest is not sent, the store is read, and what\n"
      "it holds then is said; the same command goes on from there.\n\n"
      "Examples:\n"
      "  vqs store apply asm laptop.json --dry-run\n"
      "  vqs store apply asm laptop.json\n"
      "  vqs store apply pb laptop-r5.bin --order --yes");
  command.callback([&context, arguments] { runApply(context, *arguments); });
}

}  // namespace tool
