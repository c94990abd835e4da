// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/catalogue_support.h"

namespace simulator {
namespace {

enum SupportOperation : std::uint32_t {
  kReadConditions = 0,
  kSizeOfConditions = 1,
  kReadActions = 2,
  kSizeOfActions = 3
};

struct SupportHead {
  std::uint32_t operation;
  std::uint32_t reserved0;
  std::uint64_t size;
};
static_assert(sizeof(SupportHead) == 16);

struct Support {
  std::uint8_t isSupported;
  std::uint8_t isLive;
  std::uint8_t reserved0;
};
static_assert(sizeof(Support) == 3);

/// A kind of entries, and which of them there are not.
struct Catalogue {
  std::uint32_t entries;
  std::span<const std::uint32_t> missing;

  [[nodiscard]] std::size_t size() const { return entries * sizeof(Support); }
};

constexpr std::uint32_t kMissingConditions[] = {9, 33, 34, 68, 69, 71};
constexpr std::uint32_t kMissingActions[] = {13, 20, 21, 22, 23, 24, 25, 26, 92, 93};
constexpr Catalogue kConditions = {.entries = 73, .missing = kMissingConditions};
constexpr Catalogue kActions = {.entries = 168, .missing = kMissingActions};

Answer answerSize(const Request& request, const Catalogue& catalogue) {
  if (!request.hasLengths(sizeof(SupportHead), sizeof(SupportHead))) return failed(Outcome::kWrongLength);
  request.store(offsetof(SupportHead, size), std::uint64_t{catalogue.size()});
  return succeeded(sizeof(SupportHead));
}

Answer answerData(const Request& request, const Catalogue& catalogue) {
  const std::size_t length = sizeof(SupportHead) + catalogue.size();
  if (!request.hasLengths(length, length)) return failed(Outcome::kWrongLength);
  if (request.load<std::uint64_t>(offsetof(SupportHead, size)) != catalogue.size()) return failed(Outcome::kMalformed);
  for (std::uint32_t id = 0; id < catalogue.entries; ++id) {
    const std::uint8_t flag = std::ranges::find(catalogue.missing, id) == catalogue.missing.end() ? 1 : 0;
    request.store(sizeof(SupportHead) + id * sizeof(Support),
                  Support{.isSupported = flag, .isLive = flag, .reserved0 = 0});
  }
  return succeeded(length);
}

}  // namespace

Answer answerCatalogueSupport(const Context& /*context*/, const Request& request) {
  if (request.inputLength < sizeof(SupportHead)) return failed(Outcome::kWrongLength);
  switch (request.load<std::uint32_t>(0)) {
    case kReadConditions:
      return answerData(request, kConditions);
    case kSizeOfConditions:
      return answerSize(request, kConditions);
    case kReadActions:
      return answerData(request, kActions);
    case kSizeOfActions:
      return answerSize(request, kActions);
    default:
      return failed(Outcome::kUnknownRequest);
  }
}

}  // namespace simulator
