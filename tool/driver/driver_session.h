// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>

#include <vqs/session.h>
#include "tool/context.h"

namespace tool {

struct SessionCloser {
  void operator()(QtfSession* session) const;
};

/// An open connection to the driver.
using Session = std::unique_ptr<QtfSession, SessionCloser>;

/// To be called before any function of the library is. Throws a NoDriver when the library cannot be loaded.
void useLibrary(const Context& context);

/// Does some work with the driver whose stores successive commands see, and closes the session. Throws a NoDriver when
/// the driver cannot be opened.
void withDriver(const Context& context, const std::function<void(const Session&)>& work);

/// A session for work that can also be done without a driver: null when there is none. Throws a NoDriver when the user
/// has named a driver to use and it is not there.
Session openIfThere(const Context& context);

}  // namespace tool
