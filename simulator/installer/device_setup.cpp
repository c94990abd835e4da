// SPDX-License-Identifier: Apache-2.0
#include "simulator/installer/device_setup.h"

#include <windows.h>
// after windows.h, which they need
#include <initguid.h>
// after initguid.h, which defines its keys
#include <devpkey.h>
#include <newdev.h>
#include <setupapi.h>

#include <functional>
#include <set>
#include <utility>

#include "simulator/installer/driver_packages.h"
#include "simulator/installer/problem.h"
#include "simulator/installer/windows_text.h"

namespace setup {
namespace {

constexpr wchar_t kHardwareId[] = L"root\\vexoqtf";
/// The class "System", as the INF file has it.
constexpr GUID kSetupClass = {0x4D36E97D, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}};
constexpr GUID kInterfaceClass = {0x9DC9718B, 0x59BF, 0x43EE, {0x94, 0xED, 0x34, 0xBB, 0x82, 0x3D, 0xCE, 0xDF}};

class DeviceList {
 public:
  DeviceList(HDEVINFO list, const char* what) : list_(list) { require(list != INVALID_HANDLE_VALUE, what); }
  ~DeviceList() { SetupDiDestroyDeviceInfoList(list_); }
  DeviceList(DeviceList&&) = delete;
  [[nodiscard]] HDEVINFO get() const { return list_; }

 private:
  HDEVINFO list_;
};

SP_DEVINFO_DATA emptyDevice() {
  SP_DEVINFO_DATA device{};
  device.cbSize = sizeof(device);
  return device;
}

std::wstring property(HDEVINFO list, SP_DEVINFO_DATA device, DWORD which) {
  wchar_t text[512] = {};
  // One short of the whole, so that the text ends.
  if (!SetupDiGetDeviceRegistryPropertyW(list, &device, which, nullptr, reinterpret_cast<BYTE*>(text),
                                         sizeof(text) - sizeof(wchar_t), nullptr))
    return {};
  return text;
}

bool isOurs(HDEVINFO list, SP_DEVINFO_DATA device) {
  return _wcsicmp(property(list, device, SPDRP_HARDWAREID).c_str(), kHardwareId) == 0;
}

/// Calls a function with each of our devices, present or not; returns how many there are.
int forEachDevice(const std::function<void(HDEVINFO, SP_DEVINFO_DATA&)>& action) {
  const DeviceList list{SetupDiGetClassDevsW(&kSetupClass, L"ROOT", nullptr, 0), "the devices cannot be listed"};
  auto device = emptyDevice();
  int count = 0;
  for (DWORD i = 0; SetupDiEnumDeviceInfo(list.get(), i, &device); ++i) {
    if (!isOurs(list.get(), device)) continue;
    ++count;
    action(list.get(), device);
  }
  return count;
}

int countDevices() {
  return forEachDevice([](HDEVINFO, SP_DEVINFO_DATA&) {});
}

void createDevice() {
  constexpr char kWhat[] = "the device cannot be created";
  const DeviceList list{SetupDiCreateDeviceInfoList(&kSetupClass, nullptr), kWhat};
  auto device = emptyDevice();
  require(SetupDiCreateDeviceInfoW(list.get(), L"System", &kSetupClass, nullptr, nullptr, DICD_GENERATE_ID, &device),
          kWhat);
  // A list of ids ends with two zeros.
  wchar_t ids[std::size(kHardwareId) + 1] = {};
  std::copy(std::begin(kHardwareId), std::end(kHardwareId), ids);
  require(SetupDiSetDeviceRegistryPropertyW(list.get(), &device, SPDRP_HARDWAREID, reinterpret_cast<BYTE*>(ids),
                                            sizeof(ids)),
          kWhat);
  require(SetupDiCallClassInstaller(DIF_REGISTERDEVICE, list.get(), &device), kWhat);
}

void removeDevice(HDEVINFO list, SP_DEVINFO_DATA& device) {
  require(SetupDiCallClassInstaller(DIF_REMOVE, list, &device), "the device cannot be removed");
}

bool needsRestart(HDEVINFO list, SP_DEVINFO_DATA& device) {
  SP_DEVINSTALL_PARAMS_W parameters{};
  parameters.cbSize = sizeof(parameters);
  return SetupDiGetDeviceInstallParamsW(list, &device, &parameters) &&
         (parameters.Flags & (DI_NEEDREBOOT | DI_NEEDRESTART)) != 0;
}

/// The name of the package that a device's driver is from, such as "oem3.inf".
std::wstring packageOf(HDEVINFO list, const SP_DEVINFO_DATA& device) {
  const std::wstring key = L"SYSTEM\\CurrentControlSet\\Control\\Class\\" + property(list, device, SPDRP_DRIVER);
  wchar_t name[MAX_PATH] = {};
  DWORD size = sizeof(name);
  const LSTATUS result = RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), L"InfPath", RRF_RT_REG_SZ, nullptr, name, &size);
  return result == ERROR_SUCCESS ? name : L"";
}

std::set<std::wstring> packagesInUse() {
  std::set<std::wstring> names;
  forEachDevice([&](HDEVINFO list, SP_DEVINFO_DATA& device) { names.insert(packageOf(list, device)); });
  names.erase(L"");
  return names;
}

/// Those in use, and whatever else is left of the driver.
std::set<std::wstring> allPackages() {
  auto names = packagesInUse();
  for (auto& name : ourPackages()) names.insert(std::move(name));
  return names;
}

/// A number that Windows keeps with a device; 0 when it keeps none.
std::uint32_t numberOf(HDEVINFO list, SP_DEVINFO_DATA& device, const DEVPROPKEY& key) {
  std::uint32_t number = 0;
  DEVPROPTYPE type = 0;
  if (!SetupDiGetDevicePropertyW(list, &device, &key, &type, reinterpret_cast<BYTE*>(&number), sizeof(number), nullptr,
                                 0))
    return 0;
  return number;
}

bool hasInterface() {
  const DeviceList list{SetupDiGetClassDevsW(&kInterfaceClass, nullptr, nullptr, DIGCF_PRESENT | DIGCF_DEVICEINTERFACE),
                        "the device cannot be looked for"};
  SP_DEVICE_INTERFACE_DATA found{};
  found.cbSize = sizeof(found);
  return SetupDiEnumDeviceInterfaces(list.get(), nullptr, &kInterfaceClass, 0, &found);
}

void removeUnused(const std::set<std::wstring>& packages) {
  const auto inUse = packagesInUse();
  for (const auto& name : packages)
    if (!inUse.contains(name)) removePackage(name);
}

[[noreturn]] void failWithAdvice(const std::string& what, DWORD error) {
  try {
    fail(what, error);
  } catch (const Failure& failure) {
    throw Failure{failure.what() + adviceOn(error)};
  }
}

}  // namespace

Installation install(const std::filesystem::path& inf) {
  const std::string what = narrow(inf.wstring()) + " cannot be installed";
  require(GetFileAttributesW(inf.c_str()) != INVALID_FILE_ATTRIBUTES, what);
  const auto earlier = allPackages();
  const bool isNew = countDevices() == 0;
  if (isNew) createDevice();
  BOOL restart = FALSE;
  if (UpdateDriverForPlugAndPlayDevicesW(nullptr, kHardwareId, inf.c_str(), INSTALLFLAG_FORCE, &restart)) {
    removeUnused(earlier);
    return {.isNew = isNew, .needsRestart = restart != FALSE};
  }
  const DWORD error = GetLastError();
  if (isNew) forEachDevice(removeDevice);
  failWithAdvice(what, error);
}

Removal remove() {
  const auto packages = allPackages();
  Removal removal{};
  const int count = forEachDevice([&](HDEVINFO list, SP_DEVINFO_DATA& device) {
    removeDevice(list, device);
    removal.needsRestart = removal.needsRestart || needsRestart(list, device);
  });
  if (count == 0 && packages.empty()) throw Failure{"the simulated driver is not installed"};
  for (const auto& package : packages)
    if (!removePackage(package)) removal.isPackageLeft = true;
  return removal;
}

Device lookAtDevice() {
  Device found{.state = State::kNotInstalled, .problem = 0, .problemStatus = 0};
  forEachDevice([&](HDEVINFO list, SP_DEVINFO_DATA& device) {
    found = {.state = State::kNotRunning,
             .problem = numberOf(list, device, DEVPKEY_Device_ProblemCode),
             .problemStatus = numberOf(list, device, DEVPKEY_Device_ProblemStatus)};
  });
  if (found.state == State::kNotRunning && hasInterface())
    found = {.state = State::kRunning, .problem = 0, .problemStatus = 0};
  return found;
}

}  // namespace setup
