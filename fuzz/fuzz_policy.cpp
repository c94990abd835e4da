// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include "format/binary/builder.h"
#include "format/binary/reader.h"
#include "format/policy/conversion.h"
#include "fuzz/check.h"
#include "src/channel/text.h"

namespace {

/// The input's bytes as records of one kind, the last one filled up with zeros.
template <class Record>
std::vector<Record> recordsOf(const std::uint8_t* data, std::size_t size, std::size_t most) {
  std::vector<Record> records(std::min(size / sizeof(Record) + 1, most));
  std::memcpy(records.data(), data, std::min(size, records.size() * sizeof(Record)));
  return records;
}

/// Memory of exactly one record, so that a step beyond it shows.
template <class Record>
std::unique_ptr<Record> zeroed() {
  auto record = std::make_unique<Record>();
  std::memset(record.get(), 0, sizeof(Record));
  return record;
}

bool pack(std::uint32_t version, const void* body, vqs::PackedPolicy* packed) {
  return vqs::packPolicyBody(version, body, packed, vqs::kRuntimeText);
}
bool unpack(std::uint32_t version, const vqs::PackedPolicy* packed, void* body) {
  return vqs::unpackPolicyBody(version, packed, body, vqs::kRuntimeText);
}

/// What was unpacked packs and unpacks to the same, unless it holds a text without an end.
template <class Body>
void checkUnpacking(const vqs::PackedPolicy& packed, std::uint32_t version) {
  const auto body = zeroed<Body>();
  if (!unpack(version, &packed, body.get())) return;
  const auto again = zeroed<vqs::PackedPolicy>();
  if (!pack(version, body.get(), again.get())) return;
  const auto second = zeroed<Body>();
  check(unpack(version, again.get(), second.get()));
  check(std::memcmp(body.get(), second.get(), sizeof(Body)) == 0);
}

/// A caller's body, whatever it holds, packs or is refused; counts travel as they are.
template <class Body>
void checkPacking(const std::uint8_t* data, std::size_t size, std::uint32_t version) {
  const auto body = zeroed<Body>();
  std::memcpy(body.get(), data, std::min(size, sizeof(Body)));
  const auto packed = zeroed<vqs::PackedPolicy>();
  if (!pack(version, body.get(), packed.get())) return;
  check(packed->conditionCount == body->conditionCount && packed->textCount == body->textCount);
  check(packed->actionCount == body->actionCount && packed->id == body->id);
}

void checkParsing(std::span<const std::byte> file, std::span<const vqs::PackedPolicy> policies) {
  const std::uint32_t count = vqs::announcedPolicyCount(file);
  check(count == policies.size());
  std::vector<vqs::PackedPolicy> parsed(count);
  vqs::BinaryVersions versions{};
  if (!vqs::readBinary(file, parsed, versions)) return;
  check(versions.first == 3 && versions.second == 41);
  for (std::size_t i = 0; i < count; ++i) {
    check(parsed[i].id == policies[i].id && parsed[i].param2 == policies[i].param2);
    check(parsed[i].conditionCount == policies[i].conditionCount && parsed[i].textCount == policies[i].textCount);
    check(std::memcmp(parsed[i].conditions, policies[i].conditions, 16 * std::size_t{parsed[i].conditionCount}) == 0);
  }
}

void checkBuilding(std::span<const vqs::PackedPolicy> policies) {
  const std::uint64_t size = vqs::policyBinarySize(policies);
  const std::uint64_t room = size != 0 ? size : 4096;
  const auto buffer = std::make_unique<std::byte[]>(room);
  const std::span<std::byte> file{buffer.get(), room};
  check(vqs::buildPolicyBinary(file, policies, {3, 41}) == (size != 0));
  if (size == 0) return;
  check(std::ranges::all_of(file.last(3 * policies.size()), [](std::byte byte) { return byte == std::byte{}; }));
  check(!vqs::buildPolicyBinary(file.first(size - 3 * policies.size() - 1), policies, {3, 41}));
  checkParsing(file, policies);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto policies = recordsOf<vqs::PackedPolicy>(data, size, 3);
  for (const auto& policy : policies) {
    checkUnpacking<VqsPolicyV0>(policy, 0);
    checkUnpacking<VqsPolicyV1>(policy, 1);
    checkUnpacking<VqsPolicyV2>(policy, 2);
  }
  checkPacking<VqsPolicyV0>(data, size, 0);
  checkPacking<VqsPolicyV1>(data, size, 1);
  checkPacking<VqsPolicyV2>(data, size, 2);
  checkBuilding(policies);
  return 0;
}
