// SPDX-License-Identifier: Apache-2.0
#include "tool/terminal/consent.h"

#include <cstdio>

#include "tool/system/process.h"
#include "tool/terminal/nearest.h"

namespace tool {
namespace {

/// The line that is typed next, without spaces; where there is none, the end of the question's line is written.
std::string readAnswer(Output& output) {
  std::string answer;
  int character = std::getc(stdin);
  for (; character != EOF && character != '\n'; character = std::getc(stdin))
    if (character != ' ' && character != '\r') answer += static_cast<char>(character);
  if (character == EOF) output.write("\n");
  return folded(answer);
}

}  // namespace

bool canAsk(const Output& output) { return !output.isFile() && platform::isConversation(); }

bool ask(Output& output, const std::string& question) {
  output.write(question + " [y/N] ");
  const std::string answer = readAnswer(output);
  return answer == "y" || answer == "yes";
}

}  // namespace tool
