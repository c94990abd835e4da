// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <sstream>
#include <string>
#include <vector>

#include "simulator/installer/administrator.h"
#include "simulator/installer/device_setup.h"
#include "simulator/installer/problem.h"
#include "simulator/installer/signing.h"
#include "simulator/installer/system_copy.h"
#include "simulator/installer/windows_text.h"

namespace setup {
namespace {

enum ExitCode { kDone = 0, kFailed = 1, kWrongUsage = 2 };

std::filesystem::path infBesideProgram() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return std::filesystem::path{path}.parent_path() / "vexoqtf.inf";
}

std::filesystem::path fullPath(const std::string& utf8) {
  return utf8.empty() ? std::filesystem::path{} : std::filesystem::absolute(widen(utf8));
}

std::string withRestart(const std::string& text, bool needsRestart) {
  return text + (needsRestart ? "; restart Windows to finish\n" : "\n");
}

/// Why a device is not running, as far as Windows says.
std::string reasonOf(const Device& device) {
  if (device.problem == 0) return {};
  const std::string status = device.problemStatus == 0 ? "" : fmt::format(" (status 0x{:08X})", device.problemStatus);
  return ": " + describeProblem(device.problem) + status;
}

/// Drivers are started in the background; whoever installs one wants to use it. Windows says when it has given up.
void waitForDevice() {
  constexpr DWORD kInterval = 50;
  constexpr DWORD kLongest = 15'000;
  Device device = lookAtDevice();
  for (DWORD waited = 0; device.state != State::kRunning; waited += kInterval) {
    if (waited >= kLongest || device.problem != 0)
      throw Failure{"the simulated driver is installed, but its device does not come up" + reasonOf(device)};
    Sleep(kInterval);
    device = lookAtDevice();
  }
}

struct InstallOptions {
  std::string inf;
  bool isTestSigned = false;
  std::string tools;
};

std::string runInstall(const InstallOptions& options) {
  requireAdministrator();
  auto inf = options.inf.empty() ? infBesideProgram() : fullPath(options.inf);
  if (options.isTestSigned) inf = makeTestSigned(inf, findSigningTools(fullPath(options.tools)));
  const Installation result = install(inf);
  putSystemCopy(inf.parent_path() / "vexoqtf.sys");
  if (!result.needsRestart) waitForDevice();
  return withRestart(result.isNew ? "installed" : "installed again", result.needsRestart);
}

std::string runRemove() {
  requireAdministrator();
  const Removal removal = remove();
  removeSystemCopy();
  if (removal.isPackageLeft) return "removed; restart Windows, and remove again what it still uses\n";
  return withRestart("removed", removal.needsRestart);
}

std::string runStatus() {
  const Device device = lookAtDevice();
  switch (device.state) {
    case State::kNotInstalled:
      throw Failure{"the simulated driver is not installed"};
    case State::kNotRunning:
      throw Failure{"the simulated driver is installed, but its device is not there" + reasonOf(device)};
    case State::kRunning:
      break;
  }
  return "running\n";
}

void addInstall(CLI::App& program, InstallOptions& options, std::string& output) {
  auto* const command = program.add_subcommand("install", "Install the driver, or install it again.");
  command->add_option("--inf", options.inf, "The driver's INF file; else vexoqtf.inf beside this program")
      ->type_name("FILE");
  auto* const testSign = command->add_flag("--test-sign", options.isTestSigned,
                                           "Sign a copy first, with a certificate that only this PC trusts");
  command->add_option("--tools", options.tools, "Where signtool.exe and inf2cat.exe are; else where Windows' kits are")
      ->type_name("FOLDER")
      ->needs(testSign);
  command->callback([&] { output = runInstall(options); });
}

void addCommands(CLI::App& program, InstallOptions& options, std::string& output) {
  addInstall(program, options, output);
  program.add_subcommand("remove", "Remove the device and its driver.")->callback([&] { output = runRemove(); });
  program.add_subcommand("status", "Succeed when the driver is installed and running.")->callback([&] {
    output = runStatus();
  });
}

void describe(CLI::App& program) {
  program.require_subcommand(1);
  program.set_help_flag("-h,--help", "Print this help");
  program.set_version_flag("--version", "vqs-simulator " VQS_TOOL_VERSION);
  program.footer(
      "Exit codes: 0 done, 1 the operation failed, 2 the command line is wrong.\n"
      "Only administrators can install and remove drivers. Everybody can ask for the status.");
}

int report(const std::string& message, ExitCode code) {
  std::fprintf(stderr, "vqs-simulator: %s\n", message.c_str());
  return code;
}

int run(std::vector<std::string> arguments) {
  CLI::App program{"Installs the simulated VexoQTF driver.", "vqs-simulator"};
  InstallOptions options;
  std::string output;
  describe(program);
  addCommands(program, options, output);
  std::ranges::reverse(arguments);
  try {
    program.parse(std::move(arguments));
  } catch (const CLI::Success& request) {
    std::ostringstream text;
    program.exit(request, text, text);
    output = text.str();
  } catch (const CLI::ParseError& error) {
    return report(std::string{error.what()} + " (see \"vqs-simulator --help\")", kWrongUsage);
  } catch (const std::exception& error) {
    return report(error.what(), kFailed);
  }
  std::fputs(output.c_str(), stdout);
  return std::fflush(stdout) == 0 ? kDone : kFailed;
}

}  // namespace
}  // namespace setup

int wmain(int count, wchar_t** arguments) {
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  SetConsoleOutputCP(CP_UTF8);
  std::vector<std::string> utf8;
  for (int i = 1; i < count; ++i) utf8.push_back(setup::narrow(arguments[i]));
  return setup::run(std::move(utf8));
}
