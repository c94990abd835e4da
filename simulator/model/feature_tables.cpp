// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/feature_tables.h"

#include "simulator/model/context.h"

namespace simulator {
namespace {

struct FeatureStatus {
  std::uint8_t isSupported;
  std::uint8_t isActive;
  std::uint8_t reserved0[2];
  std::uint32_t value;
};
static_assert(sizeof(FeatureStatus) == 8);

enum TableOperation : std::uint32_t {
  kTableRead = 0,
  kTableSet = 1,
  kTableReadBuiltIn = 2,
  kTableReadPrevious = 3,
  kTableReadInForce = 4
};

bool isFeature(std::uint32_t id) { return id <= kFeatureAsm || id == kFeatureBalanceProfile; }

/// Bytes of a table's record that carry no field, in runs that repeat; offsets are the record's.
struct Gap {
  std::size_t offset;
  std::size_t size;
  std::size_t stride = 0;
  std::size_t repeats = 1;
};

constexpr Gap kAsmLiteGaps[] = {{.offset = 4, .size = 48},
                                {.offset = 81, .size = 3, .stride = 40, .repeats = 4},
                                {.offset = 88, .size = 4, .stride = 40, .repeats = 4},
                                {.offset = 212, .size = 48},
                                {.offset = 289, .size = 3, .stride = 40, .repeats = 4},
                                {.offset = 296, .size = 4, .stride = 40, .repeats = 4}};
constexpr Gap kSliderV4Gaps[] = {{.offset = 14, .size = 2}};

constexpr std::size_t kBody = sizeof(std::uint32_t);

bool areGapsZero(std::span<const std::byte> body, std::span<const Gap> gaps) {
  return std::ranges::all_of(gaps, [&](const Gap& gap) {
    for (std::size_t i = 0; i < gap.repeats; ++i)
      if (!isZero(body.subspan(gap.offset - kBody + i * gap.stride, gap.size))) return false;
    return true;
  });
}

template <std::size_t kSize>
bool isSound(const TableSettings<kSize>& table, std::span<const Gap> gaps) {
  return areGapsZero(std::as_bytes(std::span{table.current}), gaps) &&
         areGapsZero(std::as_bytes(std::span{table.previous}), gaps);
}

template <std::size_t kSize>
Answer control(const Request& request, TableSettings<kSize>& table, std::span<const Gap> gaps = {}) {
  constexpr std::size_t kRecord = kBody + kSize;
  if (!request.hasLengths(kRecord, kRecord)) return failed(Outcome::kWrongLength);
  const auto body = request.buffer.subspan(kBody, kSize);
  switch (request.load<std::uint32_t>(0)) {
    case kTableSet:
      if (!areGapsZero(body, gaps)) return failed(Outcome::kMalformed);
      std::memcpy(table.previous, table.current, kSize);
      std::memcpy(table.current, body.data(), kSize);
      ++table.sets;
      return succeeded(kRecord);
    case kTableRead:
    case kTableReadInForce:
      std::memcpy(body.data(), table.current, kSize);
      return succeeded(kRecord);
    case kTableReadBuiltIn:
      std::ranges::fill(body, std::byte{});
      return succeeded(kRecord);
    case kTableReadPrevious:
      std::memcpy(body.data(), table.previous, kSize);
      return succeeded(kRecord);
    default:
      return failed(Outcome::kUnknownRequest);
  }
}

}  // namespace

std::uint32_t activityOfFeature(const Settings& settings, const PolicyComponent& policies, std::uint32_t feature) {
  switch (feature) {
    case kFeatureAutoMode:
      return settings.autoMode.sets;
    case kFeatureInBag:
      return settings.inBag.sets;
    case kFeatureSlider:
      return settings.slider.sets;
    case kFeatureAsmLite:
      return settings.asmLite.sets;
    case kFeatureSliderV4:
      return settings.sliderV4.sets;
    case kFeatureDynamicSlider:
      return settings.dynamicSlider;
    case kFeaturePolicyBuilder:
      return policies.store(kStorePb).count();
    case kFeatureAsm:
      return policies.store(kStoreAsm).count();
    case kFeatureBalanceProfile:
      return policies.store(kStoreBalanceProfile).count();
    default:
      return 0;
  }
}

Answer answerFeatureStatus(const Context& context, const Request& request) {
  if (!request.hasLengths(sizeof(std::uint32_t), sizeof(FeatureStatus))) return failed(Outcome::kWrongLength);
  const auto id = request.load<std::uint32_t>(0);
  if (!isFeature(id)) return failed(Outcome::kMalformed);
  const std::uint32_t activity = activityOfFeature(context.settings, context.policies, id);
  request.store(0, FeatureStatus{.isSupported = id != kFeatureAutoMode ? std::uint8_t{1} : std::uint8_t{0},
                                 .isActive = activity != 0 ? std::uint8_t{1} : std::uint8_t{0},
                                 .reserved0 = {},
                                 .value = activity});
  return succeeded(sizeof(FeatureStatus));
}

Answer controlAutoModeTable(const Context& context, const Request& request) {
  return control(request, context.settings.autoMode);
}

Answer controlInBagTable(const Context& context, const Request& request) {
  return control(request, context.settings.inBag);
}

// Its two forms have fields in different places; together they leave no gap.
Answer controlSliderTable(const Context& context, const Request& request) {
  return control(request, context.settings.slider);
}

Answer controlAsmLiteTable(const Context& context, const Request& request) {
  return control(request, context.settings.asmLite, kAsmLiteGaps);
}

Answer controlSliderV4Table(const Context& context, const Request& request) {
  return control(request, context.settings.sliderV4, kSliderV4Gaps);
}

bool areFeaturesSound(const Settings& settings) {
  return settings.dynamicSlider <= 1 && isSound(settings.asmLite, kAsmLiteGaps) &&
         isSound(settings.sliderV4, kSliderV4Gaps);
}

Answer setDynamicSlider(const Context& context, const Request& request) {
  if (!request.hasLengths(sizeof(std::uint32_t), 0)) return failed(Outcome::kWrongLength);
  const auto enable = request.load<std::uint32_t>(0);
  if (enable > 1) return failed(Outcome::kMalformed);
  context.settings.dynamicSlider = enable;
  return succeeded(0);
}

}  // namespace simulator
