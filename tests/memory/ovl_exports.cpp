// SPDX-License-Identifier: Apache-2.0
#include "tests/memory/exports.h"

namespace test {
namespace {

void map(Client& client) { vqsOVLMapQTFLogAddress(&client.address, &client.logId); }
void unmap(Client& client) { vqsOVLUnmapQTFLogId(client.logId); }

constexpr Export kOvlExports[] = {
    {.name = "vqsOVLMapQTFLogAddress",
     .failures = kRequestOrMemory,
     .call = [](Client& client) { return vqsOVLMapQTFLogAddress(&client.address, &client.logId); },
     .finish = unmap},
    {.name = "vqsOVLUnmapQTFLogId",
     .failures = kRequestOrMemory,
     .call = [](Client& client) { return vqsOVLUnmapQTFLogId(client.logId); },
     .prepare = map},
    {.name = "vqsOVLStartQTFLog",
     .failures = kRequestOrMemory,
     .call = [](Client& client) { return vqsOVLStartQTFLog(&client, &client); }},
    {.name = "vqsOVLStopQTFLog",
     .failures = kRequestOrMemory,
     .call = [](Client& /*client*/) { return vqsOVLStopQTFLog(); }},
    {.name = "vqsOVLGetQTFLogVersion",
     .failures = kRequestOrMemory,
     .call = [](Client& client) { return vqsOVLGetQTFLogVersion(&client.number); }},
    {.name = "vqsOVLGetInterfaceVersion",
     .failures = kRequestOrMemory,
     .call = [](Client& client) { return vqsOVLGetInterfaceVersion(&client.number); }},
    {.name = "vqsOVLForceDataUpdate",
     .failures = kRequestOrMemory,
     .call = [](Client& /*client*/) { return vqsOVLForceDataUpdate(); }},
    {.name = "vqsOVLGetDllVersion",
     .failures = kRequest,
     .call = [](Client& client) { return vqsOVLGetDllVersion(&client.number); }},
};

}  // namespace

std::span<const Export> ovlExports() { return kOvlExports; }

}  // namespace test
