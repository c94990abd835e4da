// SPDX-License-Identifier: Apache-2.0
#include "simulator/installer/system_copy.h"

#include "simulator/installer/windows_text.h"

namespace setup {
namespace {

std::filesystem::path systemCopy() {
  wchar_t folder[MAX_PATH] = {};
  GetSystemDirectoryW(folder, MAX_PATH);
  return std::filesystem::path{folder} / "vexoqtf.sys";
}

}  // namespace

void putSystemCopy(const std::filesystem::path& driver) {
  require(CopyFileW(driver.c_str(), systemCopy().c_str(), FALSE),
          narrow(systemCopy().wstring()) + " cannot be written");
}

void removeSystemCopy() {
  if (!DeleteFileW(systemCopy().c_str()) && GetLastError() != ERROR_FILE_NOT_FOUND)
    fail(narrow(systemCopy().wstring()) + " cannot be removed");
}

}  // namespace setup
