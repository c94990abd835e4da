// SPDX-License-Identifier: Apache-2.0
#include "documents/compare/fields.h"

#include <algorithm>

#include "documents/compare/sequences.h"
#include "documents/policies/entries.h"
#include "documents/policies/numbers.h"
#include "documents/print/print.h"

namespace documents {
namespace {

using Kind = FieldDifference::Kind;

// What the three lists need: when two entries are equal, when one has become the other, and words.

struct Conditions {
  static constexpr const char* kField = "when";
  using Entry = VqsPolicyCondition;
  static bool areEqual(const Entry& a, const Entry& b) { return isSame(a, b); }
  static bool areClose(const Entry& a, const Entry& b) { return areAlike(a, b) && a.op == b.op; }
  static bool areAlike(const Entry& a, const Entry& b) { return a.conditionId == b.conditionId; }
  static std::string words(const Entry& entry) { return inWords(entry); }
};

struct Actions {
  static constexpr const char* kField = "do";
  using Entry = VqsPolicyAction;
  static bool areEqual(const Entry& a, const Entry& b) { return isSame(a, b); }
  static bool areClose(const Entry& a, const Entry& b) { return areAlike(a, b); }
  static bool areAlike(const Entry& a, const Entry& b) { return a.actionId == b.actionId; }
  static std::string words(const Entry& entry) { return inWords(entry); }
};

struct Texts {
  static constexpr const char* kField = "texts";
  using Entry = PolicyText;
  static bool areEqual(const Entry& a, const Entry& b) { return a == b; }
  static bool areClose(const Entry& a, const Entry& b) { return areAlike(a, b); }
  static bool areAlike(const Entry& a, const Entry& b) { return a.text == b.text; }
  static std::string words(const Entry& entry) {
    std::string text = "\"" + readable(entry.text) + "\"";
    if (entry.flag != 0) text += " (flag " + std::to_string(entry.flag) + ")";
    return text;
  }
};

/// The places of a list that have no partner yet.
std::vector<std::size_t> placesWithout(std::size_t size, const std::vector<Place>& pairs, std::size_t Place::* side) {
  std::vector<std::size_t> places;
  auto pair = pairs.begin();
  for (std::size_t i = 0; i < size; ++i) {
    if (pair != pairs.end() && (*pair).*side == i)
      ++pair;
    else
      places.push_back(i);
  }
  return places;
}

/// What became of the entries of a list.
template <class List>
class ListDifference {
 public:
  using Entries = std::vector<typename List::Entry>;

  ListDifference(const Entries& first, const Entries& second) : first_{first}, second_{second} {
    const auto pairs = longestCommon(first.size(), second.size(),
                                     [&](std::size_t a, std::size_t b) { return List::areEqual(first[a], second[b]); });
    leftInFirst_ = placesWithout(first.size(), pairs, &Place::first);
    leftInSecond_ = placesWithout(second.size(), pairs, &Place::second);
  }

  void appendTo(std::vector<FieldDifference>& differences) {
    // An entry that is there in another place has moved; of the others those that say something about the same have
    // changed, first those that are nearer to each other.
    takePairs(Kind::kMoved, List::areEqual);
    takePairs(Kind::kChanged, List::areClose);
    takePairs(Kind::kChanged, List::areAlike);
    for (const std::size_t place : leftInFirst_) add(Kind::kRemoved, {.first = place, .second = 0});
    std::ranges::sort(found_, {}, &FieldDifference::firstIndex);
    for (const std::size_t place : leftInSecond_) add(Kind::kAdded, {.first = 0, .second = place});
    for (auto& difference : found_) differences.push_back(std::move(difference));
  }

 private:
  template <class Relation>
  void takePairs(Kind kind, const Relation& areRelated) {
    std::erase_if(leftInFirst_, [&](std::size_t place) {
      const auto partner = std::ranges::find_if(
          leftInSecond_, [&](std::size_t other) { return areRelated(first_[place], second_[other]); });
      if (partner == leftInSecond_.end()) return false;
      add(kind, {.first = place, .second = *partner});
      leftInSecond_.erase(partner);
      return true;
    });
  }

  void add(Kind kind, Place place) {
    found_.push_back({.kind = kind,
                      .field = List::kField,
                      .firstIndex = place.first,
                      .secondIndex = place.second,
                      .first = kind == Kind::kAdded ? std::string{} : List::words(first_[place.first]),
                      .second = kind == Kind::kRemoved ? std::string{} : List::words(second_[place.second])});
  }

  const Entries& first_;
  const Entries& second_;
  std::vector<std::size_t> leftInFirst_;
  std::vector<std::size_t> leftInSecond_;
  std::vector<FieldDifference> found_;
};

void addChange(std::vector<FieldDifference>& differences, std::string_view field, std::string first,
               std::string second) {
  differences.push_back({.kind = Kind::kChanged,
                         .field = std::string{field},
                         .firstIndex = 0,
                         .secondIndex = 0,
                         .first = std::move(first),
                         .second = std::move(second)});
}

}  // namespace

std::vector<FieldDifference> differencesOf(const Policy& first, const Policy& second) {
  std::vector<FieldDifference> differences;
  if (first.name != second.name) addChange(differences, "name", readable(first.name), readable(second.name));
  if (first.description != second.description)
    addChange(differences, "description", readable(first.description), readable(second.description));
  ListDifference<Conditions>{first.conditions, second.conditions}.appendTo(differences);
  ListDifference<Actions>{first.actions, second.actions}.appendTo(differences);
  ListDifference<Texts>{first.texts, second.texts}.appendTo(differences);
  const auto numbers = numbersOf(first);
  const auto others = numbersOf(second);
  for (std::size_t i = 0; i < numbers.size(); ++i)
    if (numbers[i].value != others[i].value)
      addChange(differences, numbers[i].name, std::to_string(numbers[i].value), std::to_string(others[i].value));
  return differences;
}

}  // namespace documents
