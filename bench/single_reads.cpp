// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <filesystem>

#include "bench/families.h"
#include "bench/harness/child.h"
#include "bench/harness/policies.h"
#include "bench/harness/quiet_device.h"
#include "bench/harness/scratch_folder.h"

// Reads of processes that read once.

namespace bench {
namespace {

/// What the program single_read prints.
struct SingleRead {
  double nanoseconds;
  double pageFaults;
  double allocations;
  double heapBytes;
  double peakKilobytes;
  double laterPageFaults;
  double floorNanoseconds;
};

std::size_t resultSize(std::size_t policies) { return Result{0}.bytes.size() + policies * sizeof(VqsPolicyV2); }

SingleRead readOnce(const std::string& path, std::size_t policies) {
  const auto numbers = numbersFrom({VQS_BENCH_PROGRAMS "/single_read", path, std::to_string(resultSize(policies))});
  require(numbers.size() == 7, "seven numbers");
  return {numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5], numbers[6]};
}

std::vector<SingleRead> readOften(const std::string& path, std::size_t policies, int times) {
  std::vector<SingleRead> reads;
  reads.reserve(static_cast<std::size_t>(times));
  for (int i = 0; i < times; ++i) reads.push_back(readOnce(path, policies));
  return reads;
}

std::vector<double> figuresOf(const std::vector<SingleRead>& reads, double SingleRead::* figure) {
  std::vector<double> figures(reads.size());
  std::ranges::transform(reads, figures.begin(), [figure](const SingleRead& read) { return read.*figure; });
  return figures;
}

double medianOf(const std::vector<SingleRead>& reads, double SingleRead::* figure) {
  return median(figuresOf(reads, figure));
}

double fastestOf(const std::vector<SingleRead>& reads, double SingleRead::* figure) {
  return std::ranges::min(figuresOf(reads, figure));
}

std::string writtenFleet(const ScratchFolder& folder) {
  const QuietDevice device;
  const Session session;
  std::string path = folder.path("fleet.bin");
  writeBinary(session.get(), fleetPolicies(session.get()), path);
  return path;
}

std::string writtenCrowd(const ScratchFolder& folder, std::size_t count) {
  const QuietDevice device;
  const Session session;
  std::string path = folder.path("crowd.bin");
  writeOldBinary(fleetPolicies(session.get()), count, path);
  return path;
}

}  // namespace

void measureFirstCall(Report& report) {
  const ScratchFolder folder;
  const std::string path = writtenFleet(folder);
  const auto reads = readOften(path, kFleetSize, 61);
  report.add(Item::kFirstCallTime, medianOf(reads, &SingleRead::nanoseconds) / 1e6, "median of 61 processes");
  report.add(Item::kFirstCallFaults, medianOf(reads, &SingleRead::pageFaults), "median of 61 processes");
  report.add(Item::kLaterCallFaults, medianOf(reads, &SingleRead::laterPageFaults), "median of 61 processes");
  report.add(Item::kReadAllocations, medianOf(reads, &SingleRead::allocations));
  const auto result = static_cast<double>(resultSize(kFleetSize));
  const auto needed = result + static_cast<double>(std::filesystem::file_size(path));
  report.add(Item::kReadPeak, (result + medianOf(reads, &SingleRead::heapBytes)) / needed);
}

void measureGrowth(Report& report) {
  constexpr std::size_t kCrowd = 100'000;
  const ScratchFolder folder;
  const std::string path = writtenCrowd(folder, kCrowd);
  const auto reads = readOften(path, kCrowd, 7);
  const double scale = 1e3 * kCrowd;
  char floor[64];
  std::snprintf(floor, sizeof(floor), "floor %.2f us", fastestOf(reads, &SingleRead::floorNanoseconds) / scale);
  report.add(Item::kGrowthTime, fastestOf(reads, &SingleRead::nanoseconds) / scale, floor);
  const auto needed = static_cast<double>(resultSize(kCrowd) + std::filesystem::file_size(path));
  report.add(Item::kGrowthPeak, medianOf(reads, &SingleRead::peakKilobytes) * 1024 / needed);
}

}  // namespace bench
