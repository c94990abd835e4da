// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <string>

#include <vqs/session.h>
#include "tests/support/bytes.h"
#include "tests/support/faults.h"
#include "tests/support/results.h"
#include "tests/support/windows_calls.h"

namespace test {
namespace {

using ::testing::TestWithParam;
using ::testing::Values;
using Words = std::array<std::uint32_t, 4>;

constexpr Words kUntouched = {kPoisonWord, kPoisonWord, kPoisonWord, kPoisonWord};
constexpr Words kZero = {0, 0, 0, 0};

struct Query {
  const char* title;
  vqsStatus (*get)(std::uint32_t*);
  std::string file;
  Words afterFailure;
};

/// Every word different from every other, the signature included.
VS_FIXEDFILEINFO fileInformation(DWORD fileHigh, DWORD fileLow, DWORD productHigh, DWORD productLow) {
  VS_FIXEDFILEINFO info{};
  info.dwSignature = 0xFEEF04BD;
  info.dwStrucVersion = 0x00010000;
  info.dwFileVersionMS = fileHigh;
  info.dwFileVersionLS = fileLow;
  info.dwProductVersionMS = productHigh;
  info.dwProductVersionLS = productLow;
  info.dwFileFlagsMask = 0x3F;
  info.dwFileOS = 0x00040004;
  return info;
}

class Version : public TestWithParam<Query> {
 protected:
  Version() { host::setFileVersion(GetParam().file, fileInformation(0x00030004, 0x00050006, 0x00070008, 0x0009000A)); }
  ~Version() override { host::removeFileVersion(GetParam().file); }
  void TearDown() override { EXPECT_EQ(faults.outstanding(), 0); }

  void expectFailure() {
    EXPECT_EQ(GetParam().get(words.data()), kFailed);
    EXPECT_EQ(words, GetParam().afterFailure);
  }

  Faults faults;
  Words words = kUntouched;
};

TEST_P(Version, is_product_major_file_minor_and_the_fourth_number_before_the_third) {
  EXPECT_EQ(GetParam().get(words.data()), kDone);
  EXPECT_EQ(words, (Words{7, 4, 6, 5}));
}

TEST_P(Version, words_are_zero_extended) {
  host::setFileVersion(GetParam().file, fileInformation(0x1111FFFF, 0xFFFE8001, 0x80002222, 0x33334444));
  EXPECT_EQ(GetParam().get(words.data()), kDone);
  EXPECT_EQ(words, (Words{0x8000, 0xFFFF, 0x8001, 0xFFFE}));
}

TEST_P(Version, asks_for_the_root_block_of_the_bare_file_name) {
  WindowsCalls calls;
  EXPECT_EQ(GetParam().get(words.data()), kDone);
  const std::vector<std::string> expected = {
      "GetFileVersionInfoSizeA(" + GetParam().file + ")",
      "GetFileVersionInfoA(" + GetParam().file + ", 0, 52)",
      "VerQueryValueA(\\, 52)",
  };
  EXPECT_EQ(calls.all(), expected);
}

TEST_P(Version, refuses_a_null_pointer_before_anything_else) {
  WindowsCalls calls;
  EXPECT_EQ(GetParam().get(nullptr), kInvalid);
  EXPECT_TRUE(calls.all().empty());
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(Version, fails_for_a_missing_file) {
  host::removeFileVersion(GetParam().file);
  WindowsCalls calls;
  expectFailure();
  EXPECT_EQ(calls.all().size(), 1U);
}

TEST_P(Version, fails_when_the_resource_cannot_be_read) {
  WindowsCalls calls;
  calls.refuse("GetFileVersionInfoA");
  expectFailure();
  EXPECT_TRUE(calls.of("VerQueryValueA").empty());
}

TEST_P(Version, fails_when_the_resource_has_no_root_block) {
  WindowsCalls calls;
  calls.refuse("VerQueryValueA");
  expectFailure();
}

TEST_P(Version, fails_with_1_when_its_one_buffer_cannot_be_allocated) {
  EXPECT_EQ(GetParam().get(words.data()), kDone);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 1);
  EXPECT_EQ(faults.peakBytes(), 52U);
  words = kUntouched;
  faults.fail(Fault::kAllocation, 1);
  WindowsCalls calls;
  expectFailure();
  EXPECT_TRUE(calls.of("GetFileVersionInfoA").empty());
}

INSTANTIATE_TEST_SUITE_P(Of, Version,
                         Values(Query{"Library", vqsGetVersion, "VexoQTFServices.dll", kUntouched},
                                Query{"Driver", vqsGetDriverVersion, "vexoqtf.sys", kZero}),
                         [](const auto& instance) { return std::string{instance.param.title}; });

TEST(Versions, of_library_and_driver_are_two_files) {
  host::setFileVersion("vexoqtf.sys", fileInformation(0x00010002, 0x00030004, 0x00050006, 0));
  Words words = kUntouched;
  EXPECT_EQ(vqsGetVersion(words.data()), kFailed);
  EXPECT_EQ(vqsGetDriverVersion(words.data()), kDone);
  EXPECT_EQ(words, (Words{5, 2, 4, 3}));
  host::removeFileVersion("vexoqtf.sys");
  EXPECT_EQ(vqsGetDriverVersion(words.data()), kFailed);
  EXPECT_EQ(words, kZero);
}

}  // namespace
}  // namespace test
