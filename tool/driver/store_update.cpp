// SPDX-License-Identifier: Apache-2.0
#include "tool/driver/store_update.h"

#include <fmt/format.h>

#include <algorithm>

#include "documents/print/print.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

using Kind = StoreRequest::Kind;

/// The record that is sent. A description may fill its field and have no end there.
VqsPolicyV2 recordOf(const documents::Policy& policy) {
  VqsPolicyV2 record = documents::toRecord(policy);
  policy.description.copy(record.description, sizeof(record.description));
  return record;
}

vqsStatus add(QtfSession* session, const Store& store, const documents::Policy& policy, std::uint32_t& verdict) {
  VqsVersionedPolicy record{};
  record.structureVersion = 2;
  record.policy.v2 = recordOf(policy);
  return vqsPbAddPolicyV2(session, &record, sizeof(record), &verdict, store.id);
}

vqsStatus send(QtfSession* session, const Store& store, const documents::PolicySet& wanted, const StoreRequest& request,
               std::uint32_t& verdict) {
  switch (request.kind) {
    case Kind::kReset:
      return store.reset(session);
    case Kind::kDelete:
      return store.remove(session, request.id, &verdict);
    case Kind::kAdd:
      return add(session, store, wanted.policies[request.index], verdict);
    default:
      return vqsSetBinaryVersion(session, wanted.version1, wanted.version2, &verdict, store.id);
  }
}

/// The request as the beginning of a sentence.
std::string describeAttempt(const documents::PolicySet& wanted, const StoreRequest& request) {
  switch (request.kind) {
    case Kind::kReset:
      return "the reset";
    case Kind::kDelete:
      return fmt::format("deleting {}", request.id);
    case Kind::kAdd:
      return "adding " + called(wanted.policies[request.index]);
    default:
      return fmt::format("setting the version to {}.{}", wanted.version1, wanted.version2);
  }
}

/// What went wrong with a request; empty when it was carried out.
std::string failureOf(QtfSession* session, const Store& store, const documents::PolicySet& wanted,
                      const StoreRequest& request) {
  std::uint32_t verdict = VQS_DRIVER_RESULT_TAKEN;
  const vqsStatus status = send(session, store, wanted, request, verdict);
  if (status != VQS_SUCCESS) return fmt::format("{} failed: {}", describeAttempt(wanted, request), describe(status));
  if (verdict == VQS_DRIVER_RESULT_TAKEN) return {};
  return fmt::format("{} failed: the driver refused it, {}", describeAttempt(wanted, request),
                     describeVerdict(verdict));
}

}  // namespace

Sending sendRequests(const Session& session, const Store& store, const documents::PolicySet& wanted,
                     std::span<const StoreRequest> requests, const std::function<bool()>& isInterrupted) {
  Sending sending;
  for (const auto& request : requests) {
    sending.failure = isInterrupted() ? "interrupted" : failureOf(session.get(), store, wanted, request);
    if (!sending.failure.empty()) return sending;
    ++sending.carriedOut;
  }
  return sending;
}

std::string called(const documents::Policy& policy) {
  return fmt::format("{} {}", policy.id, inQuotes(documents::readable(policy.name)));
}

}  // namespace tool
