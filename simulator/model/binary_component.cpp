// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/binary_component.h"

#include "simulator/model/binary_check.h"
#include "simulator/model/context.h"

namespace simulator {
namespace {

enum BinaryOperation : std::uint32_t {
  kLoadDynamic = 0,
  kClearDynamic = 1,
  kReadVersion = 2,
  kLoadStatic = 3,
  kLoadDisk = 4
};

enum class LoadResult : std::uint32_t { kLoaded = 0, kInvalid = 2, kNothingToLoad = 3 };

struct BinaryRecord {
  std::uint32_t operation;
  std::uint32_t reserved0;
  std::uint64_t size;
  std::uint64_t address;
};
static_assert(sizeof(BinaryRecord) == 24);

constexpr BinaryVersion kStaticVersion = {.word1 = 1, .word2 = 0};

Answer answerWords(const Request& request, std::uint32_t first, std::uint32_t second) {
  request.store(offsetof(BinaryRecord, size), first);
  request.store(offsetof(BinaryRecord, size) + sizeof(first), second);
  request.store(offsetof(BinaryRecord, address), std::uint64_t{0});
  return succeeded(sizeof(BinaryRecord));
}

Answer answerLoad(const Request& request, LoadResult result, std::uint32_t policies) {
  return answerWords(request, static_cast<std::uint32_t>(result), policies);
}

Answer loadDisk(const Request& request, BinarySettings& binary, const PolicyComponent& policies) {
  const std::uint32_t count = policies.store(kStoreAsm).count();
  if (count == 0) return answerLoad(request, LoadResult::kNothingToLoad, 0);
  const BinaryVersion version = policies.asmVersion();
  binary = {.source = kBinaryDisk, .version1 = version.word1, .version2 = version.word2, .policies = count};
  return answerLoad(request, LoadResult::kLoaded, count);
}

}  // namespace

BinaryVersion binaryInForce(const BinarySettings& binary) {
  return binary.source == kBinaryStatic ? kStaticVersion : BinaryVersion{binary.version1, binary.version2};
}

bool isSound(const BinarySettings& binary) {
  if (binary.source == kBinaryStatic) return binary.version1 == 0 && binary.version2 == 0 && binary.policies == 0;
  return binary.source <= kBinaryDisk && binary.version1 <= kHighestVersionWord &&
         binary.version2 <= kHighestVersionWord;
}

Answer BinaryComponent::control(const Context& context, const Request& request) {
  if (!request.hasLengths(sizeof(BinaryRecord), sizeof(BinaryRecord))) return failed(Outcome::kWrongLength);
  BinarySettings& binary = context.settings.binary;
  const BinaryVersion version = binaryInForce(binary);
  switch (request.load<std::uint32_t>(0)) {
    case kLoadDynamic:
      return loadDynamic(context.surroundings, request, binary);
    case kClearDynamic:
      binary = {};
      return answerWords(request, 0, 0);
    case kReadVersion:
      return answerWords(request, version.word1, version.word2);
    case kLoadStatic:
      binary = {};
      return answerLoad(request, LoadResult::kLoaded, 0);
    case kLoadDisk:
      return loadDisk(request, binary, context.policies);
    default:
      return failed(Outcome::kUnknownRequest);
  }
}

Answer BinaryComponent::loadDynamic(Surroundings& surroundings, const Request& request, BinarySettings& binary) {
  const auto record = request.load<BinaryRecord>(0);
  if (record.size == 0 || record.size > kLargest || record.address == 0) return failed(Outcome::kMalformed);
  const auto content = std::span{content_}.first(record.size);
  if (!surroundings.readCaller(record.address, content)) return failed(Outcome::kRefused);
  BinarySummary summary{};
  if (!checkBinary(content, summary)) return answerLoad(request, LoadResult::kInvalid, 0);
  binary = {.source = kBinaryDynamic,
            .version1 = summary.version1,
            .version2 = summary.version2,
            .policies = summary.policies};
  return answerLoad(request, LoadResult::kLoaded, summary.policies);
}

}  // namespace simulator
