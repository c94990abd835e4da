// SPDX-License-Identifier: Apache-2.0
#include "device_setup.h"

#include <windows.h>
// after windows.h, which they need
#include <initguid.h>
#include <newdev.h>
#include <setupapi.h>

#include <functional>
#include <utility>
#include <vector>

#include "windows_text.h"

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

/// The name under which Windows keeps the INF file of a device's driver, such as "oem3.inf".
std::wstring packageOf(HDEVINFO list, const SP_DEVINFO_DATA& device) {
  const std::wstring key = L"SYSTEM\\CurrentControlSet\\Control\\Class\\" + property(list, device, SPDRP_DRIVER);
  wchar_t name[MAX_PATH] = {};
  DWORD size = sizeof(name);
  const LSTATUS result = RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), L"InfPath", RRF_RT_REG_SZ, nullptr, name, &size);
  return result == ERROR_SUCCESS ? name : L"";
}

}  // namespace

Installation install(const std::filesystem::path& inf) {
  const std::string what = narrow(inf.wstring()) + " cannot be installed";
  require(GetFileAttributesW(inf.c_str()) != INVALID_FILE_ATTRIBUTES, what);
  const bool isNew = countDevices() == 0;
  if (isNew) createDevice();
  BOOL restart = FALSE;
  if (UpdateDriverForPlugAndPlayDevicesW(nullptr, kHardwareId, inf.c_str(), INSTALLFLAG_FORCE, &restart))
    return {.isNew = isNew, .needsRestart = restart != FALSE};
  const DWORD error = GetLastError();
  if (isNew) forEachDevice(removeDevice);
  fail(what, error);
}

bool remove() {
  std::vector<std::wstring> packages;
  bool restart = false;
  const int count = forEachDevice([&](HDEVINFO list, SP_DEVINFO_DATA& device) {
    packages.push_back(packageOf(list, device));
    removeDevice(list, device);
    restart = restart || needsRestart(list, device);
  });
  if (count == 0) throw Failure{"the simulated driver is not installed"};
  for (const auto& package : packages)
    if (!package.empty())
      require(SetupUninstallOEMInfW(package.c_str(), SUOI_FORCEDELETE, nullptr),
              narrow(package) + " cannot be removed");
  return restart;
}

State state() {
  if (countDevices() == 0) return State::notInstalled;
  const DeviceList list{SetupDiGetClassDevsW(&kInterfaceClass, nullptr, nullptr, DIGCF_PRESENT | DIGCF_DEVICEINTERFACE),
                        "the device cannot be looked for"};
  SP_DEVICE_INTERFACE_DATA found{};
  found.cbSize = sizeof(found);
  return SetupDiEnumDeviceInterfaces(list.get(), nullptr, &kInterfaceClass, 0, &found) ? State::running
                                                                                       : State::notRunning;
}

}  // namespace setup
