// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/state_image.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "simulator/model/policy_check.h"

namespace simulator {
namespace {

constexpr std::array<char, 8> kMagic = {'V', 'Q', 'S', 'S', 'T', 'A', 'T', 'E'};
constexpr std::uint32_t kFormat = 2;
/// Holds policies only.
constexpr std::uint32_t kFirstFormat = 1;

struct ImageHead {
  std::array<char, 8> magic;
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

void append(std::vector<std::byte>& image, std::span<const std::byte> bytes) {
  image.insert(image.end(), bytes.begin(), bytes.end());
}

template <class T>
void appendValue(std::vector<std::byte>& image, const T& value) {
  append(image, std::as_bytes(std::span{&value, 1}));
}

template <class T>
T load(std::span<const std::byte> bytes) {
  T value;
  std::memcpy(&value, bytes.first(sizeof(T)).data(), sizeof(T));
  return value;
}

std::size_t settingsSize(const ImageHead& head) { return head.format == kFirstFormat ? 0 : sizeof(Settings); }

std::size_t imageSize(const ImageHead& head) {
  std::size_t policies = 0;
  for (const std::uint32_t count : head.counts) policies += count;
  return sizeof(ImageHead) + settingsSize(head) + policies * sizeof(PackedPolicy) + sizeof(Checksum);
}

void checkFormat(std::uint32_t format) {
  if (format > kFormat)
    throw StateError("was written by a newer simulator (format " + std::to_string(format) + ", this one reads " +
                     std::to_string(kFormat) + ")");
  if (format < kFirstFormat) throw StateError("has the unknown format " + std::to_string(format));
}

/// The head of an image whose length and checksum are right.
ImageHead checkImage(std::span<const std::byte> image) {
  if (image.size() < kMagic.size() || load<std::array<char, 8>>(image) != kMagic)
    throw StateError("is not a state file of the simulator");
  if (image.size() < sizeof(ImageHead)) throw StateError("is cut short");
  const auto head = load<ImageHead>(image);
  checkFormat(head.format);
  if (std::ranges::any_of(head.counts, [](std::uint32_t count) { return count > PolicyStore::kCapacity; }))
    throw StateError("counts more policies than a store can hold");
  if (image.size() < imageSize(head)) throw StateError("is cut short");
  if (image.size() > imageSize(head)) throw StateError("is longer than its content");
  const auto content = image.first(image.size() - sizeof(Checksum));
  if (load<Checksum>(image.last(sizeof(Checksum))) != checksum(content)) throw StateError("is damaged: wrong checksum");
  return head;
}

void fillStore(PolicyStore& store, std::span<const std::byte> policies) {
  for (; !policies.empty(); policies = policies.subspan(sizeof(PackedPolicy))) {
    const auto policy = load<PackedPolicy>(policies);
    if (!isWellFormed(policy)) throw StateError("holds a malformed policy");
    if (store.add(policy) != StoreResult::done) throw StateError("holds two policies of one id in a store");
  }
}

std::vector<std::byte> encode(const Driver& driver, const Settings& settings) {
  const auto& policies = driver.policies();
  ImageHead head{.magic = kMagic, .format = kFormat, .counts = {}, .asmVersion = policies.asmVersion()};
  for (std::size_t i = 0; i < kStoreCount; ++i) head.counts[i] = policies.store(i).count();
  std::vector<std::byte> image;
  image.reserve(imageSize(head));
  appendValue(image, head);
  appendValue(image, settings);
  for (std::size_t i = 0; i < kStoreCount; ++i) append(image, std::as_bytes(policies.store(i).policies()));
  appendValue(image, checksum(image));
  return image;
}

}  // namespace

std::vector<std::byte> encodeState(const Driver& driver) { return encode(driver, driver.settings()); }

std::vector<std::byte> encodeStateWithoutTime(const Driver& driver) {
  Settings settings = driver.settings();
  PlatformState& platform = settings.platform;
  const PlatformState lasting = platform;
  platform = {};
  platform.seed = lasting.seed;
  platform.isStarted = lasting.isStarted;
  return encode(driver, settings);
}

void decodeState(std::span<const std::byte> image, Driver& driver) {
  const ImageHead head = checkImage(image);
  if (head.asmVersion.word1 > kHighestVersionWord || head.asmVersion.word2 > kHighestVersionWord)
    throw StateError("holds a version word above 65535");
  driver.policies().setAsmVersion(head.asmVersion);
  if (head.format != kFirstFormat) driver.settings() = load<Settings>(image.subspan(sizeof(ImageHead)));
  if (!areSound(driver.settings())) throw StateError("holds settings that no driver can have");
  auto policies = image.subspan(sizeof(ImageHead) + settingsSize(head));
  for (std::size_t i = 0; i < kStoreCount; ++i) {
    const std::size_t size = head.counts[i] * sizeof(PackedPolicy);
    fillStore(driver.policies().store(i), policies.first(size));
    policies = policies.subspan(size);
  }
}

}  // namespace simulator
