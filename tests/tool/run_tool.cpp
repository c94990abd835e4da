// SPDX-License-Identifier: Apache-2.0
#include "tests/tool/run_tool.h"

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <utility>

namespace test {

std::ostream& operator<<(std::ostream& stream, const ToolRun& run) {
  return stream << "exit code " << run.exitCode << "\n--- out\n" << run.out << "--- err\n" << run.err << "---";
}

ToolRun done(std::string out) { return {.exitCode = 0, .out = std::move(out), .err = ""}; }
ToolRun failed(std::string err) { return {.exitCode = 2, .out = "", .err = std::move(err)}; }
ToolRun wrongUsage(std::string err) { return {.exitCode = 2, .out = "", .err = std::move(err)}; }
ToolRun withoutDriver(std::string err) { return {.exitCode = 3, .out = "", .err = std::move(err)}; }

std::string readTextFile(const std::string& path) {
  const Bytes bytes = readFile(path);
  return {bytes.begin(), bytes.end()};
}

void Tool::writeText(std::string_view name, std::string_view content) const {
  write(name, Bytes(content.begin(), content.end()));
}

std::string Tool::readText(std::string_view name) const { return readTextFile(path(name)); }

std::vector<std::string> Tool::files() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator{folder_.path(".")})
    if (const auto name = entry.path().filename().string(); !name.starts_with(kDriverState)) names.push_back(name);
  std::ranges::sort(names);
  return names;
}

}  // namespace test
