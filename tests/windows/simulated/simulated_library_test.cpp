// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <cstring>
#include <memory>

#include <vqs/vqs.h>
#include "tests/support/results.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

using Words = std::array<std::uint32_t, 4>;

constexpr const char* kLibrary = "VexoQTFServices.dll";

/// The registration index of the firmware event.
constexpr std::int32_t kFirmwareEvent = 5;

/// The version resource of the library beside this program.
class LibraryResource {
 public:
  LibraryResource() {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(GetModuleHandleA(kLibrary), path, MAX_PATH);
    bytes_.resize(GetFileVersionInfoSizeA(path, nullptr));
    EXPECT_TRUE(GetFileVersionInfoA(path, 0, static_cast<DWORD>(bytes_.size()), bytes_.data())) << path;
  }

  [[nodiscard]] VS_FIXEDFILEINFO fixed() const { return *static_cast<const VS_FIXEDFILEINFO*>(find("\\")); }
  [[nodiscard]] std::string text(const std::string& name) const {
    return static_cast<const char*>(find("\\StringFileInfo\\040904b0\\" + name));
  }

 private:
  [[nodiscard]] const void* find(const std::string& name) const {
    void* value = nullptr;
    UINT length = 0;
    EXPECT_TRUE(VerQueryValueA(bytes_.data(), name.c_str(), &value, &length)) << name;
    return value;
  }

  Bytes bytes_;
};

/// A session that ends with its scope.
class Session {
 public:
  Session() { EXPECT_EQ(vqsInitialize(&session_), kDone); }
  ~Session() { EXPECT_EQ(vqsUninitialize(session_), kDone); }
  Session(Session&&) = delete;
  operator QtfSession*() const { return session_; }  // NOLINT(google-explicit-constructor): stands for its session

 private:
  QtfSession* session_ = nullptr;
};

TEST(SimulatedLibrary, says_that_it_is_simulated) {
  const LibraryResource resource;
  EXPECT_EQ(resource.fixed().dwFileFlags & VS_FF_SPECIALBUILD, DWORD{VS_FF_SPECIALBUILD});
  EXPECT_EQ(resource.text("SpecialBuild"), "simulated driver in the process");
  EXPECT_EQ(resource.text("FileDescription"),
            "Client library for the VexoQTF platform power-management driver, simulated driver in the process");
  EXPECT_EQ(resource.text("OriginalFilename"), kLibrary);
}

TEST(SimulatedLibrary, gives_the_versions_of_both_files) {
  Words library{99, 99, 99, 99};
  EXPECT_EQ(vqsGetVersion(library.data()), kDone);
  EXPECT_EQ(library, (Words{PROJECT_MAJOR, PROJECT_MINOR, 0, PROJECT_PATCH}));
  Words driver{99, 99, 99, 99};
  EXPECT_EQ(vqsGetDriverVersion(driver.data()), kDone);
  EXPECT_EQ(driver, (Words{PROJECT_MAJOR, PROJECT_MINOR, 0, PROJECT_PATCH}));
}

TEST(SimulatedLibrary, has_handles_of_the_system_for_its_device) {
  Session first;
  HANDLE handle = nullptr;
  std::memcpy(&handle, first, sizeof(handle));
  DWORD unused = 0;
  EXPECT_TRUE(GetHandleInformation(handle, &unused));
  {
    Session second;
    HANDLE other = nullptr;
    std::memcpy(&other, second, sizeof(other));
    EXPECT_NE(handle, other);
  }
  EXPECT_EQ(vqsSetAppInputs(first, 1, 2), kDone);
}

TEST(SimulatedLibrary, refuses_requests_on_other_handles) {
  std::uint64_t session[3] = {};
  const HANDLE event = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  std::memcpy(session, &event, sizeof(event));
  EXPECT_EQ(vqsSetAppInputs(reinterpret_cast<QtfSession*>(session), 1, 2), kFailed);
  EXPECT_TRUE(CloseHandle(event));
}

TEST(SimulatedLibrary, signals_registered_events_whose_handles_may_be_closed) {
  Session session;
  const HANDLE event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  const HANDLE own = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  HANDLE watched = nullptr;
  ASSERT_TRUE(
      DuplicateHandle(GetCurrentProcess(), event, GetCurrentProcess(), &watched, 0, FALSE, DUPLICATE_SAME_ACCESS));
  ASSERT_EQ(vqsRegisterEvent(session, kFirmwareEvent, event), kDone);
  EXPECT_TRUE(CloseHandle(event));
  EXPECT_EQ(WaitForSingleObject(watched, 0), DWORD{WAIT_TIMEOUT});
  ASSERT_EQ(vqsAtstNotifyBiosEvent(session), kDone);
  EXPECT_EQ(WaitForSingleObject(watched, 0), WAIT_OBJECT_0);
  EXPECT_EQ(vqsRegisterEvent(session, kFirmwareEvent, reinterpret_cast<void*>(0x7777'7770)), kFailed);
  EXPECT_TRUE(CloseHandle(watched));
  EXPECT_TRUE(CloseHandle(own));
}

/// The library once more, from another file, which no program has linked.
class LoadedLibrary {
 public:
  LoadedLibrary() {
    char source[MAX_PATH] = {};
    GetModuleFileNameA(GetModuleHandleA(kLibrary), source, MAX_PATH);
    path_ = folder_.path("loaded.dll");
    EXPECT_TRUE(CopyFileA(source, path_.c_str(), TRUE));
    load();
  }
  LoadedLibrary(LoadedLibrary&&) = delete;

  void load() { module_ = LoadLibraryA(path_.c_str()); }
  void unload() { EXPECT_TRUE(FreeLibrary(module_)); }
  [[nodiscard]] bool isLoaded() const { return GetModuleHandleA(path_.c_str()) != nullptr; }

  template <class Function>
  auto function(Function* /*prototype*/, const char* name) const {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
  }

 private:
  TemporaryFolder folder_;
  std::string path_;
  HMODULE module_ = nullptr;
};

constexpr const char* kOutputEvent = "Global\\VexoQtfAppOutputEvent";

TEST(SimulatedLibrary, leaves_an_event_of_that_name_alone_and_has_its_own) {
  const HANDLE event = CreateEventExA(nullptr, kOutputEvent, CREATE_EVENT_MANUAL_RESET, SYNCHRONIZE);
  ASSERT_NE(event, nullptr);
  LoadedLibrary library;
  QtfSession* session = nullptr;
  ASSERT_EQ(library.function(vqsInitialize, "vqsInitialize")(&session), kDone);
  const auto wait = library.function(vqsWaitAppOutput, "vqsWaitAppOutput");
  EXPECT_EQ(wait(session, 0), kFailed);
  const bool before = WaitForSingleObject(event, 0) == WAIT_OBJECT_0;
  ASSERT_EQ(library.function(vqsSetAppInputs, "vqsSetAppInputs")(session, 5, 7), kDone);
  EXPECT_EQ(wait(session, 0), kDone);
  EXPECT_EQ(WaitForSingleObject(event, 0) == WAIT_OBJECT_0, before);
  EXPECT_EQ(library.function(vqsUninitialize, "vqsUninitialize")(session), kDone);
  EXPECT_TRUE(CloseHandle(event));
}

TEST(SimulatedLibrary, outlives_its_unloading_while_its_thread_runs) {
  LoadedLibrary library;
  QtfSession* session = nullptr;
  QtfLogKV* log = nullptr;
  ASSERT_EQ(library.function(vqsInitialize, "vqsInitialize")(&session), kDone);
  ASSERT_EQ(library.function(vqsStartQTFLogKV, "vqsStartQTFLogKV")(session, &log), kDone);
  library.unload();
  // Longer than the thread waits between two rounds.
  Sleep(1500);
  ASSERT_TRUE(library.isLoaded());
  library.load();
  EXPECT_EQ(library.function(vqsStopQTFLogKV, "vqsStopQTFLogKV")(session, log), kDone);
  EXPECT_EQ(library.function(vqsUninitialize, "vqsUninitialize")(session), kDone);
}

}  // namespace
}  // namespace test
