// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include "tool/commands/command.h"
#include "tool/policies/policy_file.h"
#include "tool/policies/policy_text.h"
#include "tool/terminal/render.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

struct BinaryShowArguments {
  std::string file;
  bool json = false;
};

std::string asJson(const PolicyFile& file) {
  return renderJson({{"binaryVersion1", file.version1},
                     {"binaryVersion2", file.version2},
                     {"policies", toJson(std::span{file.policies})}});
}

std::string asText(const PolicyFile& file, const std::string& name) {
  std::string text = fmt::format("{}: {}, version {}.{}\n", printable(name), countOfPolicies(file.policies.size()),
                                 file.version1, file.version2);
  for (const auto& policy : file.policies) text += '\n' + renderInWords(documents::fromRecord(policy));
  return text;
}

void show(Context& context, const BinaryShowArguments& arguments) {
  const auto file = readPolicyFile(arguments.file);
  context.out = arguments.json ? asJson(file) : asText(file, fileName(arguments.file));
}

}  // namespace

void setUpBinaryShow(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<BinaryShowArguments>();
  command.add_option("FILE", arguments->file, "The policy binary, of revision 3, 4 or 5")->required()->type_name("");
  command.add_flag("--json", arguments->json, "Print JSON with every field instead of words");
  addOutputOption(command, context);
  command.footer(
      "Comparisons have numbers, \"op 3\"; where only one is possible it is said as \"is\". Fields that\n"
      "are zero are left out.\n\n"
      "Examples:\n"
      "  vqs binary show laptop-r5.bin\n"
      "  vqs binary show laptop-r5.bin --json");
  command.callback([&context, arguments] { show(context, *arguments); });
}

}  // namespace tool
