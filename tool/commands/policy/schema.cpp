// SPDX-License-Identifier: Apache-2.0
#include "documents/documents.h"

#include "tool/commands/command.h"

namespace tool {

void setUpPolicySchema(CLI::App& command, Context& context) {
  addOutputOption(command, context);
  command.footer(
      "Editors complete and check documents with it, where the document names it as \"$schema\".\n\n"
      "Examples:\n"
      "  vqs policy schema -o vexoqtf-policies.schema.json");
  command.callback([&context] { context.out = documents::documentSchema(); });
}

}  // namespace tool
