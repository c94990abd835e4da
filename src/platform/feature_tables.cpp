// SPDX-License-Identifier: Apache-2.0
#include <vqs/features.h>
#include "src/channel/control_codes.h"
#include "src/platform/table_control.h"

namespace vqs {
namespace {

#pragma pack(push, 4)

struct AutoModeRecord {
  std::uint32_t operation;
  VqsAutoModeTable table;
};
static_assert(sizeof(AutoModeRecord) == 196);
static_assert(offsetof(AutoModeRecord, table) + offsetof(VqsAutoModeTable, blocks) == 36);

struct InBagRecord {
  std::uint32_t operation;
  std::uint32_t word0;
  std::uint32_t word1;
  VqsSliderPoint point0;
  std::uint64_t value;
  VqsSliderPoint point1;
  std::uint32_t word2;
};
static_assert(sizeof(InBagRecord) == 80);
static_assert(offsetof(InBagRecord, point0) == 12);
static_assert(offsetof(InBagRecord, value) == 40);
static_assert(offsetof(InBagRecord, point1) == 48);
static_assert(offsetof(InBagRecord, word2) == 76);

struct StaticSliderRecord {
  std::uint32_t operation;
  struct Entry {
    VqsSliderPoint point;
    std::uint64_t value;
    std::uint32_t reserved0;
  } entries[10];
};
static_assert(sizeof(StaticSliderRecord) == 404);
static_assert(sizeof(StaticSliderRecord::Entry) == 40);
static_assert(offsetof(StaticSliderRecord, entries) == 4);

struct AsmLiteRecord {
  std::uint32_t operation;
  std::uint8_t reserved0[48];
  VqsAsmLiteGroup setA[4];
  std::uint8_t reserved1[48];
  VqsAsmLiteGroup setB[4];
};
static_assert(sizeof(AsmLiteRecord) == 420);
static_assert(offsetof(AsmLiteRecord, setA) == 52);
static_assert(offsetof(AsmLiteRecord, setB) == 260);

struct StaticSliderRecordV4 {
  std::uint32_t operation;
  VqsStaticSliderTableV4 table;
  std::uint8_t reserved0[2];
};
static_assert(sizeof(StaticSliderRecordV4) == 16);

#pragma pack(pop)

constexpr std::array kAutoModePlaces = {
    FieldPlace{.record = offsetof(AutoModeRecord, table), .caller = 0, .size = sizeof(VqsAutoModeTable)},
};

constexpr std::array kInBagWords = {
    FieldPlace{.record = offsetof(InBagRecord, word0), .caller = offsetof(VqsInBagTable, word0), .size = 4},
    FieldPlace{.record = offsetof(InBagRecord, word1), .caller = offsetof(VqsInBagTable, word1), .size = 4},
    FieldPlace{.record = offsetof(InBagRecord, word2), .caller = offsetof(VqsInBagTable, word2), .size = 4},
};

constexpr std::array kInBagCurve = {
    FieldPlace{.record = offsetof(InBagRecord, point0),
               .caller = offsetof(VqsInBagTable, points),
               .size = sizeof(VqsSliderPoint)},
    FieldPlace{.record = offsetof(InBagRecord, value), .caller = offsetof(VqsInBagTable, value), .size = 8},
    FieldPlace{.record = offsetof(InBagRecord, point1),
               .caller = offsetof(VqsInBagTable, points) + sizeof(VqsSliderPoint),
               .size = sizeof(VqsSliderPoint)},
};

constexpr std::size_t sliderEntry(std::size_t index) {
  return offsetof(StaticSliderRecord, entries) + sizeof(StaticSliderRecord::Entry) * index;
}

/// The first form of the table uses fields of the second form's record. A row of it is two entries there.
constexpr auto kStaticSliderV1Places = [] {
  constexpr std::size_t kByte = offsetof(StaticSliderRecord::Entry, value);
  constexpr std::size_t kFirstWord = kByte + 4;
  constexpr std::size_t kSecondWord = offsetof(StaticSliderRecord::Entry, reserved0);
  using Row = VqsStaticSliderRow;
  std::array<FieldPlace, 30> places{};
  for (std::size_t row = 0; row < 5; ++row) {
    const std::size_t first = sliderEntry(2 * row);
    const std::size_t second = sliderEntry(2 * row + 1);
    const std::size_t caller = offsetof(VqsStaticSliderTableV1, rows) + sizeof(Row) * row;
    places[6 * row + 0] = {.record = first + kByte, .caller = caller + offsetof(Row, byte0), .size = 1};
    places[6 * row + 1] = {.record = first + kFirstWord, .caller = caller + offsetof(Row, word1), .size = 4};
    places[6 * row + 2] = {.record = first + kSecondWord, .caller = caller + offsetof(Row, word0), .size = 4};
    places[6 * row + 3] = {.record = second + kByte, .caller = caller + offsetof(Row, byte1), .size = 1};
    places[6 * row + 4] = {.record = second + kFirstWord, .caller = caller + offsetof(Row, word3), .size = 4};
    places[6 * row + 5] = {.record = second + kSecondWord, .caller = caller + offsetof(Row, word2), .size = 4};
  }
  return places;
}();

constexpr auto kStaticSliderV2Places = [] {
  std::array<FieldPlace, 10> places{};
  for (std::size_t i = 0; i < places.size(); ++i)
    places[i] = {.record = sliderEntry(i),
                 .caller = offsetof(VqsStaticSliderTableV2, entries) + sizeof(VqsStaticSliderEntry) * i,
                 .size = sizeof(VqsStaticSliderEntry)};
  return places;
}();

constexpr std::array kStaticSliderV4Places = {
    FieldPlace{.record = offsetof(StaticSliderRecordV4, table), .caller = 0, .size = sizeof(VqsStaticSliderTableV4)},
};

/// Each group is copied in two pieces, around the bytes that are no field.
constexpr auto kAsmLitePlaces = [] {
  using Group = VqsAsmLiteGroup;
  constexpr std::size_t kFront = offsetof(Group, byte0) + sizeof(Group::byte0);
  constexpr std::size_t kWord = offsetof(Group, word7);
  std::array<FieldPlace, 16> places{};
  for (std::size_t group = 0; group < 4; ++group) {
    const std::size_t recordA = offsetof(AsmLiteRecord, setA) + sizeof(Group) * group;
    const std::size_t recordB = offsetof(AsmLiteRecord, setB) + sizeof(Group) * group;
    const std::size_t callerA = offsetof(VqsAsmLiteTable, setA) + sizeof(Group) * group;
    const std::size_t callerB = offsetof(VqsAsmLiteTable, setB) + sizeof(Group) * group;
    places[4 * group + 0] = {.record = recordA, .caller = callerA, .size = kFront};
    places[4 * group + 1] = {.record = recordA + kWord, .caller = callerA + kWord, .size = sizeof(Group::word7)};
    places[4 * group + 2] = {.record = recordB, .caller = callerB, .size = kFront};
    places[4 * group + 3] = {.record = recordB + kWord, .caller = callerB + kWord, .size = sizeof(Group::word7)};
  }
  return places;
}();

}  // namespace
}  // namespace vqs

using namespace vqs;

vqsStatus VQS_CALL vqsItsAutoModeTableControl(QtfSession* session, int32_t operation, VqsAutoModeTable* table) {
  return controlTable<AutoModeRecord>(session, operation, kCodeItsAutoModeTable, kAutoModePlaces, table);
}

vqsStatus VQS_CALL vqsInBagPolicyTableControl(QtfSession* session, int32_t operation, VqsInBagTable* table) {
  const vqsStatus checked = checkTableCall(session, operation, table);
  if (checked != VQS_SUCCESS) return checked;
  InBagRecord record{};
  record.operation = foldTableOperation(operation);
  // A set sends only the three words. The rest of the caller's table is overwritten with zeros, from the record that
  // is not filled yet (compatibility.md: in-bag-set).
  const bool set = record.operation == VQS_TABLE_SET;
  if (set) copyToTable(kInBagCurve, table, &record);
  const vqsStatus result = exchangeTable(session->handle, kCodeInBagPolicyTable, record, kInBagWords, table);
  if (result == VQS_SUCCESS && !set) copyToTable(kInBagCurve, table, &record);
  return result;
}

vqsStatus VQS_CALL vqsStaticSliderTableControl_V1(QtfSession* session, int32_t operation,
                                                  VqsStaticSliderTableV1* table) {
  return controlTable<StaticSliderRecord>(session, operation, kCodeStaticSliderTable, kStaticSliderV1Places, table);
}

vqsStatus VQS_CALL vqsStaticSliderTableControl_V2(QtfSession* session, int32_t operation,
                                                  VqsStaticSliderTableV2* table) {
  return controlTable<StaticSliderRecord>(session, operation, kCodeStaticSliderTable, kStaticSliderV2Places, table);
}

vqsStatus VQS_CALL vqsStaticSliderTableControl_V4(QtfSession* session, int32_t operation,
                                                  VqsStaticSliderTableV4* table) {
  // For the other tables a negative operation is VQS_NOT_SUPPORTED (compatibility.md: negative-operation).
  if (operation < 0) return VQS_INVALID_PARAMETER;
  return controlTable<StaticSliderRecordV4>(session, operation, kCodeStaticSliderTableV4, kStaticSliderV4Places, table);
}

vqsStatus VQS_CALL vqsAsmLiteTableControl(QtfSession* session, int32_t operation, VqsAsmLiteTable* table) {
  return controlTable<AsmLiteRecord>(session, operation, kCodeAsmLiteTable, kAsmLitePlaces, table);
}
