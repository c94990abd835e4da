// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <initializer_list>
#include <span>

#include "tests/memory/client.h"
#include "tests/support/results.h"

namespace test {

/// Some of the results, as bits.
using Results = std::uint32_t;

constexpr Results oneOf(std::initializer_list<vqsStatus> results) {
  Results bits = 0;
  for (const vqsStatus result : results) bits |= 1U << result;
  return bits;
}

/// A request is made and nothing else: it fails.
inline constexpr Results kRequest = oneOf({kFailed});
/// The library allocates something of its own before, too.
inline constexpr Results kRequestOrMemory = oneOf({kFailed, kNoMemory});
/// It takes no memory, so that nothing of it fails.
inline constexpr Results kNothing = oneOf({});

inline void nothing(Client& /*client*/) {}

/// An export, called as a client would.
struct Export {
  const char* name;
  /// what comes out when memory runs out, in the words of its header
  Results failures;
  vqsStatus (*call)(Client& client);
  /// before every call
  void (*prepare)(Client& client) = &nothing;
  /// after a call that went well
  void (*finish)(Client& client) = &nothing;
  vqsStatus success = kDone;
  /// it takes memory now and then only, when a table of the host has to grow
  bool isRare = false;
};

std::span<const Export> sessionExports();
std::span<const Export> storeExports();
std::span<const Export> versionedStoreExports();
std::span<const Export> binaryExports();
std::span<const Export> catalogueExports();
std::span<const Export> logExports();
std::span<const Export> iteratorExports();
std::span<const Export> ovlExports();
std::span<const Export> inputAndOutputExports();
std::span<const Export> platformExports();
std::span<const Export> eventExports();
std::span<const Export> featureExports();

}  // namespace test
