// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <array>

#include <vqs/platform.h>
#include "tool/commands/command.h"
#include "tool/driver/telemetry_log.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/render.h"

namespace tool {
namespace {

struct ApplicationIo {
  std::array<std::int64_t, 2> inputs{};
  std::array<std::uint32_t, 2> outputs{};
  std::array<std::uint32_t, 2> taskbarIcon{};
  std::uint32_t debugOutput = 0;
};

ApplicationIo readIo(const Session& session) {
  ApplicationIo io;
  const KeyTable table{LogGeneration::kPlain};
  const auto reading = TelemetryLog{session, LogGeneration::kPlain, table}.read();
  io.inputs = {reading.number(table.named("AppInput1")), reading.number(table.named("AppInput2"))};
  require(vqsGetAppOutput(session.get(), io.outputs.data(), &io.outputs[1]), "the application outputs cannot be read");
  require(vqsGetTaskbarIcon(session.get(), io.taskbarIcon.data(), &io.taskbarIcon[1]),
          "the taskbar icon's state cannot be read");
  require(vqsGetDebugOutput(session.get(), &io.debugOutput), "the debug output cannot be read");
  return io;
}

std::string ioAsJson(const ApplicationIo& io) {
  return renderJson({{"appInputs", io.inputs},
                     {"appOutputs", io.outputs},
                     {"taskbarIcon", io.taskbarIcon},
                     {"debugOutput", io.debugOutput}});
}

std::string ioAsText(const ApplicationIo& io) {
  return fmt::format(
      "application inputs   {}\n"
      "application outputs  {}\n"
      "taskbar icon         {}\n"
      "debug output         {}\n",
      fmt::join(io.inputs, ", "), fmt::join(io.outputs, ", "), fmt::join(io.taskbarIcon, ", "), io.debugOutput);
}

void showIo(Context& context, bool json) {
  ApplicationIo io;
  withDriver(context, [&](const Session& session) { io = readIo(session); });
  context.out = json ? ioAsJson(io) : ioAsText(io);
}

}  // namespace

void setUpIo(CLI::App& command, Context& context) {
  const auto json = std::make_shared<bool>(false);
  command.add_flag("--json", *json, "Print JSON instead of text");
  addOutputOption(command, context);
  command.footer(
      "Reading the outputs resets the event by which the driver tells programs of a change: one\n"
      "that waits for it at this moment may miss the change. The inputs come from the telemetry log.");
  command.callback([&context, json] { showIo(context, *json); });
}

}  // namespace tool
