// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include <vqs/platform.h>
#include "tests/support/results.h"
#include "tests/support/session_test.h"

namespace test {
namespace {

ScriptedDriver* scriptedDriver = nullptr;
/// How many requests had been served at each call of the program's handler.
std::vector<std::size_t> handled;

/// A program that has installed a handler, as it can on Windows.
class InvalidParameterHandler : public FrugalSessionTest {
 protected:
  InvalidParameterHandler() {
    scriptedDriver = &driver;
    handled.clear();
    host::setInvalidParameterHandler([] { handled.push_back(scriptedDriver->requestsServed()); });
    host::showInvalidParameterHandler(true);
  }
  ~InvalidParameterHandler() override { host::showInvalidParameterHandler(false); }

  void answerOemId(std::string_view text) {
    driver.expectOut(0x8022204C).answerLength(32).reply(Record(32).text(0, text));
    EXPECT_EQ(vqsGetOEMID(session, oemId.data()), kDone);
  }

  std::array<char, 7> oemId = poisoned<std::array<char, 7>>();
};

using Requests = std::vector<std::size_t>;

TEST_F(InvalidParameterHandler, is_called_once_before_the_request_of_a_firmware_event) {
  driver.expectIn(0x80222028).request(Bytes(40, 0));
  EXPECT_EQ(vqsAtstNotifyBiosEvent(session), kDone);
  EXPECT_EQ(handled, Requests{0});
  driver.expectIn(0x8022202C).request(Bytes(64, 0));
  EXPECT_EQ(vqsAtstNotifyBiosEventV2(session), kDone);
  EXPECT_EQ(handled, (Requests{0, 1}));
}

TEST_F(InvalidParameterHandler, is_not_called_for_a_session_that_is_refused) {
  EXPECT_EQ(vqsAtstNotifyBiosEvent(nullptr), kInvalid);
  EXPECT_EQ(vqsAtstNotifyBiosEventV2(&closed), kInvalid);
  EXPECT_EQ(vqsGetOEMID(&closed, oemId.data()), kInvalid);
  EXPECT_EQ(handled, Requests{});
}

TEST_F(InvalidParameterHandler, is_called_once_for_an_OEM_id_that_is_too_long) {
  answerOemId("VEXOQTF");
  EXPECT_EQ(handled, Requests{1});
  EXPECT_STREQ(oemId.data(), "");
  answerOemId("VEXOQTF89012345678901234567890_2");
  EXPECT_EQ(handled, (Requests{1, 2}));
  EXPECT_STREQ(oemId.data(), "");
}

TEST_F(InvalidParameterHandler, is_not_called_for_an_OEM_id_that_fits) {
  answerOemId("VEXOQT");
  answerOemId("");
  driver.expectOut(0x8022204C).answerLength(32).fails();
  EXPECT_EQ(vqsGetOEMID(session, oemId.data()), kFailed);
  EXPECT_EQ(handled, Requests{});
}

}  // namespace
}  // namespace test
