// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>

#include "bench/families.h"
#include "bench/harness/child.h"
#include "bench/harness/require.h"
#include "bench/harness/scratch_folder.h"

namespace bench {
namespace {

using Words = std::vector<std::string>;

/// The tool with a driver of its own, all of whose stores are full.
class FullDriver {
 public:
  FullDriver() {
    setenv("VEXOQTF_SIMULATOR_STATE", folder_.path("driver.state").c_str(), 1);
    for (const char* const store : {"pb", "asm", "balance-profile"})
      runProgram(tool({"store", "load", store, std::string{VQS_SAMPLES} + "/fleet-r5.bin"}));
  }
  ~FullDriver() { unsetenv("VEXOQTF_SIMULATOR_STATE"); }
  FullDriver(FullDriver&&) = delete;

  [[nodiscard]] std::string path(std::string_view name) const { return folder_.path(name); }

  [[nodiscard]] static Words tool(const Words& arguments) {
    Words command{VQS_BENCH_TOOL};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
  }

 private:
  ScratchFolder folder_;
};

/// Milliseconds of two programs, in the middle of many runs by turns.
struct Runs {
  double first;
  double second;
};

Runs runByTurns(const Words& first, const Words& second) {
  std::vector<double> firsts;
  std::vector<double> seconds;
  for (int i = 0; i < 61; ++i) {
    firsts.push_back(runProgram(first));
    seconds.push_back(runProgram(second));
  }
  return {.first = median(firsts), .second = median(seconds)};
}

std::string basisOf(const Runs& runs) {
  char text[64];
  std::snprintf(text, sizeof(text), "an empty program %.2f ms", runs.second);
  return text;
}

/// Requests of one run of the tool, with the library that counts them.
double requestsOf(const FullDriver& driver, const Words& arguments) {
  const std::string count = driver.path("requests");
  setenv("VQS_COUNTED_REQUESTS", count.c_str(), 1);
  setenv("LD_LIBRARY_PATH", VQS_BENCH_COUNTING_LIBRARY, 1);
  runProgram(FullDriver::tool(arguments));
  unsetenv("LD_LIBRARY_PATH");
  const auto numbers = numbersFrom({"/bin/cat", count});
  require(numbers.size() == 1, "a number of requests");
  return numbers[0];
}

}  // namespace

void measureCommands(Report& report) {
  const Words empty{VQS_BENCH_PROGRAMS "/empty"};
  const Runs version = runByTurns(FullDriver::tool({"--version"}), empty);
  report.add(Item::kVersionCommand, version.first / version.second, basisOf(version));
  const FullDriver driver;
  const auto measure = [&](Item item, const Words& arguments) {
    const Runs command = runByTurns(FullDriver::tool(arguments), empty);
    report.add(item, command.first, basisOf(command));
  };
  measure(Item::kIoCommand, {"io"});
  measure(Item::kListCommand, {"store", "list", "pb"});
  measure(Item::kSaveCommand, {"store", "save", "pb", driver.path("saved.bin")});
}

void measureCommandRequests(Report& report) {
  const FullDriver driver;
  report.add(Item::kSaveRequests, requestsOf(driver, {"store", "save", "pb", driver.path("saved.bin")}));
  report.add(Item::kOverrideRequests, requestsOf(driver, {"override", "PowerSource", "1"}));
}

}  // namespace bench
