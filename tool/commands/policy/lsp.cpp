// SPDX-License-Identifier: Apache-2.0
#include "tool/commands/command.h"
#include "tool/lsp/server.h"

namespace tool {
namespace {

struct PolicyLspArguments {
  std::string structureVersion = "2";
  bool allowUnknown = false;
  /// Editors' libraries ask for it, and there is nothing else.
  bool usesStandardStreams = false;
};

void runLsp(Context& context, const PolicyLspArguments& arguments) {
  const documents::ReadOptions options{.structureVersion = structureVersionOf(arguments.structureVersion),
                                       .allowUnknown = arguments.allowUnknown};
  lsp::MessageReader reader{stdin};
  lsp::Server server{options,
                     [&](const lsp::Json& message) { context.output.write(lsp::framed(lsp::printMessage(message))); }};
  context.exitCode = lsp::serve(reader, server) ? ExitCode::kDone : ExitCode::kNo;
}

}  // namespace

void setUpPolicyLsp(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<PolicyLspArguments>();
  command.add_flag("--stdio", arguments->usesStandardStreams,
                   "Talk on standard input and output, as it does without the option");
  addReadOptions(command, arguments->structureVersion, arguments->allowUnknown);
  command.footer(
      "A language server (Language Server Protocol 3.17), which an editor starts for documents: it shows\n"
      "findings while one types, completes names, options and members, explains what the cursor is on,\n"
      "lays the document out, corrects it, lists its policies and goes to the policy of an id.\n"
      "Exit codes: 0 when the editor has ended it, 1 when the editor is gone without a word.\n\n"
      "Examples:\n"
      "  vqs policy lsp\n"
      "  vqs policy lsp --allow-unknown");
  command.callback([&context, arguments] { runLsp(context, *arguments); });
}

}  // namespace tool
