// SPDX-License-Identifier: Apache-2.0
//   installer_helper problem CODE STATUS      has Windows say this of the driver's device, once it is there
//   installer_helper publish INF              makes a package known that no device has
//   installer_helper unprivileged PROGRAM ARGUMENT    runs a program that is no administrator's
#include <windows.h>
// after windows.h, which they need
#include <initguid.h>
// after initguid.h, which defines its keys
#include <devpkey.h>
#include <setupapi.h>

#include <cstdint>
#include <string>

namespace {

constexpr GUID kSetupClass = {0x4D36E97D, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}};

/// The toolchain's headers have the function that reads properties, and not this one.
using SetDeviceProperty = BOOL(WINAPI*)(HDEVINFO list, SP_DEVINFO_DATA* device, const DEVPROPKEY* key, DEVPROPTYPE type,
                                        const BYTE* value, DWORD size, DWORD flags);

bool setNumber(HDEVINFO list, SP_DEVINFO_DATA& device, const DEVPROPKEY& key, std::uint32_t number) {
  const auto set = reinterpret_cast<SetDeviceProperty>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("setupapi"), "SetupDiSetDevicePropertyW")));
  return set(list, &device, &key, DEVPROP_TYPE_UINT32, reinterpret_cast<BYTE*>(&number), sizeof(number), 0);
}

bool isDrivers(HDEVINFO list, SP_DEVINFO_DATA& device) {
  wchar_t id[64] = {};
  SetupDiGetDeviceRegistryPropertyW(list, &device, SPDRP_HARDWAREID, nullptr, reinterpret_cast<BYTE*>(id),
                                    sizeof(id) - sizeof(wchar_t), nullptr);
  return std::wstring{id} == L"root\\vexoqtf";
}

bool setProblemNow(std::uint32_t code, std::uint32_t status) {
  const HDEVINFO list = SetupDiGetClassDevsW(&kSetupClass, L"ROOT", nullptr, 0);
  SP_DEVINFO_DATA device{};
  device.cbSize = sizeof(device);
  for (DWORD i = 0; SetupDiEnumDeviceInfo(list, i, &device); ++i)
    if (isDrivers(list, device))
      return setNumber(list, device, DEVPKEY_Device_ProblemStatus, status) &&
             setNumber(list, device, DEVPKEY_Device_ProblemCode, code);
  return false;
}

int setProblem(std::uint32_t code, std::uint32_t status) {
  for (int tries = 0; tries < 200; ++tries) {
    if (setProblemNow(code, status)) return 0;
    Sleep(50);
  }
  return 1;
}

/// This process's rights without those of administrators.
HANDLE unprivilegedToken() {
  SID_IDENTIFIER_AUTHORITY authority = SECURITY_NT_AUTHORITY;
  SID_AND_ATTRIBUTES administrators{};
  HANDLE own = nullptr;
  HANDLE restricted = nullptr;
  AllocateAndInitializeSid(&authority, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS, 0, 0, 0, 0, 0, 0,
                           &administrators.Sid);
  OpenProcessToken(GetCurrentProcess(), TOKEN_ALL_ACCESS, &own);
  CreateRestrictedToken(own, DISABLE_MAX_PRIVILEGE, 1, &administrators, 0, nullptr, 0, nullptr, &restricted);
  return restricted;
}

int runUnprivileged(const std::wstring& program, const std::wstring& argument) {
  std::wstring line = L"\"" + program + L"\" " + argument;
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  if (!CreateProcessAsUserW(unprivilegedToken(), program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                            nullptr, &startup, &process))
    return 99;
  DWORD exitCode = 99;
  WaitForSingleObject(process.hProcess, INFINITE);
  GetExitCodeProcess(process.hProcess, &exitCode);
  return static_cast<int>(exitCode);
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count == 3 && std::wstring{arguments[1]} == L"publish")
    return SetupCopyOEMInfW(arguments[2], nullptr, SPOST_PATH, 0, nullptr, 0, nullptr, nullptr) ? 0 : 97;
  if (count != 4) return 98;
  if (std::wstring{arguments[1]} == L"unprivileged") return runUnprivileged(arguments[2], arguments[3]);
  return setProblem(std::stoul(arguments[2]), std::stoul(arguments[3], nullptr, 16));
}
