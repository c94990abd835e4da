// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>

namespace setup {

/// The programs that sign a driver package for tests.
struct SigningTools {
  std::filesystem::path powerShell;
  std::filesystem::path signTool;
  std::filesystem::path inf2Cat;
};

/// Looks in a folder first, if one is named, then where Windows and its development kits put them, then along PATH.
/// Throws a Failure that says what is missing and where to get it.
SigningTools findSigningTools(const std::filesystem::path& folder);

/// Copies a package into a folder "test-signed" beside its INF file, and has the copy signed with a certificate of this
/// PC's own, which is made and trusted on this PC. Returns the copy's INF file, which names the catalogue.
std::filesystem::path makeTestSigned(const std::filesystem::path& inf, const SigningTools& tools);

}  // namespace setup
