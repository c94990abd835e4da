// SPDX-License-Identifier: Apache-2.0
#include "tests/memory/exports.h"
#include "tests/support/results.h"

namespace test {
namespace {

void startPlain(Client& client) { vqsStartQTFLog(client.session, &client.address); }
void stopPlain(Client& client) { vqsStopQTFLog(client.session); }
void startEx(Client& client) { vqsExStartQTFLog(client.session, &client.address, nullptr); }
void stopEx(Client& client) { vqsExStopQTFLog(client.session); }

/// A stop that was refused has left the log open.
void startKV(Client& client) {
  if (client.log == nullptr) vqsStartQTFLogKV(client.session, &client.log);
}
void startExKV(Client& client) {
  if (client.log == nullptr) vqsExStartQTFLogExKV(client.session, &client.log);
}
void forgetLog(Client& client) { client.log = nullptr; }
void stopKV(Client& client) {
  vqsStopQTFLogKV(client.session, client.log);
  forgetLog(client);
}
void stopExKV(Client& client) {
  vqsExStopQTFLogExKV(client.session);
  forgetLog(client);
}

constexpr Export kLogExports[] = {
    {.name = "vqsStartQTFLog",
     .failures = kRequest,
     .call = [](Client& client) { return vqsStartQTFLog(client.session, &client.address); },
     .finish = stopPlain},
    {.name = "vqsStopQTFLog",
     .failures = kRequest,
     .call = [](Client& client) { return vqsStopQTFLog(client.session); },
     .prepare = startPlain},
    {.name = "vqsGetQTFLogSupport",
     .failures = kRequest,
     .call = [](Client& client) { return vqsGetQTFLogSupport(client.session, client.words.data(), 16); }},
    {.name = "vqsGetQTFLogVersion",
     .failures = kRequest,
     .call = [](Client& client) { return vqsGetQTFLogVersion(client.session, &client.number); }},
    // The second request decides: that the start failed before it goes unnoticed.
    {.name = "vqsExStartQTFLog",
     .failures = oneOf({kDone, kFailed}),
     .call =
         [](Client& client) {
           client.address = 0;
           return vqsExStartQTFLog(client.session, &client.address, &client.number);
         },
     .finish = stopEx},
    {.name = "vqsExStopQTFLog",
     .failures = kRequest,
     .call = [](Client& client) { return vqsExStopQTFLog(client.session); },
     .prepare = startEx},
    {.name = "vqsExQTFLogSupport",
     .failures = kRequest,
     .call = [](Client& client) { return vqsExQTFLogSupport(client.session, client.words.data(), 16); }},
    {.name = "vqsStartQTFLogKV",
     .failures = kRequestOrMemory,
     .call = [](Client& client) { return vqsStartQTFLogKV(client.session, &client.log); },
     .finish = stopKV},
    {.name = "vqsStopQTFLogKV",
     .failures = kRequest,
     .call = [](Client& client) { return vqsStopQTFLogKV(client.session, client.log); },
     .prepare = startKV,
     .finish = forgetLog},
    {.name = "vqsExStartQTFLogExKV",
     .failures = kRequestOrMemory,
     .call = [](Client& client) { return vqsExStartQTFLogExKV(client.session, &client.log); },
     .finish = stopExKV},
    {.name = "vqsExStopQTFLogExKV",
     .failures = kRequest,
     .call = [](Client& client) { return vqsExStopQTFLogExKV(client.session); },
     .prepare = startExKV,
     .finish = forgetLog},
};

}  // namespace

std::span<const Export> logExports() { return kLogExports; }

}  // namespace test
