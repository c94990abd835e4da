// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>

#include "format/binary/reader.h"
#include "tests/binary/reading.h"
#include "tests/support/results.h"

// Valid files cut at every length and with every byte changed: a result always, and nothing out of bounds.

namespace test {
namespace {

struct ValidFile {
  const char* name;
  Bytes file;
  /// where the last entry ends
  std::size_t needed;
  /// where the head's version numbers end and the reserved bytes lie that nobody reads
  std::size_t headerSize;
};

Entry narrowFull() {
  auto entry = wideEntry(richPolicy());
  entry.name = characters("Full");
  entry.texts = {{hex("61 62 00"), 1}, {characters("second text?"), 0}};
  return entry;
}

std::vector<ValidFile> validFiles() {
  auto shortFull = narrowFull();
  shortFull.shortActions = true;
  const Bytes revision5 = writtenFile({richPolicy(), smallPolicy()}, 1, 2);
  const Bytes revision4 = oldFileOf(4, {narrowFull(), narrowEntry()});
  const Bytes revision3 = oldFileOf(3, {shortFull, narrowEntry()});
  return {{"revision 5", revision5, revision5.size() - 6, 16},
          {"revision 4", revision4, revision4.size(), 64},
          {"revision 3", revision3, revision3.size(), 64}};
}

constexpr std::uint8_t kValues[] = {0x00, 0x01, 0x7F, 0x80, 0xFF};

/// Changes one byte in place.
void change(const std::string& path, std::size_t at, std::uint8_t value) {
  std::fstream stream{path, std::ios::binary | std::ios::in | std::ios::out};
  stream.seekp(static_cast<std::streamoff>(at));
  stream.put(static_cast<char>(value));
  ASSERT_TRUE(stream.good());
}

class DamagedFiles : public BinaryReading {
 protected:
  /// Reads with both readers; true when both take the file. A refusal touches nothing.
  bool taken(const std::string& path, std::uint32_t version) {
    const auto outcome = read(path, version);
    const auto summary = readSummary(path);
    EXPECT_LE(outcome.status, 1U);
    EXPECT_EQ(outcome.size, kRoom);
    if (outcome.status == kDone) {
      EXPECT_EQ(summary.status, kDone);
      return true;
    }
    EXPECT_EQ(difference(outcome.buffer, Bytes(outcome.buffer.size(), kPoison)), "");
    // A count that asks for more room than there was is no damage to a summary.
    EXPECT_EQ(summary.untouched, summary.status == kFailed);
    return false;
  }
};

TEST_F(DamagedFiles, are_refused_when_cut_before_the_end_of_the_last_entry) {
  for (const auto& [name, whole, needed, headerSize] : validFiles()) {
    const auto path = file(whole);
    for (std::size_t size = whole.size(); size > 0; --size) {
      std::filesystem::resize_file(path, size);
      EXPECT_EQ(taken(path, 2), size >= needed) << name << " cut to " << size;
    }
  }
}

TEST_F(DamagedFiles, end_in_a_result_whatever_a_byte_becomes) {
  for (const auto& [name, whole, needed, headerSize] : validFiles()) {
    const auto path = file(whole);
    std::size_t refusals = 0;
    for (std::size_t at = 0; at < whole.size(); ++at) {
      for (const std::uint8_t value : kValues) {
        change(path, at, value);
        const bool result = taken(path, static_cast<std::uint32_t>(at % 3));
        EXPECT_TRUE(at < needed || result) << name << " byte " << at;
        EXPECT_FALSE(at < 2 && value != whole[at] && result) << name << " byte " << at;
        if (!result) ++refusals;
      }
      change(path, at, whole[at]);
    }
    EXPECT_TRUE(taken(path, 2));
    EXPECT_GT(refusals, 100U) << name;
  }
}

/// Parses a file that lies in memory of exactly its size.
void parseExactly(const Bytes& content) {
  const auto memory = std::make_unique<std::byte[]>(content.size());
  std::ranges::copy(std::as_bytes(std::span{content}), memory.get());
  const std::span<const std::byte> bytes{memory.get(), content.size()};
  const std::uint32_t count = vqs::announcedPolicyCount(bytes);
  if (count == 0 || vqs::headerDefect(bytes).kind != vqs::DefectKind::kNone) return;
  std::vector<vqs::PackedPolicy> policies(count);
  vqs::BinaryVersions versions{};
  if (!vqs::readBinary(bytes, policies, versions)) return;
  for (const auto& policy : policies) {
    EXPECT_TRUE(policy.conditionCount >= 1 && policy.conditionCount <= 15);
    EXPECT_LE(policy.textCount, 5U);
    EXPECT_LE(policy.actionCount, 32U);
  }
}

TEST_F(DamagedFiles, the_samples_hold_within_their_bounds_cut_or_changed_anywhere) {
  for (const char* name : {"laptop-r3.bin", "laptop-r4.bin", "laptop-r5.bin", "limits-r5.bin", "wide-r5.bin"}) {
    const Bytes whole = sample(name);
    ASSERT_FALSE(whole.empty());
    for (std::size_t at = 0; at < whole.size(); ++at) {
      parseExactly({whole.begin(), whole.begin() + static_cast<long>(at)});
      Bytes damaged = whole;
      for (const int value : {0x00, 0x05, 0x10, 0x21, 0x80, 0xFF}) {
        damaged[at] = static_cast<std::uint8_t>(value);
        parseExactly(damaged);
      }
    }
  }
}

TEST_F(DamagedFiles, every_word_may_be_as_large_as_it_can) {
  for (const auto& [name, whole, needed, headerSize] : validFiles())
    for (std::size_t at = headerSize; at + 4 <= needed; ++at)
      for (const std::uint32_t value : {0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU, 0x00010000U}) {
        Record damaged{whole.size()};
        damaged.put(0, whole).u32(at, value);
        parseExactly(damaged);
      }
}

}  // namespace
}  // namespace test
