#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Every test on each Debian release that is supported, of the last commit, from nothing: in a new chroot without any
# package. Needs root and half an hour for each.
#   scripts/release-check.sh [RELEASE...]    bookworm and trixie unless it is told others
# build/release/RELEASE.txt has the tools' versions and the counts, build/release/RELEASE.log everything that was said.
# DEBIAN_MIRROR names another mirror than debootstrap's own; proxies, and npm_config_registry for the packages from npm,
# are taken from the environment.
set -euo pipefail
cd "$(dirname "$0")/.."

releases=("${@:-bookworm}")
[ $# -gt 0 ] || releases=(bookworm trixie)
[ "$(id -u)" = 0 ] || { echo "release-check.sh: only root can make a chroot" >&2; exit 2; }
scripts/install-packages.sh release
reports=$PWD/build/release
mkdir -p "$reports"

make_root() { # release, folder
  # Some tests run as a user without rights, who has to get in.
  chmod 755 "$2"
  debootstrap --variant=minbase "$1" "$2" ${DEBIAN_MIRROR:+"$DEBIAN_MIRROR"}
  cp /etc/resolv.conf "$2/etc/resolv.conf"
  git clone --quiet --no-hardlinks . "$2/source"
}

# In namespaces of their own, so that mounts and processes are gone with the run.
in_root() { # folder, command
  unshare --mount --pid --fork bash -c '
    mount -t proc proc "$1/proc"
    mount -t tmpfs -o mode=1777 tmp "$1/tmp"
    mount --rbind /dev "$1/dev"
    exec chroot "$1" env -i HOME=/root LANG=C.UTF-8 PATH=/usr/sbin:/usr/bin:/sbin:/bin \
      ${http_proxy:+http_proxy=$http_proxy} ${https_proxy:+https_proxy=$https_proxy} \
      ${npm_config_registry:+npm_config_registry=$npm_config_registry} bash -c "cd /source; $2"' - "$1" "$2"
}

versions() {
  in_root "$1" 'for tool in "g++" clang-19 cmake x86_64-w64-mingw32-g++-posix /usr/lib/wine/wine64; do
      printf "%-32s %s\n" "$tool" "$($tool --version 2>/dev/null | head -1)"
    done
    dpkg-query -W -f="mingw-w64 \${Version}\n" mingw-w64-x86-64-dev'
}

check() { # release
  local root log=$reports/$1.log report=$reports/$1.txt result=passed
  root=$(mktemp -d)
  echo "$1: making a system ..."
  make_root "$1" "$root" >"$log" 2>&1
  echo "$1: running every test ..."
  in_root "$root" scripts/test.sh >>"$log" 2>&1 || result=failed
  {
    echo "$1, commit $(git -C "$root/source" rev-parse --short HEAD), $(date -u +%F): $result"
    versions "$root"
    sed -n '/tests passed\|tests failed\|Total Test time\|The following tests/,$p' "$log"
  } >"$report"
  rm -rf --one-file-system "$root"
  cat "$report"
  [ $result = passed ]
}

failed=0
for release in "${releases[@]}"; do check "$release" || failed=1; done
exit $failed
