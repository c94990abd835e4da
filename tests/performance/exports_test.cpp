// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <map>

#include "tests/memory/exports.h"
#include "tests/performance/costs.h"

// What every export costs its caller in front of the simulated driver. A figure that changes is to be typed anew: a
// higher one with a reason, a lower one so that it stays.

namespace test {
namespace {

struct Row {
  const char* name;
  Costs costs;
};

constexpr Row kRows[] = {
    {.name = "vqsInitialize", .costs = {.requests = 1, .allocations = 2}},
    {.name = "vqsExInitialize", .costs = {.requests = 1, .allocations = 2}},
    {.name = "vqsUninitialize", .costs = {}},
    {.name = "vqsExUninitialize", .costs = {}},
    {.name = "vqsGetVersion", .costs = {.allocations = 1}},
    {.name = "vqsGetDriverVersion", .costs = {.allocations = 1}},
    {.name = "vqsPbAddPolicy", .costs = {.requests = 1, .allocations = 2}},
    {.name = "vqsAsmAddPolicy", .costs = {.requests = 1, .allocations = 2}},
    {.name = "vqsBalanceProfileAddPolicy", .costs = {.requests = 1, .allocations = 2}},
    {.name = "vqsPbDeletePolicy", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsAsmDeletePolicy", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsBalanceProfileDeletePolicy", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsPbReplacePolicy", .costs = {.requests = 2, .allocations = 3}},
    {.name = "vqsAsmReplacePolicy", .costs = {.requests = 2, .allocations = 3}},
    {.name = "vqsBalanceProfileReplacePolicy", .costs = {.requests = 2, .allocations = 3}},
    {.name = "vqsPbGetPolicies", .costs = {.requests = 2, .allocations = 3}},
    {.name = "vqsAsmGetPolicies", .costs = {.requests = 2, .allocations = 3}},
    {.name = "vqsBalanceProfileGetPolicies", .costs = {.requests = 2, .allocations = 3}},
    {.name = "vqsPbGetPoliciesStatus", .costs = {.requests = 2, .allocations = 2}},
    {.name = "vqsAsmGetPoliciesStatus", .costs = {.requests = 2, .allocations = 2}},
    {.name = "vqsBalanceProfileGetPoliciesStatus", .costs = {.requests = 2, .allocations = 2}},
    {.name = "vqsPbReset", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsAsmReset", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsBalanceProfileReset", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsPbAddPolicyV2", .costs = {.requests = 1, .allocations = 2}},
    {.name = "vqsPbReplacePolicyV2", .costs = {.requests = 2, .allocations = 3}},
    {.name = "vqsPbGetPoliciesV2", .costs = {.requests = 2, .allocations = 3}},
    {.name = "vqsPbGetPolicyByPrioV2", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsPbIDGetPolicy", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsPbCheckStructureSupport", .costs = {}},
    {.name = "vqsSetBinaryVersion", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsPbCreateBinary", .costs = {.allocations = 2, .opens = 1, .writes = 1}},
    {.name = "vqsPbCreateBinaryV2", .costs = {.allocations = 2, .opens = 1, .writes = 1}},
    {.name = "vqsPbCreateBinaryFromDriver", .costs = {.requests = 2, .allocations = 3, .opens = 1, .writes = 1}},
    {.name = "vqsAsmCreateBinaryFromDriver", .costs = {.requests = 3, .allocations = 4, .opens = 1, .writes = 5}},
    {.name = "vqsBalanceProfileCreateBinaryFromDriver",
     .costs = {.requests = 2, .allocations = 3, .opens = 1, .writes = 1}},
    {.name = "vqsPbReadBinary", .costs = {.allocations = 3, .opens = 2, .seeks = 4, .tells = 2, .reads = 2}},
    {.name = "vqsPbReadBinaryV2", .costs = {.allocations = 1, .opens = 1, .seeks = 2, .tells = 1, .reads = 1}},
    {.name = "vqsPbGetConditions", .costs = {.requests = 2, .allocations = 1}},
    {.name = "vqsPbGetActions", .costs = {.requests = 2, .allocations = 1}},
    {.name = "vqsStartQTFLog", .costs = {.requests = 1}},
    {.name = "vqsStopQTFLog", .costs = {.requests = 1}},
    {.name = "vqsGetQTFLogSupport", .costs = {.requests = 1}},
    {.name = "vqsGetQTFLogVersion", .costs = {.requests = 1}},
    {.name = "vqsExStartQTFLog", .costs = {.requests = 2}},
    {.name = "vqsExStopQTFLog", .costs = {.requests = 1}},
    {.name = "vqsExQTFLogSupport", .costs = {.requests = 1}},
    {.name = "vqsStartQTFLogKV", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsStopQTFLogKV", .costs = {.requests = 1}},
    {.name = "vqsExStartQTFLogExKV", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsExStopQTFLogExKV", .costs = {.requests = 1}},
    {.name = "vqsCreateQTFLogKVIter", .costs = {.allocations = 1}},
    {.name = "vqsExCreateQTFLogExKVIter", .costs = {.allocations = 1}},
    {.name = "vqsDestroyQTFLogKVIter", .costs = {}},
    {.name = "vqsExDestroyQTFLogExKVIter", .costs = {}},
    {.name = "vqsResetQTFLogKVIter", .costs = {}},
    {.name = "vqsExResetQTFLogExKVIter", .costs = {}},
    {.name = "vqsNextQTFLogKVIter", .costs = {}},
    {.name = "vqsExNextQTFLogExKVIter", .costs = {}},
    {.name = "vqsDoneQTFLogKVIter", .costs = {}},
    {.name = "vqsExDoneQTFLogExKVIter", .costs = {}},
    {.name = "vqsGetQTFLogKVIterData", .costs = {}},
    {.name = "vqsExGetQTFLogExKVIterData", .costs = {}},
    {.name = "vqsGetQTFLogKVMetadata_V2", .costs = {}},
    {.name = "vqsExGetQTFLogExKVMetadata_V2", .costs = {}},
    {.name = "vqsOVLMapQTFLogAddress", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsOVLUnmapQTFLogId", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsOVLStartQTFLog", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsOVLStopQTFLog", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsOVLGetQTFLogVersion", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsOVLGetInterfaceVersion", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsOVLForceDataUpdate", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsOVLGetDllVersion", .costs = {.allocations = 1}},
    {.name = "vqsSetAppInput", .costs = {.requests = 1}},
    {.name = "vqsExSetAppInput", .costs = {.requests = 1}},
    {.name = "vqsSetAppInputs", .costs = {.requests = 1}},
    {.name = "vqsGetAppOutput", .costs = {.requests = 1}},
    {.name = "vqsExGetAppOutput", .costs = {.requests = 1}},
    {.name = "vqsWaitAppOutput", .costs = {}},
    {.name = "vqsExWaitAppOutput", .costs = {}},
    {.name = "vqsGetTaskbarIcon", .costs = {.requests = 1}},
    {.name = "vqsWaitTaskbarIcon", .costs = {}},
    {.name = "vqsGetDebugOutput", .costs = {.requests = 1}},
    {.name = "vqsControlPolling", .costs = {.requests = 1}},
    {.name = "vqsExControlPolling", .costs = {.requests = 1}},
    {.name = "vqsProgramSE1", .costs = {.requests = 1}},
    {.name = "vqsExProgramSE1", .costs = {.requests = 1}},
    {.name = "vqsOverrideInput", .costs = {.requests = 1}},
    {.name = "vqsGetInputOverrideKeyValue", .costs = {.requests = 1}},
    {.name = "vqsGetInputOverrideKeyList", .costs = {.requests = 2}},
    {.name = "vqsGetInputOverrideKeyMetadata", .costs = {.requests = 1}},
    {.name = "vqsAtstSimulateSensorUpdate", .costs = {.requests = 1}},
    {.name = "vqsGetSensorData", .costs = {.requests = 1}},
    {.name = "vqsGetOEMID", .costs = {.requests = 1}},
    {.name = "vqsTAControl", .costs = {.requests = 1}},
    {.name = "vqsSetChargeRate", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsGetBatteryTemperature", .costs = {.requests = 1, .allocations = 1}},
    {.name = "vqsGetBatteryLimits", .costs = {.requests = 1}},
    {.name = "vqsRegisterEvent", .costs = {.requests = 1}},
    {.name = "vqsUnRegisterEvent", .costs = {.requests = 1}},
    {.name = "vqsAtstNotifyBiosEvent", .costs = {.requests = 1}},
    {.name = "vqSetBiosAMTEvent", .costs = {.requests = 1}},
    {.name = "vqSetBiosCQLEvent", .costs = {.requests = 1}},
    {.name = "vqsAtstNotifyBiosEventV2", .costs = {.requests = 1}},
    {.name = "vqsExLoadDynamicPolicy", .costs = {.requests = 1}},
    {.name = "vqsExClearDynamicPolicy", .costs = {.requests = 1}},
    {.name = "vqsExGetPolicyBinaryVersion", .costs = {.requests = 1}},
    {.name = "vqsExLoadStaticBinary", .costs = {.requests = 1}},
    {.name = "vqsExLoadDiskBinary", .costs = {.requests = 1}},
    {.name = "vqsQueryFeatureStatus", .costs = {.requests = 1}},
    {.name = "vqsItsAutoModeTableControl", .costs = {.requests = 1}},
    {.name = "vqsInBagPolicyTableControl", .costs = {.requests = 1}},
    {.name = "vqsStaticSliderTableControl_V1", .costs = {.requests = 1}},
    {.name = "vqsStaticSliderTableControl_V2", .costs = {.requests = 1}},
    {.name = "vqsStaticSliderTableControl_V4", .costs = {.requests = 1}},
    {.name = "vqsAsmLiteTableControl", .costs = {.requests = 1}},
    {.name = "vqsDynamicSliderEnableDisable", .costs = {.requests = 1}},
    {.name = "vqsCustomWorkloadControl", .costs = {}},
    {.name = "vqsQueryCurrentItsAutoModeSettings", .costs = {}},
};

/// By the second call: at the first, tables of the host and the driver may be too small.
Costs measured(const Export& row) {
  Client client;
  Costs costs;
  for (int i = 0; i < 2; ++i) {
    row.prepare(client);
    costs = costsOf([&] { EXPECT_EQ(row.call(client), row.success) << row.name; });
    row.finish(client);
  }
  return costs;
}

std::map<std::string, Costs> typedCosts() {
  std::map<std::string, Costs> costs;
  for (const Row& row : kRows) costs[row.name] = row.costs;
  return costs;
}

TEST(ExportCosts, are_what_is_typed) {
  std::map<std::string, Costs> typed = typedCosts();
  for (const auto family :
       {sessionExports, storeExports, versionedStoreExports, binaryExports, catalogueExports, logExports,
        iteratorExports, ovlExports, inputAndOutputExports, platformExports, eventExports, featureExports})
    for (const Export& row : family()) {
      ASSERT_TRUE(typed.contains(row.name)) << row.name << " has no row";
      EXPECT_EQ(measured(row), typed.extract(row.name).mapped()) << row.name;
    }
  for (const auto& [name, costs] : typed) ADD_FAILURE() << "there is no export " << name;
}

}  // namespace
}  // namespace test
