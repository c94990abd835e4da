// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "tool/policies/any_policies.h"

namespace tool {

/// Makes the certain corrections in the documents' files, each written in one step, and checks them again. The names of
/// those that have changed. Throws a UsageError for standard input.
std::vector<std::string> correct(std::vector<AnyPolicies>& checked, const documents::ReadOptions& options);

/// Replaces a file by a text, in one step. Throws a Failure.
void writeTextFile(const std::string& path, std::string_view text);

/// The findings as lines, and a Failure's end of a sentence: "1 error, 2 warnings in 16 policies".
std::string describeFindings(const AnyPolicies& checked);

}  // namespace tool
