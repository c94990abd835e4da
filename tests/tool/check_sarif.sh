#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# An independent validator takes the logs of findings by their published schema: check_sarif.sh VQS SOURCES
set -euo pipefail
vqs=$1
sources=$(cd "$2" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
log=$(mktemp)
trap 'rm -f "$log"' EXIT

cd "$sources/tests/data/documents"
code=0
"$vqs" policy check --format sarif ./*/*.json >"$log" || code=$?
[ $code = 1 ] || { echo "vqs policy check exits with $code where there are errors"; exit 1; }

# The packaged one, where another python3 comes first and has no jsonschema.
for python in python3 /usr/bin/python3; do
  "$python" -c 'import jsonschema' 2>/dev/null || continue
  "$python" "$here/check_sarif.py" "$log" "$sources/tests/data/sarif/sarif-2.1.0-rtm.5.json" findings.tsv
  exit
done
echo "there is no python3 with jsonschema here"
echo "To mend: scripts/install-packages.sh test"
exit 1
