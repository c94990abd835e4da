// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cerrno>
#include <ctime>
#include <mutex>
#include <string_view>

#include "host/call_hook.h"
#include "host/handle_table.h"
#include "host/handles.h"
#include "host/host.h"

namespace {

timespec momentIn(DWORD milliseconds) {
  timespec moment{};
  clock_gettime(CLOCK_MONOTONIC, &moment);
  const long nanoseconds = moment.tv_nsec + static_cast<long>(milliseconds % 1000) * 1'000'000;
  return {.tv_sec = moment.tv_sec + milliseconds / 1000 + nanoseconds / 1'000'000'000,
          .tv_nsec = nanoseconds % 1'000'000'000};
}

/// Signalled until it is reset; every waiter wakes.
class Event : public host::Counted {
 public:
  explicit Event(std::u16string_view name) : length_(name.size()) { std::ranges::copy(name, units_); }

  [[nodiscard]] std::u16string_view name() const { return {units_, length_}; }

  void set(bool signalled) {
    {
      const std::lock_guard lock{mutex_};
      signalled_ = signalled;
    }
    pthread_cond_broadcast(&changed_);
  }

  /// False when the time is over.
  bool wait(DWORD milliseconds) {
    const timespec end = momentIn(milliseconds);
    const std::lock_guard lock{mutex_};
    while (!signalled_)
      if (!waitForChange(milliseconds == INFINITE ? nullptr : &end)) break;
    return signalled_;
  }

  static constexpr std::size_t kLongestName = 128;

 private:
  bool waitForChange(const timespec* end) {
    if (end != nullptr) return pthread_cond_clockwait(&changed_, mutex_.native(), CLOCK_MONOTONIC, end) != ETIMEDOUT;
    pthread_cond_wait(&changed_, mutex_.native());
    return true;
  }

  host::Mutex mutex_;
  pthread_cond_t changed_ = PTHREAD_COND_INITIALIZER;
  bool signalled_ = false;
  char16_t units_[kLongestName];
  std::size_t length_;
};

/// The named events that are present.
constinit host::Mutex eventMutex;
constinit host::List<Event*> events;
constinit host::HandleTable<Event> openings;

Event** placeOf(std::u16string_view name) { return std::ranges::find(events, name, &Event::name); }

host::Shared<Event> findEvent(std::u16string_view name) {
  const std::lock_guard lock{eventMutex};
  Event** const found = placeOf(name);
  return found == events.end() ? host::Shared<Event>{} : host::Shared<Event>::of(*found);
}

void setEvent(std::u16string_view name, bool signalled) {
  if (const auto event = findEvent(name)) event->set(signalled);
}

}  // namespace

namespace host {

bool createEvent(std::u16string_view name) {
  const std::lock_guard lock{eventMutex};
  if (placeOf(name) != events.end()) return true;
  if (name.size() > Event::kLongestName) return false;
  Shared<Event> event{new Event{name}};
  if (!event || !events.add(event.get())) return false;
  event.handOver();
  return true;
}

void removeEvent(std::u16string_view name) {
  const std::lock_guard lock{eventMutex};
  Event** const found = placeOf(name);
  if (found == events.end()) return;
  const Shared<Event> event{*found};
  events.remove(found);
}

void signalEvent(std::u16string_view name) { setEvent(name, true); }
void resetEvent(std::u16string_view name) { setEvent(name, false); }

void signalHandle(HANDLE handle) {
  if (const auto event = openings.find(handle)) event->set(true);
}

bool closeEvent(HANDLE handle) { return static_cast<bool>(openings.forget(handle)); }

}  // namespace host

HANDLE OpenEventW(DWORD access, BOOL inherit, const WCHAR* name) {
  if (!host::permit("OpenEventW", access, static_cast<DWORD>(inherit), std::u16string_view{name})) return nullptr;
  auto event = findEvent(name);
  const HANDLE handle = host::newHandle();
  return event && openings.add(handle, std::move(event)) ? handle : nullptr;
}

DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds) {
  if (!host::permit("WaitForSingleObject", milliseconds)) return WAIT_FAILED;
  const auto event = openings.find(handle);
  if (!event) return WAIT_FAILED;
  return event->wait(milliseconds) ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
}
