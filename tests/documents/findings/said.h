// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "documents/documents.h"

namespace documents {

/// Everything that is said about a document, a line each, as in
///
///   P0020 error 1:38-52 policies[0].when[0]: "Power source" is written "Power Source"
///     certain: write "Power Source"
///
/// with the line, the column and the column behind the end, or line and column of the end where that is another line.
std::string said(std::string_view document, const ReadOptions& options = {});

/// A document of one policy of id 1 with that condition, with that action, or with these other members.
std::string withCondition(std::string_view condition);
std::string withAction(std::string_view action);
std::string withMembers(std::string_view members);

}  // namespace documents
