// SPDX-License-Identifier: Apache-2.0
#include "src/log/key_tables.h"

#include "format/telemetry/keys.h"

namespace vqs {
namespace {

template <std::size_t N>
consteval std::array<QtfLogKeyInfo, N> records(const std::array<KeyRow, N>& rows) {
  std::array<QtfLogKeyInfo, N> made{};
  std::ranges::transform(rows, made.begin(), [](const KeyRow& row) {
    return QtfLogKeyInfo{
        .KeyId = row.id, .ElementType = row.type, .ElementCount = row.count, .Param = row.param, .Name = row.name};
  });
  return made;
}

constexpr auto kKVRecords = records(kKVKeys);
constexpr auto kExKVRecords = records(kExKVKeys);

}  // namespace

std::span<const QtfLogKeyInfo, VQS_LOG_KV_KEYS> kvKeys() { return kKVRecords; }
std::span<const QtfLogKeyInfo, VQS_LOG_EX_KV_KEYS> exKVKeys() { return kExKVRecords; }

}  // namespace vqs
