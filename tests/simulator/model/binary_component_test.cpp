// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/settings_view.h"
#include "tests/support/policy_file.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

constexpr std::uint64_t kAddress = 0x7FFF12340000;

Record loadRequest(std::uint64_t size, std::uint64_t address = kAddress) {
  return Record{24}.u64(8, size).u64(16, address);
}

/// Loads a file from the caller's memory; the words result and number of policies.
Bytes load(ModelClient& client, const Bytes& file) {
  client.surroundings.memory[kAddress] = file;
  const auto answer = client.answer(kPolicyBinary, loadRequest(file.size()), 24);
  EXPECT_EQ(part(answer, 0, 8), Bytes(8));
  EXPECT_EQ(part(answer, 16, 8), Bytes(8));
  return part(answer, 8, 8);
}

Bytes words(std::uint32_t first, std::uint32_t second) { return Record{8}.u32(0, first).u32(4, second); }

bool fails(ModelClient& client, const Bytes& request) {
  return client.outcome(kPolicyBinary, request, 24) != Outcome::kSuccess;
}

Bytes example() { return readFile(VQS_TEST_DATA "/one-policy.bin"); }

TEST(SimulatorPolicyBinary, static_one_is_in_force_at_first) {
  ModelClient client;
  EXPECT_EQ(client.answer(0x80222070, Record{24}.u32(0, 2), 24), Record{24}.u32(0, 2).u32(8, 1).bytes());
}

TEST(SimulatorPolicyBinary, load_answers_with_result_and_number_of_policies) {
  ModelClient client;
  const Bytes file = example();
  ASSERT_EQ(file.size(), 79U);
  client.surroundings.memory[kAddress] = file;
  EXPECT_EQ(
      client.answer(0x80222070, hex("00 00 00 00  00 00 00 00  4f 00 00 00 00 00 00 00  00 00 34 12 ff 7f 00 00"), 24),
      hex("00 00 00 00  00 00 00 00  00 00 00 00  01 00 00 00  00 00 00 00 00 00 00 00"));
  EXPECT_EQ(binaryVersion(client), words(1, 2));
}

struct Sample {
  const char* name;
  std::uint32_t policies;
  std::uint32_t version1;
  std::uint32_t version2;
  /// where its last field ends
  std::size_t end;
};

constexpr Sample kSamples[] = {
    {"laptop-r3.bin", 16, 1, 2, 2242},       {"laptop-r4.bin", 16, 2, 7, 3037},
    {"laptop-r5.bin", 16, 3, 41, 3371 - 48}, {"limits-r5.bin", 2, 65535, 0, 1450 - 6},
    {"wide-r5.bin", 3, 5, 5, 978 - 9},       {"fleet-r5.bin", 400, 9, 9, 87091 - 1200},
};

TEST(SimulatorPolicyBinary, samples_of_all_revisions_are_loaded) {
  ModelClient client;
  for (const auto& it : kSamples) {
    EXPECT_EQ(load(client, sample(it.name)), words(0, it.policies)) << it.name;
    EXPECT_EQ(binaryVersion(client), words(it.version1, it.version2)) << it.name;
  }
}

TEST(SimulatorPolicyBinary, file_without_its_zero_tail_is_valid) {
  ModelClient client;
  EXPECT_EQ(load(client, part(example(), 0, 76)), words(0, 1));
  EXPECT_EQ(load(client, fileOf({{}, {}, {}})), words(0, 3));
}

TEST(SimulatorPolicyBinary, every_truncation_is_no_policy_binary) {
  ModelClient client;
  const Bytes before = settingsOf(client);
  const Bytes file = example();
  for (std::size_t length = 1; length < 76; ++length)
    ASSERT_EQ(load(client, part(file, 0, length)), words(2, 0)) << length;
  EXPECT_EQ(settingsOf(client), before);
}

TEST(SimulatorPolicyBinary, every_truncation_of_older_files_is_no_policy_binary) {
  ModelClient client;
  const Bytes before = settingsOf(client);
  for (const std::uint16_t revision : std::initializer_list<std::uint16_t>{3, 4}) {
    Entry entry = narrowEntry();
    entry.texts = {{characters(std::string_view{"T\0", 2}), 1}};
    entry.actions = {{}};
    entry.shortActions = revision == 3;
    const Bytes file = oldFileOf(revision, {entry});
    for (std::size_t length = 1; length < file.size(); ++length)
      ASSERT_EQ(load(client, part(file, 0, length)), words(2, 0)) << revision << " " << length;
    EXPECT_EQ(settingsOf(client), before);
    EXPECT_EQ(load(client, file), words(0, 1)) << revision;
    client.answer(kPolicyBinary, Record{24}.u32(0, 1), 24);
  }
}

TEST(SimulatorPolicyBinary, truncated_samples_are_no_policy_binaries) {
  ModelClient client;
  for (const auto& it : kSamples) {
    const Bytes file = sample(it.name);
    const std::size_t step = it.end / 150;
    for (std::size_t length = 1; length < it.end; length += length + 40 + step < it.end ? step : 1)
      ASSERT_EQ(load(client, part(file, 0, length)), words(2, 0)) << it.name << " " << length;
    EXPECT_EQ(binaryVersion(client), words(1, 0));
    EXPECT_EQ(load(client, part(file, 0, it.end)), words(0, it.policies)) << it.name;
    client.answer(kPolicyBinary, Record{24}.u32(0, 1), 24);
  }
}

TEST(SimulatorPolicyBinary, other_headers_are_no_policy_binary) {
  ModelClient client;
  for (const std::uint16_t version : std::initializer_list<std::uint16_t>{0, 2, 0x100, 0xFFFF})
    EXPECT_EQ(load(client, fileOf({{}}, {.formatVersion = version})), words(2, 0)) << version;
  for (const std::uint16_t revision : std::initializer_list<std::uint16_t>{0, 1, 2, 6, 0x105, 0xFFFF})
    EXPECT_EQ(load(client, fileOf({{}}, {.revision = revision})), words(2, 0)) << revision;
  for (const std::string_view magic : {"$QTG", "$qtf", "QTF$"})
    EXPECT_EQ(load(client, fileOf({{}}, {.magic = magic})), words(2, 0)) << magic;
  for (const std::uint32_t count : {0U, 2U, 401U, 0x80000000U, 0xFFFFFFFFU})
    EXPECT_EQ(load(client, fileOf({{}}, {.policyCount = count})), words(2, 0)) << count;
  EXPECT_EQ(load(client, fileOf({{}})), words(0, 1));
}

struct Limit {
  const char* name;
  Entry atLimit;
  Entry beyond;
};

std::vector<Limit> limitsOfRevision5() {
  std::vector<Limit> all;
  const auto add = [&all](const char* name, auto change) {
    Limit limit{.name = name, .atLimit = {}, .beyond = {}};
    change(limit.atLimit, 0U);
    change(limit.beyond, 1U);
    all.push_back(limit);
  };
  add("name", [](Entry& entry, unsigned more) { entry.name = Bytes(128 + more, 0x41); });
  add("no name", [](Entry& entry, unsigned more) { entry.name = Bytes(1 - more, 0x41); });
  add("description", [](Entry& entry, unsigned more) { entry.description = Bytes(32 + more, 0x41); });
  add("no description", [](Entry& entry, unsigned more) { entry.description = Bytes(1 - more, 0); });
  add("conditions", [](Entry& entry, unsigned more) { entry.conditions.resize(15 + more); });
  add("no conditions", [](Entry& entry, unsigned more) { entry.conditions.resize(1 - more); });
  add("texts", [](Entry& entry, unsigned more) { entry.texts.resize(5 + more, {Bytes(2, 0), 0}); });
  add("text", [](Entry& entry, unsigned more) { entry.texts = {{Bytes(512 + more, 0), 1}}; });
  add("actions", [](Entry& entry, unsigned more) { entry.actions.resize(32 + more); });
  return all;
}

TEST(SimulatorPolicyBinary, limits_of_revision_5) {
  ModelClient client;
  for (const auto& limit : limitsOfRevision5()) {
    EXPECT_EQ(load(client, fileOf({{}, limit.atLimit})), words(0, 2)) << limit.name;
    EXPECT_EQ(load(client, fileOf({{}, limit.beyond})), words(2, 0)) << limit.name;
  }
}

TEST(SimulatorPolicyBinary, huge_counts_and_sizes_are_no_policy_binary) {
  ModelClient client;
  for (const std::uint32_t huge : {0x1000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFF0U, 0xFFFFFFFFU})
    for (const auto field :
         {&Entry::nameSize, &Entry::descriptionSize, &Entry::conditionCount, &Entry::textCount, &Entry::actionCount}) {
      Entry entry;
      entry.*field = huge;
      EXPECT_EQ(load(client, fileOf({entry})), words(2, 0)) << huge;
    }
}

TEST(SimulatorPolicyBinary, text_of_size_0_has_a_flag_in_revision_4_only) {
  ModelClient client;
  Entry bare;
  bare.texts = {{{}, std::nullopt}};
  EXPECT_EQ(load(client, fileOf({bare})), words(0, 1));
  Entry old = narrowEntry();
  old.texts = {{{}, std::nullopt}};
  EXPECT_EQ(load(client, oldFileOf(3, {old})), words(0, 1));
  EXPECT_EQ(load(client, oldFileOf(4, {old})), words(2, 0)) << "one byte is missing at the end";
  old.texts = {{{}, 1}};
  EXPECT_EQ(load(client, oldFileOf(4, {old})), words(0, 1));
}

TEST(SimulatorPolicyBinary, older_files_keep_to_their_own_limits) {
  ModelClient client;
  Entry entry = narrowEntry();
  entry.name = characters("ABC");
  entry.description = Bytes(4, 0);
  entry.conditions.resize(2);
  entry.texts = {{Bytes(2, 0), 0}, {Bytes(8, 0), 0}};
  entry.actions.resize(3);
  const OldLimits fitting{.name = 3, .description = 4, .conditions = 2, .texts = 2, .textSize = 8, .actions = 3};
  EXPECT_EQ(load(client, oldFileOf(4, {entry}, fitting)), words(0, 1));
  for (const auto limit : {&OldLimits::name, &OldLimits::description, &OldLimits::conditions, &OldLimits::texts,
                           &OldLimits::textSize, &OldLimits::actions}) {
    OldLimits tighter = fitting;
    --(tighter.*limit);
    EXPECT_EQ(load(client, oldFileOf(4, {entry}, tighter)), words(2, 0));
    OldLimits wider = fitting;
    wider.*limit = 0xFFFFFFFF;
    EXPECT_EQ(load(client, oldFileOf(4, {entry}, wider)), words(0, 1));
  }
}

TEST(SimulatorPolicyBinary, older_files_hold_no_more_than_a_policy) {
  static constexpr OldLimits kWide{.name = 0xFFFF,
                                   .description = 0xFFFF,
                                   .conditions = 0xFFFF,
                                   .texts = 0xFFFF,
                                   .textSize = 0xFFFF,
                                   .actions = 0xFFFF};
  ModelClient client;
  const auto loadWith = [&client](auto change) {
    Entry entry = narrowEntry();
    change(entry);
    return load(client, oldFileOf(4, {entry}, kWide));
  };
  EXPECT_EQ(loadWith([](Entry& entry) { entry.name = Bytes(63, 0x41); }), words(0, 1));
  EXPECT_EQ(loadWith([](Entry& entry) { entry.name = Bytes(64, 0x41); }), words(2, 0));
  EXPECT_EQ(loadWith([](Entry& entry) { entry.name = {}; }), words(2, 0));
  EXPECT_EQ(loadWith([](Entry& entry) { entry.description = Bytes(33, 0); }), words(2, 0));
  EXPECT_EQ(loadWith([](Entry& entry) { entry.conditions.resize(16); }), words(2, 0));
  EXPECT_EQ(loadWith([](Entry& entry) { entry.conditions.clear(); }), words(2, 0));
  EXPECT_EQ(loadWith([](Entry& entry) { entry.texts.resize(6, {Bytes(2, 0), 0}); }), words(2, 0));
  EXPECT_EQ(loadWith([](Entry& entry) { entry.texts = {{Bytes(256, 0), 0}}; }), words(0, 1));
  EXPECT_EQ(loadWith([](Entry& entry) { entry.texts = {{Bytes(257, 0), 0}}; }), words(2, 0));
  EXPECT_EQ(loadWith([](Entry& entry) { entry.texts = {{Bytes(1, 0), 0}}; }), words(2, 0));
  EXPECT_EQ(loadWith([](Entry& entry) { entry.actions.resize(33); }), words(2, 0));
}

TEST(SimulatorPolicyBinary, ops_and_flags_do_not_matter) {
  ModelClient client;
  Entry entry;
  entry.conditions = {{.conditionId = 999, .op = 0xFFFFFFFF}};
  entry.texts = {{Bytes(2, 0), 0xFF}};
  EXPECT_EQ(load(client, fileOf({entry})), words(0, 1));
}

TEST(SimulatorPolicyBinary, refused_file_keeps_the_one_in_force) {
  ModelClient client;
  ASSERT_EQ(load(client, fileOf({{}}, {.version1 = 7, .version2 = 0xFFFF})), words(0, 1));
  EXPECT_EQ(load(client, fileOf({{}}, {.revision = 9, .version1 = 8})), words(2, 0));
  EXPECT_EQ(binaryVersion(client), words(7, 0xFFFF));
}

TEST(SimulatorPolicyBinary, size_is_1_to_307200) {
  ModelClient client;
  client.surroundings.memory[kAddress] = Bytes(400000);
  for (const std::uint64_t size : std::initializer_list<std::uint64_t>{0, 307201, 400000, 0x100000001, ~0ULL})
    EXPECT_TRUE(fails(client, loadRequest(size))) << size;
  EXPECT_EQ(load(client, Bytes(1)), words(2, 0));
  Bytes longest = fileOf({{}});
  longest.resize(307200);
  EXPECT_EQ(load(client, longest), words(0, 1));
}

TEST(SimulatorPolicyBinary, memory_that_cannot_be_read_fails_the_request) {
  ModelClient client;
  const Bytes file = example();
  client.surroundings.memory[kAddress] = file;
  client.surroundings.memory[0] = file;
  EXPECT_TRUE(fails(client, loadRequest(file.size(), 0)));
  EXPECT_TRUE(fails(client, loadRequest(file.size() + 1)));
  EXPECT_TRUE(fails(client, loadRequest(file.size(), kAddress + 1)));
  EXPECT_TRUE(fails(client, loadRequest(file.size(), kAddress - 1)));
  EXPECT_TRUE(fails(client, loadRequest(file.size(), ~0ULL)));
  EXPECT_EQ(binaryVersion(client), words(1, 0));
}

TEST(SimulatorPolicyBinary, lie_in_memory_wherever_they_like) {
  ModelClient client;
  Bytes memory(3, 0xEE);
  const Bytes file = example();
  memory.insert(memory.end(), file.begin(), file.end());
  client.surroundings.memory[kAddress] = memory;
  EXPECT_EQ(part(client.answer(kPolicyBinary, loadRequest(79, kAddress + 3), 24), 8, 8), words(0, 1));
}

TEST(SimulatorPolicyBinary, clear_brings_back_the_static_one_and_looks_at_nothing) {
  ModelClient client;
  ASSERT_EQ(load(client, example()), words(0, 1));
  EXPECT_EQ(client.answer(kPolicyBinary, Record{24, 0xEE}.u32(0, 1).u32(4, 0), 24), Record{24}.u32(0, 1).bytes());
  EXPECT_EQ(binaryVersion(client), words(1, 0));
  EXPECT_EQ(client.answer(kPolicyBinary, Record{24}.u32(0, 1), 24), Record{24}.u32(0, 1).bytes());
  EXPECT_EQ(binaryVersion(client), words(1, 0));
}

TEST(SimulatorPolicyBinary, static_load_brings_back_version_1_0) {
  ModelClient client;
  ASSERT_EQ(load(client, example()), words(0, 1));
  EXPECT_EQ(client.answer(kPolicyBinary, Record{24}.u32(0, 3), 24), Record{24}.u32(0, 3).bytes());
  EXPECT_EQ(binaryVersion(client), words(1, 0));
}

TEST(SimulatorPolicyBinary, disk_load_takes_the_asm_store_and_its_version) {
  ModelClient client;
  for (const std::uint32_t id : {7U, 8U, 9U}) ASSERT_EQ(client.add(kModifyAsm, simplePolicy(id)), 0);
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(1)), 0);
  ASSERT_EQ(client.same(kModifyAsm, modifyRequest(6).u32(3988, 0x1234).u32(3992, 0xFFFF)).outcome, Outcome::kSuccess);
  EXPECT_EQ(binaryVersion(client), words(1, 0));
  EXPECT_EQ(client.answer(kPolicyBinary, Record{24}.u32(0, 4), 24), Record{24}.u32(0, 4).u32(12, 3).bytes());
  EXPECT_EQ(binaryVersion(client), words(0x1234, 0xFFFF));
}

TEST(SimulatorPolicyBinary, disk_load_of_an_empty_store_changes_nothing) {
  ModelClient client;
  ASSERT_EQ(load(client, example()), words(0, 1));
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(1)), 0);
  EXPECT_EQ(client.answer(kPolicyBinary, Record{24}.u32(0, 4), 24), Record{24}.u32(0, 4).u32(8, 3).bytes());
  EXPECT_EQ(binaryVersion(client), words(1, 2));
}

TEST(SimulatorPolicyBinary, fields_without_a_name_are_not_looked_at) {
  ModelClient client;
  client.surroundings.memory[kAddress] = example();
  const auto load = client.answer(kPolicyBinary, loadRequest(79).u32(4, 0xEEEEEEEE), 24);
  EXPECT_EQ(part(load, 8, 16), Record{16}.u32(4, 1).bytes());
  for (const std::uint32_t operation : {1U, 2U, 3U, 4U}) {
    const auto answer = client.answer(kPolicyBinary, Record{24, 0xEE}.u32(0, operation), 24);
    EXPECT_EQ(word(answer, 0), operation);
    EXPECT_EQ(part(answer, 16, 8), Bytes(8));
  }
}

TEST(SimulatorPolicyBinary, other_operations_are_unknown) {
  ModelClient client;
  for (const std::uint32_t operation : {5U, 6U, 0x100U, 0x80000002U, 0xFFFFFFFFU})
    EXPECT_EQ(client.outcome(kPolicyBinary, Record{24}.u32(0, operation), 24), Outcome::kUnknownRequest) << operation;
}

TEST(SimulatorPolicyBinary, lengths_are_exact) {
  ModelClient client;
  client.surroundings.memory[kAddress] = example();
  expectOnlyLengths(client, kPolicyBinary, loadRequest(79), 24);
  for (std::uint32_t operation = 1; operation < 5; ++operation)
    expectOnlyLengths(client, kPolicyBinary, Record{24}.u32(0, operation), 24);
  EXPECT_EQ(binaryVersion(client), words(1, 0));
}

}  // namespace
}  // namespace test
