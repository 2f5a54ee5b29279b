# The blocks of code of a page in one language, as a program. What includes or defines something is at its head, all else
# is a block of main() each; errors and failing assertions have the lines of the page.
# usage: awk -v language=c -f snippets.awk PAGE
/^```/ {
    if (isBlock && !isHead)
        body = body "}\n"
    isBlock = !isBlock && $0 == "```" language
    isFirst = isBlock
    next
}
!isBlock { next }
isFirst {
    isFirst = 0
    blocks++
    isHead = /^#include |^static .*\)$/
    where = "#line " FNR " \"" FILENAME "\"\n"
    if (isHead)
        head = head where
    else
        body = body "{\n" where
}
isHead { head = head $0 "\n"; next }
{ body = body $0 "\n" }
END {
    if (blocks < 2)
        exit 1
    print head "int main(void)\n{\n" body "return 0;\n}"
}
