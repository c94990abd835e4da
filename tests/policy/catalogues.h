// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <source_location>
#include <string>
#include <vector>

#include <vqs/catalogue.h>
#include "src/channel/session_record.h"
#include "src/policy/action_table.h"
#include "src/policy/condition_table.h"
#include "tests/support/listings.h"
#include "tests/support/scripted_driver.h"
#include "tests/support/session_test.h"

namespace test {

inline constexpr std::uint32_t kCatalogueCode = 0x80222044;

struct Flags {
  std::uint32_t enabled;
  std::uint32_t driverFlag;
  bool operator==(const Flags&) const = default;
};
using AllFlags = std::vector<Flags>;

template <class Table>
AllFlags flagsOf(const Table& table) {
  AllFlags flags;
  for (const auto& entry : table) flags.push_back({entry.Enabled, entry.DriverFlag});
  return flags;
}

template <class Table>
void setFlags(const Table& table, const AllFlags& flags) {
  for (std::size_t i = 0; i < flags.size(); ++i) {
    table[i].Enabled = flags[i].enabled;
    table[i].DriverFlag = flags[i].driverFlag;
  }
}

inline vqsStatus getConditions(QtfSession* session) {
  const QtfConditionInfo* table = nullptr;
  std::uint32_t count = 0;
  const vqsStatus result = vqsPbGetConditions(session, &table, &count);
  EXPECT_EQ(table, vqs::conditionTable().data());
  EXPECT_EQ(count, listedIn(kConditionListing));
  return result;
}

inline vqsStatus getActions(QtfSession* session) {
  const QtfActionInfo* table = nullptr;
  std::uint32_t count = 0;
  const vqsStatus result = vqsPbGetActions(session, &table, &count);
  EXPECT_EQ(table, vqs::actionTable().data());
  EXPECT_EQ(count, listedIn(kActionListing));
  return result;
}

/// What differs between the catalogues.
struct Catalogue {
  std::string title;
  std::uint32_t queryOperation;
  std::uint32_t readOperation;
  std::size_t entries;
  vqsStatus (*get)(QtfSession*);
  AllFlags (*flags)();
  void (*setFlags)(const AllFlags&);
};

inline const Catalogue kConditions{"Conditions",
                                   1,
                                   0,
                                   listedIn(kConditionListing),
                                   getConditions,
                                   [] { return flagsOf(vqs::conditionTable()); },
                                   [](const AllFlags& flags) { setFlags(vqs::conditionTable(), flags); }};
inline const Catalogue kActions{"Actions",
                                3,
                                2,
                                listedIn(kActionListing),
                                getActions,
                                [] { return flagsOf(vqs::actionTable()); },
                                [](const AllFlags& flags) { setFlags(vqs::actionTable(), flags); }};

/// Both tables' flags are put back when a test is over.
class CatalogueTest : public TidySessionTest {
 protected:
  ~CatalogueTest() override {
    kConditions.setFlags(conditionFlags);
    kActions.setFlags(actionFlags);
  }

  const AllFlags conditionFlags = kConditions.flags();
  const AllFlags actionFlags = kActions.flags();
};

class EveryCatalogue : public CatalogueTest, public ::testing::WithParamInterface<Catalogue> {
 protected:
  static const Catalogue& catalogue() { return GetParam(); }
  vqsStatus get() { return catalogue().get(session); }

  /// Entries whose flags are 0x112233xx and a full word, so that every written byte shows.
  AllFlags startFromMarkers() {
    const AllFlags markers(catalogue().entries, Flags{0x11223344, 0x55667788});
    catalogue().setFlags(markers);
    return markers;
  }
  Exchange& expectQuery(std::uint64_t size, std::source_location where = std::source_location::current()) {
    return driver.expectSame(kCatalogueCode, where)
        .request(Record(16).u32(0, catalogue().queryOperation))
        .replyAt(8, Record(8).u64(0, size));
  }
  Exchange& expectRead(std::size_t size, std::source_location where = std::source_location::current()) {
    return driver.expectSame(kCatalogueCode, where)
        .request(Record(16 + size).u32(0, catalogue().readOperation).u64(8, size));
  }
  static Bytes sizeField(std::uint64_t size) { return Record(8).u64(0, size); }
};

}  // namespace test
