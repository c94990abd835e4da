#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What the .deb files hold and say of themselves: check_deb.sh PACKAGES CONTENTS
set -euo pipefail
export LC_ALL=C
packages=$1 contents=$2
failed=0

expect() { # what, file of what is expected; reads what is there
  diff "$2" - || { echo "$1 differs from $2 (> is there, < is expected)"; failed=1; }
}

for name in libvexoqtfservices0 libvexoqtfservices-dev vqs; do
  package=$(echo "$packages/${name}"_0.1.0-1_amd64.deb)
  dpkg-deb --fsys-tarfile "$package" | tar tv | grep -v '^d' | sed -E 's/^(\S+) +(\S+) +\S+ \S+ \S+ /\1 \2 /' |
    expect "the content of $name" "$contents/$name.txt"
done
[ "$(find "$packages" -maxdepth 1 -name '*.deb' | wc -l)" = 3 ] || { echo "there are not three packages"; failed=1; }

fields() {
  for package in "$packages"/*.deb; do
    dpkg-deb -f "$package" Architecture Depends Package Priority Section Source Version |
      sed -E 's/ \([^)]*\)//g' | sort | sed "s/^/$(dpkg-deb -f "$package" Package) /"
  done
}
fields | sort | expect "the packages' control fields" "$contents/control.txt"

root=$packages/tree
library=$root/usr/lib/x86_64-linux-gnu/libVexoQTFServices.so.0.1.0
readelf -d "$library" | grep -q 'SONAME.*\[libVexoQTFServices\.so\.0\]' || { echo "the library has another soname"; failed=1; }
for file in "$library" "$root/usr/bin/vqs"; do
  if readelf -d "$file" | grep -E 'R(UN)?PATH'; then echo "$file looks for libraries by itself"; failed=1; fi
  if readelf -S "$file" | grep -q '\.debug_info'; then echo "$file is not stripped"; failed=1; fi
done
dpkg-deb --ctrl-tarfile "$packages"/libvexoqtfservices0_*.deb | tar xO ./shlibs |
  diff - <(echo "libVexoQTFServices 0 libvexoqtfservices0 (>= 0.1.0)") || { echo "shlibs differs"; failed=1; }
dpkg-deb --ctrl-tarfile "$packages"/libvexoqtfservices0_*.deb | tar xO ./triggers |
  diff - <(echo "activate-noawait ldconfig") || { echo "triggers differs"; failed=1; }
LD_LIBRARY_PATH=$root/usr/lib/x86_64-linux-gnu "$root/usr/bin/vqs" --version | diff - <(echo "vqs 0.1.0") || failed=1
exit $failed
