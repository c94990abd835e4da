// SPDX-License-Identifier: Apache-2.0
#include <vqs/policy.h>
#include "bench/families.h"
#include "bench/harness/policies.h"
#include "bench/harness/quiet_device.h"
#include "format/policy/conversion.h"
#include "src/channel/control_codes.h"
#include "src/channel/session_record.h"
#include "src/channel/text.h"
#include "src/channel/work_buffer.h"
#include "src/policy/store_records.h"

// What the exports of the stores cost beside their requests, which a quiet device answers at once. The other side
// allocates and clears a record for each request, sends it, and gives the memory back.

namespace bench {
namespace {

class StoreCalls {
 public:
  StoreCalls() {
    record_.structureVersion = VQS_STRUCTURE_VERSION_2;
    record_.policy.v2 = fleetPolicies(session_.get())[0];
    vqs::PackedPolicy packed{};
    require(vqs::packPolicyV2(&record_.policy.v2, &packed), "a policy that can be packed");
    require(vqs::unpackPolicyV0(&packed, &policy_, vqs::kRuntimeText), "a policy that fits version 0");
  }

  void measure(Report& report) {
    report.addSurplus(Item::kAdd, compareCall(&StoreCalls::add, &StoreCalls::sendAdd));
    report.addSurplus(Item::kAddV2, compareCall(&StoreCalls::addV2, &StoreCalls::sendAdd));
    report.addSurplus(Item::kReplace, compareCall(&StoreCalls::replace, &StoreCalls::sendReplace));
    report.addSurplus(Item::kReplaceV2, compareCall(&StoreCalls::replaceV2, &StoreCalls::sendReplace));
    report.addSurplus(Item::kCount, compareCall(&StoreCalls::count, &StoreCalls::sendCount));
    report.addSurplus(Item::kCountV2, compareCall(&StoreCalls::countV2, &StoreCalls::sendCount));
  }

 private:
  Comparison compareCall(vqsStatus (StoreCalls::*call)(), void (StoreCalls::*bareRequest)()) {
    const auto checked = [&] { require((this->*call)() == VQS_SUCCESS, "a call that succeeds"); };
    return compare(checked, [&] { (this->*bareRequest)(); });
  }

  vqsStatus add() { return vqsPbAddPolicy(session_.get(), &policy_, nullptr, &verdict_); }
  vqsStatus addV2() {
    return vqsPbAddPolicyV2(session_.get(), &record_, sizeof(record_), &verdict_, VQS_POLICY_STORE_PB);
  }
  vqsStatus replace() { return vqsPbReplacePolicy(session_.get(), 1, &policy_, &verdict_); }
  vqsStatus replaceV2() {
    return vqsPbReplacePolicyV2(session_.get(), 1, &record_, sizeof(record_), &verdict_, VQS_POLICY_STORE_PB);
  }
  vqsStatus count() {
    VqsPolicyList list{};
    list.countOnly = 1;
    return vqsPbGetPolicies(session_.get(), &list);
  }
  vqsStatus countV2() {
    VqsPolicyListV2 list{.structureVersion = VQS_STRUCTURE_VERSION_2, .count = 0, .size = 0};
    return vqsPbGetPoliciesV2(session_.get(), &list, VQS_POLICY_STORE_PB);
  }

  void send(DWORD code, void* request, DWORD length, void* answer, DWORD answerLength) const {
    DWORD returned = 0;
    const BOOL isDone =
        DeviceIoControl(session_.get()->handle, code, request, length, answer, answerLength, &returned, nullptr);
    require(isDone != FALSE, "a request that succeeds");
  }
  /// From a record of its own, as a request needs it: zeros but for what it says.
  template <class Record>
  void sendNew(DWORD code) const {
    const vqs::HeapRecord<Record> record;
    require(static_cast<bool>(record), "memory");
    send(code, record.get(), sizeof(Record), record.get(), sizeof(Record));
  }

  void sendAdd() { sendNew<vqs::PolicyStoreRequest>(vqs::kCodePbModify); }
  void sendReplace() {
    const vqs::HeapRecord<vqs::PolicyStoreRequest> record;
    require(static_cast<bool>(record), "memory");
    send(vqs::kCodePbModify, record.get(), sizeof(*record), &verdict_, sizeof(verdict_));
    sendAdd();
  }
  void sendCount() { sendNew<vqs::PolicyFetchRequest>(vqs::kCodePbRead); }

  QuietDevice device_;
  Session session_;
  VqsPolicyV0 policy_{};
  VqsVersionedPolicy record_{};
  std::uint32_t verdict_ = 0;
};

}  // namespace

void measureStoreCalls(Report& report) { StoreCalls{}.measure(report); }

}  // namespace bench
