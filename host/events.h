// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "host/types.h"

namespace host {

/// A name of the system's objects, followed by a zero unit.
using EventName = std::basic_string_view<WCHAR>;

/// Makes a named event present, or makes it gone; handles on it live on. Names are compared letter for letter. False
/// when there is no room for it, or for the name: on Windows the name must live on, and there is one event at most.
/// There, where another program has an object of that name, the event has no name for others.
bool createEvent(EventName name);
void removeEvent(EventName name);
/// Signals a named event, if it is present: every waiter wakes, and the event stays signalled until it is reset.
void signalEvent(EventName name);
void resetEvent(EventName name);

}  // namespace host
