// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <random>

#include "tests/simulator/embedded/client.h"

// State files of simulators that kept less than the present one, and of those that keep more: which blocks a file has,
// and how long they are, is for its head to say.

namespace test {
namespace {

constexpr std::size_t kHead = 4096;
constexpr std::uint32_t kSliderV4Table = 0x80222090;

struct Block {
  std::string name;
  Bytes content;
};
using Blocks = std::vector<Block>;

Blocks blocksOf(const Bytes& file) {
  Blocks blocks;
  for (std::size_t i = 0; i < word(file, 12); ++i) {
    const Bytes row = part(file, 16 + 12 * i, 12);
    blocks.push_back({{row.begin(), row.begin() + 4}, part(file, kHead + word(row, 4), word(row, 8))});
  }
  return blocks;
}

/// A file of format 3: its blocks one behind the other, each at a multiple of 8 bytes.
Bytes fileOf(const Blocks& blocks) {
  Record head = Record{kHead}.text(0, "VQSSTATE").u32(8, 3).u32(12, static_cast<std::uint32_t>(blocks.size()));
  Bytes content;
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    const Block& block = blocks[i];
    head.text(16 + 12 * i, block.name).u32(20 + 12 * i, static_cast<std::uint32_t>(content.size()));
    head.u32(24 + 12 * i, static_cast<std::uint32_t>(block.content.size()));
    content.insert(content.end(), block.content.begin(), block.content.end());
    content.resize((content.size() + 7) / 8 * 8);
  }
  Bytes file = head.bytes();
  file.insert(file.end(), content.begin(), content.end());
  return file;
}

Block& named(Blocks& blocks, const std::string& name) { return *std::ranges::find(blocks, name, &Block::name); }
void drop(Blocks& blocks, const std::string& name) {
  std::erase_if(blocks, [&](const auto& it) { return it.name == name; });
}
void shorten(Blocks& blocks, const std::string& name, std::size_t size) { named(blocks, name).content.resize(size); }

class StateLayout : public testing::Test {
 protected:
  /// Policies 9 and 7, a version, both inputs, a table.
  void SetUp() override {
    OpenDriver driver{path};
    for (const std::uint32_t id : {9U, 7U}) ASSERT_EQ(add(*driver, kModifyPb, id), 0);
    ASSERT_FALSE(request(*driver, kModifyAsm, modifyRequest(6).u32(3988, 3).u32(3992, 5)).empty());
    ASSERT_FALSE(request(*driver, kAppIo, Record{12}.u32(0, 4).u32(4, 5).u32(8, 6)).empty());
    ASSERT_FALSE(request(*driver, kSliderV4Table, Record{16}.u32(0, 1).u8(13, 9)).empty());
  }

  Bytes present() { return readFile(path); }

  /// A driver that found what SetUp left, but perhaps the table, in a file that has the present layout now.
  void expectRead(const Blocks& blocks, std::uint8_t tableByte = 9) {
    const Bytes head = part(present(), 0, kHead);
    const auto size = std::filesystem::file_size(path);
    folder.write("state", fileOf(blocks));
    for (int time = 0; time < 2; ++time) {
      OpenDriver driver{path};
      ASSERT_TRUE(driver.isOpen());
      EXPECT_EQ(ids(*driver, kReadPb), (Ids{9, 7}));
      EXPECT_EQ(part(request(*driver, kModifyAsm, modifyRequest(7)), 3988, 8), hex("03 00 00 00  05 00 00 00"));
      EXPECT_EQ(request(*driver, kAppIo, Record{12}), Record{12}.u32(4, 5).u32(8, 6).bytes());
      EXPECT_EQ(request(*driver, kSliderV4Table, Record{16}), Record{16}.u8(13, tableByte).bytes());
    }
    EXPECT_EQ(part(present(), 0, kHead), head);
    EXPECT_EQ(std::filesystem::file_size(path), size);
    EXPECT_EQ(namesIn(folder.path("")), std::vector<std::string>{"state"});
  }

  void expectRefused(const Bytes& file, const std::string& reason) {
    folder.write("state", file);
    Errors errors;
    EXPECT_FALSE(OpenDriver{path}.isOpen());
    EXPECT_EQ(errors.take(), "vexoqtf simulator: " + path + " " + reason + "\n");
    EXPECT_TRUE(readFile(path) == file) << "the file stays as it is";
  }

  TemporaryFolder folder;
  std::string path = folder.path("state");
};

constexpr const char* kNewer = "was written by a newer simulator, which keeps more than this one";
constexpr const char* kOther = "lays its content out in another way";

TEST_F(StateLayout, without_blocks_that_came_later_is_read) {
  Blocks blocks = blocksOf(present());
  for (const char* name : {"UNRD", "BINA", "EVNT", "LOGS"}) {
    drop(blocks, name);
    expectRead(blocks);
  }
}

TEST_F(StateLayout, whose_blocks_have_grown_since_is_read_with_zeros_behind_them) {
  Blocks blocks = blocksOf(present());
  // The last table of the settings, and what none of them had when there were inputs only.
  for (const std::size_t size : {3028U, 504U}) {
    shorten(blocks, "SETT", size);
    shorten(blocks, "BEFO", size);
    expectRead(blocks, 0);
  }
}

TEST_F(StateLayout, of_another_order_is_read_by_the_names) {
  Blocks blocks = blocksOf(present());
  std::ranges::reverse(blocks);
  expectRead(blocks);
}

TEST_F(StateLayout, of_an_older_simulator_that_was_killed_in_a_change_is_read_without_it) {
  Blocks blocks = blocksOf(present());
  drop(blocks, "UNRD");
  named(blocks, "BEFO").content = named(blocks, "SETT").content;
  named(blocks, "SETT").content[496] = 99;  // the first input
  named(blocks, "CHAN").content = hex("01 00 00 00");
  expectRead(blocks);
}

TEST_F(StateLayout, with_a_block_that_nobody_knows_is_refused) {
  Blocks blocks = blocksOf(present());
  blocks.push_back({"MORE", Bytes(8)});
  expectRefused(fileOf(blocks), kNewer);
  drop(blocks, "LOGS");
  expectRefused(fileOf(blocks), kNewer);
}

TEST_F(StateLayout, with_a_block_that_is_longer_than_known_is_refused) {
  for (const Block& block : blocksOf(present())) {
    Blocks blocks = blocksOf(present());
    named(blocks, block.name).content.resize(block.content.size() + 1);
    expectRefused(fileOf(blocks), kNewer);
  }
}

TEST_F(StateLayout, whose_blocks_do_not_follow_one_another_is_refused) {
  const Bytes file = present();
  const auto with = [&file](std::size_t offset, std::uint32_t value) {
    return Record{file.size()}.put(0, file).u32(offset, value).bytes();
  };
  expectRefused(with(20, 8), kOther);                   // the first one not at the beginning
  expectRefused(with(20, 0xFFFFFFF8), kOther);          // far beyond the end
  expectRefused(with(24, word(file, 24) - 8), kOther);  // a gap behind it
  expectRefused(with(32, word(file, 32) + 8), kOther);  // a gap before the second
  expectRefused(with(32, word(file, 32) - 8), kOther);  // which lies upon the first
}

TEST_F(StateLayout, with_a_block_twice_is_refused) {
  Blocks blocks = blocksOf(present());
  drop(blocks, "LOGS");
  blocks.push_back({"CHAN", hex("01 00 00 00")});
  expectRefused(fileOf(blocks), kOther);
}

TEST_F(StateLayout, is_as_long_as_its_blocks) {
  Blocks blocks = blocksOf(present());
  drop(blocks, "UNRD");
  Bytes file = fileOf(blocks);
  file.push_back(0);
  expectRefused(file, "is longer than its content");
  file.resize(file.size() - 2);
  expectRefused(file, "is cut short");
  file.resize(kHead);
  expectRefused(file, "is cut short");
  file.resize(100);
  expectRefused(file, "is cut short");
}

TEST_F(StateLayout, with_a_state_that_no_driver_can_have_is_refused) {
  Blocks blocks = blocksOf(present());
  drop(blocks, "UNRD");
  named(blocks, "SETT").content[504] = 2;  // an SE1 word
  expectRefused(fileOf(blocks), "holds a state that no driver can have");
}

TEST_F(StateLayout, random_heads_are_refused_or_harmless) {
  const Bytes file = present();
  std::mt19937 random{5};
  int refused = 0;
  for (int round = 0; round < 60; ++round) {
    Bytes damaged = file;
    for (auto changes = 1 + random() % 3; changes > 0; --changes)
      damaged[12 + random() % 100] = static_cast<std::uint8_t>(random() % (round % 2 == 0 ? 256 : 9));
    folder.write("state", damaged);
    const Errors errors;
    const bool isOpen = OpenDriver{path}.isOpen();
    refused += isOpen ? 0 : 1;
    if (!isOpen) {
      ASSERT_TRUE(readFile(path) == damaged) << round;
    }
  }
  EXPECT_GT(refused, 30);
}

}  // namespace
}  // namespace test
