// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>

#include "context.h"
#include "vqs/session.h"

namespace tool {

struct SessionCloser {
  void operator()(QtfSession* session) const;
};

/// An open connection to the driver.
using Session = std::unique_ptr<QtfSession, SessionCloser>;

/// Does some work with the driver whose stores successive commands see, and closes the session. Throws a Failure when
/// the driver cannot be opened.
void withDriver(const Context& context, const std::function<void(const Session&)>& work);

/// Opens a session for reading files, which makes no request: where the driver is simulated, any state will do.
Session openForFiles(const Context& context);

}  // namespace tool
