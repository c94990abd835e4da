// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/request.h"

namespace simulator {

/// The most places that one session can take, so that others find some too.
inline constexpr std::ptrdiff_t kPlacesOfSession = 8;

/// A free place, where the key is 0; nullptr when all are taken, or the session has its share of them.
template <class Entry, std::size_t kCapacity>
Entry* findPlace(Entry (&entries)[kCapacity], std::uint64_t Entry::* key, SessionId session) {
  const auto isHeld = [&](const Entry& entry) { return entry.*key != 0 && entry.session == session; };
  if (std::ranges::count_if(entries, isHeld) >= kPlacesOfSession) return nullptr;
  const auto place = std::ranges::find(entries, std::uint64_t{0}, key);
  return place == std::end(entries) ? nullptr : place;
}

}  // namespace simulator
