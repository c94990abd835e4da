// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/state_image.h"

#include <algorithm>
#include <cstring>

#include "simulator/model/policy_check.h"

namespace simulator {
namespace {

struct ImageHead {
  char magic[8];
  std::uint32_t format;
  std::uint32_t counts[kStoreCount];
  BinaryVersion asmVersion;
};
static_assert(sizeof(ImageHead) == 32);
static_assert(offsetof(ImageHead, format) == 8);
static_assert(offsetof(ImageHead, counts) == 12);
static_assert(offsetof(ImageHead, asmVersion) == 24);

using Checksum = std::uint64_t;

/// FNV-1a of 64 bits: every change of a single byte shows.
Checksum checksum(std::span<const std::byte> bytes) {
  Checksum hash = 0xCBF29CE484222325;
  for (const std::byte byte : bytes) hash = (hash ^ static_cast<Checksum>(byte)) * 0x100000001B3;
  return hash;
}

template <class T>
T load(std::span<const std::byte> bytes) {
  T value;
  std::memcpy(&value, bytes.first(sizeof(T)).data(), sizeof(T));
  return value;
}

/// An image of format 1 holds policies only.
std::size_t settingsSize(const ImageHead& head) { return head.format == kFirstFormat ? 0 : kImageSettings; }

std::size_t imageSize(const ImageHead& head) {
  std::size_t policies = 0;
  for (const std::uint32_t count : head.counts) policies += count;
  return sizeof(ImageHead) + settingsSize(head) + policies * sizeof(PackedPolicy) + sizeof(Checksum);
}

/// Whether length and checksum are right.
Reason checkImage(std::span<const std::byte> image) {
  if (image.size() < sizeof(ImageHead)) return Reason{"is cut short"};
  const auto head = load<ImageHead>(image);
  if (std::ranges::any_of(head.counts, [](std::uint32_t count) { return count > PolicyStore::kCapacity; }))
    return Reason{"counts more policies than a store can hold"};
  if (image.size() < imageSize(head)) return Reason{"is cut short"};
  if (image.size() > imageSize(head)) return Reason{"is longer than its content"};
  const auto content = image.first(image.size() - sizeof(Checksum));
  if (load<Checksum>(image.last(sizeof(Checksum))) != checksum(content)) return Reason{"is damaged: wrong checksum"};
  return {};
}

Reason fillStore(PolicyStore& store, std::span<const std::byte> policies) {
  for (; !policies.empty(); policies = policies.subspan(sizeof(PackedPolicy))) {
    const auto policy = load<PackedPolicy>(policies);
    if (!isWellFormed(policy)) return Reason{"holds a malformed policy"};
    if (store.add(policy) != StoreResult::done) return Reason{"holds two policies of one id in a store"};
  }
  return {};
}

Reason fillStores(PolicyComponent& stores, const ImageHead& head, std::span<const std::byte> policies) {
  for (std::size_t i = 0; i < kStoreCount; ++i) {
    const std::size_t size = head.counts[i] * sizeof(PackedPolicy);
    if (Reason reason = fillStore(stores.store(i), policies.first(size))) return reason;
    policies = policies.subspan(size);
  }
  return {};
}

}  // namespace

Reason decodeImage(std::span<const std::byte> image, Driver& driver) {
  if (Reason reason = checkImage(image)) return reason;
  const auto head = load<ImageHead>(image);
  driver.policies().setAsmVersion(head.asmVersion);
  std::memcpy(&driver.settings(), image.subspan(sizeof(ImageHead)).data(), settingsSize(head));
  if (Reason reason = fillStores(driver.policies(), head, image.subspan(sizeof(ImageHead) + settingsSize(head))))
    return reason;
  return driver.isSound() ? Reason{} : Reason{"holds settings that no driver can have"};
}

}  // namespace simulator
