// SPDX-License-Identifier: Apache-2.0
#include "format/policy/conversion.h"

#include <cstring>

#include "bench/families.h"
#include "bench/harness/policies.h"
#include "bench/harness/quiet_device.h"

namespace bench {
namespace {

/// A copy of all bytes of a record: what a conversion that changes nothing could be.
template <class Record>
auto copyOf(const Record& record) {
  return [&record, copy = Record{}]() mutable {
    std::memcpy(&copy, &record, sizeof(Record));
    keep(&copy);
  };
}

void measurePack(Report& report, Item item, const VqsPolicyV2& policy) {
  vqs::PackedPolicy packed{};
  const auto pack = [&] {
    require(vqs::packPolicyV2(&policy, &packed), "a policy that can be packed");
    keep(&packed);
  };
  report.addRatio(item, compare(pack, copyOf(policy)));
}

void measureUnpack(Report& report, Item item, const vqs::PackedPolicy& packed) {
  VqsPolicyV2 policy{};
  const auto unpack = [&] {
    require(vqs::unpackPolicyV2(&packed, &policy), "a policy that can be unpacked");
    keep(&policy);
  };
  report.addRatio(item, compare(unpack, copyOf(packed)));
}

/// One with a text, as one in five has.
VqsPolicyV2 fleetPolicy() {
  const QuietDevice device;
  const Session session;
  for (const auto& policy : fleetPolicies(session.get()))
    if (policy.textCount == 1) return policy;
  require(false, "a policy with a text");
  return {};
}

}  // namespace

void measureConversions(Report& report) {
  const VqsPolicyV2 full = fullPolicies(1)[0];
  const VqsPolicyV2 fleet = fleetPolicy();
  measurePack(report, Item::kPackFull, full);
  measureUnpack(report, Item::kUnpackFull, packed({&full, 1})[0]);
  measurePack(report, Item::kPackFleet, fleet);
  measureUnpack(report, Item::kUnpackFleet, packed({&fleet, 1})[0]);
}

}  // namespace bench
