// SPDX-License-Identifier: Apache-2.0
#include "tool/commands/command.h"
#include "tool/policies/any_policies.h"

namespace tool {
namespace {

void decompile(Context& context, const std::string& file) {
  const auto any = readAnyPolicies(context, file);
  requireAnotherFile(any.input, context.output.path());
  writeRemarks(renderFindings(any.source(), any.read.findings));
  context.out = documents::printDocument(any.policies());
}

}  // namespace

void setUpPolicyDecompile(CLI::App& command, Context& context) {
  const auto file = std::make_shared<std::string>();
  command.add_option("FILE", *file, "A policy binary of any revision, or registry text; - for standard input")
      ->required()
      ->type_name("");
  addOutputOption(command, context);
  command.footer(
      "Examples:\n"
      "  vqs policy decompile laptop-r5.bin -o laptop.json\n"
      "  vqs policy decompile laptop-asm.reg");
  command.callback([&context, file] { decompile(context, *file); });
}

}  // namespace tool
