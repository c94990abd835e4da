// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstring>

#include "format/telemetry/keys.h"
#include "src/channel/work_buffer.h"
#include "src/log/key_tables.h"
#include "src/log/log_kv.h"

namespace vqs {
namespace {

constexpr std::size_t kKeyIdSize = 4;
constexpr std::size_t kWordSize = 4;

template <std::size_t N>
constexpr std::array<bool, N> oneWord(const std::array<std::int32_t, N>& valueSizes) {
  std::array<bool, N> result{};
  for (std::size_t i = 0; i < N; ++i) result[i] = valueSizes[i] == kWordSize;
  return result;
}

constexpr auto kKVOneWord = oneWord(kKVValueSizes);
constexpr auto kExKVOneWord = oneWord(kExKVValueSizes);

const std::uint8_t* areaOf(const QtfLogKV& log) { return reinterpret_cast<const std::uint8_t*>(log.area); }

/// To be called once per export, which then goes by this value: the driver may change the log area meanwhile.
std::uint32_t currentKey(const QtfLogKVIter& iterator) {
  std::uint32_t key = 0;
  std::memcpy(&key, iterator.cursor, kKeyIdSize);
  return key;
}

/// The generations differ in the number of keys and in the sizes of their values, which are indexed by key id.
template <std::size_t N>
vqsStatus next(QtfLogKVIter* iterator, const std::array<std::int32_t, N>& valueSizes,
               const std::array<bool, N>& isOneWord) {
  if (iterator == nullptr) [[unlikely]]
    return VQS_INVALID_PARAMETER;
  const std::uint32_t key = currentKey(*iterator);
  if (key == 0 || key >= N) [[unlikely]]
    return VQS_REQUEST_FAILED;
  // Most values are one word. A processor that guesses so is at the next record before it knows this one's key.
  if (isOneWord[key]) [[likely]] {
    iterator->cursor += kKeyIdSize + kWordSize;
    return VQS_SUCCESS;
  }
  iterator->cursor += kKeyIdSize + static_cast<std::size_t>(valueSizes[key]);
  return VQS_SUCCESS;
}

vqsStatus isDone(const QtfLogKVIter* iterator, std::uint8_t* done, std::uint32_t lastKey) {
  if (iterator == nullptr || done == nullptr) [[unlikely]]
    return VQS_INVALID_PARAMETER;
  const std::uint32_t key = currentKey(*iterator);
  if (key > lastKey) [[unlikely]]
    return VQS_REQUEST_FAILED;
  *done = key == 0 ? 1 : 0;
  return VQS_SUCCESS;
}

vqsStatus data(const QtfLogKVIter* iterator, std::uint32_t* key, std::uint64_t* address, std::uint32_t lastKey) {
  if (iterator == nullptr || key == nullptr || address == nullptr) [[unlikely]]
    return VQS_INVALID_PARAMETER;
  const std::uint32_t current = currentKey(*iterator);
  if (current == 0 || current > lastKey) [[unlikely]]
    return VQS_REQUEST_FAILED;
  *key = current;
  *address = reinterpret_cast<std::uint64_t>(iterator->cursor + kKeyIdSize);
  return VQS_SUCCESS;
}

/// `counted` is what `*count` is set to once the records are copied.
template <std::size_t N>
vqsStatus copyKeys(std::span<const QtfLogKeyInfo, N> table, QtfLogKeyInfo* keys, std::uint32_t* count,
                   std::uint32_t counted) {
  if (*count == 0) {
    *count = N;
    return VQS_SUCCESS;
  }
  if (*count < N || keys == nullptr) return VQS_INVALID_PARAMETER;
  *count = counted;
  std::ranges::copy(table, keys);
  return VQS_SUCCESS;
}

}  // namespace
}  // namespace vqs

using namespace vqs;

vqsStatus VQS_CALL vqsCreateQTFLogKVIter(QtfLogKV* log, QtfLogKVIter** iterator) {
  if (log == nullptr || iterator == nullptr) return VQS_INVALID_PARAMETER;
  HeapRecord<QtfLogKVIter> made;
  if (!made) return VQS_OUT_OF_MEMORY;
  made->cursor = areaOf(*log);
  *iterator = made.handOver();
  return VQS_SUCCESS;
}

vqsStatus VQS_CALL vqsDestroyQTFLogKVIter(QtfLogKVIter* iterator) {
  if (iterator == nullptr) return VQS_INVALID_PARAMETER;
  RuntimeMemory::release(iterator);
  return VQS_SUCCESS;
}

vqsStatus VQS_CALL vqsResetQTFLogKVIter(QtfLogKV* log, QtfLogKVIter* iterator) {
  if (log == nullptr || iterator == nullptr) return VQS_INVALID_PARAMETER;
  iterator->cursor = areaOf(*log);
  return VQS_SUCCESS;
}

vqsStatus VQS_CALL vqsNextQTFLogKVIter(QtfLogKVIter* iterator) { return next(iterator, kKVValueSizes, kKVOneWord); }

vqsStatus VQS_CALL vqsExNextQTFLogExKVIter(QtfLogKVIter* iterator) {
  return next(iterator, kExKVValueSizes, kExKVOneWord);
}

vqsStatus VQS_CALL vqsDoneQTFLogKVIter(const QtfLogKVIter* iterator, uint8_t* done) {
  return isDone(iterator, done, VQS_LOG_KV_KEYS);
}

vqsStatus VQS_CALL vqsExDoneQTFLogExKVIter(const QtfLogKVIter* iterator, uint8_t* done) {
  return isDone(iterator, done, VQS_LOG_EX_KV_KEYS);
}

vqsStatus VQS_CALL vqsGetQTFLogKVIterData(const QtfLogKVIter* iterator, uint32_t* key, uint64_t* address) {
  return data(iterator, key, address, VQS_LOG_KV_KEYS);
}

vqsStatus VQS_CALL vqsExGetQTFLogExKVIterData(const QtfLogKVIter* iterator, uint32_t* key, uint64_t* address) {
  return data(iterator, key, address, VQS_LOG_EX_KV_KEYS);
}

vqsStatus VQS_CALL vqsGetQTFLogKVMetadata_V2(QtfLogKeyInfo* keys, uint32_t* count) {
  return copyKeys(kvKeys(), keys, count, VQS_LOG_KV_KEYS);
}

vqsStatus VQS_CALL vqsExGetQTFLogExKVMetadata_V2(QtfLogKeyInfo* keys, uint32_t* count) {
  // Not the number of records that are copied, but that of the plain key/value log's keys: callers know this number
  // (compatibility.md: ex-key-count).
  return copyKeys(exKVKeys(), keys, count, VQS_LOG_KV_KEYS);
}
