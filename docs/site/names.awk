# A filter of kvlm.h for the site: what a name says of operands, elements and description becomes its brief description.
BEGIN {
    object["m"] = "matrix"; object["t"] = "transposed matrix"; object["v"] = "vector"; object["c"] = "constant"
    many["matrix"] = "matrices"; many["transposed matrix"] = "transposed matrices"
    many["vector"] = "vectors"; many["constant"] = "constants"
    description["P"] = "a pointer per element position"; description["L"] = "a pointer per object"
    description["S"] = "standard"
}

function brief(name,    part, parts, letters, text, i, letter, one) {
    parts = split(name, part, "_")
    if (part[parts] == "P" || part[parts] == "L")
        text = "; " description[part[parts--]]
    if (length(part[parts]) == 2 && part[parts] ~ /^[SPL]+$/) {
        text = "; from " description[substr(part[parts], 1, 1)] " to " description[substr(part[parts], 2, 1)]
        parts--
    }
    text = (part[parts--] == "32f" ? "float" : "double") text
    letters = parts > 1 ? part[2] : ""
    for (i = length(letters); i > 0; i--) {
        letter = substr(letters, i, 1)
        if (letter == "a") {
            one = many[object[substr(letters, --i, 1)]]
            text = "array of " one (text ~ /^(float|double)/ ? ": " : ", ") text
        } else {
            text = object[letter] (text ~ /^(float|double)/ ? ": " : ", ") text
        }
    }
    return toupper(substr(text, 1, 1)) substr(text, 2) "."
}

/^KVLM_API KvlStatus kvlm/ {
    name = $3
    sub(/\(.*/, "", name)
    printf "/** %s */ ", brief(name)
}
{ print }
