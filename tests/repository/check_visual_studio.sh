#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The preset for Visual Studio, configured with LLVM's stand-ins for Microsoft's compiler and linker, which know the same
# options: check_visual_studio.sh SOURCES SYSTEM-INCLUDE
set -euo pipefail
sources=$1 system_include=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0
fail() { echo "$1"; echo "To mend: $2"; failed=1; }

# The preset is for Windows: one of the same settings, in a folder of the same sources, is not.
mkdir -p "$work/sources"
find "$sources" -mindepth 1 -maxdepth 1 ! -name build ! -name CMakeUserPresets.json -exec ln -s -t "$work/sources" {} +
clang_cl=$work/clang-cl
ln -s "$(command -v clang-19)" "$clang_cl"
cat >"$work/toolchain.cmake" <<'EOF'
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
foreach(language C CXX)
  set(CMAKE_${language}_COMPILER_TARGET x86_64-pc-windows-msvc)
  set(CMAKE_${language}_COMPILER_WORKS ON)
endforeach()
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_LINKER lld-link-19)
set(CMAKE_AR llvm-lib-19)
set(CMAKE_MT llvm-mt-19)
set(CMAKE_RC_COMPILER llvm-rc-19)
EOF
cat >"$work/sources/CMakeUserPresets.json" <<EOF
{ "version": 6, "configurePresets": [ {
  "name": "here", "inherits": "msvc", "condition": { "type": "const", "value": true },
  "binaryDir": "$work/build", "toolchainFile": "$work/toolchain.cmake",
  "cacheVariables": {
    "CMAKE_C_COMPILER": "$clang_cl", "CMAKE_CXX_COMPILER": "$clang_cl",
    "VQS_SYSTEM_INCLUDE": "$system_include" } } ] }
EOF
(cd "$work/sources" && cmake --preset here) >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
cd "$work/build"

commands() { ninja -f "build-$1.ninja" -t commands; } # configuration
compilations() { commands "$1" | grep -E ' -c -- .*\.(c|cpp|cxx)$'; }
link() { commands "$1" | grep -F "/out:bin/$1/$2 "; } # configuration, file
has() { # command, options
  local command=" $1 " option
  for option in "${@:2}"; do [[ $command = *" $option "* ]] || return 1; done
}

# An option that takes back another is a warning (D9025), and warnings are errors.
contradicts_itself() { # command
  local family
  for family in '/EH.*' '/GR-?' '[-/]M[TD]d?' '[-/]Z[i7I]' '[-/]W[0-4]' '[-/]O[12dxst]'; do
    [ "$(tr ' ' '\n' <<<"$1" | grep -E "^($family)$" | sort -u | wc -l)" -le 1 ] || return 0
  done
  return 1
}

check_compilation() { # configuration, command
  local command=$2 file=${2##* } name="$1, ${2##*/sources/}"
  if contradicts_itself "$command"; then fail "$name: options contradict each other" "see cmake/CompilerOptions.cmake"; fi
  has "$command" /W4 /WX /Brepro || fail "$name: it is not reproducible or warns of less" "link vqs_options"
  if [[ $file = *.c ]]; then
    has "$command" /std:c11 || fail "$name: it is not compiled as C11" "see CMAKE_C_STANDARD in CMakeLists.txt"
  else
    # Where nothing throws, the compiler warns of noexcept (C4577).
    has "$command" /EHsc || has "$command" /EHs-c- /wd4577 || fail "$name: may it throw?" "link vqs_exceptions or vqs_no_exceptions"
  fi
  # What is shipped.
  [[ $file != */src/* && $file != */tools/* ]] || has "$command" /guard:cf -Zi ||
    fail "$name: it lacks control flow guard or debug information" "link vqs_hardened, and see cmake/Hardening.cmake"
}

check_image() { # configuration, file, load flags, what the C runtime's names end with
  local command option
  command=$(link "$1" "$2")
  for option in /guard:cf /CETCOMPAT "/DEPENDENTLOADFLAG:$3" /Brepro /RELEASE /DEBUG "/PDBALTPATH:${2%.*}.pdb" /OPT:REF \
    /OPT:ICF "/NODEFAULTLIB:libucrt$4.lib" "/DEFAULTLIB:ucrt$4.lib"; do
    has "$command" "$option" || fail "$1, $2: it is linked without $option" "see vqs_windows_image in cmake/Hardening.cmake"
  done
  [ "$(grep -oE '/INCREMENTAL(:[A-Z]+)?' <<<"$command" | tail -1)" = /INCREMENTAL:NO ] ||
    fail "$1, $2: it is linked incrementally, which /OPT does not go with" "see vqs_windows_image in cmake/Hardening.cmake"
}

for configuration in Debug Release RelWithDebInfo; do
  count=0
  while read -r command; do
    count=$((count + 1))
    check_compilation $configuration "$command"
  done < <(compilations $configuration)
  [ $count -gt 40 ] || fail "$configuration: only $count sources were found" "see compilations() in this script"
  suffix=
  [ $configuration != Debug ] || suffix=d
  check_image $configuration VexoQTFServices.dll 0x800 "$suffix"
  check_image $configuration vqs.exe 0xA00 "$suffix"
done

# The compiler knows every option: one source for each way to compile.
ways=0
while read -r command; do
  ways=$((ways + 1))
  refusal=$(eval "${command/ -c -- / '-###' -c -- }" 2>&1 | grep -E '^[^ ]+: (warning|error): ' || true)
  [ -z "$refusal" ] || fail "$refusal" "keep options of other compilers away where MSVC is set"
done < <(compilations Release | sed -E 's, /F[od][^ ]+,,g' | awk '{ way = $0; sub(/ -c -- .*/, "", way) } !seen[way]++')
[ $ways -gt 3 ] || fail "only $ways ways to compile were found" "see compilations() in this script"

# The linker knows its options, none goes against another, and what they are for is in the image.
echo 'int answer(void); int answer(void) { return 42; }' >answer.c
"$clang_cl" --target=x86_64-pc-windows-msvc /nologo /c /guard:cf /Zl /DVQS_DEPENDENT_LOAD_FLAGS=0 \
  -- answer.c "$sources/cmake/load_config.c"
mapfile -t options < <(link Release VexoQTFServices.dll | tr ' ' '\n' |
  grep -E '^/(guard|CETCOMPAT|DEPENDENTLOADFLAG|Brepro|RELEASE|DEBUG|OPT|(NO)?DEFAULTLIB:libu|PDBALTPATH|INCREMENTAL)')
lld-link-19 /nologo /WX /dll /noentry /machine:x64 /out:answer.dll "${options[@]}" answer.obj load_config.obj >"$work/log" 2>&1 ||
  fail "$(cat "$work/log")" "see vqs_windows_image in cmake/Hardening.cmake"
facts=$(llvm-readobj-19 --file-headers --coff-load-config --coff-debug-directory answer.dll)
for fact in IMAGE_DLL_CHARACTERISTICS_GUARD_CF IMAGE_DLL_CHARACTERISTICS_EX_CET_COMPAT 'DependentLoadFlags: 0x800' \
  'Type: Repro ' 'PDBFileName: VexoQTFServices.pdb'; do
  grep -qF "$fact" <<<"$facts" || fail "an image that is linked like the library lacks $fact" "see vqs_windows_image in cmake/Hardening.cmake"
done
echo "$count sources in $ways ways, 3 configurations"
exit $failed
