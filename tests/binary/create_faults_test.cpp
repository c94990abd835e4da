// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <functional>

#include <vqs/policy_binary.h>
#include "tests/binary/captured_output.h"
#include "tests/support/faults.h"
#include "tests/support/policy_file.h"
#include "tests/support/results.h"
#include "tests/support/stub_store.h"
#include "tests/support/temporary_folder.h"

// Every allocation, open and write of the exports that create files, failing in turn.

namespace test {
namespace {

const Bytes kOld = {'o', 'l', 'd'};

class CreateFaults : public testing::Test {
 protected:
  using Call = std::function<vqsStatus()>;

  /// Makes the 1st, 2nd, ... call of one kind fail until the export no longer makes that many. Returns the results.
  std::vector<vqsStatus> failEach(Fault what, const Call& call) {
    std::vector<vqsStatus> results;
    for (int nth = 1; nth < 100; ++nth) {
      folder_.write("out.bin", kOld);
      Faults faults;
      faults.fail(what, nth);
      const vqsStatus result = call();
      EXPECT_EQ(faults.outstanding(), 0) << "call " << nth;
      EXPECT_EQ(faults.openStreams(), 0) << "call " << nth;
      if (faults.calls(what) < nth) {
        EXPECT_EQ(result, kDone);
        return results;
      }
      EXPECT_EQ(readFile(path_) == kOld, result != kDone) << "call " << nth;
      results.push_back(result);
    }
    ADD_FAILURE() << "the export never succeeds";
    return results;
  }

  void expectFromDriver(const Call& call, std::size_t allocations) {
    EXPECT_EQ(failEach(Fault::kAllocation, call), std::vector<vqsStatus>(allocations, kFailed));
    EXPECT_EQ(failEach(Fault::kOpen, call), std::vector<vqsStatus>{kFailed});
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.path("out.bin");
  StubStore store_{{packedPolicy(smallPolicy()), packedPolicy(richPolicy())}};
  Bytes bodies_ = joined({policyBody(0, smallPolicy()), policyBody(0, smallPolicy())});
  Bytes list_ = joined({Record{16}.u32(0, 0).u32(4, 2).u64(8, 1608), bodies_});

  Call createBinary_ = [this] {
    return vqsPbCreateBinary(nullptr, reinterpret_cast<VqsPolicyV0*>(bodies_.data()), 2, 1, 2, path_.c_str());
  };
  Call createBinaryV2_ = [this] {
    return vqsPbCreateBinaryV2(store_.session(), reinterpret_cast<VqsPolicyListV2*>(list_.data()), 1, 2, path_.c_str());
  };
  Call pbFromDriver_ = [this] { return vqsPbCreateBinaryFromDriver(store_.session(), path_.c_str(), 1, 2); };
  Call asmFromDriver_ = [this] { return vqsAsmCreateBinaryFromDriver(store_.session(), path_.c_str(), 0, 0, 0); };
  Call asmRegistry_ = [this] { return vqsAsmCreateBinaryFromDriver(store_.session(), path_.c_str(), 1, 2, 1); };
  Call balanceProfileFromDriver_ = [this] {
    return vqsBalanceProfileCreateBinaryFromDriver(store_.session(), path_.c_str(), 0, 0, 1);
  };
};

TEST_F(CreateFaults, memory_for_the_packed_policies_gives_3_and_for_the_file_1) {
  const std::vector<vqsStatus> expected = {kNoMemory, kFailed};
  EXPECT_EQ(failEach(Fault::kAllocation, createBinary_), expected);
  EXPECT_EQ(failEach(Fault::kAllocation, createBinaryV2_), expected);
}

TEST_F(CreateFaults, a_file_that_does_not_open_gives_1) {
  EXPECT_EQ(failEach(Fault::kOpen, createBinary_), std::vector<vqsStatus>{kFailed});
  EXPECT_EQ(failEach(Fault::kOpen, createBinaryV2_), std::vector<vqsStatus>{kFailed});
}

TEST_F(CreateFaults, memory_is_asked_for_before_size_and_version_are_looked_at) {
  list_ = Record{16}.u32(0, 9).u32(4, 2).u64(8, 0);
  Faults faults;
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(createBinaryV2_(), 3U);
  EXPECT_EQ(createBinaryV2_(), 1U);
}

TEST_F(CreateFaults, a_count_that_no_memory_can_hold_gives_3) {
  Faults faults;
  faults.fail(Fault::kAllocation, 1);
  EXPECT_EQ(vqsPbCreateBinary(nullptr, reinterpret_cast<VqsPolicyV0*>(bodies_.data()), 0xFFFFFFFF, 1, 2, path_.c_str()),
            kNoMemory);
  EXPECT_FALSE(fileExists(path_));
}

TEST_F(CreateFaults, from_the_driver_every_lack_of_memory_gives_1_and_never_3) {
  expectFromDriver(pbFromDriver_, 3);
  expectFromDriver(asmFromDriver_, 4);
  expectFromDriver(asmRegistry_, 3);
  expectFromDriver(balanceProfileFromDriver_, 3);
}

TEST_F(CreateFaults, a_failed_write_goes_unnoticed) {
  for (const auto& call :
       {createBinary_, createBinaryV2_, pbFromDriver_, asmFromDriver_, asmRegistry_, balanceProfileFromDriver_}) {
    Faults faults;
    faults.fail(Fault::kWrite, 1);
    EXPECT_EQ(call(), kDone);
    EXPECT_EQ(faults.openStreams(), 0);
    EXPECT_EQ(faults.outstanding(), 0);
  }
}

TEST_F(CreateFaults, a_binary_is_written_with_one_call) {
  for (const auto& call : {createBinary_, createBinaryV2_, pbFromDriver_, asmFromDriver_}) {
    Faults faults;
    EXPECT_EQ(call(), kDone);
    EXPECT_EQ(faults.calls(Fault::kWrite), 1);
    EXPECT_EQ(faults.calls(Fault::kOpen), 1);
  }
}

TEST_F(CreateFaults, the_file_is_opened_when_all_its_bytes_stand_ready) {
  Faults faults;
  std::size_t requests = 0;
  int allocations = 0;
  faults.before(Fault::kOpen, 1, [&] {
    requests = store_.codes().size();
    allocations = faults.calls(Fault::kAllocation);
  });
  EXPECT_EQ(asmFromDriver_(), 0U);
  EXPECT_EQ(requests, store_.codes().size());
  EXPECT_EQ(allocations, faults.calls(Fault::kAllocation));
}

TEST_F(CreateFaults, nothing_is_ever_printed) {
  CapturedOutput output;
  for (const Fault what : {Fault::kAllocation, Fault::kOpen, Fault::kWrite})
    for (const auto& call :
         {createBinary_, createBinaryV2_, pbFromDriver_, asmFromDriver_, balanceProfileFromDriver_}) {
      Faults faults;
      faults.fail(what, 1);
      EXPECT_EQ(call() == 0, what == Fault::kWrite);
    }
  EXPECT_EQ(output.text(), "");
}

TEST_F(CreateFaults, nothing_leaks_whichever_request_fails) {
  for (int nth = 1; nth <= 3; ++nth) {
    StubStore store{{packedPolicy(smallPolicy())}};
    store.failAt(nth);
    Faults faults;
    EXPECT_EQ(vqsAsmCreateBinaryFromDriver(store.session(), path_.c_str(), 0, 0, 0), kFailed);
    EXPECT_EQ(faults.outstanding(), 0);
    EXPECT_EQ(faults.calls(Fault::kOpen), 0);
    EXPECT_EQ(store.codes().size(), static_cast<std::size_t>(nth));
  }
}

}  // namespace
}  // namespace test
