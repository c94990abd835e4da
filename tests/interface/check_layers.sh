#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Who may include whom, and where the system may be asked about.
set -euo pipefail
cd "$1"
failed=0

refuse() { # what is wrong, where it was found, how to mend it
  [ -z "$2" ] && return
  failed=1
  printf '%s\n' "$1:" "$2" "To mend: $3"
}

# folder, what its quoted includes may begin with, and which public headers it may include if not all
ruled=()
may_include() {
  local found
  ruled+=("$1")
  found=$(grep -rnE '^#include ("|<vqs/)' "$1" --include='*.h' --include='*.cpp' --include='*.c' |
    grep -vE "#include (\"$2|<${3:-vqs/})" || true)
  refuse "$1 may include only $2 and ${3:-what is public}" "$found" "move the code to the folder it belongs to"
}
nothing_public='no public header'
may_include include '(base|functions|status|(catalogue|features|platform|policy|policy_binary|session|telemetry)(_records)?)\.h"'
may_include format 'format/' 'vqs/(base|[a-z_]+_records)\.h'
may_include documents '(documents/|format/)' 'vqs/(base|[a-z_]+_records)\.h'
may_include src/channel '(src/channel/|format/(bytes|policy/text)\.h|host/windows_(api|devices)\.h)'
may_include src/log '(src/log/|src/channel/|format/telemetry/)'
may_include src/platform 'src/(platform|channel)/'
may_include src/policy '(src/policy/|src/channel/|format/)'
may_include src/binary '(src/(binary|policy|channel)/|format/)'
may_include src/windows 'src/windows/'
may_include tool '(tool/|documents/|format/)'
may_include host 'host/' "$nothing_public"
may_include simulator/model 'simulator/model/' "$nothing_public"
may_include simulator/embedded '(simulator/(embedded|model)/|host/)' "$nothing_public"
may_include simulator/device 'simulator/(device|model)/' "$nothing_public"
may_include simulator/installer 'simulator/installer/' "$nothing_public"
may_include examples 'examples/'
may_include cmake 'cmake/' "$nothing_public"
may_include fuzz '(fuzz|documents|format|src|simulator/model)/'
may_include bench '(bench|documents|format|src|host|simulator/embedded)/'
# Tests see what they are of, and what all tests share.
may_include tests/support '(tests/support|format|src/channel|host)/'
for family in channel log platform policy binary; do
  may_include "tests/$family" "(tests/support|tests/$family|src/($family|channel)|format|host)/"
done
may_include tests/format '(tests/support|tests/format|format|src/channel)/'
may_include tests/documents '(tests/support|tests/documents|documents|format)/'
may_include tests/host '(tests/support|tests/host|host)/'
may_include tests/interface '(tests/support|tests/interface)/'
may_include tests/journey '(tests/support|tests/journey)/'
may_include tests/lifetime '(tests/support|tests/lifetime)/'
may_include tests/memory '(tests/support|tests/memory|tests/simulator/embedded|host)/'
may_include tests/package 'tests/package/'
may_include tests/performance '(tests/(support|performance|journey|memory|tool)|format|src/channel|host)/'
may_include tests/simulator '(tests/support|tests/simulator|simulator|host)/'
may_include tests/tool '(tests/support|tests/tool|tool|documents|format|simulator/embedded)/'
may_include tests/windows '(tests/support|tests/windows|tests/simulator/embedded|simulator/(device|installer))/'

# Sources in no room of the above.
refuse "a folder without a rule of what it may include" \
  "$(find . -path ./build -prune -o \( -name '*.[hc]' -o -name '*.cpp' \) -print | sed 's|^\./||' |
    grep -vE "^($(IFS='|'; echo "${ruled[*]}"))/" || true)" "give it one here"

refuse "platform conditionals in src, format and documents" \
  "$(grep -rnE '^\s*#\s*(if|ifdef|ifndef|elif)\b.*(WIN32|WIN64|linux|MINGW|MSC_VER)' src format documents | grep -vE '^(src/channel/windows_api|documents/c/vqs_documents)\.h:' || true)" \
  "differences between systems are files, not conditionals"
refuse "requests leave through one function only" \
  "$(grep -rlE '\bDeviceIoControl\(' src | grep -v '^src/channel/request.cpp$' || true)" "send them with src/channel/request.h"
refuse "the system's headers come through one include only" \
  "$(grep -rlE '#include <(windows|cfgmgr32|winver)' src | grep -vE '^src/(channel/windows_api.h|windows/)' || true)" \
  "include src/channel/windows_api.h"
exit $failed
