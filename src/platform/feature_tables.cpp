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
    FieldPlace{.record = 4, .caller = 0, .size = sizeof(VqsAutoModeTable)},
};

constexpr std::array kInBagWords = {
    FieldPlace{.record = 4, .caller = 0, .size = 4},
    FieldPlace{.record = 8, .caller = 4, .size = 4},
    FieldPlace{.record = 76, .caller = 8, .size = 4},
};

constexpr std::array kInBagCurve = {
    FieldPlace{.record = 12, .caller = 20, .size = sizeof(VqsSliderPoint)},
    FieldPlace{.record = 40, .caller = 12, .size = 8},
    FieldPlace{.record = 48, .caller = 48, .size = sizeof(VqsSliderPoint)},
};

/// The first form of the table uses fields of the second form's record. A row of it is two entries there.
constexpr auto kStaticSliderV1Places = [] {
  std::array<FieldPlace, 30> places{};
  for (std::size_t row = 0; row < 5; ++row) {
    const std::size_t record = 80 * row;
    const std::size_t caller = sizeof(VqsStaticSliderRow) * row;
    places[6 * row + 0] = {.record = 32 + record, .caller = caller + 4, .size = 1};
    places[6 * row + 1] = {.record = 36 + record, .caller = caller + 8, .size = 4};
    places[6 * row + 2] = {.record = 40 + record, .caller = caller + 0, .size = 4};
    places[6 * row + 3] = {.record = 72 + record, .caller = caller + 16, .size = 1};
    places[6 * row + 4] = {.record = 76 + record, .caller = caller + 20, .size = 4};
    places[6 * row + 5] = {.record = 80 + record, .caller = caller + 12, .size = 4};
  }
  return places;
}();

constexpr auto kStaticSliderV2Places = [] {
  std::array<FieldPlace, 10> places{};
  for (std::size_t i = 0; i < places.size(); ++i)
    places[i] = {.record = 4 + 40 * i, .caller = 36 * i, .size = sizeof(VqsStaticSliderEntry)};
  return places;
}();

constexpr std::array kStaticSliderV4Places = {
    FieldPlace{.record = 4, .caller = 0, .size = sizeof(VqsStaticSliderTableV4)},
};

/// Each group is copied in two pieces, around the bytes that are no field.
constexpr auto kAsmLitePlaces = [] {
  std::array<FieldPlace, 16> places{};
  for (std::size_t group = 0; group < 4; ++group) {
    const std::size_t shift = sizeof(VqsAsmLiteGroup) * group;
    places[4 * group + 0] = {.record = 52 + shift, .caller = 24 + shift, .size = 29};
    places[4 * group + 1] = {.record = 84 + shift, .caller = 56 + shift, .size = 4};
    places[4 * group + 2] = {.record = 260 + shift, .caller = 208 + shift, .size = 29};
    places[4 * group + 3] = {.record = 292 + shift, .caller = 240 + shift, .size = 4};
  }
  return places;
}();

}  // namespace
}  // namespace vqs

vqsStatus VQS_CALL vqsItsAutoModeTableControl(QtfSession* session, int32_t operation, VqsAutoModeTable* table) {
  return vqs::controlTable<vqs::AutoModeRecord>(session, operation, vqs::kCodeItsAutoModeTable, vqs::kAutoModePlaces,
                                                table);
}

vqsStatus VQS_CALL vqsInBagPolicyTableControl(QtfSession* session, int32_t operation, VqsInBagTable* table) {
  const vqsStatus checked = vqs::checkTableCall(session, operation, table);
  if (checked != VQS_SUCCESS) return checked;
  vqs::InBagRecord record{};
  record.operation = vqs::foldTableOperation(operation);
  // A set sends only the three words. The rest of the caller's table is overwritten with zeros, from the record that
  // is not filled yet (compatibility.md: in-bag-set).
  const bool set = record.operation == VQS_TABLE_SET;
  if (set) vqs::copyToTable(vqs::kInBagCurve, table, &record);
  const vqsStatus result =
      vqs::exchangeTable(session->handle, vqs::kCodeInBagPolicyTable, record, vqs::kInBagWords, table);
  if (result == VQS_SUCCESS && !set) vqs::copyToTable(vqs::kInBagCurve, table, &record);
  return result;
}

vqsStatus VQS_CALL vqsStaticSliderTableControl_V1(QtfSession* session, int32_t operation,
                                                  VqsStaticSliderTableV1* table) {
  return vqs::controlTable<vqs::StaticSliderRecord>(session, operation, vqs::kCodeStaticSliderTable,
                                                    vqs::kStaticSliderV1Places, table);
}

vqsStatus VQS_CALL vqsStaticSliderTableControl_V2(QtfSession* session, int32_t operation,
                                                  VqsStaticSliderTableV2* table) {
  return vqs::controlTable<vqs::StaticSliderRecord>(session, operation, vqs::kCodeStaticSliderTable,
                                                    vqs::kStaticSliderV2Places, table);
}

vqsStatus VQS_CALL vqsStaticSliderTableControl_V4(QtfSession* session, int32_t operation,
                                                  VqsStaticSliderTableV4* table) {
  // For the other tables a negative operation is VQS_NOT_SUPPORTED (compatibility.md: negative-operation).
  if (operation < 0) return VQS_INVALID_PARAMETER;
  return vqs::controlTable<vqs::StaticSliderRecordV4>(session, operation, vqs::kCodeStaticSliderTableV4,
                                                      vqs::kStaticSliderV4Places, table);
}

vqsStatus VQS_CALL vqsAsmLiteTableControl(QtfSession* session, int32_t operation, VqsAsmLiteTable* table) {
  return vqs::controlTable<vqs::AsmLiteRecord>(session, operation, vqs::kCodeAsmLiteTable, vqs::kAsmLitePlaces, table);
}
