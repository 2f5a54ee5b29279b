#!/usr/bin/env bash
# Compares what the installed C headers declare with what interface.txt keeps: each function with its types, variables,
# types, the values of enumerators, and for each ABI sizes and offsets.
# usage: interface.sh <include folder> <ABI: x86_64 or i386> <gcc and flags> [emulator]
set -euo pipefail
export LC_ALL=C
kept=$(dirname "${BASH_SOURCE[0]}")/interface.txt
abi=$2
read -ra compiler <<<"$3"
emulator=("${@:4}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

printf '#include <%s>\n' kvlcore.h kvlm.h >"$work/headers.c"
"${compiler[@]}" "-I$1" -fsyntax-only -aux-info "$work/prototypes" "$work/headers.c"
"${compiler[@]}" "-I$1" -E -P "$work/headers.c" >"$work/declarations"

# All that is no function, a line each: semicolons in braces become commas.
tr -s '[:space:]' ' ' <"$work/declarations" | sed -E 's/__attribute__\(\([^()]*(\([^()]*\))*\)\) //g
    :inside; s/;([^{}]*\})/,\1/; t inside; s/,( ?\})/\1/g; s/; ?/\n/g' | grep -E '^ ?(typedef|struct|union|enum|extern) ' >"$work/others"

# A program that prints what the compiler makes of them.
{
    cat "$work/headers.c"
    printf '#include <stddef.h>\n#include <stdio.h>\nint main(void)\n{\n'
    awk -v abi="$abi" '
        { body = $0; braces = sub(/^[^{]*\{/, "", body); sub(/,? *\}.*/, "", body); n = braces ? split(body, part, ",") : 0
          for (i = 1; i <= n; i++) { sub(/ *[=[].*/, "", part[i]); sub(/.*[ *]/, "", part[i]) } }
        /^(typedef )?enum / { for (i = 1; i <= n; i++) printf "printf(\"%s = %%ld\\n\", (long)%s);\n", part[i], part[i]; next }
        /^typedef / {
            printf "printf(\"%s %s: %%d bytes\", (int)sizeof(%s));\n", abi, $NF, $NF
            for (i = 1; i <= n; i++)
                printf "printf(\", %s at %%d\", (int)offsetof(%s, %s));\n", part[i], $NF, part[i]
            print "puts(\"\");"
        }' "$work/others"
    printf 'return 0;\n}\n'
} >"$work/layout.c"
"${compiler[@]}" "-I$1" "$work/layout.c" -o "$work/layout"

{
    sed -nE 's,^/\*.*:NC \*/ extern (.*) (\(.*),\1\2,p' "$work/prototypes"
    grep -v '^enum {' "$work/others"
    # Calling conventions and the like would be attributes too.
    grep -oE '__attribute__\(\([^()]*(\([^()]*\))*\)\)' "$work/declarations" | sort -u
    "${emulator[@]}" "$work/layout"
} | sort >"$work/found"

[[ $(wc -l <"$work/found") -gt 800 ]] || { echo "FAILED  the headers were not read"; exit 1; }
awk -v abi="$abi" '!/^#|^$/ && ($1 == abi || $1 !~ /^(x86_64|i386)$/)' "$kept" | sort >"$work/kept"
diff -U 0 --label kept --label declared "$work/kept" "$work/found" >"$work/difference" || {
    echo "FAILED  the headers declare another interface than interface.txt keeps; programs are built on it, it may only grow"
    grep -v '^@@' "$work/difference"
    exit 1
}
echo "ok      $abi: $(grep -c ');$' "$work/found") functions and all types are as kept"
