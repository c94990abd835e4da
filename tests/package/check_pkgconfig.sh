#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The same programs with nothing but pkg-config: check_pkgconfig.sh SOURCES WORK PKGCONFIG-FOLDER LIBRARY-FOLDER RUNNER|- CC CXX
set -euo pipefail
sources=$1 work=$2 pkgconfig=$3 libraries=$4 runner=$5 cc=$6 cxx=$7
export PKG_CONFIG_LIBDIR=$pkgconfig PKG_CONFIG_PATH=

[ "$(pkg-config --modversion vexoqtfservices)" = 0.1.0 ] || { echo "vexoqtfservices.pc has another version"; exit 1; }
read -ra flags <<<"$(pkg-config --cflags vexoqtfservices)"
read -ra link <<<"$(pkg-config --libs vexoqtfservices)"
rm -rf "$work"
mkdir -p "$work"
suffix=
[ "$runner" = - ] || { suffix=.exe && link+=(-static) && cp "$libraries"/*.dll "$work"; }
"$cc" -std=c99 "$sources/consumer.c" "${flags[@]}" "${link[@]}" -o "$work/consumer_c$suffix"
"$cxx" -std=c++11 "$sources/consumer.cpp" "${flags[@]}" "${link[@]}" -o "$work/consumer_cpp$suffix"
run() {
  if [ "$runner" = - ]; then LD_LIBRARY_PATH=$libraries "$work/$1"; else "$runner" "$work/$1.exe"; fi | tr -d '\r'
}
diff <(run consumer_c) <(echo "C: 0.1.0.0")
diff <(run consumer_cpp) <(echo "C++: 0.1.0.0")
