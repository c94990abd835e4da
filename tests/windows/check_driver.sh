#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What the driver imports, how it may be loaded, and how it is protected: check_driver.sh DRIVER IMPORTS
#
# IMPORTS lists what the kernel of Windows 10 exports and Microsoft documents: by its own name, or as what a documented
# macro or intrinsic of the kernel's headers stands for (IoCallDriver, the remove locks, RtlCopyMemory).
set -euo pipefail
driver=$1 known_imports=$2
facts=$(llvm-readobj-19 --file-headers --sections --coff-imports --coff-load-config --coff-debug-directory "$driver")
failed=0
fail() { echo "$1"; echo "To mend: $2"; failed=1; }
has() { grep -qE "$1" <<<"$facts" || fail "the driver lacks $2" "see cmake/KernelDriver.cmake"; }
number() { printf '%d' "$(sed -nE "s/^ *$1: (0x[0-9A-F]+|[0-9]+)$/\1/p" <<<"$facts" | head -1)"; }

# What only some kernels have, or only Wine needs, is looked up when it runs.
libraries=$(sed -n '/^Import {/,/^}/s/^  Name: //p' <<<"$facts")
[ "$libraries" = ntoskrnl.exe ] || fail "imports from: $libraries" "a kernel has ntoskrnl.exe only: see cmake/KernelDriver.cmake"
imports=$(sed -n 's/^  Symbol: \(\S*\).*/\1/p' <<<"$facts" | LC_ALL=C sort)
difference=$(LC_ALL=C diff "$known_imports" - <<<"$imports" | grep '^[<>]' || true)
[ -z "$difference" ] || fail "other imports than $known_imports: $(tr '\n' ' ' <<<"$difference")" \
  "look the name up with kernelFunction, or add it to the list when Windows 10 exports it and it is documented"

has 'Subsystem: IMAGE_SUBSYSTEM_NATIVE' "the mark of a native image"
for version in OperatingSystem Subsystem; do
  [ "$(number "Major${version}Version").$(number "Minor${version}Version")" = 10.0 ] ||
    fail "the image is for $version $(number "Major${version}Version"), and the INF file for 10.0" "see cmake/KernelDriver.cmake"
done
has 'IMAGE_DLL_CHARACTERISTICS_WDM_DRIVER \(0x2000\)' "the mark of a driver for devices that come and go"
has 'IMAGE_DLL_CHARACTERISTICS_DYNAMIC_BASE' "address randomisation"
has 'IMAGE_DLL_CHARACTERISTICS_HIGH_ENTROPY_VA' "64-bit address randomisation"
has 'IMAGE_DLL_CHARACTERISTICS_NX_COMPAT' "data execution prevention"
[ "$(number CheckSum)" -gt 0 ] || fail "the image has no checksum" "pass -Xlink=-release to the linker"
has 'Type: Repro ' "the mark that its time stamp is a hash"

# Memory integrity loads no driver with code that can be written, or with sections that share pages.
sections=$(awk '/^  Section \{/ { name = flags = "" } /^    Name: / { name = $2 } /MEM_/ { sub(/IMAGE_SCN_MEM_/, "", $1); flags = flags " " $1 }
  /^  \}/ && name != "" { print name flags; name = "" }' <<<"$facts")
expected='.text EXECUTE READ
.rdata READ
.buildid READ
.data READ WRITE
.pdata READ
INIT DISCARDABLE EXECUTE READ
.rsrc READ
.reloc DISCARDABLE READ'
[ "$sections" = "$expected" ] || fail "the sections are:"$'\n'"$sections" "only .data may be written; code of the start is in INIT"
[ "$(number SectionAlignment)" = 4096 ] || fail "sections share pages" "link without an alignment of your own"
init=$(sed -n '/Name: INIT/,/RawDataSize/s/^ *VirtualAddress: //p' <<<"$facts")
[ "$(number AddressOfEntryPoint)" -ge $((init)) ] || fail "DriverEntry is not in INIT" "mark it VQS_LOAD_CODE"
[ "$(number TLSTableSize)" = 0 ] || fail "the driver has variables of threads" "no kernel has them"

# Of 12 bytes each. The kernel unwinds the stack by them.
functions=$(($(number ExceptionTableSize) / 12))
code=$(llvm-objdump-19 -d --no-show-raw-insn "$driver")
[ $functions -gt 150 ] || fail "the kernel can unwind only $functions functions" "compile with -fasynchronous-unwind-tables"
checks=$(grep -cE 'xorq\s+%rsp, ' <<<"$code" || true)
[ "$checks" -gt 20 ] || fail "only $checks places deal with a stack cookie" "compile with -fstack-protector-strong"

# The value that Windows replaces before it calls the driver.
cookie=$(number SecurityCookie)
[ "$cookie" -gt 0 ] || fail "Windows is not told of the stack cookie" "see simulator/device/runtime.cpp"
value=$(llvm-readobj-19 --hex-dump=.data "$driver" | sed -nE "s/^0x$(printf '%x' "$cookie") (\S{8}) (\S{8}).*/\1\2/p")
[ "$value" = 32a2df2d992b0000 ] || fail "the stack cookie begins as $value" "Windows replaces 0x00002B992DDFA232 only"

echo "$(wc -l <<<"$imports") imports; $(stat -c %s "$driver") bytes; $functions functions, $checks of a cookie"
exit $failed
