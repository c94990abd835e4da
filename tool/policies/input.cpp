// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/input.h"

#include <fmt/format.h>

#include <algorithm>

#include "tool/system/input_file.h"
#include "tool/terminal/errors.h"

namespace tool {
namespace {

/// Four hundred policies of the largest size take 5 MiB as registry text, 10 MiB of it in UTF-16.
constexpr std::size_t kMostBytes = std::size_t{64} << 20;

}  // namespace

Input readInput(const std::string& path) {
  Input input{.name = path == "-" ? "standard input" : path, .path = path, .bytes = {}};
  auto file = path == "-" ? InputFile::standardInput() : InputFile{path};
  file.readUpTo(kMostBytes + 1, input.bytes);
  if (input.bytes.size() > kMostBytes)
    throw Failure{fmt::format("{} cannot be read: it has more than {} MiB, which no policies take", input.name,
                              kMostBytes >> 20)};
  return input;
}

std::vector<Input> readInputs(const std::vector<std::string>& paths) {
  if (std::ranges::count(paths, "-") > 1) throw UsageError{"\"-\" is there twice, standard input can be read once"};
  std::vector<Input> inputs;
  inputs.reserve(paths.size());
  for (const auto& path : paths) inputs.push_back(readInput(path));
  return inputs;
}

void requireAnotherFile(const Input& input, const std::string& output) {
  std::error_code error;
  if (input.isStandardInput() || output == "-" ||
      !std::filesystem::equivalent(toPath(input.path), toPath(output), error))
    return;
  throw UsageError{fmt::format("{} is the file that is read, and would be lost: name another one to write", output)};
}

}  // namespace tool
