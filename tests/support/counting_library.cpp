// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "host/call_hook.h"

// The library with its simulated driver, made to count the requests of its process. When it goes, their number is in
// the file that VQS_COUNTED_REQUESTS names. VQS_REQUEST_FAULT says what befalls one of them: with "fail:5" the fifth
// fails, with "fail-from:5" it and all behind it, and with "interrupt:5" the process is interrupted before it.

namespace {

constinit std::atomic<int> requests = 0;

/// The number behind a kind of fault, if that is the one that is wanted; otherwise 0, which no request has.
int faultAt(std::string_view kind) {
  const char* const variable = std::getenv("VQS_REQUEST_FAULT");
  const std::string_view fault = variable != nullptr ? variable : "";
  return fault.starts_with(kind) && fault.substr(kind.size()).starts_with(':')
             ? std::atoi(fault.data() + kind.size() + 1)
             : 0;
}

bool count(std::string_view call) {
  if (!call.starts_with("DeviceIoControl(")) return true;
  const int number = ++requests;
  if (number == faultAt("interrupt")) kill(getpid(), SIGINT);
  const int first = faultAt("fail-from");
  return number != faultAt("fail") && (first == 0 || number < first);
}

[[gnu::constructor]] void beginToCount() { host::setWatcher(&count); }

[[gnu::destructor]] void tell() {
  const char* const path = std::getenv("VQS_COUNTED_REQUESTS");
  std::FILE* const file = path == nullptr ? nullptr : std::fopen(path, "w");
  if (file == nullptr) return;
  std::fprintf(file, "%d\n", requests.load());
  std::fclose(file);
}

}  // namespace
