// SPDX-License-Identifier: Apache-2.0
#include "tests/memory/exports.h"
#include "tests/support/results.h"

namespace test {
namespace {

/// A read of a table, whose function takes a pointer to it.
template <auto control, class Table>
vqsStatus readTable(Client& client) {
  Table table{};
  return control(client.session, VQS_TABLE_READ, &table);
}

constexpr Export kFeatureExports[] = {
    {.name = "vqsQueryFeatureStatus",
     .failures = kRequest,
     .call =
         [](Client& client) {
           VqsFeatureStatus status;
           return vqsQueryFeatureStatus(client.session, 5, &status);
         }},
    {.name = "vqsItsAutoModeTableControl",
     .failures = kRequest,
     .call = readTable<vqsItsAutoModeTableControl, VqsAutoModeTable>},
    {.name = "vqsInBagPolicyTableControl",
     .failures = kRequest,
     .call = readTable<vqsInBagPolicyTableControl, VqsInBagTable>},
    {.name = "vqsStaticSliderTableControl_V1",
     .failures = kRequest,
     .call = readTable<vqsStaticSliderTableControl_V1, VqsStaticSliderTableV1>},
    {.name = "vqsStaticSliderTableControl_V2",
     .failures = kRequest,
     .call = readTable<vqsStaticSliderTableControl_V2, VqsStaticSliderTableV2>},
    {.name = "vqsStaticSliderTableControl_V4",
     .failures = kRequest,
     .call = readTable<vqsStaticSliderTableControl_V4, VqsStaticSliderTableV4>},
    {.name = "vqsAsmLiteTableControl",
     .failures = kRequest,
     .call = readTable<vqsAsmLiteTableControl, VqsAsmLiteTable>},
    {.name = "vqsDynamicSliderEnableDisable",
     .failures = kRequest,
     .call = [](Client& client) { return vqsDynamicSliderEnableDisable(client.session, 1); }},
    {.name = "vqsCustomWorkloadControl",
     .failures = kNothing,
     .call = [](Client& client) { return vqsCustomWorkloadControl(client.session, 0, nullptr); },
     .success = kNotSupported},
    {.name = "vqsQueryCurrentItsAutoModeSettings",
     .failures = kNothing,
     .call = [](Client& client) { return vqsQueryCurrentItsAutoModeSettings(client.session, 0, nullptr); },
     .success = kNotSupported},
};

}  // namespace

std::span<const Export> featureExports() { return kFeatureExports; }

}  // namespace test
