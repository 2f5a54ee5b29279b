# shellcheck shell=bash
# Reads exports.txt; for the scripts of this folder.

# expandNames PATTERN: the names of exports.txt that match the extended regular expression, sorted.
expandNames() {
    local kind stem
    while read -r kind stem; do
        [[ -z $kind || $kind == \#* ]] && continue
        [[ $kind$stem =~ ^[A-Za-z0-9_{},]+$ ]] || { echo "exports.txt: not a name: $kind $stem" >&2; exit 1; }
        case $kind in
            object) stem="{kvlm${stem}_{32f,64f}{,_P},ownkvlm${stem}_{32f,64f}{,_S2,_P}}" ;;
            array) stem="{{,ownOMP_}kvlm${stem}_{32f,64f}{,_P,_L},ownkvlm${stem}_{32f,64f}{,_S2,_P,_L,_LS2}}" ;;
            *) stem=$kind ;;
        esac
        eval "printf '%s\n' $stem"
    done <"$(dirname "${BASH_SOURCE[0]}")/exports.txt" | grep -E "$1" | LC_ALL=C sort
}
