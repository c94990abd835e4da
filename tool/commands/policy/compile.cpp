// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include "tool/commands/command.h"
#include "tool/policies/checked_policies.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

struct PolicyCompileArguments {
  std::string file;
  std::string output;
  /// empty for a policy binary
  std::string registry;
  std::string encoding;
  std::string structureVersion = "2";
  bool allowUnknown = false;
};

bool isRegistryFile(const std::string& path) {
  const auto dot = path.rfind('.');
  return dot != path.npos && (path.substr(dot) == ".reg" || path.substr(dot) == ".REG");
}

void requireRegistryOptions(const PolicyCompileArguments& arguments) {
  if (isRegistryFile(arguments.output) && arguments.registry.empty())
    throw UsageError{
        "registry text is for one of the driver's stores: use --registry asm or --registry balance-profile"};
  if (!arguments.encoding.empty() && arguments.registry.empty())
    throw UsageError{"--encoding is for registry text, which --registry asks for"};
}

std::string contentOf(const documents::PolicySet& policies, const PolicyCompileArguments& arguments) {
  const auto binary = documents::writeBinary(policies);
  if (binary.empty()) throw Failure{"no policy binary can hold these policies"};
  if (arguments.registry.empty()) return {reinterpret_cast<const char*>(binary.data()), binary.size()};
  const auto value =
      arguments.registry == "asm" ? documents::RegistryValue::kAsm : documents::RegistryValue::kBalanceProfile;
  const auto encoding =
      arguments.encoding == "utf-16" ? documents::RegistryEncoding::kUtf16 : documents::RegistryEncoding::kUtf8;
  return documents::writeRegistry(binary, value, encoding);
}

std::string compiledLine(const AnyPolicies& checked, const PolicyCompileArguments& arguments) {
  const auto& policies = checked.policies();
  const std::size_t count = policies.policies.size();
  return fmt::format("{} from {} {} in {} now ({}revision 5, version {}).\n", countOfPolicies(count),
                     printable(checked.name), count == 1 ? "is" : "are", printable(arguments.output),
                     arguments.registry.empty() ? "" : "registry text, ", versionOf(policies));
}

void runCompile(Context& context, const PolicyCompileArguments& arguments) {
  requireRegistryOptions(arguments);
  const documents::ReadOptions options{.structureVersion = structureVersionOf(arguments.structureVersion),
                                       .allowUnknown = arguments.allowUnknown};
  const auto checked = readChecked(readInput(arguments.file), options);
  requireAnotherFile(checked.input, arguments.output);
  const auto findings = renderFindings(checked.source(), checked.read.findings);
  if (!checked.read.policies || documents::hasErrors(checked.read.findings))
    throw Failure{fmt::format("{} was not compiled: {}", checked.name, describeFindings(checked)), ExitCode::kNo,
                  findings};
  const auto content = contentOf(checked.policies(), arguments);
  writeRemarks(findings);
  if (arguments.output == "-") {
    context.out = content;
    return;
  }
  writeTextFile(arguments.output, content);
  context.out = compiledLine(checked, arguments);
}

}  // namespace

void setUpPolicyCompile(CLI::App& command, Context& context) {
  const auto arguments = std::make_shared<PolicyCompileArguments>();
  command.add_option("DOC", arguments->file, "The document, or policies in another form; - for standard input")
      ->required()
      ->type_name("");
  command
      .add_option("-o,--output", arguments->output,
                  "The file to write; an existing one is replaced, whole or not at all; - is standard output")
      ->required()
      ->type_name("FILE");
  addChoice(command, "--registry", arguments->registry, {"asm", "balance-profile"},
            "Write registry text for this store; FILE.reg needs it");
  addChoice(command, "--encoding", arguments->encoding, {"utf-8", "utf-16"},
            "The registry text's: utf-8 (when left out), or utf-16 as registry editors write it");
  addReadOptions(command, arguments->structureVersion, arguments->allowUnknown);
  command.footer(
      "The policy binary is of revision 5. With an error nothing is written and the exit code is 1.\n\n"
      "Examples:\n"
      "  vqs policy compile quiet.json -o quiet.bin\n"
      "  vqs policy compile quiet.json -o quiet.reg --registry asm");
  command.callback([&context, arguments] { runCompile(context, *arguments); });
}

}  // namespace tool
