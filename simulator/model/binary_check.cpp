// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/binary_check.h"

#include <cstring>

namespace simulator {
namespace {

/// Reads a file's fields one after the other. Once a field lies outside of the file or breaks a limit, everything that
/// is read afterwards fails too.
class Cursor {
 public:
  explicit Cursor(std::span<const std::byte> rest) : rest_(rest) {}

  [[nodiscard]] bool isGood() const { return isGood_; }

  void skip(std::size_t size) {
    if (size > rest_.size()) return fail();
    rest_ = rest_.subspan(size);
  }

  template <class T>
  T take() {
    T value{};
    if (sizeof(T) > rest_.size()) {
      fail();
      return value;
    }
    std::memcpy(&value, rest_.data(), sizeof(T));
    skip(sizeof(T));
    return value;
  }

  /// A count or size; 0 when it is outside of its limits.
  std::uint32_t takeWithin(std::uint32_t lowest, std::uint32_t highest) {
    const auto value = take<std::uint32_t>();
    if (isGood_ && lowest <= value && value <= highest) return value;
    fail();
    return 0;
  }

 private:
  void fail() {
    isGood_ = false;
    rest_ = {};
  }

  std::span<const std::byte> rest_;
  bool isGood_ = true;
};

/// Limits of one file's entries, sizes as they are stored.
struct Limits {
  std::uint32_t longestName;
  std::uint32_t longestDescription;
  std::uint32_t mostConditions;
  std::uint32_t mostTexts;
  std::uint32_t shortestText;
  std::uint32_t longestText;
  std::uint32_t mostActions;
  std::size_t actionSize;
  bool hasFlagOfEmptyText;
};

constexpr std::uint16_t kFormatVersion = 1;
constexpr std::uint32_t kMagic = 0x46545124;
constexpr std::uint32_t kMostPolicies = 400;
constexpr std::size_t kConditionSize = 16;
constexpr std::size_t kTextFlagSize = 1;
/// flag0, id, param0, flag1, flag2, param1, param2
constexpr std::size_t kScalarsSize = 1 + 4 + 4 + 1 + 1 + 4 + 4;

constexpr Limits kRevision5 = {.longestName = 128,
                               .longestDescription = 32,
                               .mostConditions = 15,
                               .mostTexts = 5,
                               .shortestText = 1,
                               .longestText = 512,
                               .mostActions = 32,
                               .actionSize = 23,
                               .hasFlagOfEmptyText = false};
constexpr Limits kOlder = {.longestName = 63,
                           .longestDescription = 32,
                           .mostConditions = 15,
                           .mostTexts = 5,
                           .shortestText = 2,
                           .longestText = 256,
                           .mostActions = 32,
                           .actionSize = 0,
                           .hasFlagOfEmptyText = false};

void checkText(Cursor& cursor, const Limits& limits) {
  const std::uint32_t size = cursor.takeWithin(0, limits.longestText);
  if (size == 0) return cursor.skip(limits.hasFlagOfEmptyText ? kTextFlagSize : 0);
  if (size < limits.shortestText) return cursor.skip(SIZE_MAX);
  cursor.skip(size + kTextFlagSize);
}

void checkPolicy(Cursor& cursor, const Limits& limits) {
  cursor.skip(cursor.takeWithin(1, limits.longestName));
  cursor.skip(cursor.takeWithin(1, limits.longestDescription));
  cursor.skip(kScalarsSize);
  const std::uint32_t conditions = cursor.takeWithin(1, limits.mostConditions);
  const std::uint32_t texts = cursor.takeWithin(0, limits.mostTexts);
  cursor.skip(conditions * kConditionSize);
  for (std::uint32_t i = 0; i < texts; ++i) checkText(cursor, limits);
  cursor.skip(cursor.takeWithin(0, limits.mostActions) * limits.actionSize);
}

std::uint32_t lower(std::uint32_t ownLimit, std::uint32_t limit) { return ownLimit < limit ? ownLimit : limit; }

/// The older header has no magic, but limits of its own.
Limits takeLimits(Cursor& cursor, std::uint16_t revision) {
  constexpr std::size_t kReserved = 24;
  Limits limits = kOlder;
  cursor.skip(kReserved);
  limits.longestName = lower(cursor.take<std::uint32_t>(), limits.longestName);
  limits.longestDescription = lower(cursor.take<std::uint32_t>(), limits.longestDescription);
  limits.mostConditions = lower(cursor.take<std::uint32_t>(), limits.mostConditions);
  limits.mostTexts = lower(cursor.take<std::uint32_t>(), limits.mostTexts);
  limits.longestText = lower(cursor.take<std::uint32_t>(), limits.longestText);
  cursor.skip(sizeof(std::uint32_t));
  limits.mostActions = lower(cursor.take<std::uint32_t>(), limits.mostActions);
  limits.actionSize = revision == 3 ? 8 : 23;
  limits.hasFlagOfEmptyText = revision == 4;
  return limits;
}

}  // namespace

bool checkBinary(std::span<const std::byte> file, BinarySummary& summary) {
  Cursor cursor{file};
  const auto version = cursor.take<std::uint16_t>();
  const auto revision = cursor.take<std::uint16_t>();
  if (version != kFormatVersion || revision < 3 || revision > 5) return false;
  summary.version1 = cursor.take<std::uint16_t>();
  summary.version2 = cursor.take<std::uint16_t>();
  if (revision == 5 && cursor.take<std::uint32_t>() != kMagic) return false;
  summary.policies = cursor.takeWithin(1, revision == 5 ? kMostPolicies : UINT32_MAX);
  const Limits limits = revision == 5 ? kRevision5 : takeLimits(cursor, revision);
  for (std::uint32_t i = 0; i < summary.policies && cursor.isGood(); ++i) checkPolicy(cursor, limits);
  return cursor.isGood();
}

}  // namespace simulator
