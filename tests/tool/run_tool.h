// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"

namespace test {

/// What a run of the tool left behind.
struct ToolRun {
  /// 128 and the signal's number when a signal ended it
  int exitCode;
  std::string out;
  std::string err;
  bool operator==(const ToolRun&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const ToolRun& run);

/// A run that succeeded, and those that ended with one line on standard error: what was to be done could not be done,
/// the command line was wrong, there was no driver.
ToolRun done(std::string out);
ToolRun failed(std::string err);
ToolRun wrongUsage(std::string err);
ToolRun withoutDriver(std::string err);

/// The whole content of a file.
std::string readTextFile(const std::string& path);

/// How a run differs from the usual. The file's length, the signal and the input are for POSIX systems.
struct RunOptions {
  /// added to the environment; an empty value removes the variable
  std::map<std::string, std::string> environment;
  /// where standard output goes instead of being captured; "-" closes it
  std::string output;
  /// the longest file that the run may write, in bytes
  std::optional<std::size_t> longestFile;
  /// sent to the run as soon as it has written a line
  int signal = 0;
  /// on Windows, a copy of the tool to run instead
  std::string program = {};
  /// what standard input holds
  std::optional<std::string> input = {};
};

/// Options of a run during which the driver's clock stands at 0, unless the driver is one that serves all runs.
RunOptions withSteadyDriver();

/// Options of a run whose simulated driver has options of its own, on POSIX systems.
RunOptions withDriverOptions(const std::string& driverOptions);

/// A terminal to run on, on POSIX systems: the keys are typed when the text has come up so often, and something has
/// happened meanwhile.
struct Terminal {
  std::size_t lines;
  std::size_t columns;
  std::string awaited;
  std::size_t times;
  std::string keys;
  std::function<void()> meanwhile = {};
};

/// The driver's own file in the tool's folder, where the driver is simulated in the tool's process.
inline constexpr const char* kDriverState = "driver.state";

/// Runs the tool in a folder of its own, with a simulated driver of its own. Where one driver serves all runs, it
/// begins with empty stores and nothing set; its clock, its tables and its sensors stay as they are.
class Tool {
 public:
  Tool();

  ToolRun run(const std::vector<std::string>& arguments, const RunOptions& options = {}) const;

  /// Both streams, as the terminal gets them, are the run's output.
  ToolRun runOn(const Terminal& terminal, const std::vector<std::string>& arguments,
                const RunOptions& options = {}) const;

  [[nodiscard]] const TemporaryFolder& folder() const { return folder_; }
  [[nodiscard]] std::string path(std::string_view name) const { return folder_.path(name); }
  /// Writes a file into the folder, where the tool finds it by its name.
  void write(std::string_view name, const Bytes& content) const { folder_.write(name, content); }
  void writeText(std::string_view name, std::string_view content) const;
  [[nodiscard]] std::string readText(std::string_view name) const;
  /// Puts a sample into the folder, under its own name.
  void useSample(std::string_view name) const { write(name, sample(name)); }
  /// The names of all files in the folder but the driver's own.
  [[nodiscard]] std::vector<std::string> files() const;

 private:
  TemporaryFolder folder_;
};

}  // namespace test
