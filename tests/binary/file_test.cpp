// SPDX-License-Identifier: Apache-2.0
#include "src/binary/file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <numeric>

#include "tests/binary/captured_output.h"
#include "tests/support/faults.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

struct Loaded {
  bool done;
  Bytes bytes;
  std::string said;
};

std::uint64_t everything(std::span<const std::byte> /*head*/) { return UINT64_MAX; }

Loaded load(const std::string& path, vqs::UsefulBytes usefulBytes = everything) {
  CapturedOutput output;
  const auto file = vqs::loadFile(path.c_str(), usefulBytes);
  Loaded loaded{.done = file.has_value(), .bytes = {}, .said = output.text()};
  if (file)
    for (const std::byte byte : file->bytes()) loaded.bytes.push_back(static_cast<std::uint8_t>(byte));
  return loaded;
}

TEST(LoadFile, gives_all_bytes_and_says_nothing) {
  const TemporaryFolder folder;
  Bytes content(70000);
  std::iota(content.begin(), content.end(), std::uint8_t{0});
  const auto loaded = load(folder.write("file", content));
  EXPECT_TRUE(loaded.done);
  EXPECT_TRUE(loaded.bytes == content);
  EXPECT_EQ(loaded.said, "");
}

TEST(LoadFile, tells_of_an_empty_file_since_its_one_item_cannot_be_read) {
  const TemporaryFolder folder;
  const auto loaded = load(folder.write("file", {}));
  EXPECT_FALSE(loaded.done);
  EXPECT_EQ(loaded.said, kNotFullyRead);
}

TEST(LoadFile, is_silent_about_a_file_that_is_not_there) {
  const TemporaryFolder folder;
  const auto loaded = load(folder.path("none"));
  EXPECT_FALSE(loaded.done);
  EXPECT_EQ(loaded.said, "");
}

TEST(LoadFile, gives_no_more_bytes_than_are_of_use) {
  const TemporaryFolder folder;
  Bytes content(70000);
  std::iota(content.begin(), content.end(), std::uint8_t{0});
  const auto path = folder.write("file", content);
  for (const std::size_t useful : {std::size_t{1000}, std::size_t{69999}, std::size_t{64}}) {
    static std::uint64_t wanted;
    wanted = useful;
    const auto loaded = load(path, [](std::span<const std::byte> /*head*/) { return wanted; });
    EXPECT_TRUE(loaded.bytes == Bytes(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(useful)));
  }
}

TEST(LoadFile, judges_a_file_by_its_first_64_bytes) {
  const TemporaryFolder folder;
  static Bytes seen;
  for (const std::size_t size : {1U, 63U, 64U, 65U, 1000U}) {
    load(folder.write("file", Bytes(size, 7)), [](std::span<const std::byte> head) {
      seen.assign(head.size(), static_cast<std::uint8_t>(head.back()));
      return std::uint64_t{1};
    });
    EXPECT_EQ(seen, Bytes(std::min<std::size_t>(size, 64), 7));
  }
}

TEST(LoadFile, refuses_without_a_word_and_without_memory_what_is_of_no_use) {
  const TemporaryFolder folder;
  const auto path = folder.write("file", Bytes(70000, 7));
  Faults faults;
  const auto loaded = load(path, [](std::span<const std::byte> /*head*/) { return std::uint64_t{0}; });
  EXPECT_FALSE(loaded.done);
  EXPECT_EQ(loaded.said, "");
  EXPECT_EQ(faults.calls(Fault::kRead), 1);
  EXPECT_EQ(faults.openStreams(), 0);
}

TEST(LoadFile, reads_128_KiB_at_once_and_of_more_the_head_first_and_closes_the_file) {
  const TemporaryFolder folder;
  for (const std::size_t size : {std::size_t{100}, std::size_t{131072}, std::size_t{131073}}) {
    const auto path = folder.write("file", Bytes(size, 7));
    Faults faults;
    EXPECT_TRUE(load(path).done);
    EXPECT_EQ(faults.calls(Fault::kOpen), 1);
    EXPECT_EQ(faults.calls(Fault::kRead), size <= 131072 ? 1 : 2);
    EXPECT_EQ(faults.calls(Fault::kTell), 1);
    EXPECT_EQ(faults.openStreams(), 0);
    EXPECT_EQ(faults.outstanding(), 0);
  }
}

TEST(LoadFile, takes_no_memory_for_a_large_file_that_is_of_no_use) {
  const TemporaryFolder folder;
  const auto path = folder.write("file", Bytes(131073, 7));
  Faults faults;
  EXPECT_FALSE(load(path, [](std::span<const std::byte> /*head*/) { return std::uint64_t{0}; }).done);
  EXPECT_EQ(faults.peakBytes(), 0U);
}

TEST(LoadFile, gives_nothing_when_any_step_fails_and_speaks_only_of_the_read) {
  const TemporaryFolder folder;
  const auto path = folder.write("file", Bytes(131073, 7));
  const struct {
    Fault what;
    int nth;
    std::string_view said;
  } cases[] = {{Fault::kOpen, 1, ""},           {Fault::kSeek, 1, ""},       {Fault::kSeek, 2, ""},
               {Fault::kTell, 1, ""},           {Fault::kAllocation, 1, ""}, {Fault::kRead, 1, kNotFullyRead},
               {Fault::kRead, 2, kNotFullyRead}};
  for (const auto& [what, nth, said] : cases) {
    Faults faults;
    faults.fail(what, nth);
    const auto loaded = load(path);
    EXPECT_FALSE(loaded.done) << static_cast<int>(what);
    EXPECT_EQ(loaded.said, said) << static_cast<int>(what);
    EXPECT_EQ(faults.openStreams(), 0);
    EXPECT_EQ(faults.outstanding(), 0);
  }
}

TEST(LoadFile, refuses_four_gibibytes_before_allocating) {
  const TemporaryFolder folder;
  const auto path = folder.write("sparse", {1});
  for (const std::uintmax_t beyond : {0U, 79U}) {
    std::filesystem::resize_file(path, (std::uintmax_t{1} << 32) + beyond);
    Faults faults;
    const auto loaded = load(path);
    EXPECT_FALSE(loaded.done);
    EXPECT_EQ(loaded.said, "");
    EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
    EXPECT_EQ(faults.calls(Fault::kRead), 0);
  }
}

TEST(LoadFile, gives_nothing_for_a_folder) {
  const TemporaryFolder folder;
  Faults faults;
  EXPECT_FALSE(load(folder.path("")).done);
  EXPECT_EQ(faults.openStreams(), 0);
  EXPECT_EQ(faults.outstanding(), 0);
}

TEST(OpenFile, creates_or_truncates_for_writing) {
  const TemporaryFolder folder;
  const auto path = folder.write("old", Bytes(1000, 9));
  {
    const auto file = vqs::openFile(path.c_str(), "wb");
    ASSERT_TRUE(file);
    const Bytes bytes = {1, 2, 3};
    vqs::writeBytes(file.get(), std::as_bytes(std::span{bytes}));
  }
  EXPECT_EQ(readFile(path), (Bytes{1, 2, 3}));
  EXPECT_TRUE(vqs::openFile(folder.path("new").c_str(), "wb"));
  EXPECT_TRUE(fileExists(folder.path("new")));
  EXPECT_FALSE(vqs::openFile(folder.path("no/folder").c_str(), "wb"));
}

}  // namespace
}  // namespace test
