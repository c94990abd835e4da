// SPDX-License-Identifier: Apache-2.0
#include "simulator/installer/signing.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "simulator/installer/child_process.h"
#include "simulator/installer/windows_text.h"

namespace setup {
namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* kDriver = L"vexoqtf.sys";
constexpr const wchar_t* kCatalogue = L"vexoqtf.cat";
constexpr const wchar_t* kCertificate = L"vexoqtf-test.cer";
constexpr const wchar_t* kSubject = L"VexoQTF test";

/// Where the Windows kits of version 10 are; empty when there are none.
fs::path kitsRoot() {
  wchar_t path[MAX_PATH] = {};
  DWORD size = sizeof(path);
  RegGetValueW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Windows Kits\\Installed Roots", L"KitsRoot10",
               RRF_RT_REG_SZ | RRF_SUBKEY_WOW6432KEY, nullptr, path, &size);
  return path;
}

/// The numbers of a version such as 10.0.22621.0.
std::vector<int> versionOf(const fs::path& folder) {
  std::vector<int> numbers;
  const std::wstring name = folder.filename().wstring();
  for (std::size_t at = 0; at < name.size() && iswdigit(name[at]) != 0; ++at) {
    std::size_t length = 0;
    numbers.push_back(std::stoi(name.substr(at), &length));
    at += length;
  }
  return numbers;
}

/// The kits' folders with programs, the newest version first, and within it what is for this processor.
std::vector<fs::path> kitFolders() {
  std::vector<fs::path> versions;
  std::error_code error;
  const fs::path root = kitsRoot();
  if (root.empty()) return versions;
  for (const auto& entry : fs::directory_iterator{root / "bin", error}) versions.push_back(entry.path());
  std::ranges::sort(versions, std::ranges::greater{}, versionOf);
  std::vector<fs::path> folders;
  for (const auto& version : versions)
    for (const char* processor : {"x64", "x86"}) folders.push_back(version / processor);
  return folders;
}

fs::path systemFolder() {
  wchar_t path[MAX_PATH] = {};
  GetSystemDirectoryW(path, MAX_PATH);
  return path;
}

/// What PATH leads to. The current folder, where anybody may have put something, is not looked at.
std::optional<fs::path> findAlongPath(const std::wstring& name) {
  std::wstring path(32768, L'\0');
  path.resize(GetEnvironmentVariableW(L"PATH", path.data(), static_cast<DWORD>(path.size())));
  wchar_t found[MAX_PATH] = {};
  if (path.empty() || SearchPathW(path.c_str(), name.c_str(), nullptr, MAX_PATH, found, nullptr) == 0) return {};
  return found;
}

/// The first that exists.
std::optional<fs::path> find(const std::wstring& name, const std::vector<fs::path>& folders) {
  std::error_code error;
  for (const auto& folder : folders)
    if (!folder.empty() && fs::is_regular_file(folder / name, error)) return folder / name;
  return {};
}

fs::path orMissing(const std::optional<fs::path>& found, const std::string& what, std::vector<std::string>& missing) {
  if (!found) missing.push_back(what);
  return found.value_or(fs::path{});
}

[[noreturn]] void failWithout(const std::vector<std::string>& missing) {
  std::string list;
  for (const auto& what : missing) list += (list.empty() ? "" : ", ") + what;
  throw Failure{
      "test signing needs " + list +
      "; both kits: https://learn.microsoft.com/windows-hardware/drivers/download-the-wdk; programs in another "
      "folder: --tools FOLDER"};
}

/// For PowerShell, between single quotes.
std::wstring literal(const fs::path& path) {
  std::wstring text = L"'";
  for (const wchar_t unit : path.wstring()) text.append(unit == L'\'' ? 2 : 1, unit);
  return text + L"'";
}

/// Makes the certificate, unless there is one that is still good for a while, and has this PC trust it.
std::wstring certificateScript(const fs::path& file) {
  return L"$ErrorActionPreference = 'Stop'; $subject = 'CN=" + std::wstring{kSubject} +
         L"'; $cert = Get-ChildItem Cert:\\LocalMachine\\My | Where-Object { $_.Subject -eq $subject -and "
         L"$_.HasPrivateKey "
         L"-and $_.NotAfter -gt (Get-Date).AddDays(30) } | Select-Object -First 1; if (-not $cert) { $cert = "
         L"New-SelfSignedCertificate -Type CodeSigningCert -Subject $subject -CertStoreLocation "
         L"Cert:\\LocalMachine\\My "
         L"-NotAfter (Get-Date).AddYears(5) }; Export-Certificate -Cert $cert -FilePath " +
         literal(file) +
         L" | Out-Null; foreach ($store in 'Root', 'TrustedPublisher') { Import-Certificate -FilePath " +
         literal(file) + L" -CertStoreLocation Cert:\\LocalMachine\\$store | Out-Null }";
}

void sign(const SigningTools& tools, const fs::path& file) {
  run(tools.signTool, {L"sign", L"/fd", L"SHA256", L"/sm", L"/s", L"My", L"/n", kSubject, L"/a", file.wstring()});
}

std::string readText(const fs::path& file) {
  std::ifstream stream{file, std::ios::binary};
  if (!stream) throw Failure{narrow(file.wstring()) + " cannot be read"};
  return {std::istreambuf_iterator<char>{stream}, {}};
}

/// The package's INF file, which names no catalogue as it comes, with the name of the one that is made.
std::string withCatalogue(const std::string& inf) {
  if (inf.find("CatalogFile") != std::string::npos) return inf;
  const std::size_t head = inf.find("[Version]\r\n");
  if (head == std::string::npos) throw Failure{"the INF file has no section [Version]"};
  std::string text = inf;
  return text.insert(head + 11, "CatalogFile = " + narrow(kCatalogue) + "\r\n");
}

/// A fresh copy of the package.
fs::path copyPackage(const fs::path& inf) {
  const fs::path folder = inf.parent_path() / "test-signed";
  fs::remove_all(folder);
  fs::create_directory(folder);
  fs::copy_file(inf.parent_path() / kDriver, folder / kDriver);
  std::ofstream{folder / inf.filename(), std::ios::binary} << withCatalogue(readText(inf));
  return folder / inf.filename();
}

}  // namespace

SigningTools findSigningTools(const fs::path& folder) {
  std::vector<std::string> missing;
  const auto kits = kitFolders();
  const auto search = [&](const std::wstring& name, std::vector<fs::path> folders) {
    folders.insert(folders.begin(), folder);
    const auto found = find(name, folders);
    return found ? found : findAlongPath(name);
  };
  const SigningTools tools = {
      .powerShell = orMissing(search(L"powershell.exe", {systemFolder() / L"WindowsPowerShell\\v1.0"}),
                              "powershell.exe (a part of Windows)", missing),
      .signTool = orMissing(search(L"signtool.exe", kits), "signtool.exe (Windows SDK)", missing),
      .inf2Cat = orMissing(search(L"inf2cat.exe", kits), "inf2cat.exe (Windows Driver Kit)", missing)};
  if (!missing.empty()) failWithout(missing);
  return tools;
}

fs::path makeTestSigned(const fs::path& inf, const SigningTools& tools) {
  const fs::path copy = copyPackage(inf);
  const fs::path folder = copy.parent_path();
  run(tools.powerShell, {L"-NoProfile", L"-NonInteractive", L"-ExecutionPolicy", L"Bypass", L"-Command",
                         certificateScript(folder / kCertificate)});
  // The catalogue holds the driver's hash: it is made after the driver has its signature.
  sign(tools, folder / kDriver);
  run(tools.inf2Cat, {L"/driver:" + folder.wstring(), L"/os:10_RS3_X64"});
  sign(tools, folder / kCatalogue);
  return copy;
}

}  // namespace setup
