// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/binary/captured_output.h"
#include "tests/binary/reading.h"
#include "tests/support/faults.h"
#include "tests/support/results.h"

namespace test {
namespace {

class ReadBinary : public BinaryReading {
 protected:
  static void expectSummary(const SummaryOutcome& outcome, std::uint16_t version1, std::uint16_t version2,
                            std::uint32_t count) {
    EXPECT_EQ(outcome.status, kDone);
    ASSERT_NE(outcome.summary, nullptr);
    EXPECT_EQ(difference(bytesOf(*outcome.summary), Record{64}.u16(4, version1).u16(6, version2).u32(8, count).bytes()),
              "");
  }
  static void expectFailure(const SummaryOutcome& outcome) {
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_TRUE(outcome.untouched);
  }
  static Bytes filesOf(std::size_t count, std::uint16_t version1) {
    return fileOf(std::vector<Entry>(count), {.version1 = version1});
  }
};

TEST_F(ReadBinary, gives_the_versions_and_the_count_and_no_policies) {
  expectSummary(readSummary(file(writtenFile({richPolicy(), smallPolicy()}, 0x1234, 0xFFFF))), 0x1234, 0xFFFF, 2);
  expectSummary(readSummary(file(oldFileOf(3, {narrowEntry()}))), 1, 2, 1);
  expectSummary(readSummary(file(oldFileOf(4, {narrowEntry()}))), 1, 2, 1);
}

TEST_F(ReadBinary, summarises_the_samples) {
  expectSummary(readSummary(samplePath("laptop-r3.bin")), 1, 2, 16);
  expectSummary(readSummary(samplePath("laptop-r4.bin")), 2, 7, 16);
  expectSummary(readSummary(samplePath("laptop-r5.bin")), 3, 41, 16);
  expectSummary(readSummary(samplePath("limits-r5.bin")), 0xFFFF, 0, 2);
  expectSummary(readSummary(samplePath("wide-r5.bin")), 5, 5, 3);
  expectSummary(readSummary(samplePath("fleet-r5.bin")), 9, 9, 400);
}

TEST_F(ReadBinary, does_not_look_at_the_session) {
  const auto path = file(fileOf({{}}));
  for (QtfSession* any : {static_cast<QtfSession*>(session), &closed}) {
    VqsPolicyBinaryV0* summary = nullptr;
    EXPECT_EQ(vqsPbReadBinary(any, path.c_str(), &summary), kDone);
    ASSERT_NE(summary, nullptr);
    SummaryRelease{}(summary);
  }
}

TEST_F(ReadBinary, refuses_a_missing_path_or_out_pointer) {
  VqsPolicyBinaryV0 before;
  VqsPolicyBinaryV0* out = &before;
  EXPECT_EQ(vqsPbReadBinary(nullptr, nullptr, &out), kInvalid);
  EXPECT_EQ(out, &before);
  EXPECT_EQ(vqsPbReadBinary(nullptr, file(fileOf({{}})).c_str(), nullptr), kInvalid);
  EXPECT_EQ(vqsPbReadBinary(nullptr, nullptr, nullptr), kInvalid);
}

TEST_F(ReadBinary, does_not_mind_policies_that_fit_no_8_bit_layout) {
  auto misfit = richPolicy();
  misfit.name = std::u16string{u"\u3042"};
  misfit.texts = {{std::u16string(100, u't'), 9}};
  expectSummary(readSummary(file(writtenFile({misfit}, 1, 2))), 1, 2, 1);
}

TEST_F(ReadBinary, fails_silently_without_a_file_or_with_a_bad_header) {
  CapturedOutput output;
  expectFailure(readSummary(folder_.path("none")));
  for (const Bytes& content : {fileOf({}), fileOf({{}}, {.formatVersion = 2}), fileOf({{}}, {.magic = "$QTX"}),
                               fileOf({{}}, {.revision = 6}), Bytes{1}})
    expectFailure(readSummary(file(content)));
  EXPECT_EQ(output.text(), "");
  expectFailure(readSummary(folder_.path("")));
}

TEST_F(ReadBinary, speaks_exactly_once_of_an_empty_file) {
  CapturedOutput output;
  expectFailure(readSummary(file({})));
  EXPECT_EQ(output.text(), kNotFullyRead);
}

TEST_F(ReadBinary, reads_the_file_twice) {
  const auto path = file(fileOf({{}}));
  Faults faults;
  EXPECT_EQ(readSummary(path).status, kDone);
  EXPECT_EQ(faults.calls(Fault::kOpen), 2);
  EXPECT_EQ(faults.calls(Fault::kTell), 2);
  EXPECT_EQ(faults.openStreams(), 0);
  EXPECT_EQ(faults.outstanding(), 0);
}

// The file may change between the two passes.

TEST_F(ReadBinary, sees_what_the_second_pass_finds) {
  const auto path = file(filesOf(3, 7));
  Faults faults;
  faults.before(Fault::kOpen, 2, [&] { file(filesOf(3, 8)); });
  expectSummary(readSummary(path), 8, 2, 3);
}

TEST_F(ReadBinary, accepts_a_file_that_shrank_in_between) {
  const auto path = file(filesOf(3, 7));
  Faults faults;
  faults.before(Fault::kOpen, 2, [&] { file(filesOf(2, 8)); });
  expectSummary(readSummary(path), 8, 2, 2);
  EXPECT_EQ(faults.outstanding(), 0);
}

TEST_F(ReadBinary, accepts_a_file_that_changed_its_revision_in_between) {
  const auto path = file(filesOf(3, 7));
  Faults faults;
  faults.before(Fault::kOpen, 2, [&] { file(oldFileOf(4, {narrowEntry()}, {}, {.version1 = 8})); });
  expectSummary(readSummary(path), 8, 2, 1);
}

TEST_F(ReadBinary, fails_with_a_file_that_grew_in_between) {
  const auto path = file(filesOf(3, 7));
  Faults faults;
  faults.before(Fault::kOpen, 2, [&] { file(filesOf(4, 7)); });
  expectFailure(readSummary(path));
  EXPECT_EQ(faults.outstanding(), 0);
}

TEST_F(ReadBinary, fails_with_a_file_that_went_bad_in_between) {
  for (const Bytes& second : {filesOf(0, 7), Bytes(100, 0), fileOf({{.conditions = {}}}), Bytes{1}}) {
    const auto path = file(filesOf(3, 7));
    Faults faults;
    faults.before(Fault::kOpen, 2, [&] { file(second); });
    expectFailure(readSummary(path));
    EXPECT_EQ(faults.outstanding(), 0);
    EXPECT_EQ(faults.openStreams(), 0);
  }
}

TEST_F(ReadBinary, speaks_once_of_a_file_that_was_emptied_in_between) {
  const auto path = file(filesOf(3, 7));
  CapturedOutput output;
  Faults faults;
  faults.before(Fault::kOpen, 2, [&] { file({}); });
  expectFailure(readSummary(path));
  EXPECT_EQ(output.text(), kNotFullyRead);
}

TEST_F(ReadBinary, does_not_read_again_what_was_bad_at_first) {
  const auto path = file(filesOf(0, 7));
  Faults faults;
  expectFailure(readSummary(path));
  EXPECT_EQ(faults.calls(Fault::kOpen), 1);
}

}  // namespace
}  // namespace test
