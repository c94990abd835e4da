// SPDX-License-Identifier: Apache-2.0
#include "simulator/installer/driver_packages.h"

#include <windows.h>
// after windows.h, which it needs
#include <setupapi.h>

#include <filesystem>

#include "simulator/installer/windows_text.h"

namespace setup {
namespace {

constexpr const wchar_t* kProvider = L"VexoQTF simulator";

std::filesystem::path infFolder() {
  wchar_t path[MAX_PATH] = {};
  GetWindowsDirectoryW(path, MAX_PATH);
  return std::filesystem::path{path} / "INF";
}

std::wstring providerOf(const std::filesystem::path& file) {
  const HINF inf = SetupOpenInfFileW(file.c_str(), nullptr, INF_STYLE_WIN4, nullptr);
  if (inf == INVALID_HANDLE_VALUE) return {};
  INFCONTEXT line{};
  wchar_t provider[LINE_LEN] = {};
  if (SetupFindFirstLineW(inf, L"Version", L"Provider", &line))
    SetupGetStringFieldW(&line, 1, provider, LINE_LEN, nullptr);
  SetupCloseInfFile(inf);
  return provider;
}

/// Windows gives packages numbers, Wine keeps their names where it can; the many others are Windows' own.
bool isPublished(const std::filesystem::path& file) {
  const std::wstring name = file.filename().wstring();
  const bool isNumbered = _wcsnicmp(name.c_str(), L"oem", 3) == 0 && _wcsicmp(file.extension().c_str(), L".inf") == 0;
  return isNumbered || _wcsicmp(name.c_str(), L"vexoqtf.inf") == 0;
}

}  // namespace

std::vector<std::wstring> ourPackages() {
  std::vector<std::wstring> names;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator{infFolder(), error})
    if (isPublished(entry.path()) && providerOf(entry.path()) == kProvider)
      names.push_back(entry.path().filename().wstring());
  return names;
}

bool removePackage(const std::wstring& name) {
  // Windows uses no force on drivers that run from where packages are kept, and refuses while a device uses one. Wine
  // removes nothing without.
  if (SetupUninstallOEMInfW(name.c_str(), SUOI_FORCEDELETE, nullptr)) return true;
  if (GetLastError() == ERROR_INF_IN_USE_BY_DEVICES) return false;
  // Wine 10 gives the second package of a name a number, and does not know it by that.
  const bool isUnknown = GetLastError() == ERROR_FILE_NOT_FOUND;
  if (!isUnknown || !DeleteFileW((infFolder() / name).c_str())) fail(narrow(name) + " cannot be removed");
  return true;
}

}  // namespace setup
