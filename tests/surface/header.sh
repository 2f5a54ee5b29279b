#!/usr/bin/env bash
# Checks the installed headers: they compile alone in every language they are for, they declare exactly the public
# names, a C program that uses each name links and runs, and header, library and project tell the same version.
# usage: header.sh <prefix> <libdir below it> <libomp.so.5> <version of the project> <C compiler and flags>
#        <C++ compiler and flags> [emulator]
set -euo pipefail
export LC_ALL=C
# shellcheck source-path=SCRIPTDIR source=names.sh
source "$(dirname "${BASH_SOURCE[0]}")/names.sh"

include=$1/include
libraries=$1/$2
libompFolder=$(dirname "$3")
projectVersion=$4
read -ra cCompiler <<<"$5"
read -ra cxxCompiler <<<"$6"
emulator=("${@:7}")
strict=(-Wall -Wextra -Werror -pedantic -fsyntax-only "-I$include")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# compileAlone HEADER STANDARD...
compileAlone() {
    local header=$1 standard
    # Twice: a header must bear to be included again.
    printf '#include <%s>\n' "$header" "$header" | tee "$work/alone.c" >"$work/alone.cpp"
    for standard in "${@:2}"; do
        if [[ $standard == c++* ]]; then
            "${cxxCompiler[@]}" -std="$standard" "${strict[@]}" "$work/alone.cpp"
        else
            "${cCompiler[@]}" -std="$standard" "${strict[@]}" -Wstrict-prototypes "$work/alone.c"
        fi
        echo "ok      $header as $standard"
    done
}
compileAlone kvlm.h c90 c99 c11 c++11 c++17
compileAlone kvlcore.h c90 c99 c11 c++11 c++17
compileAlone kvlm_status.h c99 c11 c++11 c++17
for header in kvlm.hpp $(cd "$include" && echo kvlm/*.hpp); do
    compileAlone "$header" c++17 c++20
done

expandNames '^kvlm' >"$work/expected"
printf '#include <kvlm.h>\n' | "${cCompiler[@]}" "-I$include" -E -P -x c - |
    grep -oE '\bkvlm[A-Z][A-Za-z0-9_]* *\(' | tr -d ' (' | sort >"$work/declared"
diff -U 0 "$work/expected" "$work/declared" || { echo "FAILED  the header declares other names than the public ones"; exit 1; }
echo "ok      the header declares the $(wc -l <"$work/expected") public names"

{
    printf '#include <kvlcore.h>\n#include <kvlm.h>\n#include <stdio.h>\n#include <string.h>\n'
    printf 'typedef void (*Function)(void);\nstatic const Function functions[] = {\n'
    sed 's/.*/    (Function)&,/' "$work/expected"
    cat <<'C'
};
int main(void)
{
    const KvlLibraryVersion *version = kvlmGetLibVersion();
    float a = 1, b = 2, sum = 0;
    int cacheSize = -1;
    char text[32];
    size_t i;
    for (i = 0; i < sizeof functions / sizeof *functions; i++)
        if (functions[i] == 0)
            return 1;
    sprintf(text, "libkvlmw7.so.%d.%d", KVLM_VERSION_MAJOR, KVLM_VERSION_MINOR);
    if (version->versionMajor != KVLM_VERSION_MAJOR || version->versionMinor != KVLM_VERSION_MINOR ||
        strcmp(version->libraryName, text) != 0 || strcmp(version->versionText, text + sizeof "libkvlmw7.so." - 1) != 0)
        return 2;
    sprintf(text, "%d.%d.%d", KVLM_VERSION / 10000, KVLM_VERSION / 100 % 100, KVLM_VERSION_PATCH);
    if (strcmp(KVLM_VERSION_STRING, text) != 0 || strcmp(PROJECT_VERSION, text) != 0)
        return 6;
    if (kvlmAdd_vv_32f(&a, sizeof a, &b, sizeof b, &sum, sizeof sum, 1) != kvlOk || sum != 3)
        return 3;
    if (kvlGetMaxCacheSizeB(&cacheSize) != 0 || cacheSize < 0)
        return 4;
    kvlSetNumThreads(2);
    if (threads_omp_of_n_kvl != 2)
        return 5;
    printf("ok      a C program uses %d functions\n", (int)(sizeof functions / sizeof *functions));
    return 0;
}
C
} >"$work/use.c"
"${cCompiler[@]}" -std=c90 -pedantic -Wall -Wextra -Werror "-I$include" "-DPROJECT_VERSION=\"$projectVersion\"" \
    "$work/use.c" -o "$work/use" "-L$libraries" -lkvlmw7 -lkvlcore "-Wl,-rpath-link,$libompFolder"
LD_LIBRARY_PATH=$libraries:$libompFolder "${emulator[@]}" "$work/use"
