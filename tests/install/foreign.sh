#!/usr/bin/env bash
# Builds and runs the foreign project against an installed tree, once by pkg-config and once by find_package; with static
# libraries too where there are any.
# usage: foreign.sh <prefix> <libdir below it> <libomp.so.5> <cmake> <C compiler and flags> <C++ compiler and flags>
#        [emulator]
set -euo pipefail

prefix=$1
libraries=$1/$2
libompFolder=$(dirname "$3")
cmake=$4
read -ra compiler <<<"$5"
read -ra cxxCompiler <<<"$6"
emulator=("${@:7}")
source=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/foreign
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# A moved tree must still be found: nothing may depend on the folder that it was installed into.
cp -a "$prefix" "$work/moved"
libraries=$work/moved/${libraries#"$prefix"/}
# The libraries are found by the program's own search path; libomp's folder may be one that the loader doesn't know.
export LD_LIBRARY_PATH=$libompFolder
export PKG_CONFIG_PATH=$libraries/pkgconfig

[[ $(pkg-config --modversion kvlm) == 5.2.0 ]] || { echo "kvlm.pc tells another version"; exit 1; }
[[ -z $(pkg-config --print-requires kvlm) ]] || { echo "kvlm.pc requires other packages"; exit 1; }
read -ra cflags <<<"$(pkg-config --cflags kvlm)"
read -ra libs <<<"$(pkg-config --libs kvlm)"
"${compiler[@]}" -Wall -Wextra -Werror "${cflags[@]}" "$source/main.c" -o "$work/byPkgConfig" "${libs[@]}" \
    "-Wl,-rpath-link,$libompFolder" "-Wl,-rpath,$libraries"
"${cxxCompiler[@]}" -std=c++17 -Wall -Wextra -Werror "${cflags[@]}" "$source/main.cpp" -o "$work/cppByPkgConfig" \
    "${libs[@]}" "-Wl,-rpath-link,$libompFolder" "-Wl,-rpath,$libraries"
echo "pkg-config:   $("${emulator[@]}" "$work/byPkgConfig"), $("${emulator[@]}" "$work/cppByPkgConfig")"

# expectStatic PROGRAM: runs it; it must not need the shared libraries.
expectStatic() {
    ! readelf -d "$1" | grep -q 'NEEDED.*libkvl' || { echo "$1 needs the shared libraries" >&2; exit 1; }
    "${emulator[@]}" "$1"
}
if [[ -e $libraries/libkvlmw7.a ]]; then
    read -ra libs <<<"$(pkg-config --static --libs kvlm)"
    "${compiler[@]}" "${cflags[@]}" "$source/main.c" -o "$work/static" -Wl,-Bstatic "${libs[@]}" "-L$libompFolder"
    echo "static:       $(expectStatic "$work/static")"
fi

"$cmake" -S "$source" -B "$work/build" -G Ninja "-DCMAKE_PREFIX_PATH=$work/moved" "-DCMAKE_C_COMPILER=${compiler[0]}" \
    "-DCMAKE_C_FLAGS=${compiler[*]:1}" "-DCMAKE_CXX_COMPILER=${cxxCompiler[0]}" "-DCMAKE_CXX_FLAGS=${cxxCompiler[*]:1}" \
    "-DCMAKE_EXE_LINKER_FLAGS=-L$libompFolder -Wl,-rpath-link,$libompFolder" >"$work/log" ||
    { cat "$work/log"; exit 1; }
"$cmake" --build "$work/build" >"$work/log" || { cat "$work/log"; exit 1; }
echo "find_package: $("${emulator[@]}" "$work/build/foreign"), $("${emulator[@]}" "$work/build/foreign_cpp")"
[[ ! -e $libraries/libkvlmw7.a ]] || echo "static:       $(expectStatic "$work/build/foreign_static")"
