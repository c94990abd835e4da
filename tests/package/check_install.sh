#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What is installed without a package can be moved, and finds its library where it is: check_install.sh CMAKE BUILD WORK
set -euo pipefail
cmake=$1 build=$2 work=$3

rm -rf "$work"
"$cmake" --install "$build" --prefix "$work/first" >"$work.log" 2>&1 || { cat "$work.log"; exit 1; }
mv "$work/first" "$work/second"
path=$(readelf -d "$work/second/bin/vqs" | sed -n 's/.*(RUNPATH).*\[\(.*\)\]/\1/p')
[ -n "$path" ] || { echo "vqs does not say where its library is"; exit 1; }
# shellcheck disable=SC2016
tr ':' '\n' <<<"$path" | (! grep -v '^\$ORIGIN/\.\./lib') || { echo "vqs looks for libraries elsewhere, too: $path"; exit 1; }
used=$(env -i LD_TRACE_LOADED_OBJECTS=1 "$work/second/bin/vqs" | sed -n 's/.*libVexoQTFServices.* => \(.*\) (.*/\1/p')
case $(realpath "$used") in
  "$(realpath "$work")"/second/lib/*) ;;
  *) echo "vqs takes the library $used"; exit 1 ;;
esac
env -i "$work/second/bin/vqs" --version | diff - <(echo "vqs 0.1.0")
