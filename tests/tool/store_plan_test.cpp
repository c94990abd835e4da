// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/store_plan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <map>
#include <ostream>
#include <random>

namespace tool {

std::ostream& operator<<(std::ostream& stream, const StoreRequest& request) {
  switch (request.kind) {
    case StoreRequest::Kind::kReset:
      return stream << "reset";
    case StoreRequest::Kind::kDelete:
      return stream << "delete " << request.id;
    case StoreRequest::Kind::kAdd:
      return stream << "add " << request.id << " (" << request.index << ")";
    default:
      return stream << "set version";
  }
}

}  // namespace tool

namespace test {
namespace {

using tool::StoreRequest;
using enum StoreRequest::Kind;

/// A policy, as far as it matters here: its id, and a letter for all that it says.
struct Entry {
  std::uint32_t id;
  char content;
  auto operator<=>(const Entry&) const = default;
};
using Entries = std::vector<Entry>;

std::vector<documents::Policy> policies(const Entries& entries) {
  std::vector<documents::Policy> policies;
  for (const auto& entry : entries)
    policies.push_back({.id = entry.id,
                        .name = u"policy",
                        .description = {},
                        .conditions = {},
                        .actions = {},
                        .texts = {},
                        .flag0 = static_cast<std::uint8_t>(entry.content)});
  return policies;
}

std::vector<StoreRequest> planFor(const Entries& held, const Entries& wanted, tool::PlanOptions options = {}) {
  return tool::planStore(policies(held), policies(wanted), options);
}

/// A store that behaves as the driver's do.
struct Store {
  Entries entries;
  std::size_t capacity;

  bool remove(std::uint32_t id) {
    const auto found = std::ranges::find(entries, id, &Entry::id);
    if (found == entries.end()) return false;
    entries.erase(found);
    return true;
  }
  bool add(Entry entry) {
    if (entries.size() == capacity || std::ranges::find(entries, entry.id, &Entry::id) != entries.end()) return false;
    entries.push_back(entry);
    return true;
  }
  /// False when the driver would refuse the request.
  bool take(const StoreRequest& request, const Entries& wanted) {
    if (request.kind == kReset) entries.clear();
    if (request.kind == kDelete) return remove(request.id);
    if (request.kind == kAdd) return wanted.at(request.index).id == request.id && add(wanted[request.index]);
    return true;
  }
};

/// Carries a plan out, none of whose requests may be refused. What the library foretells has to come true.
Entries afterPlan(const Entries& held, const Entries& wanted, std::span<const StoreRequest> plan,
                  std::size_t capacity) {
  Store store{.entries = held, .capacity = capacity};
  for (std::size_t i = 0; i < plan.size(); ++i)
    EXPECT_TRUE(store.take(plan[i], wanted)) << "request " << i << ": " << plan[i];
  EXPECT_EQ(tool::carriedOut(policies(held), policies(wanted), plan), policies(store.entries));
  return store.entries;
}

Entries sorted(Entries entries) {
  std::ranges::sort(entries);
  return entries;
}

const Entries kAll = {{0, 'a'}, {0, 'b'}, {1, 'a'}, {1, 'b'}, {2, 'a'}, {2, 'b'}};
constexpr std::size_t kSmall = 3;

/// Every store that holds at most three of the policies above; the same one, and the same id, may be there twice.
std::vector<Entries> smallStores() {
  std::vector<Entries> stores = {{}};
  for (std::size_t i = 0; i < stores.size(); ++i) {
    const Entries shorter = stores[i];
    if (shorter.size() == kSmall) continue;
    for (const auto& entry : kAll) {
      stores.push_back(shorter);
      stores.back().push_back(entry);
    }
  }
  return stores;
}

bool hasDistinctIds(const Entries& entries) {
  std::map<std::uint32_t, int> ids;
  return std::ranges::all_of(entries, [&](const Entry& entry) { return ++ids[entry.id] == 1; });
}

/// What can be reached from a store, with the fewest requests that it takes.
std::map<Entries, std::size_t> reachableFrom(const Entries& held) {
  std::map<Entries, std::size_t> distances = {{held, 0}};
  std::deque<Entries> open = {held};
  for (; !open.empty(); open.pop_front()) {
    const auto visit = [&](const Store& store) {
      if (distances.emplace(store.entries, distances.at(open.front()) + 1).second) open.push_back(store.entries);
    };
    const Store now{.entries = open.front(), .capacity = kSmall};
    visit({.entries = {}, .capacity = kSmall});
    for (std::uint32_t id = 0; id < 3; ++id)
      if (Store next = now; next.remove(id)) visit(next);
    for (const auto& entry : kAll)
      if (Store next = now; next.add(entry)) visit(next);
  }
  return distances;
}

TEST(StorePlan, takes_the_fewest_requests_from_every_small_store_to_every_other) {
  const auto stores = smallStores();
  ASSERT_EQ(stores.size(), 1U + 6 + 36 + 216);
  std::size_t pairs = 0;
  for (const auto& held : stores) {
    const auto distances = reachableFrom(held);
    std::map<Entries, std::size_t> inAnyOrder;
    for (const auto& [entries, distance] : distances) {
      const auto [at, isNew] = inAnyOrder.emplace(sorted(entries), distance);
      if (!isNew) at->second = std::min(at->second, distance);
    }
    for (const auto& wanted : stores) {
      if (!hasDistinctIds(wanted)) continue;
      ++pairs;
      const auto plan = planFor(held, wanted);
      ASSERT_EQ(sorted(afterPlan(held, wanted, plan, kSmall)), sorted(wanted));
      ASSERT_EQ(plan.size(), inAnyOrder.at(sorted(wanted)));
      const auto ordered = planFor(held, wanted, {.withOrder = true});
      ASSERT_EQ(afterPlan(held, wanted, ordered, kSmall), wanted);
      ASSERT_EQ(ordered.size(), distances.at(wanted));
    }
  }
  // 1 + 6 + 6 * 4 + 6 * 4 * 2 lists of distinct ids.
  EXPECT_EQ(pairs, 259U * 79);
}

/// So many policies, of ids below a limit; with twins, an id may be there again.
Entries randomEntries(std::mt19937& random, std::size_t count, std::uint32_t ids, bool withTwins) {
  Entries entries;
  std::map<std::uint32_t, int> seen;
  while (entries.size() < count) {
    const auto id = static_cast<std::uint32_t>(random() % ids);
    if (withTwins || ++seen[id] == 1) entries.push_back({id, static_cast<char>('a' + random() % 3)});
  }
  return entries;
}

/// The requests that an id takes on its own: nothing is to be saved across ids but by a reset.
std::size_t requestsOfId(const Entries& held, const Entries& wanted, std::uint32_t id) {
  Entries before;
  Entries after;
  std::ranges::copy_if(held, std::back_inserter(before), [&](const Entry& entry) { return entry.id == id; });
  std::ranges::copy_if(wanted, std::back_inserter(after), [&](const Entry& entry) { return entry.id == id; });
  for (std::size_t deletes = 0;; ++deletes, before.erase(before.begin())) {
    if (before == after) return deletes;
    if (before.empty()) return deletes + after.size();
  }
}

TEST(StorePlan, takes_no_more_requests_than_each_id_needs_in_large_stores) {
  std::mt19937 random{11};
  for (int i = 0; i < 300; ++i) {
    const std::uint32_t ids = i % 2 == 0 ? 500 : 30;
    const std::size_t most = ids == 500 ? 400 : 30;
    const bool withTwins = i % 3 == 0;
    const auto held = randomEntries(random, random() % (withTwins ? 401 : most + 1), ids, withTwins);
    const auto wanted = randomEntries(random, random() % (most + 1), ids, false);
    const auto plan = planFor(held, wanted);
    ASSERT_EQ(sorted(afterPlan(held, wanted, plan, 400)), sorted(wanted));
    std::size_t needed = 0;
    for (std::uint32_t id = 0; id < ids; ++id) needed += requestsOfId(held, wanted, id);
    ASSERT_EQ(plan.size(), std::min(needed, 1 + wanted.size()));
  }
}

/// Whether the first policies that are wanted are what is left of the store when all others are deleted.
bool canKeep(const Entries& held, const Entries& wanted, std::size_t count) {
  Store store{.entries = held, .capacity = 400};
  for (const auto& [id, content] : held) {
    const auto kept =
        std::ranges::find(wanted.begin(), wanted.begin() + static_cast<std::ptrdiff_t>(count), id, &Entry::id);
    const bool isKept = kept != wanted.begin() + static_cast<std::ptrdiff_t>(count);
    if (!isKept || std::ranges::count(store.entries, id, &Entry::id) > 1) store.remove(id);
  }
  return std::ranges::equal(store.entries, std::span{wanted}.first(count));
}

TEST(StorePlan, with_order_keeps_the_longest_beginning_that_it_can) {
  std::mt19937 random{12};
  for (int i = 0; i < 300; ++i) {
    auto wanted = randomEntries(random, random() % 60, 80, false);
    // A store that was once filled with something like it.
    Entries held = wanted;
    for (auto changes = random() % 8; changes > 0 && !held.empty(); --changes)
      held[random() % held.size()].content = static_cast<char>('a' + random() % 3);
    for (auto moves = random() % 4; moves > 0 && !held.empty(); --moves)
      std::swap(held[random() % held.size()], held[random() % held.size()]);
    for (auto more = random() % 4; more > 0; --more)
      held.insert(held.begin() + static_cast<std::ptrdiff_t>(random() % (held.size() + 1)),
                  {static_cast<std::uint32_t>(random() % 80), 'a'});
    const auto plan = planFor(held, wanted, {.withOrder = true});
    ASSERT_EQ(afterPlan(held, wanted, plan, 400), wanted);
    std::size_t kept = wanted.size();
    while (!canKeep(held, wanted, kept)) --kept;
    ASSERT_EQ(plan.size(), std::min(held.size() + wanted.size() - 2 * kept, 1 + wanted.size()));
  }
}

TEST(StorePlan, leaves_policies_that_stay_in_their_order) {
  const Entries held = {{5, 'a'}, {3, 'a'}, {9, 'a'}, {1, 'a'}};
  const Entries wanted = {{1, 'a'}, {2, 'a'}, {3, 'b'}, {5, 'a'}};
  const auto plan = planFor(held, wanted);
  EXPECT_EQ(plan, (std::vector<StoreRequest>{{.kind = kDelete, .id = 9},
                                             {.kind = kAdd, .id = 2, .index = 1},
                                             {.kind = kDelete, .id = 3},
                                             {.kind = kAdd, .id = 3, .index = 2}}));
  EXPECT_EQ(afterPlan(held, wanted, plan, 400), (Entries{{5, 'a'}, {1, 'a'}, {2, 'a'}, {3, 'b'}}));
}

TEST(StorePlan, nothing_to_do) {
  const Entries held = {{1, 'a'}, {2, 'a'}};
  EXPECT_EQ(planFor(held, held), std::vector<StoreRequest>{});
  EXPECT_EQ(planFor(held, held, {.withOrder = true}), std::vector<StoreRequest>{});
  const Entries turned = {{2, 'a'}, {1, 'a'}};
  EXPECT_EQ(planFor(held, turned), std::vector<StoreRequest>{});
  EXPECT_EQ(planFor(held, turned, {.withOrder = true}),
            (std::vector<StoreRequest>{{.kind = kDelete, .id = 1}, {.kind = kAdd, .id = 1, .index = 1}}));
}

TEST(StorePlan, sets_the_version_last) {
  EXPECT_EQ(planFor({}, {}, {.setsVersion = true}), (std::vector<StoreRequest>{{.kind = kSetVersion}}));
  EXPECT_EQ(planFor({}, {{0, 'a'}}, {.withOrder = true, .setsVersion = true}),
            (std::vector<StoreRequest>{{.kind = kAdd, .id = 0, .index = 0}, {.kind = kSetVersion}}));
}

TEST(StorePlan, resets_where_that_takes_fewer_requests_only) {
  const Entries wanted = {{7, 'a'}};
  EXPECT_EQ(planFor({{1, 'a'}}, wanted),
            (std::vector<StoreRequest>{{.kind = kDelete, .id = 1}, {.kind = kAdd, .id = 7, .index = 0}}));
  EXPECT_EQ(planFor({{1, 'a'}, {2, 'a'}}, wanted),
            (std::vector<StoreRequest>{{.kind = kReset}, {.kind = kAdd, .id = 7, .index = 0}}));
  // With the policy itself among others, as many.
  EXPECT_EQ(planFor({{1, 'a'}, {2, 'a'}, {7, 'a'}}, wanted),
            (std::vector<StoreRequest>{{.kind = kDelete, .id = 1}, {.kind = kDelete, .id = 2}}));
}

TEST(StorePlan, of_an_id_that_is_there_twice_the_last_policy_can_stay) {
  const Entries held = {{0, 'a'}, {1, 'a'}, {0, 'b'}};
  EXPECT_EQ(planFor(held, {{0, 'b'}, {1, 'a'}}), (std::vector<StoreRequest>{{.kind = kDelete, .id = 0}}));
  EXPECT_EQ(planFor(held, {{0, 'a'}, {1, 'a'}, {2, 'a'}}),
            (std::vector<StoreRequest>{{.kind = kDelete, .id = 0},
                                       {.kind = kDelete, .id = 0},
                                       {.kind = kAdd, .id = 0, .index = 0},
                                       {.kind = kAdd, .id = 2, .index = 2}}));
}

TEST(StorePlan, makes_room_in_a_full_store_first) {
  Entries held;
  for (std::uint32_t id = 0; id < 398; ++id) held.push_back({id, 'a'});
  held.push_back({7, 'b'});
  held.push_back({7, 'c'});
  Entries wanted(held.begin() + 1, held.begin() + 398);
  wanted.insert(wanted.begin(), {{1000, 'a'}, {1001, 'a'}, {1002, 'a'}});
  for (const bool withOrder : {false, true}) {
    const auto plan = planFor(held, wanted, {.withOrder = withOrder});
    EXPECT_EQ(sorted(afterPlan(held, wanted, plan, 400)), sorted(wanted));
  }
}

}  // namespace
}  // namespace test
