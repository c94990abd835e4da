#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Every exported name is called by a protocol test.
set -euo pipefail
cd "$1"
failed=0
for name in $(sed -n 's/^  \([A-Za-z0-9_]*\).*/\1/p' src/windows/exports.def); do
  grep -rqw "$name" tests/channel tests/policy tests/binary tests/log tests/platform --include='*.cpp' && continue
  failed=1
  echo "no protocol test calls $name"
done
[ $failed = 0 ] || echo "To mend: test it in tests/channel, tests/log, tests/platform, tests/policy or tests/binary, in the file named like its source."
exit $failed
