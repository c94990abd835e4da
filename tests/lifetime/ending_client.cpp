// SPDX-License-Identifier: Apache-2.0
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "tests/lifetime/client.h"
#include "tests/support/results.h"

// A client that ends in one of many ways: ending_client WAY. Until then it has added policy 7, and where it closes its
// session at the very end, policy 8. "ending_client list" writes the ids of the policies that are there.

namespace {

using namespace test;

// Kept where they count as no leaks: most of these clients never give them back.
QtfSession* session = nullptr;
QtfLogKV* log = nullptr;

QtfSession* openSession() {
  QtfSession* opened = nullptr;
  demand(vqsInitialize(&opened) == kDone, "a session opens");
  return opened;
}

void add(QtfSession* own, std::uint32_t id) {
  const VqsPolicyV0 policy = policyOf(id);
  std::uint32_t verdict = 1;
  demand(vqsPbAddPolicy(own, &policy, nullptr, &verdict) == kDone && verdict == 0, "a policy is taken");
}

void openAndAdd() {
  session = openSession();
  add(session, 7);
}

void addAndClose() {
  add(session, 8);
  demand(vqsUninitialize(session) == kDone, "the session closes");
}

/// Closes the session when it is destroyed.
class Closer {
 public:
  ~Closer() {
    if (isArmed) addAndClose();
  }
  bool isArmed = false;
};

Closer madeBeforeMain;

std::atomic<bool> isTimeToClose = false;
pthread_t closingThread;

void* closeWhenTold(void* /*unused*/) {
  while (!isTimeToClose) usleep(1000);
  addAndClose();
  return nullptr;
}

void letTheThreadClose() {
  isTimeToClose = true;
  demand(pthread_join(closingThread, nullptr) == 0, "the thread ends");
}

std::atomic<int> rounds = 0;

/// Until the process is gone.
void* addAndRemove(void* /*unused*/) {
  for (QtfSession* const own = openSession();; ++rounds) {
    add(own, 9);
    std::uint32_t verdict = 1;
    demand(vqsPbDeletePolicy(own, 9, &verdict) == kDone && verdict == 0, "a policy is deleted");
  }
}

void inAnExitHandlerBeforeTheFirstCall() {
  std::atexit(addAndClose);
  openAndAdd();
}

void inAnExitHandlerAfterTheFirstCall() {
  openAndAdd();
  std::atexit(addAndClose);
}

void inAStaticObject() {
  openAndAdd();
  madeBeforeMain.isArmed = true;
}

void inAStaticObjectAfterTheFirstCall() {
  openAndAdd();
  static Closer closer;
  closer.isArmed = true;
}

void inAThreadAtExit() {
  std::atexit(letTheThreadClose);
  openAndAdd();
  demand(pthread_create(&closingThread, nullptr, closeWhenTold, nullptr) == 0, "there is a thread");
}

void withAThreadAtWork() {
  openAndAdd();
  pthread_t thread{};
  demand(pthread_create(&thread, nullptr, addAndRemove, nullptr) == 0, "there is a thread");
  while (rounds < 20) usleep(1000);
}

void withALogRunning() {
  openAndAdd();
  demand(vqsStartQTFLogKV(session, &log) == kDone, "the log starts");
}

void afterAnOvlCall() {
  std::uint32_t version = 0;
  demand(vqsOVLGetInterfaceVersion(&version) == kDone, "the interface has a version");
  openAndAdd();
  addAndClose();
}

void withAnOvlLogMapped() {
  std::uint64_t address = 0;
  std::uint32_t id = 0;
  demand(vqsOVLMapQTFLogAddress(&address, &id) == kDone, "the log is mapped");
  openAndAdd();
  addAndClose();
}

void atOnce() {
  openAndAdd();
  _exit(0);
}

void byAbort() {
  openAndAdd();
  std::abort();
}

void byAKill() {
  openAndAdd();
  static_cast<void>(std::raise(SIGKILL));
}

void list() {
  VqsPolicyV0 policies[8] = {};
  VqsPolicyList all{};
  all.count = 8;
  all.policies = policies;
  session = openSession();
  demand(vqsPbGetPolicies(session, &all) == kDone, "the policies are read");
  for (std::uint32_t i = 0; i < all.count; ++i) std::printf("%u ", policies[i].id);
}

constexpr struct {
  std::string_view name;
  void (*end)();
} kWays[] = {{"exit_handler_before_the_first_call", inAnExitHandlerBeforeTheFirstCall},
             {"exit_handler_after_the_first_call", inAnExitHandlerAfterTheFirstCall},
             {"static_object", inAStaticObject},
             {"static_object_after_the_first_call", inAStaticObjectAfterTheFirstCall},
             {"thread_at_exit", inAThreadAtExit},
             {"thread_at_work", withAThreadAtWork},
             {"log_running", withALogRunning},
             {"ovl_call", afterAnOvlCall},
             {"ovl_log_mapped", withAnOvlLogMapped},
             {"session_open", openAndAdd},
             {"_exit", atOnce},
             {"abort", byAbort},
             {"kill", byAKill},
             {"list", list}};

}  // namespace

int main(int /*count*/, char** words) {
  for (const auto& [name, end] : kWays)
    if (name == words[1]) {
      end();
      return 0;
    }
  return 64;
}
