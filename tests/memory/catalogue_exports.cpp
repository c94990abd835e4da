// SPDX-License-Identifier: Apache-2.0
#include "tests/memory/exports.h"
#include "tests/support/results.h"

namespace test {
namespace {

// Where there is no memory for the driver's answer, the flags stay as they were.
constexpr Results kAlways = oneOf({kDone});

constexpr Export kCatalogueExports[] = {
    {.name = "vqsPbGetConditions",
     .failures = kAlways,
     .call = [](Client& client) { return vqsPbGetConditions(client.session, &client.conditions, &client.number); }},
    {.name = "vqsPbGetActions",
     .failures = kAlways,
     .call = [](Client& client) { return vqsPbGetActions(client.session, &client.actions, &client.number); }},
};

}  // namespace

std::span<const Export> catalogueExports() { return kCatalogueExports; }

}  // namespace test
