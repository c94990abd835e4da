// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>

#include <vqs/platform.h>
#include "tests/platform/pointers.h"
#include "tests/support/results.h"
#include "tests/support/session_test.h"

namespace test {
namespace {

/// Registering and taking back differ in the flag that is sent.
struct Registration {
  std::string title;
  decltype(&vqsRegisterEvent) call;
  std::uint8_t flag;
};

class EventRegistration : public FrugalSessionTest, public ::testing::WithParamInterface<Registration> {
 protected:
  vqsStatus call(std::int32_t index, void* object) { return GetParam().call(session, index, object); }
  Exchange& expectIndex(std::uint32_t index, std::source_location where = std::source_location::current()) {
    return driver.expectIn(0x80222024, where)
        .request(Record(16).u8(0, GetParam().flag).u32(4, index).u64(8, 0x1122334455667788));
  }
};

TEST_P(EventRegistration, sends_flag_index_and_the_objects_address) {
  for (const int index : {0, 1, 5, 6}) {
    expectIndex(static_cast<std::uint32_t>(index));
    EXPECT_EQ(call(index, marker()), kDone);
  }
}

TEST_P(EventRegistration, fails_with_its_request) {
  expectIndex(3).fails();
  EXPECT_EQ(call(3, marker()), kFailed);
}

TEST_P(EventRegistration, knows_7_events) {
  for (const std::int32_t index : {-1, 7, 8, 256, INT_MAX, INT_MIN})
    EXPECT_EQ(call(index, marker()), kInvalid) << index;
}

TEST_P(EventRegistration, needs_an_open_session_and_an_object) {
  EXPECT_EQ(GetParam().call(nullptr, 0, marker()), kInvalid);
  EXPECT_EQ(GetParam().call(&closed, 0, marker()), kInvalid);
  EXPECT_EQ(call(0, nullptr), kInvalid);
}

const auto registrationName = [](const auto& instance) { return instance.param.title; };

INSTANTIATE_TEST_SUITE_P(Of, EventRegistration,
                         ::testing::Values(Registration{"Register", vqsRegisterEvent, 1},
                                           Registration{"UnRegister", vqsUnRegisterEvent, 0}),
                         registrationName);

TEST_F(FrugalSessionTest, registering_sends_these_very_bytes) {
  driver.expectIn(0x80222024).request("01 00 00 00  06 00 00 00  88 77 66 55 44 33 22 11");
  EXPECT_EQ(vqsRegisterEvent(session, 6, marker()), kDone);
  driver.expectIn(0x80222024).request("00 00 00 00  06 00 00 00  88 77 66 55 44 33 22 11");
  EXPECT_EQ(vqsUnRegisterEvent(session, 6, marker()), kDone);
}

struct Notification {
  std::string title;
  decltype(&vqsAtstNotifyBiosEvent) call;
  std::uint32_t code;
  std::size_t size;
};

class BiosEvent : public FrugalSessionTest, public ::testing::WithParamInterface<Notification> {};

TEST_P(BiosEvent, travels_as_an_empty_record) {
  driver.expectIn(GetParam().code).request(Bytes(GetParam().size, 0));
  EXPECT_EQ(GetParam().call(session), kDone);
}

TEST_P(BiosEvent, fails_with_its_request) {
  driver.expectIn(GetParam().code).request(Bytes(GetParam().size, 0)).fails();
  EXPECT_EQ(GetParam().call(session), kFailed);
}

TEST_P(BiosEvent, needs_an_open_session) {
  EXPECT_EQ(GetParam().call(nullptr), kInvalid);
  EXPECT_EQ(GetParam().call(&closed), kInvalid);
}

const auto notificationName = [](const auto& instance) { return instance.param.title; };

INSTANTIATE_TEST_SUITE_P(Of, BiosEvent,
                         ::testing::Values(Notification{"Notify", vqsAtstNotifyBiosEvent, 0x80222028, 40},
                                           Notification{"AMT", vqSetBiosAMTEvent, 0x80222028, 40},
                                           Notification{"CQL", vqSetBiosCQLEvent, 0x80222028, 40},
                                           Notification{"NotifyV2", vqsAtstNotifyBiosEventV2, 0x8022202C, 64}),
                         notificationName);

using BiosEventExport = decltype(&vqsAtstNotifyBiosEvent);

// Read at run time: a compiler takes functions of different names for different ones.
BiosEventExport volatile notify = vqsAtstNotifyBiosEvent;
BiosEventExport volatile notifyV2 = vqsAtstNotifyBiosEventV2;
BiosEventExport volatile amt = vqSetBiosAMTEvent;
BiosEventExport volatile cql = vqSetBiosCQLEvent;

TEST(BiosEventNames, are_three_of_one_routine) {
  const BiosEventExport routine = notify;
  EXPECT_TRUE(routine == amt);
  EXPECT_TRUE(routine == cql);
  EXPECT_FALSE(routine == notifyV2);
}

}  // namespace
}  // namespace test
