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
may_include() {
  local found
  found=$(grep -rnE '^#include ("|<vqs/)' "$1" --include='*.h' --include='*.cpp' --include='*.c' |
    grep -vE "#include (\"$2|<${3:-vqs/})" || true)
  refuse "$1 may include only $2 and ${3:-what is public}" "$found" "move the code to the folder it belongs to"
}
may_include include '(base|functions|status|(catalogue|features|platform|policy|policy_binary|session|telemetry)(_records)?)\.h"'
may_include format 'format/' 'vqs/(base|[a-z_]+_records)\.h'
may_include src/channel '(src/channel/|format/(bytes|policy/text)\.h|host/windows_(api|devices)\.h)'
may_include src/log '(src/log/|src/channel/|format/telemetry/)'
may_include src/platform 'src/(platform|channel)/'
may_include src/policy '(src/policy/|src/channel/|format/)'
may_include src/binary '(src/(binary|policy|channel)/|format/)'
may_include tool '(tool/|format/)'
may_include host 'host/'
may_include simulator/model 'simulator/model/'
may_include simulator/embedded '(simulator/|host/)'

refuse "platform conditionals in src and format" \
  "$(grep -rnE '^\s*#\s*(if|ifdef|ifndef|elif)\b.*(WIN32|WIN64|linux|MINGW|MSC_VER)' src format | grep -v '^src/channel/windows_api.h:' || true)" \
  "differences between systems are files, not conditionals"
refuse "requests leave through one function only" \
  "$(grep -rlE '\bDeviceIoControl\(' src | grep -v '^src/channel/request.cpp$' || true)" "send them with src/channel/request.h"
refuse "the system's headers come through one include only" \
  "$(grep -rlE '#include <(windows|cfgmgr32|winver)' src | grep -vE '^src/(channel/windows_api.h|windows/)' || true)" \
  "include src/channel/windows_api.h"
exit $failed
