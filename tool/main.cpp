// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <new>
#include <sstream>

#include "tool/program.h"
#include "tool/system/process.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/output.h"

namespace tool {
namespace {

using Arguments = std::vector<std::string>;

/// The help or the version that was asked for.
void answer(const CLI::App& program, const CLI::Success& request) {
  std::ostringstream text;
  program.exit(request, text, text);
  Output{}.write(text.str());
}

/// A program with some of its commands, and what they get.
struct Program {
  Context context;
  CLI::App app{"Works with the VexoQTF power-management driver and its policies.", "vqs"};

  explicit Program(const Selection& isWanted) { buildProgram(app, context, isWanted); }

  /// Parses the command line, which runs the command, and writes what the command leaves. The command's own answer.
  ExitCode run(Arguments arguments) {
    std::ranges::reverse(arguments);
    app.parse(std::move(arguments));
    context.output.write(context.out);
    context.output.finish();
    return context.exitCode;
  }
};

/// Runs a command line that has shown to be a question for help, or to be wrong: both are answered with the names of
/// all commands.
ExitCode runWhole(const Arguments& arguments) {
  Program program{[](std::string_view /*name*/) { return true; }};
  try {
    return program.run(arguments);
  } catch (const CLI::Success& request) {
    answer(program.app, request);
    return ExitCode::kDone;
  } catch (const CLI::ParseError& error) {
    throw UsageError{describeUsage(program.app, error)};
  }
}

/// No command is meant but those whose names are among the words. To set up all others takes longer than many commands.
ExitCode runCommand(const Arguments& arguments) {
  if (arguments == Arguments{kVersionOption}) {
    Output{}.write(std::string{kVersionText} + '\n');
    return ExitCode::kDone;
  }
  try {
    return Program{[&](std::string_view name) { return std::ranges::find(arguments, name) != arguments.end(); }}.run(
        arguments);
  } catch (const CLI::ParseError&) {
    // Thrown before any command was run.
    return runWhole(arguments);
  }
}

ExitCode run(const Arguments& arguments) {
  try {
    return runCommand(arguments);
  } catch (const Failure& failure) {
    writeRemarks(failure.details());
    writeError(failure.what());
    return failure.exitCode();
  } catch (const std::bad_alloc&) {
    writeError("not enough memory");
  } catch (const std::exception& error) {
    writeError(error.what());
  }
  return ExitCode::kCouldNotRun;
}

}  // namespace
}  // namespace tool

int main(int argc, char** argv) {
  tool::platform::prepareStreams();
  return static_cast<int>(tool::run(tool::platform::arguments(argc, argv)));
}
