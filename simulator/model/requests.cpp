// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/requests.h"

#include "simulator/model/app_io.h"
#include "simulator/model/battery.h"
#include "simulator/model/catalogue_support.h"
#include "simulator/model/context.h"
#include "simulator/model/controls.h"
#include "simulator/model/feature_tables.h"
#include "simulator/model/override_value.h"
#include "simulator/model/overrides.h"
#include "simulator/model/sensors.h"

namespace simulator {
namespace {

using enum Changes;

// What a part of the driver with a state of its own carries out.

template <StoreIndex kStore>
Answer readPolicies(const Context& context, const Request& request) {
  return context.policies.read(kStore, request);
}

template <StoreIndex kStore>
Answer modifyPolicies(const Context& context, const Request& request) {
  return context.policies.modify(kStore, request);
}

Answer lookUpPolicy(const Context& context, const Request& request) { return context.policies.lookup(request); }
Answer controlBinary(const Context& context, const Request& request) {
  return context.binaries.control(context, request);
}
Answer controlLog(const Context& context, const Request& request) { return context.logs.control(context, request); }
Answer controlEvents(const Context& context, const Request& request) {
  return context.events.control(context, request);
}

// In the order of docs/simulator.md, which says what each is for.
// clang-format off
constexpr RequestRow kRows[] = {
    // Sessions, inputs and outputs
    {.code = 0x80222068, .handler = controlAppIo, .changes = kSettings},

    // Policy stores
    {.code = 0x80222064, .handler = readPolicies<kStorePb>},
    {.code = 0x80222050, .handler = readPolicies<kStoreAsm>},
    {.code = 0x802220A8, .handler = readPolicies<kStoreBalanceProfile>},
    {.code = 0x80222034, .handler = modifyPolicies<kStorePb>, .changes = kPolicies},
    {.code = 0x80222054, .handler = modifyPolicies<kStoreAsm>, .changes = kPolicies},
    {.code = 0x802220AC, .handler = modifyPolicies<kStoreBalanceProfile>, .changes = kPolicies},
    {.code = 0x80222040, .handler = lookUpPolicy},

    // Policy binaries, catalogue
    {.code = 0x80222070, .handler = controlBinary, .changes = kSettings},
    {.code = 0x80222044, .handler = answerCatalogueSupport},

    // Logs
    {.code = 0x80222058, .handler = controlLog},
    {.code = 0x8022205C, .handler = answerLogSupport},

    // Small controls
    {.code = 0x8022207C, .handler = controlPolling},
    {.code = 0x8022208C, .handler = answerTaskbarIcon},
    {.code = 0x80222088, .handler = answerDebugOutput},
    {.code = 0x80222094, .handler = programSe1, .changes = kSettings},
    {.code = 0x8022206C, .handler = controlTa, .changes = kSettings},
    {.code = 0x8022204C, .handler = answerOemId},

    // Features and their tables
    {.code = 0x80222000, .handler = answerFeatureStatus},
    {.code = 0x8022200C, .handler = controlAutoModeTable, .changes = kSettings},
    {.code = 0x80222014, .handler = controlInBagTable, .changes = kSettings},
    {.code = 0x80222018, .handler = controlSliderTable, .changes = kSettings},
    {.code = 0x8022201C, .handler = controlAsmLiteTable, .changes = kSettings},
    {.code = 0x80222090, .handler = controlSliderV4Table, .changes = kSettings},
    {.code = 0x80222020, .handler = setDynamicSlider, .changes = kSettings},

    // Overrides
    {.code = 0x80222060, .handler = setOverride, .changes = kSettings, .event = kEventOverride},
    {.code = 0x80222098, .handler = answerOverrideValue},
    {.code = 0x8022209C, .handler = answerOverrideListSize},
    {.code = 0x802220A0, .handler = answerOverrideList},
    {.code = 0x802220A4, .handler = answerOverrideMetadata},

    // Sensors, battery
    {.code = 0x80222084, .handler = answerSensorData},
    {.code = 0x80222080, .handler = updateSensor, .changes = kSettings, .event = kEventSensor},
    {.code = 0x80222010, .handler = controlBattery, .changes = kSettings},

    // Events
    {.code = 0x80222024, .handler = controlEvents},
    {.code = 0x80222028, .handler = notifyFirmwareEvent, .changes = kSettings, .event = kEventFirmware},
    {.code = 0x8022202C, .handler = notifyFirmwareEventV2, .changes = kSettings, .event = kEventFirmware},
};
// clang-format on
static_assert(std::size(kRows) == 36);

constexpr bool hasOwnCode(const RequestRow& row) { return std::ranges::count(kRows, row.code, &RequestRow::code) == 1; }
static_assert(std::ranges::all_of(kRows, hasOwnCode), "two rows have one code");

Answer refuseUnknown(const Context& /*context*/, const Request& /*request*/) {
  return failed(Outcome::kUnknownRequest);
}

constexpr RequestRow kUnknown = {.code = 0, .handler = refuseUnknown};

}  // namespace

std::span<const RequestRow> requests() { return kRows; }

const RequestRow& rowOf(std::uint32_t code) {
  const auto row = std::ranges::find(kRows, code, &RequestRow::code);
  return row == std::end(kRows) ? kUnknown : *row;
}

}  // namespace simulator
