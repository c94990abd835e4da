// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What differs between systems, except for files and the driver: process_posix.cpp and process_windows.cpp hold the
/// same functions. Arguments are UTF-8, or on POSIX systems whatever bytes the user typed.
namespace tool::platform {

/// Readies the standard streams: bytes go out as they are, and a closed stream stays closed.
void prepareStreams();

/// Writes UTF-8 to a stream at once: as bytes, but to a console of Windows as characters, so that nothing depends on
/// the code page that the console shares with other programs. False, with errno telling why, when not all of it gets
/// there.
bool writeText(std::FILE* stream, std::string_view text);

/// True when standard input and standard output are both a terminal, at which somebody can be asked.
bool isConversation();

/// The command line without the program's name.
std::vector<std::string> arguments(int argc, char** argv);

/// Room on a terminal.
struct TerminalSize {
  std::size_t columns;
  std::size_t lines;
};

/// The terminal that standard output goes to, ready for escape sequences until the end of the scope. What this changes
/// of it is changed for every program there: only to be used where interruptions are caught.
class Terminal {
 public:
  Terminal();
  // Elsewhere than on Windows there is nothing to do, which the class does not know.
  ~Terminal();  // NOLINT(performance-trivially-destructible)
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  /// Nothing when standard output goes elsewhere, or to a terminal that knows no escape sequences.
  [[nodiscard]] std::optional<TerminalSize> size() const;

 private:
  /// The mode to be set again.
  std::optional<unsigned long> found_;
};

/// From now on Ctrl-C and other requests to end do not end the process, but the waiting. A reader that has gone away
/// makes writing fail. Throws a Failure when this cannot be had.
void catchInterruptions();

/// Waits; false, and at once, when an interruption comes or has come.
bool waitUnlessInterrupted(std::chrono::milliseconds duration);

}  // namespace tool::platform
