#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The simulated driver under Wine, in the prefix WINEPREFIX:
#   with-driver.sh WINE BIN install            installs what lies in BIN, packed for Wine, and replaces what was installed
#   with-driver.sh WINE BIN remove
#   with-driver.sh WINE BIN PROGRAM [ARGUMENT...]   runs a program that has the stand-in cfgmgr32.dll beside it
set -euo pipefail
wine=$1
bin=$2
shift 2
need_prefix() { : "${WINEPREFIX:?names the Wine prefix that the driver is installed in: scripts/test.sh makes one}"; }
tool() { "$wine" "$bin/../tests/windows/package/vqs-simulator.exe" "$@"; }
remove() {
  tool remove
  # Wine keeps a driver loaded after its last device is gone.
  "$wine" sc stop vexoqtf >/dev/null 2>&1 || true
}

install_fresh() {
  # Wine keeps a driver file that has the same version number, and Wine 10 packages that it has forgotten.
  local system32=$WINEPREFIX/drive_c/windows/system32
  remove >/dev/null 2>&1 || true
  find "$system32" -name vexoqtf.sys -delete
  rm -rf "$system32"/driverstore/filerepository/vexoqtf.inf_*
  tool install
}

case $1 in
  install)
    need_prefix
    # The first program starts the system's services, which keep its output open for as long as they run.
    "$wine" wineboot >/dev/null 2>&1 </dev/null
    # Wine now and then starts a driver before the part of itself that has the devices, and the driver's process ends.
    install_fresh || install_fresh || install_fresh
    tool status
    ;;
  remove)
    need_prefix
    remove
    ;;
  *)
    export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:+$WINEDLLOVERRIDES;}cfgmgr32=n" WINEPATH="Z:${bin//\//\\}"
    exec "$wine" "$@"
    ;;
esac
