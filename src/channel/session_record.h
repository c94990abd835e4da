// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

#include <vqs/session.h>
#include "src/channel/windows_api.h"

struct QtfSession {
  HANDLE handle;
  /// zero when no log is running
  std::uint64_t logReference;
  /// meaningful while logReference is not zero
  std::uint32_t logSessionId;
  /// part of the address of the key/value handle that this session made last, by which the stop recognises it; zero
  /// when there is none. It lies within the 24 bytes of the session that clients know: some of their tests build a
  /// session of just these bytes.
  std::uint32_t kvHandleMark = 0;
};
static_assert(sizeof(QtfSession) == 24);
static_assert(offsetof(QtfSession, handle) == 0);
static_assert(offsetof(QtfSession, logReference) == 8);
static_assert(offsetof(QtfSession, logSessionId) == 16);
static_assert(offsetof(QtfSession, kvHandleMark) == 20);

namespace vqs {

/// What every export that needs the driver asks of its session first.
inline bool isOpen(const QtfSession* session) { return session != nullptr && session->handle != nullptr; }

}  // namespace vqs
