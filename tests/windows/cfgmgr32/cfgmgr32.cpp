// SPDX-License-Identifier: Apache-2.0
#include <windows.h>
// after windows.h, which they need
#include <cfgmgr32.h>
#include <setupapi.h>

#include <algorithm>
#include <array>
#include <span>
#include <string>

namespace {

constexpr std::size_t kLongestPath = 512;

/// The longest path that SetupDiGetDeviceInterfaceDetailW may answer with, behind its head.
union Detail {
  SP_DEVICE_INTERFACE_DETAIL_DATA_W head;
  std::array<std::byte, sizeof(DWORD) + kLongestPath * sizeof(wchar_t)> memory;
};

std::wstring pathOf(HDEVINFO list, SP_DEVICE_INTERFACE_DATA& found) {
  Detail detail{};
  detail.head.cbSize = sizeof(SP_DEVICE_INTERFACE_DETAIL_DATA_W);
  if (!SetupDiGetDeviceInterfaceDetailW(list, &found, &detail.head, sizeof(detail), nullptr, nullptr)) return {};
  return detail.head.DevicePath;
}

/// The paths of the interfaces that are present, each with a zero behind it, and one more zero at the end.
std::wstring listOf(const GUID* interfaceClass) {
  std::wstring paths;
  const HDEVINFO list = SetupDiGetClassDevsW(interfaceClass, nullptr, nullptr, DIGCF_PRESENT | DIGCF_DEVICEINTERFACE);
  SP_DEVICE_INTERFACE_DATA found{};
  found.cbSize = sizeof(found);
  for (DWORD i = 0; SetupDiEnumDeviceInterfaces(list, nullptr, interfaceClass, i, &found); ++i)
    paths += pathOf(list, found) + L'\0';
  SetupDiDestroyDeviceInfoList(list);
  return paths + L'\0';
}

}  // namespace

extern "C" CONFIGRET WINAPI CM_Get_Device_Interface_List_SizeA(ULONG* length, GUID* interfaceClass, DEVINSTID_A,
                                                               ULONG) {
  *length = static_cast<ULONG>(listOf(interfaceClass).size());
  return CR_SUCCESS;
}

extern "C" CONFIGRET WINAPI CM_Get_Device_Interface_ListW(GUID* interfaceClass, DEVINSTID_W, wchar_t* buffer,
                                                          ULONG length, ULONG) {
  const std::wstring list = listOf(interfaceClass);
  if (list.size() > length) return CR_BUFFER_SMALL;
  std::ranges::copy(list, buffer);
  return CR_SUCCESS;
}
