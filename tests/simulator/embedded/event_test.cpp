// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <thread>

#include "host/host.h"
#include "tests/simulator/embedded/client.h"
#include "tests/simulator/model/settings_view.h"

namespace test {
namespace {

HANDLE openOutputEvent() { return OpenEventW(SYNCHRONIZE, FALSE, u"Global\\VexoQtfAppOutputEvent"); }

bool isSignalled(HANDLE event) { return WaitForSingleObject(event, 0) == WAIT_OBJECT_0; }

void setInputs(EmbeddedDriver& driver, std::uint32_t first, std::uint32_t second) {
  EXPECT_FALSE(request(driver, kAppIo, Record{12}.u32(0, 4).u32(4, first).u32(8, second)).empty());
}

/// A request without an answer.
bool tell(EmbeddedDriver& driver, std::uint32_t code, Bytes record) {
  DWORD returned = 0;
  const auto length = static_cast<DWORD>(record.size());
  return driver.control(handle(1), {code, record.data(), length, nullptr, 0, &returned, nullptr});
}

/// An event of the system, and a handle on it.
class NamedEvent {
 public:
  explicit NamedEvent(std::u16string name) : name_(std::move(name)) {
    host::createEvent(name_);
    handle_ = OpenEventW(SYNCHRONIZE, FALSE, name_.c_str());
    EXPECT_NE(handle_, nullptr);
  }
  ~NamedEvent() {
    close();
    host::removeEvent(name_);
  }
  NamedEvent(NamedEvent&&) = delete;

  [[nodiscard]] std::uint64_t number() const { return reinterpret_cast<std::uint64_t>(handle_); }
  /// Whether it was signalled since this was asked last.
  bool take() {
    const bool signalled = isSignalled(handle_);
    host::resetEvent(name_);
    return signalled;
  }
  void close() {
    if (handle_ != nullptr) CloseHandle(std::exchange(handle_, nullptr));
  }

 private:
  std::u16string name_;
  HANDLE handle_ = nullptr;
};

TEST(EmbeddedOutputEvent, is_there_while_the_driver_is_attached) {
  TestDriver driver;
  EXPECT_EQ(openOutputEvent(), nullptr);
  driver.attach();
  const HANDLE event = openOutputEvent();
  ASSERT_NE(event, nullptr);
  EXPECT_FALSE(isSignalled(event));
  EXPECT_TRUE(CloseHandle(event));
  driver.detach();
  EXPECT_EQ(openOutputEvent(), nullptr);
}

TEST(EmbeddedOutputEvent, stays_signalled_until_outputs_are_read) {
  TestDriver driver;
  driver.attach();
  ASSERT_TRUE(driver.open(handle(1)));
  const HANDLE event = openOutputEvent();
  setInputs(driver, 1, 2);
  EXPECT_TRUE(isSignalled(event));
  EXPECT_TRUE(isSignalled(event));
  EXPECT_EQ(request(driver, kAppIo, Bytes(12)), Record{12}.u32(4, 1).u32(8, 2).bytes());
  EXPECT_FALSE(isSignalled(event));
  setInputs(driver, 1, 2);
  EXPECT_FALSE(isSignalled(event));
  EXPECT_TRUE(CloseHandle(event));
  driver.close(handle(1));
}

TEST(EmbeddedOutputEvent, wakes_who_waits) {
  TestDriver driver;
  driver.attach();
  ASSERT_TRUE(driver.open(handle(1)));
  const HANDLE event = openOutputEvent();
  DWORD result = WAIT_FAILED;
  std::thread waiting{[&] { result = WaitForSingleObject(event, 30000); }};
  setInputs(driver, 1, 2);
  waiting.join();
  EXPECT_EQ(result, WAIT_OBJECT_0);
  EXPECT_TRUE(CloseHandle(event));
  driver.close(handle(1));
}

TEST(EmbeddedEvent, signals_the_handle_that_was_registered) {
  TestDriver driver;
  ASSERT_TRUE(driver.open(handle(1)));
  NamedEvent overrides{u"overrides"};
  NamedEvent firmware{u"firmware"};
  ASSERT_TRUE(tell(driver, kEventRegistration, Record{16}.u8(0, 1).u32(4, 6).u64(8, overrides.number())));
  ASSERT_TRUE(tell(driver, kEventRegistration, Record{16}.u8(0, 1).u32(4, 5).u64(8, firmware.number())));
  EXPECT_FALSE(overrides.take());
  ASSERT_TRUE(tell(driver, kOverride, overrideRequest(58, 40)));
  EXPECT_TRUE(overrides.take());
  EXPECT_FALSE(firmware.take());
  ASSERT_TRUE(tell(driver, kFirmwareEvent, Bytes(40)));
  EXPECT_FALSE(overrides.take());
  EXPECT_TRUE(firmware.take());
  ASSERT_TRUE(tell(driver, kEventRegistration, Record{16}.u32(4, 6).u64(8, overrides.number())));
  ASSERT_TRUE(tell(driver, kOverride, overrideRequest(58, 41)));
  EXPECT_FALSE(overrides.take());
  driver.close(handle(1));
}

TEST(EmbeddedEvent, ends_with_its_handle) {
  TestDriver driver;
  NamedEvent overrides{u"overrides"};
  ASSERT_TRUE(driver.open(handle(2)));
  ASSERT_TRUE(driver.open(handle(1)));
  ASSERT_TRUE(tell(driver, kEventRegistration, Record{16}.u8(0, 1).u32(4, 6).u64(8, overrides.number())));
  driver.close(handle(1));
  ASSERT_TRUE(driver.open(handle(1)));
  ASSERT_TRUE(tell(driver, kOverride, overrideRequest(58, 40)));
  EXPECT_FALSE(overrides.take());
  driver.close(handle(1));
  driver.close(handle(2));
}

TEST(EmbeddedEvent, of_anything_else_is_never_touched) {
  TestDriver driver;
  ASSERT_TRUE(driver.open(handle(1)));
  NamedEvent gone{u"gone"};
  Bytes memory(64, 0xA5);
  for (const std::uint64_t object :
       {gone.number(), reinterpret_cast<std::uint64_t>(memory.data()), std::uint64_t{1}, ~std::uint64_t{0}})
    ASSERT_TRUE(tell(driver, kEventRegistration, Record{16}.u8(0, 1).u32(4, 6).u64(8, object)));
  gone.close();
  ASSERT_TRUE(tell(driver, kOverride, overrideRequest(58, 40)));
  EXPECT_EQ(memory, Bytes(64, 0xA5));
  driver.close(handle(1));
}

}  // namespace
}  // namespace test
