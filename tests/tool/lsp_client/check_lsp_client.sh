#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The language server, driven by the client library of the editors that speak its protocol.
# check_lsp_client.sh SOURCES FOLDER COMMAND...: the packages go into the folder, the command is that of the tool.
set -euo pipefail
sources=$1
folder=$2
shift 2

for program in node npm; do
  command -v "$program" >/dev/null || { echo "$program is missing: run scripts/install-packages.sh test"; exit 1; }
done

# Installed once, as long as the packages are the same.
mkdir -p "$folder"
if ! cmp -s "$sources/package-lock.json" "$folder/installed.json"; then
  rm -f "$folder/installed.json"
  cp "$sources/package.json" "$sources/package-lock.json" "$folder"
  log=$folder/npm.log
  if ! npm ci --prefix "$folder" --ignore-scripts --no-audit --no-fund --no-update-notifier >"$log" 2>&1; then
    cat "$log"
    echo "The client's packages could not be installed. npm fetches them from the network when a build's tests run first."
    exit 1
  fi
  cp "$sources/package-lock.json" "$folder/installed.json"
fi

# Modules are looked for beside the program that wants them.
cp "$sources/session.mjs" "$sources/document.json" "$folder"
exec node "$folder/session.mjs" "$@"
