// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/store_plan_text.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <vector>

#include "documents/print/print.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

using Kind = StoreRequest::Kind;
using PolicyKind = documents::PolicyDifference::Kind;

/// A list of requests, or of ids, is not longer than this.
constexpr std::size_t kMostListed = 10;

std::string countOf(std::size_t count, const char* noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::string describeRequest(const StoreRequest& request, const documents::PolicySet& wanted) {
  switch (request.kind) {
    case Kind::kReset:
      return "reset";
    case Kind::kDelete:
      return fmt::format("delete {}", request.id);
    case Kind::kAdd:
      return fmt::format("add {}", request.id);
    default:
      return "set version " + versionOf(wanted);
  }
}

std::vector<std::string> describeEach(std::span<const StoreRequest> requests, const documents::PolicySet& wanted) {
  std::vector<std::string> words;
  words.reserve(requests.size());
  for (const auto& request : requests) words.push_back(describeRequest(request, wanted));
  return words;
}

/// "reset, 400 adds, set version 3.41".
std::vector<std::string> describeKinds(std::span<const StoreRequest> requests, const documents::PolicySet& wanted) {
  std::vector<std::string> words;
  const auto number = [&](Kind kind) {
    return static_cast<std::size_t>(std::ranges::count(requests, kind, &StoreRequest::kind));
  };
  if (requests.front().kind == Kind::kReset) words.emplace_back("reset");
  if (const auto deletes = number(Kind::kDelete); deletes != 0) words.push_back(countOf(deletes, "delete"));
  if (const auto adds = number(Kind::kAdd); adds != 0) words.push_back(countOf(adds, "add"));
  if (requests.back().kind == Kind::kSetVersion) words.push_back(describeRequest(requests.back(), wanted));
  return words;
}

/// "140", "140 and 150", "1, 2 and 17 more".
std::string enumerate(const std::vector<std::uint32_t>& ids) {
  std::vector<std::string> words;
  const std::size_t listed = ids.size() > kMostListed ? kMostListed : ids.size() - 1;
  for (const auto id : std::span{ids}.first(listed)) words.push_back(std::to_string(id));
  const std::size_t rest = ids.size() - listed;
  const std::string last = rest == 1 ? std::to_string(ids.back()) : fmt::format("{} more", rest);
  return words.empty() ? last : fmt::format("{} and {}", fmt::join(words, ", "), last);
}

/// Adds "140 is missing" if there are such policies.
template <class IsMeant>
void addIds(std::vector<std::string>& parts, const documents::Difference& difference, IsMeant isMeant,
            const std::string& one, const std::string& several) {
  std::vector<std::uint32_t> ids;
  for (const auto& policy : difference.policies)
    if (isMeant(policy.kind)) ids.push_back(policy.id);
  if (!ids.empty()) parts.push_back(enumerate(ids) + ' ' + (ids.size() == 1 ? one : several));
}

std::string positionOf(std::size_t index, std::size_t count) {
  if (index == 0) return "first";
  return index + 1 == count ? "last" : fmt::format("number {}", index + 1);
}

}  // namespace

std::string countOfRequests(std::size_t count) { return countOf(count, "request"); }

std::string describeRequests(std::span<const StoreRequest> requests, const documents::PolicySet& wanted) {
  const auto words = requests.size() > kMostListed ? describeKinds(requests, wanted) : describeEach(requests, wanted);
  return fmt::format("{}", fmt::join(words, ", "));
}

nlohmann::ordered_json requestsAsJson(std::span<const StoreRequest> requests, const documents::PolicySet& wanted) {
  auto list = nlohmann::ordered_json::array();
  for (const auto& request : requests) {
    nlohmann::ordered_json& json = list.emplace_back();
    switch (request.kind) {
      case Kind::kReset:
        json = {{"request", "reset"}};
        break;
      case Kind::kDelete:
        json = {{"request", "delete"}, {"id", request.id}};
        break;
      case Kind::kAdd:
        json = {
            {"request", "add"}, {"id", request.id}, {"name", documents::readable(wanted.policies[request.index].name)}};
        break;
      default:
        json = {{"request", "setVersion"}, {"version", versionOf(wanted)}};
    }
  }
  return list;
}

std::string describeOrder(const documents::Difference& afterwards, std::size_t heldAfterwards, std::size_t rewritten) {
  const auto& moved = afterwards.moved;
  if (moved.empty()) return {};
  const std::string what = moved.size() == 1 ? fmt::format("{} will be {}", moved.front().id,
                                                           positionOf(moved.front().secondIndex, heldAfterwards))
                                             : fmt::format("{} policies will be elsewhere", moved.size());
  return fmt::format(" (order: {}; --order to rewrite {})", what, rewritten);
}

std::string describeState(const AnyPolicies& wanted, const AnyPolicies& store, const documents::Difference& difference,
                          const DifferenceScope& scope) {
  std::vector<std::string> parts;
  addIds(
      parts, difference, [](PolicyKind kind) { return kind == PolicyKind::kOnlyInFirst; }, "is missing", "are missing");
  addIds(
      parts, difference, [](PolicyKind kind) { return kind == PolicyKind::kChanged || kind == PolicyKind::kRenamed; },
      "differs", "differ");
  addIds(
      parts, difference, [](PolicyKind kind) { return kind == PolicyKind::kOnlyInSecond; }, "is not in " + wanted.name,
      "are not in " + wanted.name);
  if (difference.versionDiffers) parts.push_back("its version is " + versionOf(store.policies()));
  if (scope.withOrder && !difference.moved.empty()) parts.emplace_back("the order differs");
  if (parts.empty()) return fmt::format("{} holds what {} says now", store.name, wanted.name);
  return fmt::format("{} holds {} now: {}", store.name, countOfPolicies(store.policies().policies.size()),
                     fmt::join(parts, ", "));
}

}  // namespace tool
