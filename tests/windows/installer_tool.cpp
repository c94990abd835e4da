// SPDX-License-Identifier: Apache-2.0
// Stands in for a program that signs, under whose name it lies: it writes its name and its arguments to the file that
// VQS_STAND_IN_LOG names, and fails when VQS_STAND_IN_FAILS is its name. As inf2cat.exe it makes the catalogue that the
// INF file of the folder names.
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

std::string fromEnvironment(const char* name) {
  char value[512] = {};
  GetEnvironmentVariableA(name, value, sizeof(value));
  return value;
}

void makeCatalogue(const std::filesystem::path& folder) {
  std::ifstream inf{folder / "vexoqtf.inf"};
  for (std::string line; std::getline(inf, line);)
    if (line.starts_with("CatalogFile = vexoqtf.cat")) std::ofstream{folder / "vexoqtf.cat"} << "catalogue";
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  const std::string name = std::filesystem::path{arguments[0]}.stem().string();
  std::ofstream log{fromEnvironment("VQS_STAND_IN_LOG"), std::ios::app};
  log << name;
  for (int i = 1; i < count; ++i) log << " [" << std::filesystem::path{arguments[i]}.string() << "]";
  log << "\n";
  const std::wstring driver = L"/driver:";
  if (name == "inf2cat" && count > 1) makeCatalogue(std::wstring{arguments[1]}.substr(driver.size()));
  if (name == fromEnvironment("VQS_STAND_IN_FAILS")) {
    std::printf("%s refuses\n", name.c_str());
    return 7;
  }
  return 0;
}
