// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/checked_policies.h"

#include <algorithm>
#include <span>

#include "tool/policies/correction.h"
#include "tool/terminal/errors.h"
#include "tool/terminal/output.h"
#include "tool/terminal/text.h"

namespace tool {
namespace {

using Form = documents::ReadResult::Form;

bool canBeCorrected(const AnyPolicies& any) {
  return any.read.form == Form::kDocument && hasCertainCorrection(any.read.findings);
}

}  // namespace

std::vector<std::string> correct(std::vector<AnyPolicies>& checked, const documents::ReadOptions& options) {
  if (std::ranges::any_of(checked, [](const auto& any) { return any.input.isStandardInput(); }))
    throw UsageError{"--fix: standard input cannot be corrected in place"};
  std::vector<std::string> names;
  for (auto& any : checked) {
    if (!canBeCorrected(any)) continue;
    const auto text = correctedText(std::string{any.input.text()}, any.read.findings, options);
    if (text == any.input.text()) continue;
    writeTextFile(any.input.path, text);
    names.push_back(any.name);
    const auto bytes = std::as_bytes(std::span{text});
    any.input.bytes.assign(bytes.begin(), bytes.end());
    any = readChecked(std::move(any.input), options);
  }
  return names;
}

void writeTextFile(const std::string& path, std::string_view text) {
  Output output;
  output.useFile(path);
  output.write(text);
  output.finish();
}

std::string describeFindings(const AnyPolicies& checked) {
  const auto policies = policyCountOf(checked);
  return describe(countFindings(checked.read.findings)) + (policies ? " in " + countOfPolicies(*policies) : "");
}

}  // namespace tool
