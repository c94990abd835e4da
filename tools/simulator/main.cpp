// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <sstream>
#include <string>
#include <vector>

#include "device_setup.h"
#include "windows_text.h"

namespace setup {
namespace {

enum ExitCode { kDone = 0, kFailed = 1, kWrongUsage = 2 };

std::filesystem::path infBesideProgram() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return std::filesystem::path{path}.parent_path() / "vexoqtf.inf";
}

std::string withRestart(const std::string& text, bool needsRestart) {
  return text + (needsRestart ? "; restart Windows to finish\n" : "\n");
}

/// Drivers are started in the background; whoever installs one wants to use it.
void waitForDevice() {
  constexpr DWORD kInterval = 50;
  constexpr DWORD kLongest = 15'000;
  for (DWORD waited = 0; state() != State::running; waited += kInterval) {
    if (waited >= kLongest) throw Failure{"the simulated driver is installed, but its device does not come up"};
    Sleep(kInterval);
  }
}

std::string runInstall(const std::string& inf) {
  const auto path = inf.empty() ? infBesideProgram() : std::filesystem::absolute(widen(inf));
  const Installation result = install(path);
  if (!result.needsRestart) waitForDevice();
  return withRestart(result.isNew ? "installed" : "installed again", result.needsRestart);
}

std::string runStatus() {
  switch (state()) {
    case State::notInstalled:
      throw Failure{"the simulated driver is not installed"};
    case State::notRunning:
      throw Failure{"the simulated driver is installed, but its device is not there"};
    case State::running:
      break;
  }
  return "running\n";
}

void addCommands(CLI::App& program, std::string& inf, std::string& output) {
  auto* const installCommand = program.add_subcommand("install", "Install the driver, or install it again.");
  installCommand->add_option("--inf", inf, "The driver's INF file; else vexoqtf.inf beside this program")
      ->type_name("FILE");
  installCommand->callback([&] { output = runInstall(inf); });
  program.add_subcommand("remove", "Remove the device and its driver.")->callback([&] {
    output = withRestart("removed", remove());
  });
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
      "Only administrators can install and remove drivers.");
}

int report(const std::string& message, ExitCode code) {
  std::fprintf(stderr, "vqs-simulator: %s\n", message.c_str());
  return code;
}

int run(std::vector<std::string> arguments) {
  CLI::App program{"Installs the simulated VexoQTF driver.", "vqs-simulator"};
  std::string inf;
  std::string output;
  describe(program);
  addCommands(program, inf, output);
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
