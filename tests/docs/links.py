"""Every relative link of the pages leads to a file of the tree, and every anchor to a heading. usage: links.py ROOT"""
import re
import sys
from pathlib import Path

root = Path(sys.argv[1]).resolve()
pages = [*sorted(root.glob("*.md")), *sorted(root.glob("docs/*.md")), root / "python" / "README.md"]


def text(page):
    return re.sub(r"^```.*?^```", "", page.read_text(), flags=re.M | re.S)


def anchors(page):
    """What can be led to in a file: of a header its groups; of a page its headings, lower case, spaces as hyphens, without
    other punctuation, repeated ones with numbers."""
    if page.suffix == ".h":
        return set(re.findall(r"@defgroup (\w+)", page.read_text()))
    found = set()
    for heading in re.findall(r"^#+ +(.*?) *$", text(page), re.M):
        slug = re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")
        number = 0
        while (slug if number == 0 else f"{slug}-{number}") in found:
            number += 1
        found.add(slug if number == 0 else f"{slug}-{number}")
    return found


links, broken = 0, []
for page in pages:
    for target in re.findall(r"\]\(([^)\s]*)\)", re.sub(r"`[^`]*`", "`", text(page))):
        if re.match(r"[a-z]+:", target):
            continue
        links += 1
        path, _, anchor = target.partition("#")
        file = (page.parent / path).resolve() if path else page
        if not file.exists() or not file.is_relative_to(root):
            broken.append(f"{page.relative_to(root)}: there is no {path}")
        elif anchor and anchor not in anchors(file):
            broken.append(f"{page.relative_to(root)}: there is no heading {target}")
print(*broken, sep="\n")
if broken or links < 50:
    sys.exit(f"{len(broken)} of {links} links lead nowhere." if broken else f"Only {links} links were found.")
