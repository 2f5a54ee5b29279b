# What a variant gains over the plain build: the medians of two runs, the plain one first, by member, type and form.
# Geometric means over orders 3 to 6 of the batches of most objects that a member has at 1000, or else at all.

$1 ~ /kvlm_median/ {
    gsub(/"|_median/, "", $1)
    split($1, part, "/")
    if (part[4] < 3 || part[4] > 6 || part[5] < 1000)
        next
    if (FILENAME == ARGV[1]) {
        plain[$1] = $4
        has[part[1], part[5]] = 1
    } else if ($1 in plain)
        ratio[$1] = plain[$1] / $4
}

END {
    printf "\nThe plain build's time divided by that of %s: geometric means over orders, and the lowest\n", level
    for (cell in ratio) {
        split(cell, part, "/")
        if (part[5] != 1000 && (part[1], 1000) in has)
            continue
        key = sprintf("%-26s %s %-9s", part[1], part[2], part[3])
        sum[key] += log(ratio[cell])
        ++count[key]
        if (!(key in lowest) || ratio[cell] < lowest[key])
            lowest[key] = ratio[cell]
    }
    for (key in sum)
        printf "%s %5.2f %5.2f\n", key, exp(sum[key] / count[key]), lowest[key] | "sort"
}
