"""Every relative link of the pages leads to a file of the tree, every anchor to a heading; every function of kvlm.h stands
in a group, every group in one of groups.dox. usage: links.py ROOT"""
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
header = (root / "kvlm/include/kvlm.h").read_text()
ungrouped = re.findall(r"^KVLM_API .*", re.sub(r"@\{.*?@\}", "", header, flags=re.S), re.M)
broken += [f"kvlm.h: in no group: {line}" for line in ungrouped]
roofs = re.findall(r"@defgroup (\w+)", (root / "docs/site/groups.dox").read_text())
broken += [f"kvlm.h: there is no group {name}" for name in re.findall(r"@ingroup (\w+)", header) if name not in roofs]
if broken:
    print(*broken, sep="\n")
if broken or links < 50:
    sys.exit(f"{len(broken)} faults in {links} links and {len(roofs)} groups.")
