// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "simulator/model/driver.h"

namespace simulator {

/// Why a state cannot be read, written or locked, as the end of a sentence about its file.
class StateError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The longest image that there can be: three full stores.
inline constexpr std::size_t kLongestImage =
    32 + sizeof(Settings) + kStoreCount * PolicyStore::kCapacity * sizeof(PackedPolicy) + sizeof(std::uint64_t);

/// What a driver holds, in the form of a state file. Equal images are equal drivers, and the other way round.
std::vector<std::byte> encodeState(const Driver& driver);

/// The same, without what the passing of time alone has changed, and comes to again.
std::vector<std::byte> encodeStateWithoutTime(const Driver& driver);

/// Fills a fresh driver from an image that may be anything. Throws StateError and leaves the driver partly filled when
/// it is not an image of a driver.
void decodeState(std::span<const std::byte> image, Driver& driver);

}  // namespace simulator
