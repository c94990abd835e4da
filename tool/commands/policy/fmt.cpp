// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include "tool/commands/command.h"
#include "tool/policies/checked_policies.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

struct PolicyFmtArguments {
  std::vector<std::string> files;
  bool check = false;
};

/// A document and what becomes of it.
struct Formatted {
  Input input;
  std::string text;

  [[nodiscard]] bool hasChanged() const { return text != input.text(); }
};

/// Nothing is written unless everything can be.
std::vector<Formatted> formatAll(const std::vector<std::string>& files) {
  std::vector<Formatted> all;
  std::string details;
  std::string unreadable;
  for (auto& input : readInputs(files)) {
    auto result = documents::formatDocument(input.text());
    if (result.text) {
      all.push_back({.input = std::move(input), .text = std::move(*result.text)});
    } else {
      details += renderFindings({.name = input.name, .text = input.text()}, result.findings);
      unreadable += (unreadable.empty() ? "" : ", ") + input.name;
    }
  }
  if (unreadable.empty()) return all;
  throw Failure{fmt::format("{} cannot be formatted, nothing was changed", unreadable), ExitCode::kCouldNotRun,
                details};
}

void runFmt(Context& context, const PolicyFmtArguments& arguments) {
  for (const auto& document : formatAll(arguments.files)) {
    const bool isShown = document.input.isStandardInput() && !arguments.check;
    if (isShown) context.out += document.text;
    if (isShown || !document.hasChanged()) continue;
    if (arguments.check)
      context.exitCode = ExitCode::kNo;
    else
      writeTextFile(document.input.path, document.text);
    context.out += printable(document.input.name) + '\n';
  }
}

}  // namespace

void setUpPolicyFmt(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<PolicyFmtArguments>();
  command.add_option("DOC", arguments->files, "Documents; - for standard input, which goes to standard output")
      ->required()
      ->type_name("");
  command.add_flag("--check", arguments->check, "Write nothing; the exit code is 1 when a document would change");
  command.footer(
      "The names of the documents that change are listed. Comments are kept.\n\n"
      "Examples:\n"
      "  vqs policy fmt quiet.json\n"
      "  vqs policy fmt --check *.json");
  command.callback([&context, arguments] { runFmt(context, *arguments); });
}

}  // namespace tool
