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

enum ExitCode { kDone = 0, kFailed = 1, kWrongUsage = 2 };

/// The help or the version that was asked for.
void answer(const CLI::App& program, const CLI::Success& request) {
  std::ostringstream text;
  program.exit(request, text, text);
  Output{}.write(text.str());
}

/// Parses the command line, which runs the command, and writes what the command leaves.
void runCommand(CLI::App& program, Context& context, std::vector<std::string> arguments) {
  try {
    std::ranges::reverse(arguments);
    program.parse(std::move(arguments));
    context.output.write(context.out);
    context.output.finish();
  } catch (const CLI::Success& request) {
    answer(program, request);
  } catch (const CLI::ParseError& error) {
    throw UsageError{describeUsage(program, error)};
  }
}

int run(std::vector<std::string> arguments) {
  try {
    Context context;
    CLI::App program{"Works with the VexoQTF power-management driver and its policies.", "vqs"};
    buildProgram(program, context);
    runCommand(program, context, std::move(arguments));
    return kDone;
  } catch (const UsageError& error) {
    writeError(error.what());
    return kWrongUsage;
  } catch (const std::bad_alloc&) {
    writeError("not enough memory");
    return kFailed;
  } catch (const std::exception& error) {
    writeError(error.what());
    return kFailed;
  }
}

}  // namespace
}  // namespace tool

int main(int argc, char** argv) {
  tool::platform::prepareStreams();
  return tool::run(tool::platform::arguments(argc, argv));
}
