// SPDX-License-Identifier: Apache-2.0
#include <dlfcn.h>

#include <string_view>

#include "tests/lifetime/client.h"
#include "tests/support/results.h"

// A client that loads the library by itself, and unloads it with something left behind: loading_client LIBRARY WAY.

namespace {

using namespace test;

class Library {
 public:
  explicit Library(const char* path) : library_(dlopen(path, RTLD_NOW)) { demand(library_ != nullptr, "it loads"); }
  ~Library() { demand(dlclose(library_) == 0, "it unloads"); }
  Library(Library&&) = delete;

  /// A function by its name.
  template <class Function>
  [[nodiscard]] Function* find(const char* name) const {
    void* const found = dlsym(library_, name);
    demand(found != nullptr, name);
    return reinterpret_cast<Function*>(found);
  }

 private:
  void* library_;
};

// Kept where they count as no leaks.
QtfSession* session = nullptr;
QtfSession* leftOpen = nullptr;

void open(const Library& library) {
  demand(library.find<decltype(vqsInitialize)>("vqsInitialize")(&session) == kDone, "a session opens");
}

void add(const Library& library, std::uint32_t id) {
  const VqsPolicyV0 policy = policyOf(id);
  std::uint32_t verdict = 1;
  const vqsStatus sent = library.find<decltype(vqsPbAddPolicy)>("vqsPbAddPolicy")(session, &policy, nullptr, &verdict);
  demand(sent == kDone && verdict == 0, "a policy is taken");
}

void close(const Library& library) {
  demand(library.find<decltype(vqsUninitialize)>("vqsUninitialize")(session) == kDone, "the session closes");
}

void openAndAdd(const char* path, std::uint32_t id) {
  const Library library{path};
  open(library);
  add(library, id);
}

void withASessionOpen(const char* path) {
  openAndAdd(path, 7);
  leftOpen = session;
  openAndAdd(path, 8);
}

void withNothingOpen(const char* path) {
  for (const std::uint32_t id : {7U, 8U}) {
    const Library library{path};
    open(library);
    add(library, id);
    close(library);
  }
}

/// The third word of a plain log: seconds that the platform has run.
std::uint32_t secondsIn(std::uint64_t log) { return reinterpret_cast<const volatile std::uint32_t*>(log)[2]; }

std::uint64_t startLog(const Library& library) {
  std::uint64_t log = 0;
  demand(library.find<decltype(vqsStartQTFLog)>("vqsStartQTFLog")(session, &log) == kDone, "the log starts");
  return log;
}

std::uint64_t leaveALogRunning(const char* path) {
  const Library library{path};
  open(library);
  add(library, 7);
  return startLog(library);
}

/// The driver's thread goes on filling the log, which stays mapped.
void withALogRunning(const char* path) {
  const std::uint64_t log = leaveALogRunning(path);
  for (const std::uint32_t start = secondsIn(log); secondsIn(log) < start + 2;) usleep(10'000);
  const Library library{path};
  add(library, 8);
  close(library);
}

constexpr struct {
  std::string_view name;
  void (*use)(const char* path);
} kWays[] = {{"session_open", withASessionOpen}, {"nothing_open", withNothingOpen}, {"log_running", withALogRunning}};

}  // namespace

int main(int /*count*/, char** words) {
  for (const auto& [name, use] : kWays)
    if (name == words[2]) {
      use(words[1]);
      return 0;
    }
  return 64;
}
