// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstring>
#include <memory>
#include <span>

#include <vqs/policy_records.h>
#include "format/policy/packed_policy.h"

namespace bench {

/// A general serialiser that carries policies.
class Peer {
 public:
  Peer() = default;
  virtual ~Peer() = default;
  Peer(Peer&&) = delete;

  /// Serialises policies into memory of its own, which the next call reuses.
  virtual std::span<const unsigned char> write(std::span<const vqs::PackedPolicy> policies) = 0;
  /// Checks what was serialised and copies it into bodies of a caller, as many as there are. False when it is
  /// malformed.
  virtual bool read(std::span<const unsigned char> bytes, std::span<VqsPolicyV2> bodies) = 0;
};

std::unique_ptr<Peer> flatBuffersPeer();
std::unique_ptr<Peer> protobufPeer();

/// A text's units, without the zero behind them.
template <class Unit, std::size_t size>
std::span<const Unit> textOf(const Unit (&text)[size]) {
  return {text, std::find(text, text + size, Unit{0})};
}

/// Fills the front of a field, if it fits; what is behind it is zero already.
template <class Unit, std::size_t size>
bool copyInto(Unit (&field)[size], const void* bytes, std::size_t length) {
  if (length > sizeof(field)) return false;
  std::memcpy(field, bytes, length);
  return true;
}

}  // namespace bench
