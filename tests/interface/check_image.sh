#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# How a program or library for Windows is protected and how a debugger finds its sources: check_image.sh IMAGE LOAD-FLAGS
set -euo pipefail
image=$1 load_flags=$2
facts=$(llvm-readobj-19 --file-headers --coff-load-config --coff-debug-directory "$image")
failed=0
fail() { echo "$1"; echo "To mend: $2"; failed=1; }
has() { grep -qE "$1" <<<"$facts" || fail "$image lacks $2" "see vqs_hardened and vqs_windows_image in cmake/Hardening.cmake"; }
number() { printf '%d' "$(sed -nE "s/^ *$1: (0x[0-9A-F]+|[0-9]+)$/\1/p" <<<"$facts" | head -1)"; }

has 'IMAGE_DLL_CHARACTERISTICS_HIGH_ENTROPY_VA' "64-bit address randomisation"
has 'IMAGE_DLL_CHARACTERISTICS_DYNAMIC_BASE' "address randomisation"
has 'IMAGE_DLL_CHARACTERISTICS_NX_COMPAT' "data execution prevention"
has 'IMAGE_DLL_CHARACTERISTICS_GUARD_CF' "control flow guard"
has 'CF_INSTRUMENTED' "checks of its indirect calls"
has 'CF_FUNCTION_TABLE_PRESENT' "the table of what may be called"
has 'CF_LONGJUMP_TABLE_PRESENT' "the table of where may be jumped to"
has 'IMAGE_DLL_CHARACTERISTICS_EX_CET_COMPAT' "the promise to work with shadow stacks"
has "DependentLoadFlags: $load_flags\$" "the rule where its DLLs come from, $load_flags"
[ "$(number BaseRelocationTableSize)" -gt 0 ] || fail "$image has no relocations" "link without --disable-reloc-section"
[ "$(number CheckSum)" -gt 0 ] || fail "$image has no checksum" "pass -Xlink=-release to the linker"
[ "$(number GuardCFFunctionCount)" -gt 20 ] || fail "$image lists hardly a function that may be called" \
  "compile with -mguard=cf and link with --guard-cf"
for pointer in GuardCFCheckFunction GuardCFCheckDispatch GuardCFFunctionTable; do
  [ "$(number $pointer)" -gt 0 ] || fail "$image has no $pointer" "see cmake/load_config.c"
done

has 'Type: Repro ' "the mark that its time stamp is a hash"
[[ $(sed -n 's/.*TimeDateStamp: .*(\(0x[0-9A-F]*\))$/\1/p' <<<"$facts" | head -1) != 0x0 ]] ||
  fail "$image has the time stamp 0, as every other release" "pass -Xlink=-brepro to the linker"
name=$(basename "${image%.*}").pdb
has "PDBFileName: $name\$" "the name of its debug information, without a path"
pdb=$(dirname "$image")/$name
[ -s "$pdb" ] || fail "there is no $pdb" "pass --pdb to the linker"
built=$(llvm-readobj-19 --coff-debug-directory "$image" | sed -n 's/^ *PDBGUID: {\(.*\)}$/\1/p')
debugged=$(llvm-pdbutil-19 dump --summary "$pdb" | sed -n 's/^ *GUID: {\(.*\)}$/\1/p')
[ -n "$built" ] && [ "$built" = "$debugged" ] || fail "$pdb ($debugged) is not of $image ($built)" "build both again"
files=$(llvm-pdbutil-19 dump --files "$pdb" | grep -cE "^- .*VexoQTFServices.*\.(cpp|c|h)\$" || true)
[ "$files" -gt 3 ] || fail "$pdb knows only $files sources" "compile with -g -gcodeview"
echo "$(basename "$image"): $(number GuardCFFunctionCount) functions may be called, $files sources are known"
exit $failed
