// SPDX-License-Identifier: Apache-2.0
#include "tool/driver/override_keys.h"

#include <gtest/gtest.h>

#include "tests/support/session_test.h"
#include "tool/terminal/errors.h"

// The script's session is closed by itself.
void tool::SessionCloser::operator()(QtfSession* /*session*/) const {}

namespace test {
namespace {

/// What the driver says of keys, request by request.
class OverrideKeys : public SessionTest {
 protected:
  void expectMetadata(std::string_view id, const std::string& name) {
    // a boolean, 0 to 1
    Record metadata{52};
    metadata.u32(4, 5).u32(8, 0).u32(12, 1).put(16, Bytes(name.begin(), name.end()));
    driver.expectSplit(0x802220A4).request(id).answerLength(52).reply(metadata.bytes());
  }
  void expectValue(std::string_view id) {
    driver.expectSplit(0x80222098).request(id).answerLength(8).reply("01 00 00 00 00 00 00 00");
  }
  /// The driver has the keys 24 and 500.
  void expectList() {
    driver.expectOut(0x8022209C).answerLength(4).replyWord(0, 8);
    driver.expectOut(0x8022209C).answerLength(4).replyWord(0, 8);
    driver.expectOut(0x802220A0).answerLength(8).reply("18 00 00 00 F4 01 00 00");
  }

  tool::Session own{session};
};

TEST_F(OverrideKeys, of_a_telemetry_keys_name_is_read_alone) {
  expectMetadata("18 00 00 00", "PowerSource");
  expectValue("18 00 00 00");
  const auto key = tool::readOverrideKeyNamed(own, "powersource");
  EXPECT_EQ(key.key, 24U);
  EXPECT_EQ(key.name, "PowerSource");
  EXPECT_EQ(key.value, 1);
  EXPECT_EQ(key.highest, 1);
}

TEST_F(OverrideKeys, of_an_id_is_read_alone) {
  expectMetadata("18 00 00 00", "Any");
  expectValue("18 00 00 00");
  EXPECT_EQ(tool::readOverrideKeyNamed(own, "24").name, "Any");
}

TEST_F(OverrideKeys, of_another_name_than_the_telemetry_keys_is_looked_for_among_all) {
  expectMetadata("18 00 00 00", "Renamed");
  expectValue("18 00 00 00");
  expectList();
  expectMetadata("18 00 00 00", "Renamed");
  expectValue("18 00 00 00");
  expectMetadata("F4 01 00 00", "PowerSource");
  expectValue("F4 01 00 00");
  EXPECT_EQ(tool::readOverrideKeyNamed(own, "PowerSource").key, 500U);
}

TEST_F(OverrideKeys, that_the_driver_does_not_have_are_looked_for_among_all) {
  driver.expectSplit(0x802220A4).request("04 00 00 00").answerLength(52).fails();
  expectList();
  expectMetadata("18 00 00 00", "PowerSource");
  expectValue("18 00 00 00");
  expectMetadata("F4 01 00 00", "Other");
  expectValue("F4 01 00 00");
  EXPECT_THROW(tool::readOverrideKeyNamed(own, "4"), tool::UsageError);
}

}  // namespace
}  // namespace test
