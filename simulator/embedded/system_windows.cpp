// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/system.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <new>

#include "host/events.h"
#include "simulator/embedded/windows_text.h"

namespace simulator::system {
namespace {

constexpr const wchar_t* kOutputEventName = L"Global\\VexoQtfAppOutputEvent";

HANDLE handleOf(std::uint64_t value) { return reinterpret_cast<HANDLE>(value); }

}  // namespace

void stayLoaded() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                     reinterpret_cast<const wchar_t*>(&stayLoaded), &module);
}

std::uint64_t milliseconds() {
  // in units of 100 ns since 1601
  constexpr std::uint64_t k1970 = 116'444'736'000'000'000;
  FILETIME time{};
  GetSystemTimeAsFileTime(&time);
  return ((std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime) - k1970) / 10'000;
}

std::uint32_t processId() { return GetCurrentProcessId(); }

bool readMemory(std::uint64_t address, std::span<std::byte> destination) {
  // The system answers for addresses that cannot be read.
  SIZE_T count = 0;
  const BOOL isDone = ReadProcessMemory(GetCurrentProcess(), reinterpret_cast<const void*>(address), destination.data(),
                                        destination.size(), &count);
  return isDone != 0 && count == destination.size();
}

bool environment(const char* name, std::span<char> value) {
  WideText<64> wideName;
  wchar_t wide[4096];
  wideName.assign(name);
  const DWORD length = GetEnvironmentVariableW(wideName.text(), wide, static_cast<DWORD>(std::size(wide)));
  if (length >= std::size(wide)) return false;
  return narrow({wide, length}, value);
}

void writeError(const char* text) {
  OutputDebugStringA(text);
  const HANDLE stream = GetStdHandle(STD_ERROR_HANDLE);
  DWORD unused = 0;
  WideText<8192> wide;
  const bool isConsole = GetConsoleMode(stream, &unused) != 0 && wide.assign(text);
  if (isConsole)
    WriteConsoleW(stream, wide.text(), static_cast<DWORD>(wide.length()), &unused, nullptr);
  else
    WriteFile(stream, text, static_cast<DWORD>(std::strlen(text)), &unused, nullptr);
}

Reason failure(const char* what) {
  wchar_t wide[128] = {};
  char text[3 * std::size(wide)] = {};
  const DWORD error = GetLastError();
  DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, wide,
                                static_cast<DWORD>(std::size(wide)), nullptr);
  while (length > 0 && std::wcschr(L".\r\n ", wide[length - 1]) != nullptr) --length;
  if (length == 0 || !narrow({wide, length}, text)) return Reason{"%s: error %lu", what, error};
  return Reason{"%s: %s", what, text};
}

void createOutputEvent() { host::createEvent(kOutputEventName); }
void removeOutputEvent() { host::removeEvent(kOutputEventName); }
void setOutputEvent(bool signalled) {
  signalled ? host::signalEvent(kOutputEventName) : host::resetEvent(kOutputEventName);
}

std::uint64_t retainEvent(std::uint64_t handle) {
  HANDLE own = nullptr;
  const HANDLE process = GetCurrentProcess();
  if (!DuplicateHandle(process, handleOf(handle), process, &own, EVENT_MODIFY_STATE, FALSE, 0)) return 0;
  return reinterpret_cast<std::uint64_t>(own);
}
void releaseEvent(std::uint64_t event) { CloseHandle(handleOf(event)); }
void signalEvent(std::uint64_t event) { SetEvent(handleOf(event)); }

/// The thread, and the event that tells it to end.
struct MetronomeThread {
  HANDLE thread;
  HANDLE stopping;

  static MetronomeThread& of(Metronome& metronome) { return *reinterpret_cast<MetronomeThread*>(metronome.state_); }

  static DWORD WINAPI run(void* argument) {
    auto& metronome = *static_cast<Metronome*>(argument);
    constexpr DWORD kSecond = 1000;
    while (WaitForSingleObject(of(metronome).stopping, kSecond) == WAIT_TIMEOUT) metronome.work_(metronome.context_);
    return 0;
  }
};

bool Metronome::start(Work work, void* context) {
  static_assert(sizeof(state_) >= sizeof(MetronomeThread));
  work_ = work;
  context_ = context;
  auto& native =
      *new (state_) MetronomeThread{.thread = nullptr, .stopping = CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  if (native.stopping == nullptr) return false;
  native.thread = CreateThread(nullptr, 0, &MetronomeThread::run, this, 0, nullptr);
  isRunning_ = native.thread != nullptr;
  if (!isRunning_) CloseHandle(native.stopping);
  return isRunning_;
}

void Metronome::stop() {
  const auto& native = MetronomeThread::of(*this);
  SetEvent(native.stopping);
  WaitForSingleObject(native.thread, INFINITE);
  CloseHandle(native.thread);
  CloseHandle(native.stopping);
  isRunning_ = false;
}

}  // namespace simulator::system
