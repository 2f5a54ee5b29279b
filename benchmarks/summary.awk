# The whole library beside its peers, at one level, in Markdown: a table by family and type, every cell of it that is
# below 1, the descriptions beside packed objects, one matrix of higher orders, calls on few objects. Means are geometric,
# over all members and orders 3 to 6 at 1000 objects, or at all that a member has. Appends to the file `points` what is
# drawn of them.

function familyOf(member,    part) {
    split(member, part, "_")
    if (part[1] != "Mul")
        return part[1]
    return "Mul (" (part[2] ~ /c/ ? "constants" : part[2] ~ /v/ ? "vectors" : "matrices") ")"
}

function fastest(cell,    k, who) {
    for (k = 1; k in peers; ++k)
        if ((cell, peers[k]) in time && (who == "" || time[cell, peers[k]] < time[cell, who]))
            who = peers[k]
    return who
}

function ratioTo(who, cell) {
    return sprintf("%.2f", time[cell, who] / time[cell, "kvlm"])
}

function add(key, ratio) {
    sum[key] += log(ratio)
    ++cells[key]
}

function mean(key) {
    return key in cells ? sprintf("%.2f", exp(sum[key] / cells[key])) : "-"
}

function half(family, type,    key) { # of a row, for one type
    key = family SUBSEP type
    if (!(key in cells))
        return " - | - | - |"
    printf "%s,%s,%s,%.3f,%.3f\n", level, family, type, mean(key), worst[key] >>points
    return sprintf(" %s | %.2f %s | %s |", mean(key), worst[key], where[key], below[key] ? below[key] : "")
}

# Tables of cells: what is put is shown where its row and its column meet, in those of the given columns that there are.
function put(table, row, column, text) {
    rows[table, row]
    columns[table, column]
    shown[table, row, column] = text
}

function show(table, head, given,    key, part, c, names, line) {
    split(given, names, " ")
    line = head
    gsub(/[^|]+/, "---", head)
    for (c = 1; c in names; ++c)
        if ((table, names[c]) in columns) {
            line = line " " names[c] " |"
            head = head "---:|"
        }
    print line "\n" head
    for (key in rows) {
        split(key, part, SUBSEP)
        if (part[1] != table)
            continue
        line = "| " part[2] " |"
        for (c = 1; c in names; ++c)
            if ((table, names[c]) in columns)
                line = line " " ((key, names[c]) in shown ? shown[key, names[c]] : "-") " |"
        print line | "sort"
    }
    fflush()
    close("sort")
}

BEGIN {
    split("eigen loop Lapack glm cglm xsmm", peers, " ")
}

{ gsub(/"/, "") }

/^[A-Z][^\/]*\/.*_median,/ {
    sub(/_median$/, "", $1)
    split($1, part, "/")
    time[part[1] "/" part[2] "/" part[3] "/" part[4] "/" part[5], part[6]] = $4
    if (part[6] == "kvlm")
        has[part[1], part[5]] = 1
}

END {
    for (key in time) {
        split(key, part, SUBSEP)
        cell = part[1]
        split(cell, part, "/")
        if (key != cell SUBSEP "kvlm")
            continue
        who = fastest(cell)
        if (part[1] == "Transpose_m" && part[4] >= 64)
            put("large", part[1] " | " part[2], part[4], ratioTo("flat", cell))
        else if (part[1] ~ /_m[mv]?$/ && part[4] > 6)
            put("one", part[1] " | " part[2], part[4], ratioTo("eigen", cell) ", " ratioTo("loop", cell))
        else if (part[5] < 1000 && part[4] <= 6 && part[3] == "packed" && who != "")
            put("few", part[1] " | " part[2] " | " sprintf("%2d", part[5]), part[4], ratioTo(who, cell) " " who)
        if (part[4] > 6 || part[5] < 1000 || (part[5] != 1000 && (part[1], 1000) in has))
            continue
        family = familyOf(part[1])
        packed = part[1] "/" part[2] "/packed/" part[4] "/" part[5]
        if (part[3] != "packed") {
            if ((packed, "kvlm") in time) {
                add(family SUBSEP part[3], time[packed, "kvlm"] / time[key])
                put("described", family, part[3], mean(family SUBSEP part[3]))
            }
            continue
        }
        if (who == "")
            continue
        ratio = time[cell, who] / time[key]
        group = family SUBSEP part[2]
        families[family] = 1
        add(group, ratio)
        add("all" SUBSEP part[2], ratio)
        label = part[1] " " part[4] " (" who ")"
        if (!(group in worst) || ratio < worst[group]) {
            worst[group] = ratio
            where[group] = label
        }
        if (ratio < 1) {
            ++below[group]
            lost[++losses] = sprintf("| %s | %s | %d | %.2f | %s |", part[1], part[2], part[4], ratio, who)
        }
    }
    printf "\n## %s\n\n%d cells of 32f and %d of 64f, geometric means %s and %s, %d cells below 1.\n\n", level,
        cells["all" SUBSEP "32f"], cells["all" SUBSEP "64f"], mean("all" SUBSEP "32f"), mean("all" SUBSEP "64f"), losses
    print "| Family | 32f | Worst cell | Below 1 | 64f | Worst cell | Below 1 |"
    print "|--------|----:|------------|--------:|----:|------------|--------:|"
    for (family in families)
        print "| " family " |" half(family, "32f") half(family, "64f") | "sort"
    fflush()
    close("sort")
    if (losses) {
        print "\nEvery cell below 1:\n\n| Member | Type | Order | Ratio | Peer |\n|--------|------|------:|------:|------|"
        for (k = 1; k <= losses; ++k)
            print lost[k] | "sort"
        fflush()
        close("sort")
    }
    print "\nOther descriptions: the time of packed objects divided by theirs.\n"
    show("described", "| Family |", "S2 columns P-objects P-planes L LS2")
    print "\nOne matrix of a higher order, packed: Eigen's of dynamic size, and plain loops that know the order.\n"
    show("one", "| Member | Type |", "7 8 10 12 16")
    print "\nTransposition of one matrix: the time of a copy of as many adjacent elements divided by its own.\n"
    show("large", "| Member | Type |", "64 100 256 500 512 1000 1024 2000 4000 4096")
    print "\nCalls on few objects, packed, by the fastest peer:\n"
    show("few", "| Member | Type | Objects |", "3 4 5 6")
}
