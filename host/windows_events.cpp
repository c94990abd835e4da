// SPDX-License-Identifier: Apache-2.0
#include "host/events.h"
#include "host/windows_devices.h"

namespace host {
namespace {

EventName presentName;
HANDLE present = nullptr;

HANDLE find(EventName name) { return present != nullptr && name == presentName ? present : nullptr; }

/// Null where the name belongs to somebody else's object, whatever that is.
HANDLE createNamed(EventName name) {
  const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, name.data());
  if (event == nullptr || GetLastError() != ERROR_ALREADY_EXISTS) return event;
  ::CloseHandle(event);
  return nullptr;
}

}  // namespace

bool createEvent(EventName name) {
  if (present != nullptr) return false;
  presentName = name;
  present = createNamed(name);
  if (present == nullptr) present = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  return present != nullptr;
}

void removeEvent(EventName name) {
  if (find(name) == nullptr) return;
  ::CloseHandle(present);
  present = nullptr;
}

void signalEvent(EventName name) {
  if (const HANDLE event = find(name)) SetEvent(event);
}

void resetEvent(EventName name) {
  if (const HANDLE event = find(name)) ResetEvent(event);
}

HANDLE OpenEventW(DWORD access, BOOL inherit, const WCHAR* name) {
  const HANDLE event = find(name);
  if (event == nullptr) return ::OpenEventW(access, inherit, name);
  HANDLE opened = nullptr;
  const HANDLE process = GetCurrentProcess();
  DuplicateHandle(process, event, process, &opened, access, inherit, 0);
  return opened;
}

}  // namespace host
