// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

#include "channel/windows_api.h"
#include "vqs/session.h"

struct QtfSession {
  HANDLE handle;
  /// zero when no log is running
  std::uint64_t logReference;
  /// meaningful while logReference is not zero
  std::uint32_t logSessionId;
};
static_assert(offsetof(QtfSession, handle) == 0);
static_assert(offsetof(QtfSession, logReference) == 8);
static_assert(offsetof(QtfSession, logSessionId) == 16);

namespace vqs {

/// What every export that needs the driver asks of its session first.
inline bool isOpen(const QtfSession* session) { return session != nullptr && session->handle != nullptr; }

}  // namespace vqs
