// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include <vqs/features.h>
#include "tests/support/results.h"
#include "tests/support/session_test.h"
#include "tests/support/windows_calls.h"

namespace test {
namespace {

constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
constexpr auto kMost = std::numeric_limits<std::int32_t>::max();

/// Bytes that travel together: where they stand in the record and with the caller.
struct Run {
  std::size_t record;
  std::size_t caller;
  std::size_t size;
};

struct Table {
  const char* name;
  std::uint32_t code;
  std::size_t recordSize;
  std::size_t callerSize;
  vqsStatus negativeOperation;
  vqsStatus (*control)(QtfSession*, std::int32_t, void*);
  std::vector<Run> runs;
};

template <auto kExport, class Caller>
vqsStatus call(QtfSession* session, std::int32_t operation, void* table) {
  return kExport(session, operation, static_cast<Caller*>(table));
}

Table autoMode() {
  return {"AutoMode",
          0x8022200C,
          196,
          192,
          5,
          call<vqsItsAutoModeTableControl, VqsAutoModeTable>,
          {{4, 0, 32}, {36, 32, 40}, {76, 72, 40}, {116, 112, 40}, {156, 152, 40}}};
}

Table staticSliderV1() {
  return {"StaticSliderV1",
          0x80222018,
          404,
          120,
          5,
          call<vqsStaticSliderTableControl_V1, VqsStaticSliderTableV1>,
          {{32, 4, 1},    {36, 8, 4},    {40, 0, 4},   {72, 16, 1},   {76, 20, 4},   {80, 12, 4},
           {112, 28, 1},  {116, 32, 4},  {120, 24, 4}, {152, 40, 1},  {156, 44, 4},  {160, 36, 4},
           {192, 52, 1},  {196, 56, 4},  {200, 48, 4}, {232, 64, 1},  {236, 68, 4},  {240, 60, 4},
           {272, 76, 1},  {276, 80, 4},  {280, 72, 4}, {312, 88, 1},  {316, 92, 4},  {320, 84, 4},
           {352, 100, 1}, {356, 104, 4}, {360, 96, 4}, {392, 112, 1}, {396, 116, 4}, {400, 108, 4}}};
}

Table staticSliderV2() {
  return {"StaticSliderV2",
          0x80222018,
          404,
          360,
          5,
          call<vqsStaticSliderTableControl_V2, VqsStaticSliderTableV2>,
          {{4, 0, 36},
           {44, 36, 36},
           {84, 72, 36},
           {124, 108, 36},
           {164, 144, 36},
           {204, 180, 36},
           {244, 216, 36},
           {284, 252, 36},
           {324, 288, 36},
           {364, 324, 36}}};
}

Table staticSliderV4() {
  return {"StaticSliderV4", 0x80222090, 16, 10, 2, call<vqsStaticSliderTableControl_V4, VqsStaticSliderTableV4>,
          {{4, 0, 10}}};
}

Table asmLite() {
  return {"AsmLite",
          0x8022201C,
          420,
          368,
          5,
          call<vqsAsmLiteTableControl, VqsAsmLiteTable>,
          {{52, 24, 29},
           {84, 56, 4},
           {92, 64, 29},
           {124, 96, 4},
           {132, 104, 29},
           {164, 136, 4},
           {172, 144, 29},
           {204, 176, 4},
           {260, 208, 29},
           {292, 240, 4},
           {300, 248, 29},
           {332, 280, 4},
           {340, 288, 29},
           {372, 320, 4},
           {380, 328, 29},
           {412, 360, 4}}};
}

Table inBag() {
  return {"InBag",
          0x80222014,
          80,
          76,
          5,
          call<vqsInBagPolicyTableControl, VqsInBagTable>,
          {{4, 0, 4}, {8, 4, 4}, {12, 20, 28}, {40, 12, 8}, {48, 48, 28}, {76, 8, 4}}};
}

/// No byte is zero or poison, and two patterns together tell any two places of a table apart.
Bytes pattern(std::size_t size, std::size_t period) {
  Bytes bytes(size);
  for (std::size_t i = 0; i < size; ++i) {
    bytes[i] = static_cast<std::uint8_t>(1 + i % period);
    if (bytes[i] == kPoison) bytes[i] = 0xFF;
  }
  return bytes;
}

constexpr std::size_t kPeriods[] = {251, 157};

Bytes operationOnly(const Table& table, std::uint32_t operation) { return Record{table.recordSize}.u32(0, operation); }

class FeatureTable : public FrugalSessionTest, public ::testing::WithParamInterface<Table> {
 protected:
  vqsStatus control(std::int32_t operation) { return GetParam().control(session, operation, caller.data()); }
  Exchange& expectRequest(Bytes bytes, std::source_location where = std::source_location::current()) {
    return driver.expectSame(GetParam().code, where).request(std::move(bytes));
  }
  Exchange& expectRead(std::uint32_t operation, std::source_location where = std::source_location::current()) {
    return expectRequest(operationOnly(GetParam(), operation), where);
  }
  /// The record that a caller's table makes.
  [[nodiscard]] Bytes setRecord(const Bytes& table) const {
    Record record{GetParam().recordSize};
    record.u32(0, 1);
    for (const auto& run : GetParam().runs) record.put(run.record, std::span{table}.subspan(run.caller, run.size));
    return record;
  }
  /// A poisoned table into which a record has been read.
  [[nodiscard]] Bytes readTable(const Bytes& answer) const {
    Record table{GetParam().callerSize, kPoison};
    for (const auto& run : GetParam().runs) table.put(run.caller, std::span{answer}.subspan(run.record, run.size));
    return table;
  }
  void expectCaller(const Bytes& bytes) { EXPECT_EQ(difference(caller, bytes), ""); }
  void poison() { caller.assign(GetParam().callerSize, kPoison); }
  void expectUntouched() { expectCaller(Bytes(GetParam().callerSize, 0xA5)); }

  Bytes caller = Bytes(GetParam().callerSize, kPoison);
};

TEST_P(FeatureTable, reads_with_operations_0_2_3_and_4_alike) {
  for (const std::uint32_t operation : {0U, 2U, 3U, 4U})
    for (const std::size_t period : kPeriods) {
      auto answer = pattern(GetParam().recordSize, period);
      std::copy_n(hex("EE EE EE EE").begin(), 4, answer.begin());
      poison();
      expectRead(operation).reply(answer);
      EXPECT_EQ(control(static_cast<std::int32_t>(operation)), kDone);
      expectCaller(readTable(answer));
    }
}

TEST_P(FeatureTable, reads_although_the_answer_names_another_operation) {
  auto answer = pattern(GetParam().recordSize, 251);
  std::copy_n(hex("01 00 00 00").begin(), 4, answer.begin());
  expectRead(0).reply(answer);
  EXPECT_EQ(control(0), kDone);
  expectCaller(readTable(answer));
}

TEST_P(FeatureTable, reads_nothing_of_the_callers_table) {
  caller = pattern(GetParam().callerSize, 251);
  expectRead(3);
  EXPECT_EQ(control(3), kDone);
  for (const auto& run : GetParam().runs)
    EXPECT_EQ(difference(std::span{caller}.subspan(run.caller, run.size), Bytes(run.size, 0)), "");
}

TEST_P(FeatureTable, leaves_the_callers_table_alone_when_a_read_fails) {
  for (const std::uint32_t operation : {0U, 2U, 3U, 4U}) {
    expectRead(operation).reply(pattern(GetParam().recordSize, 251)).fails();
    EXPECT_EQ(control(static_cast<std::int32_t>(operation)), kFailed);
    expectUntouched();
  }
}

TEST_P(FeatureTable, refuses_operations_from_5_up) {
  for (const std::int32_t operation : {5, 6, 256, 0x10001, kMost}) EXPECT_EQ(control(operation), kInvalid);
  expectUntouched();
}

TEST_P(FeatureTable, tells_a_negative_operation_by_its_own_result) {
  for (const std::int32_t operation : {-1, -5, -255, kLeast})
    EXPECT_EQ(control(operation), GetParam().negativeOperation);
  expectUntouched();
}

TEST_P(FeatureTable, needs_an_open_session_and_a_table_whatever_the_operation) {
  for (const std::int32_t operation : {-1, 0, 1, 4, 5}) {
    EXPECT_EQ(GetParam().control(nullptr, operation, caller.data()), kInvalid);
    EXPECT_EQ(GetParam().control(&closed, operation, caller.data()), kInvalid);
    EXPECT_EQ(GetParam().control(session, operation, nullptr), kInvalid);
  }
  expectUntouched();
}

INSTANTIATE_TEST_SUITE_P(Of, FeatureTable,
                         ::testing::Values(autoMode(), inBag(), staticSliderV1(), staticSliderV2(), staticSliderV4(),
                                           asmLite()),
                         caseName);

class SettableTable : public FeatureTable {};

TEST_P(SettableTable, sends_every_field_of_the_callers_table_and_zeros_between) {
  for (const std::size_t period : kPeriods) {
    caller = pattern(GetParam().callerSize, period);
    expectRequest(setRecord(caller));
    EXPECT_EQ(control(1), kDone);
  }
}

TEST_P(SettableTable, never_modifies_the_callers_table_in_a_set) {
  for (const char* operation : {"01 00 00 00", "00 00 00 00"}) {
    caller = pattern(GetParam().callerSize, 251);
    expectRequest(setRecord(caller)).reply(Bytes(GetParam().recordSize, 0xEE)).replyAt(0, hex(operation));
    EXPECT_EQ(control(1), kDone);
    expectCaller(pattern(GetParam().callerSize, 251));
  }
}

TEST_P(SettableTable, fails_a_set_with_its_request) {
  caller = pattern(GetParam().callerSize, 251);
  expectRequest(setRecord(caller)).reply(Bytes(GetParam().recordSize, 0xEE)).fails();
  EXPECT_EQ(control(1), kFailed);
  expectCaller(pattern(GetParam().callerSize, 251));
}

INSTANTIATE_TEST_SUITE_P(Of, SettableTable,
                         ::testing::Values(autoMode(), staticSliderV1(), staticSliderV2(), staticSliderV4(), asmLite()),
                         caseName);

class InBagTable : public FrugalSessionTest {
 protected:
  Exchange& expectSet(std::source_location where = std::source_location::current()) {
    return driver.expectSame(0x80222014, where)
        .request(Record{80}.u32(0, 1).u32(4, 0x11121314).u32(8, 0x21222324).u32(76, 0x31323334));
  }
  vqsStatus set() { return vqsInBagPolicyTableControl(session, 1, &table); }
  void expectWordsAlone() {
    const Bytes expected = Record{76}.u32(0, 0x11121314).u32(4, 0x21222324).u32(8, 0x31323334);
    EXPECT_EQ(difference(bytesOf(table), expected), "");
  }
  static VqsInBagTable filled() {
    auto table = poisoned<VqsInBagTable>();
    table.word0 = 0x11121314;
    table.word1 = 0x21222324;
    table.word2 = 0x31323334;
    return table;
  }

  VqsInBagTable table = filled();
};

TEST_F(InBagTable, sends_only_its_words_in_a_set_and_clears_the_callers_curve) {
  expectSet();
  EXPECT_EQ(set(), kDone);
  expectWordsAlone();
}

TEST_F(InBagTable, clears_the_callers_curve_even_when_the_set_fails) {
  expectSet().reply(Bytes(80, 0xEE)).fails();
  EXPECT_EQ(set(), kFailed);
  expectWordsAlone();
}

TEST_F(InBagTable, takes_nothing_from_the_answer_to_a_set) {
  expectSet().replyAt(4, Bytes(76, 0xEE));
  EXPECT_EQ(set(), kDone);
  expectWordsAlone();
}

TEST_F(InBagTable, takes_nothing_from_the_answer_to_a_set_that_names_another_operation) {
  expectSet().replyWord(0, 0).replyAt(4, Bytes(76, 0xEE));
  EXPECT_EQ(set(), kDone);
  expectWordsAlone();
}

TEST_F(InBagTable, clears_the_callers_curve_before_the_request_leaves) {
  WindowsCalls calls;
  Bytes atRequest;
  calls.before("DeviceIoControl", [&] { atRequest = bytesOf(table); });
  expectSet();
  EXPECT_EQ(set(), kDone);
  const Bytes expected = Record{76}.u32(0, 0x11121314).u32(4, 0x21222324).u32(8, 0x31323334);
  EXPECT_EQ(difference(atRequest, expected), "");
}

TEST_F(InBagTable, keeps_the_callers_curve_when_the_arguments_are_refused) {
  EXPECT_EQ(vqsInBagPolicyTableControl(nullptr, 1, &table), kInvalid);
  EXPECT_EQ(vqsInBagPolicyTableControl(&closed, 1, &table), kInvalid);
  EXPECT_EQ(difference(bytesOf(table), bytesOf(filled())), "");
}

}  // namespace
}  // namespace test
