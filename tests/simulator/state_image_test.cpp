// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/state_image.h"

#include <random>

#include "simulator/embedded_client.h"
#include "simulator/settings_view.h"

namespace test {
namespace {

Bytes encode(const simulator::Driver& driver) {
  const auto image = simulator::encodeState(driver);
  const auto* first = reinterpret_cast<const std::uint8_t*>(image.data());
  return {first, first + image.size()};
}

/// What is wrong with an image; empty when nothing is. All calls share a driver, made fresh before each: its memory
/// would take most of the time.
std::string fault(const Bytes& image) {
  static const auto driver = std::make_unique<simulator::Driver>();
  for (std::size_t store = 0; store < 3; ++store) driver->policies().store(store).reset();
  driver->policies().setAsmVersion({});
  driver->settings() = {};
  try {
    simulator::decodeState(std::as_bytes(std::span{image}), *driver);
  } catch (const simulator::StateError& error) {
    return error.what();
  }
  EXPECT_EQ(encode(*driver), image) << "equal drivers have equal images";
  return {};
}

Bytes small() { return smallContent(); }

/// The clock that the images of these tests hold.
void setClock(ModelClient& client) { client.surroundings.clock = 12345; }

/// Format 1, without its checksum.
Record oldContent(std::size_t policies) { return Record{32 + 3972 * policies}.text(0, "VQSSTATE").u32(8, 1); }

TEST(StateImage, of_a_driver_without_policies_is_as_documented) {
  ModelClient client;
  setClock(client);
  ASSERT_EQ(client.same(kModifyAsm, modifyRequest(6).u32(3988, 3).u32(3992, 5)).outcome, Outcome::success);
  const Bytes documented = sealed(stateContent(0).u32(24, 3).u32(28, 5));
  EXPECT_EQ(difference(encode(client.driver()), documented), "");
  EXPECT_EQ(fault(documented), "");
}

TEST(StateImage, of_a_driver_that_never_ran_holds_no_settings) {
  ModelClient client;
  const Bytes fresh = sealed(Record{kPoliciesOffset}.text(0, "VQSSTATE").u32(8, 2));
  EXPECT_EQ(difference(encode(client.driver()), fresh), "");
  EXPECT_EQ(fault(fresh), "");
}

TEST(StateImage, of_format_1_is_read) {
  const Bytes documented =
      hex("56 51 53 53 54 41 54 45  01 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00  03 00 00 00  05 00 00 00"
          "a5 3f a6 88 70 88 21 8a");
  for (const Bytes& image : {documented, oldState()}) {
    ModelClient client;
    simulator::decodeState(std::as_bytes(std::span{image}), client.driver());
    EXPECT_EQ(client.ids(kReadAsm), image.size() == 40 ? Ids{} : Ids{7});
    EXPECT_EQ(part(client.same(kModifyAsm, modifyRequest(7)).answer, 3988, 8), hex("03 00 00 00  05 00 00 00"));
    EXPECT_EQ(featureStatus(client, 2), hex("01 00 00 00  00 00 00 00"));
  }
}

TEST(StateImage, of_every_setting_comes_back) {
  ModelClient client;
  for (const auto& which : kTables)
    for (std::uint8_t value = 1; value <= 2; ++value) {
      Record set = Record{which.size}.u32(0, 1);
      set.u8(60 % which.size, value);
      ASSERT_EQ(client.same(which.code, set).outcome, Outcome::success);
    }
  for (const std::uint32_t key : kOverridable) overrideKey(client, key, 1);
  ASSERT_EQ(client.outcome(kOverride, overrideRequest(27, 0xFFFFFFFE)), Outcome::success);
  for (std::uint32_t sensor = 0; sensor < 4; ++sensor)
    ASSERT_EQ(client.outcome(kSensorUpdate, Record{16}.u32(0, sensor).u32(8, 70 + sensor)), Outcome::success);
  ASSERT_EQ(client.outcome(kDynamicSlider, Record{4}.u32(0, 1)), Outcome::success);
  ASSERT_EQ(client.outcome(kSe1, Record{8}.u32(0, 1).u32(4, 1), 8), Outcome::success);
  ASSERT_EQ(client.outcome(kTaControl, Record{8}.u32(0, 17).u32(4, 18)), Outcome::success);
  ASSERT_EQ(client.outcome(kBattery, Record{8}.u32(4, 12345), 4), Outcome::success);
  ASSERT_EQ(client.outcome(kFirmwareEvent, Bytes(40)), Outcome::success);
  ASSERT_EQ(client.outcome(kFirmwareEventV2, Bytes(64)), Outcome::success);
  ASSERT_EQ(client.outcome(kAppIo, Record{12}.u32(0, 4).u32(4, 5).u32(8, 6), 12), Outcome::success);
  client.surroundings.memory[0x1000] = sample("laptop-r5.bin");
  ASSERT_EQ(client.outcome(kPolicyBinary, Record{24}.u64(8, 3371).u64(16, 0x1000), 24), Outcome::success);
  client.surroundings.clock += 1234567;
  const auto settings = settingsOf(client);

  ModelClient other;
  const Bytes image = encode(client.driver());
  simulator::decodeState(std::as_bytes(std::span{image}), other.driver());
  other.surroundings.clock = client.surroundings.clock;
  EXPECT_EQ(settingsOf(other), settings);
  EXPECT_EQ(binaryVersion(other), hex("03 00 00 00  29 00 00 00"));
  const Telemetry telemetry{client};
  const Telemetry otherTelemetry{other};
  for (const LogKind kind : {LogKind::keyValue, LogKind::exKeyValue})
    EXPECT_EQ(client.surroundings.area(kind), other.surroundings.area(kind));
  EXPECT_EQ(otherTelemetry.number(75), 17);
  EXPECT_EQ(encode(other.driver()), image);
}

TEST(StateImage, holds_the_policies_store_by_store_in_order) {
  ModelClient client;
  setClock(client);
  ASSERT_EQ(client.add(kModifyBalanceProfile, simplePolicy(4)), 0);
  ASSERT_EQ(client.add(kModifyAsm, simplePolicy(3)), 0);
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(2)), 0);
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(1)), 0);
  Record expected = stateContent(4).u32(12, 2).u32(16, 1).u32(20, 1);
  for (std::uint32_t i = 0; i < 4; ++i)
    expected.put(kPoliciesOffset + 3972 * std::size_t{i}, simplePolicy(Ids{2, 1, 3, 4}[i]).bytes());
  EXPECT_EQ(difference(encode(client.driver()), sealed(expected)), "");
  EXPECT_EQ(fault(sealed(expected)), "");
}

TEST(StateImage, of_full_stores_comes_back) {
  ModelClient client;
  for (const std::uint32_t code : kModifyCodes)
    for (std::uint32_t id = 0; id < 400; ++id) ASSERT_EQ(client.add(code, simplePolicy(id)), 0);
  const Bytes image = encode(client.driver());
  EXPECT_EQ(image.size(), 32U + 3056 + 1200 * 3972 + 8);
  EXPECT_EQ(fault(image), "");
}

TEST(StateImage, every_changed_byte_is_noticed) {
  const Bytes image = smallState();
  ASSERT_EQ(fault(image), "");
  for (std::size_t offset = 0; offset < image.size(); ++offset)
    for (const std::uint8_t change : std::initializer_list<std::uint8_t>{0x01, 0x80, 0xFF}) {
      Bytes damaged = image;
      damaged[offset] ^= change;
      ASSERT_NE(fault(damaged), "") << offset;
    }
}

TEST(StateImage, every_truncation_is_noticed) {
  const Bytes image = smallState();
  for (std::size_t length = 0; length < image.size(); ++length) {
    const std::string reason = fault(part(image, 0, length));
    ASSERT_EQ(reason, length < 8 ? "is not a state file of the simulator" : "is cut short") << length;
  }
}

TEST(StateImage, has_nothing_behind_its_end) {
  Bytes image = smallState();
  image.push_back(0);
  EXPECT_EQ(fault(image), "is longer than its content");
}

TEST(StateImage, of_another_kind_or_format_is_refused) {
  EXPECT_EQ(fault({}), "is not a state file of the simulator");
  EXPECT_EQ(fault(sealed(Record{32}.text(0, "VQSSTATF").u32(8, 1))), "is not a state file of the simulator");
  EXPECT_EQ(fault(sealed(Record{32}.text(0, "VQSSTATE"))), "has the unknown format 0");
  EXPECT_EQ(fault(sealed(Record{32}.text(0, "VQSSTATE").u32(8, 3))),
            "was written by a newer simulator (format 3, this one reads 2)");
  EXPECT_EQ(fault(sealed(Record{32}.text(0, "VQSSTATE").u32(8, 0xFFFFFFFF))),
            "was written by a newer simulator (format 4294967295, this one reads 2)");
}

TEST(StateImage, counts_stop_at_400_in_each_store) {
  for (const std::size_t offset : std::initializer_list<std::size_t>{12, 16, 20}) {
    for (const Record& content : {oldContent(0), stateContent(0)}) {
      for (const std::uint32_t count : {401U, 0x10000000U, 0xFFFFFFFFU})
        EXPECT_EQ(fault(sealed(Record{content}.u32(offset, count))), "counts more policies than a store can hold");
      EXPECT_EQ(fault(sealed(Record{content}.u32(offset, 400))), "is cut short");
    }
  }
}

TEST(StateImage, wrong_checksum_is_told) {
  Bytes image = smallState();
  image[image.size() - 1] ^= 1;
  EXPECT_EQ(fault(image), "is damaged: wrong checksum");
}

TEST(StateImage, hostile_content_under_a_right_checksum_is_refused) {
  const Bytes content = small();
  ASSERT_EQ(fault(sealed(content)), "");
  const auto with = [&](std::size_t offset, std::uint32_t value) {
    return sealed(Record{content.size()}.put(0, content).u32(offset, value));
  };
  EXPECT_EQ(fault(with(24, 0xFFFF)), "");
  EXPECT_EQ(fault(with(24, 0x10000)), "holds a version word above 65535");
  EXPECT_EQ(fault(with(28, 0x10000)), "holds a version word above 65535");
  EXPECT_EQ(fault(with(kPoliciesOffset + 184, 16)), "holds a malformed policy");
  EXPECT_EQ(fault(with(kPoliciesOffset + 188, 0xFFFFFFFF)), "holds a malformed policy");
  EXPECT_EQ(fault(with(kPoliciesOffset + 192, 1)), "holds a malformed policy");
  EXPECT_EQ(fault(with(kPoliciesOffset + 3968, 1)), "holds a malformed policy");
}

TEST(StateImage, settings_that_no_driver_can_have_are_refused) {
  const auto with = [](std::size_t offset, std::uint32_t value) {
    return sealed(smallContent().u32(32 + offset, value));
  };
  constexpr std::pair<std::size_t, std::uint32_t> kUnsound[] = {
      {24, 2},                                       // started
      {28, 2},                                       // power source
      {32, 0xFFFFFFFF},                              // charge
      {32, 205200001},                               // more than a full one
      {36, 0xFFFFFFFF},                              // temperatures
      {40, 0x7FFFFFFF}, {44, 0x80000000}, {504, 2},  // SE1
      {508, 2},         {520, 2},                    // dynamic slider
      {524, 2},                                      // whether a charge rate is set
      {528, 45000},                                  // a rate that is not
      {540, 3},                                      // source of the binary
      {544, 1},                                      // version of the static one
      {556, 2},                                      // a simulated sensor
      {572, 1},                                      // words of a sensor that is none
      {620, 2},                                      // an override
      {732, 1},                                      // value of an override that is none
  };
  for (const auto& [offset, value] : kUnsound)
    EXPECT_EQ(fault(with(offset, value)), "holds settings that no driver can have") << offset;
}

TEST(StateImage, settings_outside_their_limits_are_refused) {
  const std::string unsound = "holds settings that no driver can have";
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 524, 1).u32(32 + 528, 100000))), "");
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 524, 1).u32(32 + 528, 100001))), unsound);
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 540, 1).u32(32 + 544, 0xFFFF))), "");
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 540, 1).u32(32 + 544, 0x10000))), unsound);
  // The sixth override is the battery's level.
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 640, 1).u32(32 + 752, 100))), "");
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 640, 1).u32(32 + 752, 101))), unsound);
  // The fifth is its rate, which is signed.
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 636, 1).u32(32 + 748, 0xFFFE7960))), "");
  EXPECT_EQ(fault(sealed(smallContent().u32(32 + 636, 1).u32(32 + 748, 0xFFFE795F))), unsound);
}

TEST(StateImage, tables_with_bytes_that_no_set_can_hold_are_refused) {
  // Current and previous ASM-lite table, and the last bytes of the fourth slider table.
  for (const std::size_t offset : std::initializer_list<std::size_t>{2196, 2196 + 415, 2612, 2612 + 415, 3043, 3055})
    EXPECT_EQ(fault(sealed(smallContent().u8(32 + offset, 1))), "holds settings that no driver can have") << offset;
}

TEST(StateImage, ids_are_unique_in_a_store_only) {
  Record image = stateContent(2);
  image.put(kPoliciesOffset, simplePolicy(7).bytes()).put(kPoliciesOffset + 3972, simplePolicy(7).bytes());
  EXPECT_EQ(fault(sealed(Record{image}.u32(12, 2))), "holds two policies of one id in a store");
  EXPECT_EQ(fault(sealed(Record{image}.u32(12, 1).u32(20, 1))), "");
}

TEST(StateImage, random_content_under_a_right_checksum_is_refused_or_kept) {
  std::mt19937_64 random{7};
  int kept = 0;
  for (int i = 0; i < 20000; ++i) {
    Bytes content = small();
    for (std::size_t changes = random() % 3; changes > 0; --changes)
      content[12 + random() % (content.size() - 12)] = static_cast<std::uint8_t>(random());
    kept += fault(sealed(content)).empty() ? 1 : 0;
  }
  EXPECT_GT(kept, 1000);
  EXPECT_LT(kept, 19000);
}

}  // namespace
}  // namespace test
