// SPDX-License-Identifier: Apache-2.0
#include "tests/memory/exports.h"
#include "tests/support/results.h"

namespace test {
namespace {

void withIterator(Client& client) { client.startKV(); }
void withExIterator(Client& client) { client.startExKV(); }

void withAnother(Client& client) {
  client.startKV();
  vqsCreateQTFLogKVIter(client.log, &client.made);
}
void destroyAnother(Client& client) { vqsDestroyQTFLogKVIter(client.made); }

constexpr Results kMemory = oneOf({kNoMemory});

constexpr Export kIteratorExports[] = {
    {.name = "vqsCreateQTFLogKVIter",
     .failures = kMemory,
     .call = [](Client& client) { return vqsCreateQTFLogKVIter(client.log, &client.made); },
     .prepare = withIterator,
     .finish = destroyAnother},
    {.name = "vqsExCreateQTFLogExKVIter",
     .failures = kMemory,
     .call = [](Client& client) { return vqsExCreateQTFLogExKVIter(client.log, &client.made); },
     .prepare = withExIterator,
     .finish = destroyAnother},
    {.name = "vqsDestroyQTFLogKVIter",
     .failures = kNothing,
     .call = [](Client& client) { return vqsDestroyQTFLogKVIter(client.made); },
     .prepare = withAnother},
    {.name = "vqsExDestroyQTFLogExKVIter",
     .failures = kNothing,
     .call = [](Client& client) { return vqsExDestroyQTFLogExKVIter(client.made); },
     .prepare = withAnother},
    {.name = "vqsResetQTFLogKVIter",
     .failures = kNothing,
     .call = [](Client& client) { return vqsResetQTFLogKVIter(client.log, client.iterator); },
     .prepare = withIterator},
    {.name = "vqsExResetQTFLogExKVIter",
     .failures = kNothing,
     .call = [](Client& client) { return vqsExResetQTFLogExKVIter(client.log, client.iterator); },
     .prepare = withExIterator},
    {.name = "vqsNextQTFLogKVIter",
     .failures = kNothing,
     .call = [](Client& client) { return vqsNextQTFLogKVIter(client.iterator); },
     .prepare = withIterator},
    {.name = "vqsExNextQTFLogExKVIter",
     .failures = kNothing,
     .call = [](Client& client) { return vqsExNextQTFLogExKVIter(client.iterator); },
     .prepare = withExIterator},
    {.name = "vqsDoneQTFLogKVIter",
     .failures = kNothing,
     .call = [](Client& client) { return vqsDoneQTFLogKVIter(client.iterator, &client.isDone); },
     .prepare = withIterator},
    {.name = "vqsExDoneQTFLogExKVIter",
     .failures = kNothing,
     .call = [](Client& client) { return vqsExDoneQTFLogExKVIter(client.iterator, &client.isDone); },
     .prepare = withExIterator},
    {.name = "vqsGetQTFLogKVIterData",
     .failures = kNothing,
     .call = [](Client& client) { return vqsGetQTFLogKVIterData(client.iterator, &client.number, &client.address); },
     .prepare = withIterator},
    {.name = "vqsExGetQTFLogExKVIterData",
     .failures = kNothing,
     .call =
         [](Client& client) { return vqsExGetQTFLogExKVIterData(client.iterator, &client.number, &client.address); },
     .prepare = withExIterator},
    {.name = "vqsGetQTFLogKVMetadata_V2",
     .failures = kNothing,
     .call =
         [](Client& client) {
           client.number = VQS_LOG_KV_KEYS;
           return vqsGetQTFLogKVMetadata_V2(client.keys.data(), &client.number);
         }},
    {.name = "vqsExGetQTFLogExKVMetadata_V2",
     .failures = kNothing,
     .call =
         [](Client& client) {
           client.number = VQS_LOG_KV_KEYS;
           return vqsExGetQTFLogExKVMetadata_V2(client.keys.data(), &client.number);
         }},
};

}  // namespace

std::span<const Export> iteratorExports() { return kIteratorExports; }

}  // namespace test
