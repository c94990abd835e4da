// SPDX-License-Identifier: Apache-2.0
#include "tests/performance/costs.h"

#include <ostream>

#include "host/call_hook.h"
#include "tests/support/faults.h"

namespace test {
namespace {

int requests = 0;

bool countRequest(std::string_view call) {
  if (call.starts_with("DeviceIoControl(")) ++requests;
  return true;
}

/// Counts requests while it lives.
class RequestCount {
 public:
  RequestCount() {
    requests = 0;
    host::setWatcher(&countRequest);
  }
  ~RequestCount() { host::setWatcher(nullptr); }
  RequestCount(RequestCount&&) = delete;
};

}  // namespace

std::ostream& operator<<(std::ostream& stream, const Costs& costs) {
  return stream << costs.requests << " requests, " << costs.allocations << " allocations, " << costs.opens << " opens, "
                << costs.seeks << " seeks, " << costs.tells << " tells, " << costs.reads << " reads, " << costs.writes
                << " writes";
}

Costs costsOf(const std::function<void()>& call) {
  const RequestCount count;
  const Faults faults;
  call();
  // The simulated driver copies what it is sent, once for each request, as the system does for a real one.
  return {.requests = requests,
          .allocations = faults.calls(Fault::kAllocation) + faults.calls(Fault::kNew) - requests,
          .opens = faults.calls(Fault::kOpen),
          .seeks = faults.calls(Fault::kSeek),
          .tells = faults.calls(Fault::kTell),
          .reads = faults.calls(Fault::kRead),
          .writes = faults.calls(Fault::kWrite)};
}

unsigned long long peakBytesOf(const std::function<void()>& call) {
  const Faults faults;
  call();
  return faults.peakBytes();
}

}  // namespace test
