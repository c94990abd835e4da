// SPDX-License-Identifier: Apache-2.0
#include "simulator/installer/administrator.h"

#include "simulator/installer/windows_text.h"

namespace setup {
namespace {

/// False too for an administrator whose program was not started as one.
bool isAdministrator() {
  SID_IDENTIFIER_AUTHORITY authority = SECURITY_NT_AUTHORITY;
  PSID administrators = nullptr;
  require(AllocateAndInitializeSid(&authority, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS, 0, 0, 0, 0, 0,
                                   0, &administrators),
          "this program's rights cannot be looked up");
  BOOL isMember = FALSE;
  const bool isKnown = CheckTokenMembership(nullptr, administrators, &isMember);
  FreeSid(administrators);
  require(isKnown, "this program's rights cannot be looked up");
  return isMember != FALSE;
}

}  // namespace

void requireAdministrator() {
  if (!isAdministrator())
    throw Failure{"only administrators can install and remove drivers: open a terminal with \"Run as administrator\""};
}

}  // namespace setup
