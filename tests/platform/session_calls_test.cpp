// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <functional>

#include <vqs/features.h>
#include <vqs/platform.h>
#include "tests/platform/pointers.h"
#include "tests/support/filling_device.h"
#include "tests/support/results.h"
#include "tests/support/session_test.h"
#include "tests/support/windows_calls.h"

// What holds for every call that makes one request on its session's handle.

namespace test {
namespace {

/// Room for whatever a call writes.
using Outputs = std::array<std::uint32_t, 128>;

/// Where a call's answer goes.
enum class Answer { kNowhere, kIntoTheRequest, kEmptyBuffer, kCallersBuffer };

struct SessionCall {
  std::string name;
  std::string request;
  Answer answer;
  bool counted;
  std::function<vqsStatus(QtfSession*, Outputs&)> run;
};

template <class T>
T* at(Outputs& outputs) {
  return reinterpret_cast<T*>(outputs.data());
}

constexpr bool kCounted = true;
constexpr bool kUncounted = false;

std::vector<SessionCall> inputAndOutputCalls() {
  const std::string appIo = "DeviceIoControl(0x80222068, 12, 12)";
  const std::string polling = "DeviceIoControl(0x8022207c, 24, 24)";
  const std::string se1 = "DeviceIoControl(0x80222094, 8, 8)";
  return {
      {"SetAppInputA", appIo, Answer::kEmptyBuffer, kCounted, [](auto* s, auto&) { return vqsSetAppInput(s, 1, 7); }},
      {"SetAppInputB", appIo, Answer::kEmptyBuffer, kCounted, [](auto* s, auto&) { return vqsSetAppInput(s, 2, 7); }},
      {"ExSetAppInput", appIo, Answer::kEmptyBuffer, kCounted,
       [](auto* s, auto&) { return vqsExSetAppInput(s, 1, 7); }},
      {"SetAppInputs", appIo, Answer::kEmptyBuffer, kCounted, [](auto* s, auto&) { return vqsSetAppInputs(s, 7, 8); }},
      {"GetAppOutput", appIo, Answer::kEmptyBuffer, kCounted,
       [](auto* s, auto& out) { return vqsGetAppOutput(s, &out[0], &out[1]); }},
      {"ExGetAppOutput", appIo, Answer::kEmptyBuffer, kCounted,
       [](auto* s, auto& out) { return vqsExGetAppOutput(s, &out[0], &out[1]); }},
      {"GetTaskbarIcon", "DeviceIoControl(0x8022208c, 16, 16)", Answer::kEmptyBuffer, kCounted,
       [](auto* s, auto& out) { return vqsGetTaskbarIcon(s, &out[0], &out[1]); }},
      {"GetDebugOutput", "DeviceIoControl(0x80222088, 0, 4)", Answer::kCallersBuffer, kUncounted,
       [](auto* s, auto& out) { return vqsGetDebugOutput(s, out.data()); }},
      {"ControlPolling", polling, Answer::kIntoTheRequest, kCounted,
       [](auto* s, auto&) { return vqsControlPolling(s, 1, 500); }},
      {"ExControlPolling", polling, Answer::kIntoTheRequest, kCounted,
       [](auto* s, auto&) { return vqsExControlPolling(s, 1, 500); }},
      {"ProgramSE1", se1, Answer::kIntoTheRequest, kCounted, [](auto* s, auto&) { return vqsProgramSE1(s, 1, 1); }},
      {"ExProgramSE1", se1, Answer::kIntoTheRequest, kCounted, [](auto* s, auto&) { return vqsExProgramSE1(s, 1, 1); }},
      {"TAControl", "DeviceIoControl(0x8022206c, 8, 0)", Answer::kNowhere, kUncounted,
       [](auto* s, auto&) { return vqsTAControl(s, 1, 2); }},
  };
}

/// A read, and a set where it differs.
template <class Table>
SessionCall tableCall(const char* name, const char* request, vqsStatus (*control)(QtfSession*, std::int32_t, Table*),
                      std::int32_t operation) {
  return {name, request, Answer::kIntoTheRequest, kCounted,
          [=](QtfSession* session, Outputs& out) { return control(session, operation, at<Table>(out)); }};
}

std::vector<SessionCall> featureCalls() {
  const char* autoMode = "DeviceIoControl(0x8022200c, 196, 196)";
  const char* inBag = "DeviceIoControl(0x80222014, 80, 80)";
  const char* slider = "DeviceIoControl(0x80222018, 404, 404)";
  const char* asmLite = "DeviceIoControl(0x8022201c, 420, 420)";
  const char* sliderV4 = "DeviceIoControl(0x80222090, 16, 16)";
  return {
      {"QueryFeatureStatus", "DeviceIoControl(0x80222000, 4, 8)", Answer::kEmptyBuffer, kCounted,
       [](auto* s, auto& out) { return vqsQueryFeatureStatus(s, 8, at<VqsFeatureStatus>(out)); }},
      {"DynamicSlider", "DeviceIoControl(0x80222020, 4, 0)", Answer::kNowhere, kCounted,
       [](auto* s, auto&) { return vqsDynamicSliderEnableDisable(s, 1); }},
      tableCall("AutoModeRead", autoMode, vqsItsAutoModeTableControl, 0),
      tableCall("AutoModeSet", autoMode, vqsItsAutoModeTableControl, 1),
      tableCall("InBagRead", inBag, vqsInBagPolicyTableControl, 2),
      tableCall("InBagSet", inBag, vqsInBagPolicyTableControl, 1),
      tableCall("StaticSliderV1Read", slider, vqsStaticSliderTableControl_V1, 3),
      tableCall("StaticSliderV1Set", slider, vqsStaticSliderTableControl_V1, 1),
      tableCall("StaticSliderV2Read", slider, vqsStaticSliderTableControl_V2, 4),
      tableCall("StaticSliderV2Set", slider, vqsStaticSliderTableControl_V2, 1),
      tableCall("AsmLiteRead", asmLite, vqsAsmLiteTableControl, 0),
      tableCall("AsmLiteSet", asmLite, vqsAsmLiteTableControl, 1),
      tableCall("StaticSliderV4Read", sliderV4, vqsStaticSliderTableControl_V4, 0),
      tableCall("StaticSliderV4Set", sliderV4, vqsStaticSliderTableControl_V4, 1),
  };
}

std::vector<SessionCall> platformCalls() {
  const std::string event = "DeviceIoControl(0x80222024, 16, 0)";
  return {
      {"OverrideInput", "DeviceIoControl(0x80222060, 12, 0)", Answer::kNowhere, kUncounted,
       [](auto* s, auto&) { return vqsOverrideInput(s, 1, 1, 2); }},
      {"OverrideKeyValue", "DeviceIoControl(0x80222098, 4, 8)", Answer::kCallersBuffer, kCounted,
       [](auto* s, auto& out) { return vqsGetInputOverrideKeyValue(s, 1, at<VqsOverrideValue>(out)); }},
      {"OverrideKeyListSize", "DeviceIoControl(0x8022209c, 0, 4)", Answer::kCallersBuffer, kCounted,
       [](auto* s, auto& out) { return vqsGetInputOverrideKeyList(s, nullptr, out.data(), 1); }},
      {"OverrideKeyMetadata", "DeviceIoControl(0x802220a4, 4, 52)", Answer::kCallersBuffer, kCounted,
       [](auto* s, auto& out) { return vqsGetInputOverrideKeyMetadata(s, 1, at<VqsOverrideMetadata>(out)); }},
      {"SimulateSensorUpdate", "DeviceIoControl(0x80222080, 16, 0)", Answer::kNowhere, kCounted,
       [](auto* s, auto& out) { return vqsAtstSimulateSensorUpdate(s, at<VqsSensorUpdate>(out)); }},
      {"GetSensorData", "DeviceIoControl(0x80222084, 0, 64)", Answer::kCallersBuffer, kCounted,
       [](auto* s, auto& out) { return vqsGetSensorData(s, at<VqsSensorData>(out)); }},
      {"GetOEMID", "DeviceIoControl(0x8022204c, 0, 32)", Answer::kEmptyBuffer, kCounted,
       [](auto* s, auto& out) { return vqsGetOEMID(s, at<char>(out)); }},
      {"GetBatteryLimits", "DeviceIoControl(0x80222010, 8, 8)", Answer::kEmptyBuffer, kCounted,
       [](auto* s, auto& out) {
         auto* words = at<std::uint16_t>(out);
         return vqsGetBatteryLimits(s, &words[0], &words[1], &words[2], &words[3]);
       }},
      {"RegisterEvent", event, Answer::kNowhere, kCounted,
       [](auto* s, auto&) { return vqsRegisterEvent(s, 6, marker()); }},
      {"UnRegisterEvent", event, Answer::kNowhere, kCounted,
       [](auto* s, auto&) { return vqsUnRegisterEvent(s, 6, marker()); }},
      {"NotifyBiosEvent", "DeviceIoControl(0x80222028, 40, 0)", Answer::kNowhere, kCounted,
       [](auto* s, auto&) { return vqsAtstNotifyBiosEvent(s); }},
      {"NotifyBiosEventV2", "DeviceIoControl(0x8022202c, 64, 0)", Answer::kNowhere, kCounted,
       [](auto* s, auto&) { return vqsAtstNotifyBiosEventV2(s); }},
  };
}

std::vector<SessionCall> policyLoadingCalls() {
  const std::string request = "DeviceIoControl(0x80222070, 24, 24)";
  return {
      {"LoadDynamicPolicy", request, Answer::kIntoTheRequest, kCounted,
       [](auto* s, auto& out) { return vqsExLoadDynamicPolicy(s, 9, marker(), &out[0], &out[1]); }},
      {"ClearDynamicPolicy", request, Answer::kIntoTheRequest, kCounted,
       [](auto* s, auto&) { return vqsExClearDynamicPolicy(s); }},
      {"GetPolicyBinaryVersion", request, Answer::kIntoTheRequest, kCounted,
       [](auto* s, auto& out) { return vqsExGetPolicyBinaryVersion(s, &out[0], &out[1]); }},
      {"LoadStaticBinary", request, Answer::kIntoTheRequest, kCounted,
       [](auto* s, auto& out) { return vqsExLoadStaticBinary(s, &out[0], &out[1]); }},
      {"LoadDiskBinary", request, Answer::kIntoTheRequest, kCounted,
       [](auto* s, auto& out) { return vqsExLoadDiskBinary(s, &out[0], &out[1]); }},
  };
}

/// A session on the filling device that seems to run a log.
struct OnFillingDevice {
  OnFillingDevice() {
    session.handle = CreateFileW(ScriptedDriver::kPath, 0xC0000000, 3, nullptr, 3, 0x80, nullptr);
    session.logReference = 0x1111;
    session.logSessionId = 3;
  }
  ~OnFillingDevice() { CloseHandle(session.handle); }
  OnFillingDevice(const OnFillingDevice&) = delete;
  OnFillingDevice& operator=(const OnFillingDevice&) = delete;

  FillingDevice device;
  QtfSession session{};
};

class EverySessionCall : public ::testing::TestWithParam<SessionCall>, protected OnFillingDevice {
 protected:
  vqsStatus run(QtfSession* on) { return GetParam().run(on, outputs); }

  QtfSession closed{};
  Outputs outputs = poisoned<Outputs>();
};

TEST_P(EverySessionCall, is_one_request_on_the_sessions_handle_and_allocates_nothing) {
  const WindowsCalls calls;
  const Faults faults;
  EXPECT_EQ(run(&session), kDone);
  EXPECT_EQ(calls.all(), std::vector<std::string>{GetParam().request});
  EXPECT_EQ(device.requestOn, session.handle);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_P(EverySessionCall, is_synchronous_and_counts_from_0_if_at_all) {
  EXPECT_EQ(run(&session), kDone);
  EXPECT_EQ(device.last.overlapped, nullptr);
  EXPECT_EQ(device.last.returned != nullptr, GetParam().counted);
  EXPECT_EQ(device.countBefore, GetParam().counted ? 0 : kPoisonWord);
}

TEST_P(EverySessionCall, has_its_answer_where_it_belongs) {
  EXPECT_EQ(run(&session), kDone);
  const auto answer = GetParam().answer;
  EXPECT_EQ(device.last.output == nullptr, answer == Answer::kNowhere);
  EXPECT_EQ(device.last.output == outputs.data(), answer == Answer::kCallersBuffer);
  if (answer == Answer::kIntoTheRequest) {
    EXPECT_EQ(device.last.output, device.last.input);
  }
  if (answer == Answer::kEmptyBuffer) {
    EXPECT_NE(device.last.output, device.last.input);
    EXPECT_EQ(device.answerBefore, Bytes(device.last.outputLength, 0));
  }
}

TEST_P(EverySessionCall, does_not_look_at_the_byte_count) {
  EXPECT_EQ(run(&session), kDone);
  const Outputs expected = outputs;
  for (const DWORD reported : {0U, 1U, 0xFFFFFFFFU}) {
    outputs = poisoned<Outputs>();
    device.reported = reported;
    EXPECT_EQ(run(&session), kDone);
    EXPECT_EQ(outputs, expected) << reported;
  }
}

TEST_P(EverySessionCall, leaves_the_session_as_it_is) {
  const Bytes before = bytesOf(session);
  EXPECT_EQ(run(&session), kDone);
  EXPECT_EQ(bytesOf(session), before);
}

TEST_P(EverySessionCall, reaches_nothing_without_an_open_session) {
  const WindowsCalls calls;
  EXPECT_EQ(run(nullptr), kInvalid);
  EXPECT_EQ(run(&closed), kInvalid);
  EXPECT_TRUE(calls.all().empty());
  EXPECT_EQ(outputs, poisoned<Outputs>());
}

const auto callName = [](const auto& instance) { return instance.param.name; };

INSTANTIATE_TEST_SUITE_P(InputsAndOutputs, EverySessionCall, ::testing::ValuesIn(inputAndOutputCalls()), callName);
INSTANTIATE_TEST_SUITE_P(Features, EverySessionCall, ::testing::ValuesIn(featureCalls()), callName);
INSTANTIATE_TEST_SUITE_P(Platform, EverySessionCall, ::testing::ValuesIn(platformCalls()), callName);
INSTANTIATE_TEST_SUITE_P(PolicyLoading, EverySessionCall, ::testing::ValuesIn(policyLoadingCalls()), callName);

struct UncheckedOutput {
  std::string name;
  DWORD length;
  std::function<vqsStatus(QtfSession*)> run;
};

/// Whether a null output is refused is for the driver to say; this one does not mind.
class MissingOutput : public ::testing::TestWithParam<UncheckedOutput>, protected OnFillingDevice {};

TEST_P(MissingOutput, is_passed_with_its_full_length_and_seen_by_the_driver_without_one) {
  const WindowsCalls calls;
  EXPECT_EQ(GetParam().run(&session), kDone);
  ASSERT_EQ(calls.all().size(), 1U);
  EXPECT_TRUE(calls.all()[0].ends_with(", " + std::to_string(GetParam().length) + ")")) << calls.all()[0];
  EXPECT_EQ(device.last.output, nullptr);
  EXPECT_EQ(device.last.outputLength, 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Of, MissingOutput,
    ::testing::Values(UncheckedOutput{"GetDebugOutput", 4, [](auto* s) { return vqsGetDebugOutput(s, nullptr); }},
                      UncheckedOutput{"GetSensorData", 64, [](auto* s) { return vqsGetSensorData(s, nullptr); }},
                      UncheckedOutput{"KeyMetadata", 52,
                                      [](auto* s) { return vqsGetInputOverrideKeyMetadata(s, 1, nullptr); }}),
    callName);

}  // namespace
}  // namespace test
