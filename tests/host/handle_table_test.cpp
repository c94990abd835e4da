// SPDX-License-Identifier: Apache-2.0
#include "host/handle_table.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace test {
namespace {

struct Object : host::Counted {
  explicit Object(int itsNumber) : number(itsNumber) { ++alive; }
  ~Object() { --alive; }

  static inline int alive = 0;
  int number;
};

/// As every table, it is there to the end; each test leaves it empty.
constinit host::HandleTable<Object> table;

HANDLE handle(std::uintptr_t number) { return reinterpret_cast<HANDLE>(number); }

void add(std::uintptr_t number) {
  EXPECT_TRUE(table.add(handle(number), host::Shared<Object>{new Object{static_cast<int>(number)}}));
}

int numberOf(const host::Shared<Object>& object) { return object ? object->number : -1; }

/// Windows gives numbers again that have become free, lower ones too.
TEST(HandleTable, finds_handles_in_whatever_order_they_came) {
  for (const std::uintptr_t number : {12U, 4U, 20U, 8U, 16U}) add(number);
  for (const std::uintptr_t number : {4U, 8U, 12U, 16U, 20U})
    EXPECT_EQ(numberOf(table.find(handle(number))), static_cast<int>(number));
  EXPECT_FALSE(table.find(handle(10)));
  EXPECT_FALSE(table.find(handle(0)));
  EXPECT_FALSE(table.find(handle(24)));
  for (const std::uintptr_t number : {4U, 8U, 12U, 16U, 20U}) table.forget(handle(number));
  EXPECT_EQ(Object::alive, 0);
}

TEST(HandleTable, forgets_one_and_keeps_the_others) {
  for (const std::uintptr_t number : {12U, 4U, 8U}) add(number);
  EXPECT_EQ(numberOf(table.forget(handle(8))), 8);
  EXPECT_FALSE(table.forget(handle(8)));
  EXPECT_EQ(numberOf(table.find(handle(4))), 4);
  EXPECT_EQ(numberOf(table.find(handle(12))), 12);
  EXPECT_EQ(Object::alive, 2);
  table.forget(handle(4));
  table.forget(handle(12));
  EXPECT_EQ(Object::alive, 0);
}

TEST(HandleTable, lends_an_object_that_outlives_its_handle) {
  add(4);
  {
    const auto held = table.find(handle(4));
    table.forget(handle(4));
    EXPECT_EQ(numberOf(held), 4);
    EXPECT_EQ(Object::alive, 1);
  }
  EXPECT_EQ(Object::alive, 0);
}

}  // namespace
}  // namespace test
