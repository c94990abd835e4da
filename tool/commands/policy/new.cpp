// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include "tool/commands/command.h"
#include "tool/policies/checked_policies.h"
#include "tool/system/files.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

constexpr const char* kNewDocument = R"({
  // A policy document. "vqs policy check FILE" tells what is wrong with it, "vqs policy compile FILE -o FILE.bin"
  // makes a policy binary of it. With "vqs policy schema -o vexoqtf-policies.schema.json" beside it, editors complete
  // what you type.
  "$schema": "vexoqtf-policies.schema.json",
  // Two numbers, 0 to 65535 each, that the driver keeps with the policies.
  "version": "1.0",
  "policies": [
    {
      // Policies are told apart by their ids.
      "id": 10,
      "name": "Quiet on battery",
      "description": "low power, low noise",
      // "vqs catalogue conditions" lists what can be asked for, "vqs policy explain Power Source" tells about one.
      "when": [
        { "Power Source": "DC Power" },
        // Where several comparisons are possible, the number of one has to be there.
        { "Skin Temperature": { "op": 3, "value": 4600 } }
      ],
      // What is done then. "vqs catalogue actions" lists what can be done.
      "do": [
        { "SPL": 15000 },
        { "Fan Mode": "Auto" }
      ]
    }
  ]
}
)";

struct PolicyNewArguments {
  std::string file = "-";
  bool force = false;
};

void runNew(Context& context, const PolicyNewArguments& arguments) {
  if (arguments.file == "-") {
    context.out = kNewDocument;
    return;
  }
  if (!arguments.force && platform::fileKind(arguments.file) != platform::FileKind::kNone)
    throw Failure{fmt::format("{} is there already and was left alone: use --force to replace it", arguments.file)};
  writeTextFile(arguments.file, kNewDocument);
  context.out = fmt::format("{} is there now.\n", printable(arguments.file));
}

}  // namespace

void setUpPolicyNew(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<PolicyNewArguments>();
  command.add_option("-o,--output", arguments->file, "Write to FILE instead of standard output")->type_name("FILE");
  command.add_flag("--force", arguments->force, "Replace a file that is there already");
  command.footer(
      "Examples:\n"
      "  vqs policy new -o quiet.json");
  command.callback([&context, arguments] { runNew(context, *arguments); });
}

}  // namespace tool
