#!/usr/bin/env bash
# Checks what the shared libraries show: names, needed objects, imports, hardening, the processor that they ask for.
# usage: library.sh <folder of the libraries> <libomp.so.5> <C compiler with its flags>...
set -euo pipefail
export LC_ALL=C
# shellcheck source-path=SCRIPTDIR source=names.sh
source "$(dirname "${BASH_SOURCE[0]}")/names.sh"

folder=$1
libomp=$2
compiler=("${@:3}")
kvlm=$folder/libkvlmw7.so.5.2
kvlcore=$folder/libkvlcore.so.5.2
failures=0
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# expectEqual WHAT EXPECTED ACTUAL: both are lists, a line each.
expectEqual() {
    if [[ $2 == "$3" ]]; then
        echo "ok      $1"
    else
        echo "FAILED  $1 (- expected, + found)"
        diff <(printf '%s\n' "$2") <(printf '%s\n' "$3") --label expected --label found -U 0 | tail -n +3 | head -40 || true
        failures=$((failures + 1))
    fi
}

dynamic() { readelf -dW "$1" | sed -nE "s/.*\(($2)\).*\[(.*)\]/\2/p" | sort; }
defined() { nm -D --defined-only "$1" | awk '{ sub(/@.*/, "", $3); print $3 }' | sort; }
undefined() { nm -D --undefined-only "$1" | awk -v kind="$2" '$1 == kind { sub(/@.*/, "", $2); print $2 }' | sort; }
lines() { printf '%s\n' "$@" | sort; }

for library in "$kvlm" "$kvlcore"; do
    name=$(basename "$library")
    expectEqual "$name: soname" "$name" "$(dynamic "$library" SONAME)"
    expectEqual "$name: link for development" "$name" "$(readlink "${library%.5.2}")"
    [[ $library == "$kvlm" ]] && searchPath='$ORIGIN' || searchPath=""
    expectEqual "$name: search path for libraries" "$searchPath" "$(dynamic "$library" 'RPATH|RUNPATH')"
    expectEqual "$name: no text relocations" "" "$(readelf -dW "$library" | grep TEXTREL || true)"
    expectEqual "$name: all symbols bound at load" 1 "$(readelf -dW "$library" | grep -c 'FLAGS_1.*NOW')"
    expectEqual "$name: relocations read-only after load" 1 "$(readelf -lW "$library" | grep -c GNU_RELRO)"
    expectEqual "$name: stack not executable" RW "$(readelf -lW "$library" | awk '$1 == "GNU_STACK" { print $7 }')"
    expectEqual "$name: nothing of the C++ runtime" "" \
        "$(undefined "$library" U | grep -E '^_Z|^__cxa_|^__gxx_|^_Unwind' || true)"
done

expectEqual "libkvlmw7: needed objects" \
    "$(lines libkvlcore.so.5.2 libomp.so.5 libdl.so.2 libm.so.6 libc.so.6)" "$(dynamic "$kvlm" NEEDED)"

# Every import must come from one of the five.
defined "$kvlcore" >"$work/provided"
defined "$libomp" >>"$work/provided"
for needed in libdl.so.2 libm.so.6 libc.so.6; do
    defined "$("${compiler[@]}" -print-file-name=$needed)" >>"$work/provided"
done
sort -u -o "$work/provided" "$work/provided"
expectEqual "libkvlmw7: no import from elsewhere" "" "$(undefined "$kvlm" U | comm -23 - "$work/provided")"

expectEqual "libkvlmw7: exported names" "$(expandNames .)" "$(defined "$kvlm")"
expectEqual "libkvlmw7: public functions and drivers" "788 529" \
    "$(defined "$kvlm" | grep -c '^kvlm') $(defined "$kvlm" | grep -c '^ownOMP_kvlm')"
expectEqual "libkvlcore: exported names" \
    "$(lines kvlGetMaxCacheSizeB kvlSetNumThreads threads_omp_of_n_kvl)" "$(defined "$kvlcore")"
for tier in 'public functions:kvlm' 'drivers:ownOMP_kvlm' 'kernels:ownkvlm'; do
    echo "        $(defined "$kvlm" | grep -c "^${tier#*:}" || true) ${tier%%:*}"
done

objdump -d --no-show-raw-insn "$kvlm" | awk -F '\t' 'NF > 1 { split($2, part, " "); print part[1] }' | sort -u \
    >"$work/opcodes"
expectEqual "libkvlmw7: the code was read" addsd "$(grep -x addsd "$work/opcodes" || true)"
expectEqual "libkvlmw7: stores past the cache in one routine, and fenced there" "owniTranspose_32s_NT" \
    "$(objdump -d --no-show-raw-insn "$kvlm" | awk -F '\t' '
        function tell() { if (stores) print name (fenced ? "" : " without a fence") }
        /^[0-9a-f]+ <.*>:$/ { tell(); name = $0; sub(/^[^<]*</, "", name); sub(/>:$/, "", name); stores = fenced = 0 }
        $2 ~ /^movnt/ { stores = 1 }
        $2 ~ /^sfence/ { fenced = 1 }
        END { tell() }')"
# On x86_64 returning or passing an element needs none, so what is found there is arithmetic too.
expectEqual "libkvlmw7: no x87 but in the determinants in extended precision" "" \
    "$(objdump -d --no-show-raw-insn "$kvlm" | awk -F '\t' '
        /^[0-9a-f]+ <.*>:$/ { name = $0; sub(/^[^<]*</, "", name); sub(/>:$/, "", name) }
        NF > 1 && $2 ~ /^f/ && name !~ /^a6_Det_m_/ { print name }' | sort -u)"
beyondSse2='v[a-z0-9]+|addsubp[sd]|haddp[sd]|hsubp[sd]|lddqu|mov(d|sh|sl)dup|fisttp.*'
beyondSse2+='|phadd.*|phsub.*|pabs[bwd]|palignr|pshufb|pmaddubsw|pmulhrsw|psign[bwd]'
beyondSse2+='|p?blend.*|dpp[sd]|insertps|extractps|pinsr[bdq]|pextr[bdq]|round[sp][sd]|ptest|pmuldq|pmulld|packusdw'
beyondSse2+='|pm(ax|in)(sb|sd|uw|ud)|pmov[sz]x.*|pcmp(eqq|gtq|estr.|istr.)|mpsadbw|phminposuw|movntdqa|crc32.*'
beyondSse2+='|popcnt.*|lzcnt.*|andn|bextr|bls(i|r|msk)|mulx|pdep|pext|rorx|sarx|shlx|shrx|movbe.*|aes.*|pclmul.*|sha[0-9].*'
expectEqual "libkvlmw7: nothing beyond SSE2" "" "$(grep -Ex "$beyondSse2" "$work/opcodes" || true)"

# Variants for processors that have more: to a program the same library. Nothing is fused in them.
for variant in "$folder"/glibc-hwcaps/*/libkvlmw7.so.5.2; do
    [[ -e $variant ]] || continue
    level=$(basename "$(dirname "$variant")")
    expectEqual "$level: soname" "$(dynamic "$kvlm" SONAME)" "$(dynamic "$variant" SONAME)"
    expectEqual "$level: needed objects" "$(dynamic "$kvlm" NEEDED)" "$(dynamic "$variant" NEEDED)"
    expectEqual "$level: search path for libraries" '$ORIGIN/../..' "$(dynamic "$variant" 'RPATH|RUNPATH')"
    expectEqual "$level: exported names" "$(defined "$kvlm")" "$(defined "$variant")"
    expectEqual "$level: no import from elsewhere" "" "$(undefined "$variant" U | comm -23 - "$work/provided")"
    objdump -d --no-show-raw-insn "$variant" | grep -oE 'vfn?m(add|sub)[a-z0-9]*|%[xyz]mm' | sort -u >"$work/wide"
    [[ $level == x86-64-v4 ]] && widest=zmm || widest=ymm
    expectEqual "$level: the widest registers, and nothing fused" "%$widest" "$(grep -v '%xmm' "$work/wide" | tail -1)"
done

((failures == 0)) || { echo "$failures checks failed"; exit 1; }
