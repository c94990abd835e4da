// SPDX-License-Identifier: Apache-2.0
#include "src/binary/registry_export.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "tests/support/faults.h"
#include "tests/support/results.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

using vqs::RegistryExportKind;

constexpr std::string_view kHead =
    "Windows Registry Editor Version 5.00\n\n"
    "[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\vexoqtf\\Parameters]\n";

struct Written {
  vqsStatus result;
  std::string text;
};

Written written(const Bytes& binary, RegistryExportKind kind) {
  const TemporaryFolder folder;
  const auto path = folder.path("text.reg");
  std::FILE* stream = std::fopen(path.c_str(), "wb");
  const vqsStatus result = vqs::writeRegistryExport(stream, std::as_bytes(std::span{binary}), kind);
  std::fclose(stream);
  const Bytes text = readFile(path);
  return {result, {text.begin(), text.end()}};
}

TEST(WriteRegistryExport, writes_a_key_and_one_value_in_lower_case_hexadecimal) {
  const auto [result, text] = written(hex("00 01 0a AB ff"), RegistryExportKind::kAsm);
  EXPECT_EQ(result, kDone);
  EXPECT_EQ(text, std::string{kHead} + "\"AsmCurrentRegkeyPolicy\"=hex:00,01,0a,ab,ff\n");
}

TEST(WriteRegistryExport, names_the_value_after_the_store) {
  const auto [result, text] = written({0x7F}, RegistryExportKind::kBalanceProfile);
  EXPECT_EQ(result, kDone);
  EXPECT_EQ(text, std::string{kHead} + "\"BalanceProfileCurrentRegkeyPolicy\"=hex:7f\n");
}

TEST(WriteRegistryExport, falls_back_to_the_empty_value_name_for_an_unknown_kind) {
  for (const std::uint32_t kind : {3U, 4U, 0xFFFFFFFFU}) {
    const auto [result, text] = written({1, 2}, static_cast<RegistryExportKind>(kind));
    EXPECT_EQ(result, kDone);
    EXPECT_EQ(text, std::string{kHead} + "\"\"=hex:01,02\n");
  }
}

TEST(WriteRegistryExport, writes_nothing_for_no_kind) {
  const auto [result, text] = written({1, 2}, RegistryExportKind::kNone);
  EXPECT_EQ(result, kFailed);
  EXPECT_EQ(text, "");
}

TEST(WriteRegistryExport, needs_stream_data_and_size) {
  const Bytes binary = {1};
  const auto bytes = std::as_bytes(std::span{binary});
  EXPECT_EQ(vqs::writeRegistryExport(nullptr, bytes, RegistryExportKind::kAsm), kInvalid);
  EXPECT_EQ(written({}, RegistryExportKind::kAsm).result, kInvalid);
  const TemporaryFolder folder;
  const auto path = folder.path("text.reg");
  std::FILE* stream = std::fopen(path.c_str(), "wb");
  EXPECT_EQ(vqs::writeRegistryExport(stream, {}, RegistryExportKind::kAsm), kInvalid);
  EXPECT_EQ(vqs::writeRegistryExport(stream, bytes.first(0), RegistryExportKind::kAsm), kInvalid);
  EXPECT_EQ(vqs::writeRegistryExport(stream, {}, RegistryExportKind::kNone), kInvalid);
  std::fclose(stream);
  EXPECT_EQ(readFile(path), Bytes{});
}

TEST(WriteRegistryExport, keeps_one_line_however_long_the_binary_is) {
  for (const std::size_t size : {79U, 1023U, 1024U, 1025U, 2048U, 100000U}) {
    const auto [result, text] = written(Bytes(size, 0xC3), RegistryExportKind::kAsm);
    EXPECT_EQ(result, kDone);
    std::string expected = std::string{kHead} + "\"AsmCurrentRegkeyPolicy\"=hex:";
    for (std::size_t i = 1; i < size; ++i) expected += "c3,";
    expected += "c3\n";
    EXPECT_TRUE(text == expected) << size;
    EXPECT_EQ(std::ranges::count(text, '\n'), 4) << size;
    EXPECT_EQ(std::ranges::count(text, '\r'), 0) << size;
    EXPECT_EQ(std::ranges::count(text, ','), static_cast<std::ptrdiff_t>(size - 1)) << size;
  }
}

TEST(WriteRegistryExport, does_not_notice_failed_output) {
  Faults faults;
  faults.failFrom(Fault::kWrite, 1);
  EXPECT_EQ(written({1, 2}, RegistryExportKind::kAsm).result, kDone);
}

}  // namespace
}  // namespace test
