// SPDX-License-Identifier: Apache-2.0
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>

#include "host/call_hook.h"
#include "host/guarded.h"
#include "host/handles.h"
#include "host/host.h"

namespace {

/// Signalled until it is reset; every waiter wakes.
class Event : public host::Object {
 public:
  void set(bool signalled) {
    {
      const std::lock_guard lock{mutex_};
      signalled_ = signalled;
    }
    changed_.notify_all();
  }

  bool wait(DWORD milliseconds) {
    std::unique_lock lock{mutex_};
    const auto isSignalled = [this] { return signalled_; };
    if (milliseconds != INFINITE) return changed_.wait_for(lock, std::chrono::milliseconds{milliseconds}, isSignalled);
    changed_.wait(lock, isSignalled);
    return true;
  }

  void closed(HANDLE /*handle*/) override {}

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool signalled_ = false;
};

std::mutex eventMutex;

/// Made at its first use, which may come before other initialisers have run, and never destroyed.
auto& events() {
  static auto& map = *new std::map<std::u16string, std::shared_ptr<Event>, std::less<>>;
  return map;
}

std::shared_ptr<Event> findEvent(std::u16string_view name) {
  const std::lock_guard lock{eventMutex};
  const auto found = events().find(name);
  return found == events().end() ? nullptr : found->second;
}

void setEvent(std::u16string_view name, bool signalled) {
  if (const auto event = findEvent(name)) event->set(signalled);
}

}  // namespace

namespace host {

bool createEvent(std::u16string_view name) {
  return guarded(false, [&] {
    const std::lock_guard lock{eventMutex};
    events().try_emplace(std::u16string{name}, std::make_shared<Event>());
    return true;
  });
}

void removeEvent(std::u16string_view name) {
  const std::lock_guard lock{eventMutex};
  if (const auto found = events().find(name); found != events().end()) events().erase(found);
}

void signalEvent(std::u16string_view name) { setEvent(name, true); }
void resetEvent(std::u16string_view name) { setEvent(name, false); }

void signalHandle(HANDLE event) {
  if (const auto found = findHandleOf<Event>(event)) found->set(true);
}

}  // namespace host

HANDLE OpenEventW(DWORD access, BOOL inherit, const WCHAR* name) {
  return host::guarded(HANDLE{}, [&] {
    if (!host::permit("OpenEventW", access, static_cast<DWORD>(inherit), std::u16string_view{name})) return HANDLE{};
    auto event = findEvent(name);
    return event == nullptr ? HANDLE{} : host::registerHandle(std::move(event));
  });
}

DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds) {
  if (!host::permit("WaitForSingleObject", milliseconds)) return WAIT_FAILED;
  const auto event = host::findHandleOf<Event>(handle);
  if (event == nullptr) return WAIT_FAILED;
  return event->wait(milliseconds) ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
}
