// SPDX-License-Identifier: Apache-2.0
#include "tests/memory/exports.h"
#include "tests/support/results.h"

namespace test {
namespace {

void openAnother(Client& client) { vqsInitialize(&client.opened); }
void closeAnother(Client& client) { vqsUninitialize(client.opened); }

constexpr Export kSessionExports[] = {
    // What becomes of the announcement is nobody's concern.
    {.name = "vqsInitialize",
     .failures = oneOf({kDone, kFailed, kNoMemory}),
     .call = [](Client& client) { return vqsInitialize(&client.opened); },
     .finish = closeAnother},
    {.name = "vqsExInitialize",
     .failures = oneOf({kDone, kFailed, kNoMemory}),
     .call = [](Client& client) { return vqsExInitialize(&client.opened); },
     .finish = closeAnother},
    {.name = "vqsUninitialize",
     .failures = kNothing,
     .call = [](Client& client) { return vqsUninitialize(client.opened); },
     .prepare = openAnother},
    {.name = "vqsExUninitialize",
     .failures = kNothing,
     .call = [](Client& client) { return vqsExUninitialize(client.opened); },
     .prepare = openAnother},
    {.name = "vqsGetVersion",
     .failures = kRequest,
     .call = [](Client& client) { return vqsGetVersion(client.words.data()); }},
    {.name = "vqsGetDriverVersion",
     .failures = kRequest,
     .call = [](Client& client) { return vqsGetDriverVersion(client.words.data()); }},
};

}  // namespace

std::span<const Export> sessionExports() { return kSessionExports; }

}  // namespace test
