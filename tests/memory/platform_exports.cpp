// SPDX-License-Identifier: Apache-2.0
#include "tests/memory/exports.h"
#include "tests/support/results.h"

namespace test {
namespace {

/// The driver's sixth event: a firmware event is notified.
constexpr std::int32_t kEvent = 5;
/// DisplayBrightness, in percent.
constexpr std::uint32_t kKey = 58;

void changeOutputs(Client& client) { vqsSetAppInputs(client.session, ++client.number, 0); }
void registerEvent(Client& client) { vqsRegisterEvent(client.session, kEvent, client.event); }
void unregisterEvent(Client& client) { vqsUnRegisterEvent(client.session, kEvent, client.event); }

constexpr Results kCannotBeOpened = oneOf({kInvalid});

constexpr Export kInputsAndOutputs[] = {
    {.name = "vqsSetAppInput",
     .failures = kRequest,
     .call = [](Client& client) { return vqsSetAppInput(client.session, VQS_APP_INPUT_A, 1); }},
    {.name = "vqsExSetAppInput",
     .failures = kRequest,
     .call = [](Client& client) { return vqsExSetAppInput(client.session, VQS_APP_INPUT_B, 1); }},
    {.name = "vqsSetAppInputs",
     .failures = kRequest,
     .call = [](Client& client) { return vqsSetAppInputs(client.session, 1, 2); }},
    {.name = "vqsGetAppOutput",
     .failures = kRequest,
     .call = [](Client& client) { return vqsGetAppOutput(client.session, &client.words[0], &client.words[1]); }},
    {.name = "vqsExGetAppOutput",
     .failures = kRequest,
     .call = [](Client& client) { return vqsExGetAppOutput(client.session, &client.words[0], &client.words[1]); }},
    {.name = "vqsWaitAppOutput",
     .failures = kCannotBeOpened,
     .call = [](Client& client) { return vqsWaitAppOutput(client.session, 0); },
     .prepare = changeOutputs,
     .isRare = true},
    {.name = "vqsExWaitAppOutput",
     .failures = kCannotBeOpened,
     .call = [](Client& client) { return vqsExWaitAppOutput(client.session, 0); },
     .prepare = changeOutputs,
     .isRare = true},
    {.name = "vqsGetTaskbarIcon",
     .failures = kRequest,
     .call = [](Client& client) { return vqsGetTaskbarIcon(client.session, &client.words[0], &client.words[1]); }},
    {.name = "vqsWaitTaskbarIcon",
     .failures = kNothing,
     .call = [](Client& client) { return vqsWaitTaskbarIcon(client.session, client.event, 0); },
     .prepare = changeOutputs},
    {.name = "vqsGetDebugOutput",
     .failures = kRequest,
     .call = [](Client& client) { return vqsGetDebugOutput(client.session, &client.number); }},
    {.name = "vqsControlPolling",
     .failures = kRequest,
     .call = [](Client& client) { return vqsControlPolling(client.session, 1, 250); }},
    {.name = "vqsExControlPolling",
     .failures = kRequest,
     .call = [](Client& client) { return vqsExControlPolling(client.session, 0, 0); }},
    {.name = "vqsProgramSE1",
     .failures = kRequest,
     .call = [](Client& client) { return vqsProgramSE1(client.session, 1, 0); }},
    {.name = "vqsExProgramSE1",
     .failures = kRequest,
     .call = [](Client& client) { return vqsExProgramSE1(client.session, 0, 1); }},
};

constexpr Export kInputsOfThePlatform[] = {
    {.name = "vqsOverrideInput",
     .failures = kRequest,
     .call = [](Client& client) { return vqsOverrideInput(client.session, kKey, 1, 33); },
     .finish = [](Client& client) { vqsOverrideInput(client.session, kKey, 0, 0); }},
    {.name = "vqsGetInputOverrideKeyValue",
     .failures = kRequest,
     .call =
         [](Client& client) {
           VqsOverrideValue value;
           return vqsGetInputOverrideKeyValue(client.session, kKey, &value);
         }},
    {.name = "vqsGetInputOverrideKeyList",
     .failures = kRequest,
     .call =
         [](Client& client) {
           return vqsGetInputOverrideKeyList(client.session, client.words.data(), &client.number, 0);
         }},
    {.name = "vqsGetInputOverrideKeyMetadata",
     .failures = kRequest,
     .call =
         [](Client& client) {
           VqsOverrideMetadata metadata;
           return vqsGetInputOverrideKeyMetadata(client.session, kKey, &metadata);
         }},
    {.name = "vqsAtstSimulateSensorUpdate",
     .failures = kRequest,
     .call =
         [](Client& client) {
           const VqsSensorUpdate update{};
           return vqsAtstSimulateSensorUpdate(client.session, &update);
         }},
    {.name = "vqsGetSensorData",
     .failures = kRequest,
     .call =
         [](Client& client) {
           VqsSensorData data;
           return vqsGetSensorData(client.session, &data);
         }},
    {.name = "vqsGetOEMID",
     .failures = kRequest,
     .call = [](Client& client) { return vqsGetOEMID(client.session, client.oemId); }},
    {.name = "vqsTAControl",
     .failures = kRequest,
     .call = [](Client& client) { return vqsTAControl(client.session, 77, 1); }},
    {.name = "vqsSetChargeRate",
     .failures = kRequestOrMemory,
     .call = [](Client& /*client*/) { return vqsSetChargeRate(20000); }},
    {.name = "vqsGetBatteryTemperature",
     .failures = kRequestOrMemory,
     .call = [](Client& client) { return vqsGetBatteryTemperature(&client.number); }},
    {.name = "vqsGetBatteryLimits",
     .failures = kRequest,
     .call =
         [](Client& client) {
           auto& limits = client.limits;
           return vqsGetBatteryLimits(client.session, &limits[0], &limits[1], &limits[2], &limits[3]);
         }},
};

constexpr Export kEventsAndPolicies[] = {
    {.name = "vqsRegisterEvent",
     .failures = kRequest,
     .call = [](Client& client) { return vqsRegisterEvent(client.session, kEvent, client.event); },
     .finish = unregisterEvent},
    {.name = "vqsUnRegisterEvent",
     .failures = kRequest,
     .call = [](Client& client) { return vqsUnRegisterEvent(client.session, kEvent, client.event); },
     .prepare = registerEvent},
    {.name = "vqsAtstNotifyBiosEvent",
     .failures = kRequest,
     .call = [](Client& client) { return vqsAtstNotifyBiosEvent(client.session); }},
    {.name = "vqSetBiosAMTEvent",
     .failures = kRequest,
     .call = [](Client& client) { return vqSetBiosAMTEvent(client.session); }},
    {.name = "vqSetBiosCQLEvent",
     .failures = kRequest,
     .call = [](Client& client) { return vqSetBiosCQLEvent(client.session); }},
    {.name = "vqsAtstNotifyBiosEventV2",
     .failures = kRequest,
     .call = [](Client& client) { return vqsAtstNotifyBiosEventV2(client.session); }},
    {.name = "vqsExLoadDynamicPolicy",
     .failures = kRequest,
     .call =
         [](Client& client) {
           return vqsExLoadDynamicPolicy(client.session, client.sample.size(), client.sample.data(), &client.words[0],
                                         &client.words[1]);
         }},
    {.name = "vqsExClearDynamicPolicy",
     .failures = kRequest,
     .call = [](Client& client) { return vqsExClearDynamicPolicy(client.session); }},
    {.name = "vqsExGetPolicyBinaryVersion",
     .failures = kRequest,
     .call =
         [](Client& client) {
           return vqsExGetPolicyBinaryVersion(client.session, &client.words[0], &client.words[1]);
         }},
    {.name = "vqsExLoadStaticBinary",
     .failures = kRequest,
     .call = [](Client& client) { return vqsExLoadStaticBinary(client.session, &client.words[0], &client.words[1]); }},
    {.name = "vqsExLoadDiskBinary",
     .failures = kRequest,
     .call = [](Client& client) { return vqsExLoadDiskBinary(client.session, &client.words[0], &client.words[1]); }},
};

}  // namespace

std::span<const Export> inputAndOutputExports() { return kInputsAndOutputs; }
std::span<const Export> platformExports() { return kInputsOfThePlatform; }
std::span<const Export> eventExports() { return kEventsAndPolicies; }

}  // namespace test
