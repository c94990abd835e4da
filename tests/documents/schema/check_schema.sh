#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# An independent validator takes the schema, and judges documents by it: check_schema.sh SOURCES
set -euo pipefail
here=$(dirname "$0")
# The packaged one, where another python3 comes first and has no jsonschema.
for python in python3 /usr/bin/python3; do
  "$python" -c 'import jsonschema' 2>/dev/null || continue
  exec "$python" "$here/check_schema.py" "$1/docs/vexoqtf-policies.schema.json" "$1/tests/data"
done
echo "there is no python3 with jsonschema here"
echo "To mend: scripts/install-packages.sh test"
exit 1
