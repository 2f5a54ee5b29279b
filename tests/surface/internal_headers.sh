#!/usr/bin/env bash
# Checks the headers of the sources: each compiles alone, and all of them together.
# usage: internal_headers.sh <folder of the library> <C++ compiler and flags>
set -euo pipefail
read -ra compiler <<<"$2"
options=(-std=c++17 -Wall -Wextra -Werror -fsyntax-only -x c++ "-I$1/include" "-I$1/src")

mapfile -t headers < <(cd "$1/src" && find . -name '*.h' | cut -c3- | sort)
((${#headers[@]} > 0)) || { echo "FAILED  there are no headers in $1/src"; exit 1; }
for header in "${headers[@]}"; do
    "${compiler[@]}" "${options[@]}" - <<<"#include \"$header\"" || { echo "FAILED  $header alone"; exit 1; }
    echo "ok      $header"
done
printf '#include "%s"\n' "${headers[@]}" "${headers[@]}" | "${compiler[@]}" "${options[@]}" - ||
    { echo "FAILED  all headers together"; exit 1; }
echo "ok      all ${#headers[@]} together"
