# Turns the medians of a run into tables; leaves the data of the graphs in the folder `scratch`.
# A benchmark is named member/type/form/order/batch/who; a time is of a whole batch, in nanoseconds.

function see(list, item) {
    if (!((list, item) in place)) {
        place[list, item] = ++size[list]
        nth[list, size[list]] = item
    }
}

function peer(cell,    k, fastest) { # the fastest peer of a cell, "" if there is none
    for (k = 1; k in peers; ++k)
        if ((cell, peers[k]) in time && (fastest == "" || time[cell, peers[k]] < time[cell, fastest]))
            fastest = peers[k]
    return fastest
}

BEGIN {
    split("eigen loop Lapack glm cglm xsmm C", peers, " ")
    split("packed S2 columns P-objects P-planes L LS2", known, " ")
    for (k = 1; k in known; ++k)
        see("form", known[k])
}

$1 ~ /_median$/ {
    sub(/_median$/, "", $1)
    split($1, part, "/")
    cell = part[1] "/" part[2] "/" part[3] "/" part[4] "/" part[5]
    time[cell, part[6]] = $4 / part[5]
    see("group", part[1] "/" part[2])
    has[part[1] "/" part[2], part[5]] = 1
    batch[part[1] "/" part[2]] = part[5]
    see("member", part[1])
    see("form", part[3])
    see("order", part[4])
    see("batch", part[5])
}

END {
    legend = "ns per object, and the fastest peer's time divided by it (e: Eigen, l: plain loops, L: LAPACK, g: GLM, c: cglm, x: LIBXSMM, C: the C function that a call in C++ makes; above 1 the library is faster)"
    for (g = 1; g <= size["group"]; ++g) {
        group = nth["group", g]
        split(group, part, "/")
        printf "\n%s %s: %s\n%-10s %7s", part[1], part[2], legend, "form", "batch"
        legend = "as above"
        for (o = 1; o <= size["order"]; ++o)
            printf "  %15s", "order " nth["order", o]
        printf "\n"
        for (f = 1; f <= size["form"]; ++f)
            for (b = 1; b <= size["batch"]; ++b)
                row(group, nth["form", f], nth["batch", b])
    }
    bandwidth()
    slower()
    graphs()
}

function row(group, form, batch,    o, cell, who, line, any) {
    line = sprintf("%-10s %7d", form, batch)
    for (o = 1; o <= size["order"]; ++o) {
        cell = group "/" form "/" nth["order", o] "/" batch
        if (!((cell, "kvlm") in time)) {
            line = line sprintf("  %15s", "-")
            continue
        }
        any = 1
        who = peer(cell)
        line = line sprintf("  %8.2f ", time[cell, "kvlm"])
        line = line (who == "" ? "      " : sprintf("%5.2f%s", time[cell, who] / time[cell, "kvlm"], substr(who, 1, 1)))
    }
    if (any)
        print line
}

function bandwidth(    g, b, o, cell, group, line, any, title) {
    title = "\nOne long vector of as many elements, in a plain loop or by the C library, its time divided by the library's (packed)"
    for (b = 1; b <= size["batch"]; ++b)
        for (g = 1; g <= size["group"]; ++g) {
            group = nth["group", g]
            line = sprintf("%-14s %7d", group, nth["batch", b])
            any = 0
            for (o = 1; o <= size["order"]; ++o) {
                cell = group "/packed/" nth["order", o] "/" nth["batch", b]
                if ((cell, "flat") in time) {
                    any = 1
                    line = line sprintf("  order %d: %5.2f", nth["order", o], time[cell, "flat"] / time[cell, "kvlm"])
                }
            }
            if (any) {
                if (title != "")
                    print title
                title = ""
                print line
            }
        }
}

# The batch by which a group is judged and drawn: 1000 objects, or what there is.
function judged(group) {
    return (group, 1000) in has ? 1000 : batch[group]
}

function slower(    g, o, cell, who, ratio, any) {
    print "\nSlower than the fastest peer (packed):"
    for (g = 1; g <= size["group"]; ++g)
        for (o = 1; o <= size["order"]; ++o) {
            cell = nth["group", g] "/packed/" nth["order", o] "/" judged(nth["group", g])
            if (!((cell, "kvlm") in time))
                continue
            who = peer(cell)
            if (who == "")
                continue
            ratio = time[cell, who] / time[cell, "kvlm"]
            if (ratio < 1) {
                any = 1
                printf "  %-14s order %d: %.2f (%s)\n", nth["group", g], nth["order", o], ratio, who
            }
        }
    if (!any)
        print "  none"
}

# One panel per form for the first two members, and one for each of the others, in each type.
function graphs(    m, g, f, o, part, cell, file, any) {
    for (g = 1; g <= size["group"]; ++g) {
        split(nth["group", g], part, "/")
        for (f = 1; f <= size["form"]; ++f) {
            if (place["member", part[1]] > 2 && nth["form", f] != "packed")
                continue
            file = scratch "/" part[1] "." part[2] "." nth["form", f]
            any = 0
            for (o = 1; o <= size["order"]; ++o) {
                cell = nth["group", g] "/" nth["form", f] "/" nth["order", o] "/" judged(nth["group", g])
                if (!((cell, "kvlm") in time) || nth["order", o] > 6)
                    continue
                any = 1
                print nth["order", o], time[cell, "kvlm"], ((cell, "eigen") in time ? time[cell, "eigen"] : "NaN"),
                      ((cell, "loop") in time ? time[cell, "loop"] : "NaN") >file
            }
            if (any)
                print part[1], part[2], nth["form", f] >(scratch "/panels")
        }
    }
}
