// SPDX-License-Identifier: Apache-2.0
#include <vqs/policy_binary.h>
#include "bench/families.h"
#include "bench/harness/floor.h"
#include "bench/harness/policies.h"
#include "bench/harness/quiet_device.h"
#include "bench/harness/scratch_folder.h"

namespace bench {
namespace {

/// A policy binary, and what a client needs to read it.
class Binary {
 public:
  Binary(QtfSession* session, std::span<const VqsPolicyV2> policies, std::string path)
      : session_(session), path_(std::move(path)), result_(policies.size()) {
    writeBinary(session, policies, path_);
    read();
    require(std::memcmp(result_.policies().data(), policies.data(), policies.size_bytes()) == 0, "what was written");
  }

  void read() { readThroughExport(session_, path_, result_); }
  void askForSize() {
    std::uint64_t size = 0;
    vqsPbReadBinaryV2(session_, path_.c_str(), result_.head(), &size, VQS_STRUCTURE_VERSION_2);
    require(size == result_.bytes.size(), "the size of a result");
  }
  [[nodiscard]] Floor floor() const { return {path_, result_.bytes.size()}; }
  [[nodiscard]] WholeFile file() const { return WholeFile{path_}; }

 private:
  QtfSession* session_;
  std::string path_;
  Result result_;
};

/// Binaries with a session of their own.
class Binaries {
 public:
  Binary fleet(std::size_t count) { return binary(fleetPolicies(session_.get()), count); }
  Binary full(std::size_t count) { return binary(fullPolicies(count), count); }

 private:
  Binary binary(const std::vector<VqsPolicyV2>& policies, std::size_t count) {
    return {session_.get(), std::span{policies}.first(count), folder_.path("policies.bin")};
  }

  ScratchFolder folder_;
  QuietDevice device_;
  Session session_;
};

void measureRead(Report& report, Item item, Binary binary) {
  report.addRatio(item, compare([&] { binary.read(); }, binary.floor()));
}

void measureSizeCall(Report& report, Item item, Binary binary) {
  WholeFile file = binary.file();
  report.addRatio(item, compare([&] { binary.askForSize(); }, [&] { keep(file.read().data()); }));
}

}  // namespace

void measureNoise(Report& report) {
  Binaries binaries;
  for (const std::size_t count : {std::size_t{1}, kFleetSize}) {
    Binary binary = binaries.fleet(count);
    const auto read = [&] { binary.read(); };
    const Comparison comparison = compare(read, read);
    report.add(Item::kSameTwice, std::max(comparison.ratio(), 1 / comparison.ratio()));
  }
}

void measureReads(Report& report) {
  Binaries binaries;
  measureRead(report, Item::kReadFleet1, binaries.fleet(1));
  measureRead(report, Item::kReadFleet20, binaries.fleet(20));
  measureRead(report, Item::kReadFleet400, binaries.fleet(400));
  measureRead(report, Item::kReadFull1, binaries.full(1));
  measureRead(report, Item::kReadFull20, binaries.full(20));
  measureRead(report, Item::kReadFull400, binaries.full(400));
}

void measureSizeCalls(Report& report) {
  Binaries binaries;
  measureSizeCall(report, Item::kSize1, binaries.fleet(1));
  measureSizeCall(report, Item::kSize20, binaries.fleet(20));
  measureSizeCall(report, Item::kSize400, binaries.fleet(400));
}

}  // namespace bench
