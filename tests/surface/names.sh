# shellcheck shell=bash
# Reads exports.txt; for the scripts of this folder.

# expandNames PATTERN: the names of exports.txt that match the extended regular expression, sorted.
expandNames() {
    local line
    while read -r line; do
        [[ -z $line || $line == \#* ]] && continue
        [[ $line =~ ^[A-Za-z0-9_{},]+$ ]] || { echo "exports.txt: not a name: $line" >&2; exit 1; }
        eval "printf '%s\n' $line"
    done <"$(dirname "${BASH_SOURCE[0]}")/exports.txt" | grep -E "$1" | LC_ALL=C sort
}
