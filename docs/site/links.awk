# A filter of Markdown for the site: links between pages, and to headers, as Doxygen wants them; headings with the
# anchors that they have elsewhere. Examples are copied beside the pages; other files of the sources stay without links.
function slug(text) {
    text = tolower(text)
    gsub(/[^a-z0-9_ -]/, "", text)
    gsub(/ /, "-", text)
    return text
}
function pageOf(path) {
    sub(/\.md$/, "", path)
    gsub(/[^A-Za-z0-9]/, "_", path)
    return "page_" path
}
# The path from the root of what stands in a link.
function fromRoot(target) {
    target = folder target
    while (match(target, /[^\/]+\/\.\.\//))
        target = substr(target, 1, RSTART - 1) substr(target, RSTART + RLENGTH)
    return target
}
function linked(text, target,    anchor, at) {
    if (target ~ /^(https?|mailto):/)
        return "[" text "](" target ")"
    at = index(target, "#")
    anchor = at ? substr(target, at + 1) : ""
    target = at ? substr(target, 1, at - 1) : target
    target = target == "" ? path : fromRoot(target)
    gsub(/`/, "", text)
    if (target ~ /\.md$/)
        return "@ref " pageOf(target) (anchor != "" ? "_" anchor : "") " \"" text "\""
    if (target ~ /include\/.*\.(h|hpp)$/) {
        sub(/.*include\//, "", target)
        if (anchor != "")
            target = anchor
        return "@ref " target " \"" text "\""
    }
    return target ~ /^examples\// ? "<a href=\"" target "\">" text "</a>" : text
}
BEGIN { languages["c"] = "C"; languages["cpp"] = "C++"; languages["python"] = "Python" }
# Cuttings of code in a table are more than Doxygen takes: they stay in the sources.
/^\| Survivor \|/ {
    print "The survivors and their reasons are listed in the sources, in docs/trust.md."
    isCut = 1
}
/<!-- mutants end -->/ { isCut = 0 }
isCut { next }
FNR == 1 {
    path = FILENAME
    if (index(path, ENVIRON["PWD"] "/") == 1)
        path = substr(path, length(ENVIRON["PWD"]) + 2)
    folder = path
    sub(/[^\/]*$/, "", folder)
}
/^```/ {
    isCode = !isCode
    if (isCode && substr($0, 4) in languages)
        print "<div class=\"language\">" languages[substr($0, 4)] "</div>\n"
}
isCode { print; next }
/^#+ / {
    # A level that was left out is one too many for Doxygen.
    while (depth && levels[depth] >= length($1))
        depth--
    levels[++depth] = length($1)
    heading = path == "README.md" && depth == 1 ? "README" : substr($0, length($1) + 2)
    print substr("######", 1, depth) " " heading " {#" pageOf(path) (depth == 1 ? "" : "_" slug(heading)) "}"
    next
}
{
    while (/\[[^]]*$/ && (getline more) > 0) # a link goes on in the next line
        $0 = $0 " " more
    rest = $0
    line = ""
    while (match(rest, /!?\[[^]]*\]\([^ )]+\)/)) {
        found = substr(rest, RSTART, RLENGTH)
        line = line substr(rest, 1, RSTART - 1)
        rest = substr(rest, RSTART + RLENGTH)
        if (found ~ /^!/) {
            sub(/\]\(.*\//, "](", found) # pictures are found by their names
            line = line found
        } else {
            split(found, part, /\]\(/)
            line = line linked(substr(part[1], 2), substr(part[2], 1, length(part[2]) - 1))
        }
    }
    print line rest
}
