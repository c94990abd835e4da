// SPDX-License-Identifier: Apache-2.0
#include "tests/memory/exports.h"

namespace test {
namespace {

constexpr Export kBinaryExports[] = {
    {.name = "vqsPbCreateBinary",
     .failures = kRequestOrMemory,
     .call =
         [](Client& client) {
           return vqsPbCreateBinary(client.session, &client.policy, 1, 3, 41, client.written().c_str());
         }},
    {.name = "vqsPbCreateBinaryV2",
     .failures = kRequestOrMemory,
     .call =
         [](Client& client) {
           return vqsPbCreateBinaryV2(client.session, &client.listHead(), 3, 41, client.written().c_str());
         }},
    {.name = "vqsPbCreateBinaryFromDriver",
     .failures = kRequest,
     .call =
         [](Client& client) { return vqsPbCreateBinaryFromDriver(client.session, client.written().c_str(), 3, 41); }},
    {.name = "vqsAsmCreateBinaryFromDriver",
     .failures = kRequest,
     .call =
         [](Client& client) {
           return vqsAsmCreateBinaryFromDriver(client.session, client.written().c_str(), 0, 0, 1);
         }},
    {.name = "vqsBalanceProfileCreateBinaryFromDriver",
     .failures = kRequest,
     .call =
         [](Client& client) {
           return vqsBalanceProfileCreateBinaryFromDriver(client.session, client.written().c_str(), 3, 41, 0);
         }},
    {.name = "vqsPbReadBinary",
     .failures = kRequestOrMemory,
     .call = [](Client& client) { return vqsPbReadBinary(client.session, client.samplePath.c_str(), &client.summary); },
     .finish = [](Client& client) { HeapFree(GetProcessHeap(), 0, client.summary); }},
    {.name = "vqsPbReadBinaryV2",
     .failures = kRequest,
     .call =
         [](Client& client) {
           auto& head = *reinterpret_cast<VqsPolicyBinary*>(client.binary.data());
           return vqsPbReadBinaryV2(client.session, client.samplePath.c_str(), &head, &client.binarySize,
                                    VQS_STRUCTURE_VERSION_2);
         }},
};

}  // namespace

std::span<const Export> binaryExports() { return kBinaryExports; }

}  // namespace test
