// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <compare>
#include <numeric>
#include <optional>
#include <utility>

#include "documents/compare/fields.h"
#include "documents/compare/sequences.h"
#include "documents/documents.h"
#include "documents/policies/entries.h"
#include "documents/policies/numbers.h"
#include "documents/print/print.h"

namespace documents {
namespace {

using Kind = PolicyDifference::Kind;
using Places = std::vector<std::size_t>;

/// Two policies that are taken for one.
struct Pairing {
  /// for each policy of a set, its place in the other one
  std::vector<std::optional<std::size_t>> partnerOfFirst;
  std::vector<std::optional<std::size_t>> partnerOfSecond;

  void pair(std::size_t first, std::size_t second) {
    partnerOfFirst[first] = second;
    partnerOfSecond[second] = first;
  }
};

/// An order of policies by all that they say but their ids.
std::weak_ordering compareContents(const Policy& a, const Policy& b) {
  const auto order = [](const auto& x, const auto& y) { return orderOf(x, y); };
  if (const auto names = a.name <=> b.name; names != 0) return names;
  if (const auto descriptions = a.description <=> b.description; descriptions != 0) return descriptions;
  if (const auto conditions = std::lexicographical_compare_three_way(a.conditions.begin(), a.conditions.end(),
                                                                     b.conditions.begin(), b.conditions.end(), order);
      conditions != 0)
    return conditions;
  if (const auto actions = std::lexicographical_compare_three_way(a.actions.begin(), a.actions.end(), b.actions.begin(),
                                                                  b.actions.end(), order);
      actions != 0)
    return actions;
  if (const auto texts = a.texts <=> b.texts; texts != 0) return texts;
  return numbersOf(a) <=> numbersOf(b);
}

class Comparison {
 public:
  Comparison(const std::vector<Policy>& first, const std::vector<Policy>& second)
      : first_{first},
        second_{second},
        pairing_{.partnerOfFirst = std::vector<std::optional<std::size_t>>(first.size()),
                 .partnerOfSecond = std::vector<std::optional<std::size_t>>(second.size())} {
    pairById();
    pairByContent();
  }

  [[nodiscard]] std::vector<PolicyDifference> policies() const {
    std::vector<PolicyDifference> differences;
    for (std::size_t i = 0; i < first_.size(); ++i) {
      if (const auto partner = pairing_.partnerOfFirst[i])
        addChanges(differences, {.first = i, .second = *partner});
      else
        differences.push_back(alone(Kind::kOnlyInFirst, first_[i], i));
    }
    for (std::size_t i = 0; i < second_.size(); ++i)
      if (!pairing_.partnerOfSecond[i]) differences.push_back(alone(Kind::kOnlyInSecond, second_[i], i));
    return differences;
  }

  /// All that do not belong to the most policies whose order is the same in both sets.
  [[nodiscard]] std::vector<MovedPolicy> moved() const {
    Places pairedFirst;
    Places partners;
    for (std::size_t i = 0; i < first_.size(); ++i) {
      const auto partner = pairing_.partnerOfFirst[i];
      if (!partner) continue;
      pairedFirst.push_back(i);
      partners.push_back(*partner);
    }
    const auto kept = longestGrowing(partners);
    std::vector<MovedPolicy> moved;
    auto nextKept = kept.begin();
    for (std::size_t i = 0; i < partners.size(); ++i) {
      if (nextKept != kept.end() && *nextKept == i) {
        ++nextKept;
        continue;
      }
      const auto& policy = first_[pairedFirst[i]];
      moved.push_back(
          {.id = policy.id, .name = readable(policy.name), .firstIndex = pairedFirst[i], .secondIndex = partners[i]});
    }
    return moved;
  }

 private:
  void pairById() {
    const auto sorted = [](const std::vector<Policy>& policies) {
      Places places(policies.size());
      std::iota(places.begin(), places.end(), std::size_t{0});
      std::ranges::sort(places, {}, [&](std::size_t place) { return std::pair{policies[place].id, place}; });
      return places;
    };
    pairSorted(sorted(first_), sorted(second_),
               [&](std::size_t a, std::size_t b) -> std::weak_ordering { return first_[a].id <=> second_[b].id; });
  }

  /// A policy whose id is in one set only, and a policy of the other one that says the same under another id.
  void pairByContent() {
    const auto sorted = [](const std::vector<Policy>& policies, const auto& partners) {
      Places places;
      for (std::size_t i = 0; i < policies.size(); ++i)
        if (!partners[i]) places.push_back(i);
      std::ranges::sort(places, [&](std::size_t a, std::size_t b) {
        const auto order = compareContents(policies[a], policies[b]);
        return order != 0 ? order < 0 : a < b;
      });
      return places;
    };
    pairSorted(sorted(first_, pairing_.partnerOfFirst), sorted(second_, pairing_.partnerOfSecond),
               [&](std::size_t a, std::size_t b) { return compareContents(first_[a], second_[b]); });
  }

  /// Pairs what is equal in two sorted lists: of several the first with the first.
  template <class Compare>
  void pairSorted(const Places& first, const Places& second, const Compare& compare) {
    for (auto a = first.begin(), b = second.begin(); a != first.end() && b != second.end();) {
      const std::weak_ordering order = compare(*a, *b);
      if (order == 0) pairing_.pair(*a, *b);
      if (order <= 0) ++a;
      if (order >= 0) ++b;
    }
  }

  static PolicyDifference alone(Kind kind, const Policy& policy, std::size_t place) {
    return {.kind = kind,
            .id = policy.id,
            .name = readable(policy.name),
            .firstIndex = kind == Kind::kOnlyInFirst ? place : 0,
            .secondIndex = kind == Kind::kOnlyInSecond ? place : 0,
            .fields = {}};
  }

  void addChanges(std::vector<PolicyDifference>& differences, Place place) const {
    const auto& first = first_[place.first];
    const auto& second = second_[place.second];
    if (first == second) return;
    auto fields = differencesOf(first, second);
    const bool isRenamed = first.id == second.id && fields.size() == 1 && fields.front().field == "name";
    if (first.id != second.id)
      fields.insert(fields.begin(), {.kind = FieldDifference::Kind::kChanged,
                                     .field = "id",
                                     .first = std::to_string(first.id),
                                     .second = std::to_string(second.id)});
    differences.push_back({.kind = isRenamed ? Kind::kRenamed : Kind::kChanged,
                           .id = first.id,
                           .name = readable(first.name),
                           .firstIndex = place.first,
                           .secondIndex = place.second,
                           .fields = std::move(fields)});
  }

  const std::vector<Policy>& first_;
  const std::vector<Policy>& second_;
  Pairing pairing_;
};

}  // namespace

Difference compare(const PolicySet& first, const PolicySet& second) {
  const Comparison comparison{first.policies, second.policies};
  return {.versionDiffers = first.version1 != second.version1 || first.version2 != second.version2,
          .policies = comparison.policies(),
          .moved = comparison.moved()};
}

std::string_view changeOf(FieldDifference::Kind kind) {
  switch (kind) {
    case FieldDifference::Kind::kAdded:
      return "added";
    case FieldDifference::Kind::kRemoved:
      return "removed";
    case FieldDifference::Kind::kMoved:
      return "moved";
    default:
      return "changed";
  }
}

std::string_view changeOf(PolicyDifference::Kind kind) {
  switch (kind) {
    case PolicyDifference::Kind::kOnlyInFirst:
      return "onlyInFirst";
    case PolicyDifference::Kind::kOnlyInSecond:
      return "onlyInSecond";
    case PolicyDifference::Kind::kRenamed:
      return "renamed";
    default:
      return "changed";
  }
}

}  // namespace documents
