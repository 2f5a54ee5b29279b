#!/usr/bin/env python3
"""Fills the tables of docs/interface.md from the declarations of kvlm.h; with --check only says whether they are filled.

usage: tools/interface.py [--check], from anywhere
"""
import itertools
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
PAGE = ROOT / "docs" / "interface.md"
DESCRIPTIONS = {"": "S", "P": "_P", "L": "_L"}


def declarations():
    """(family, letters, type, description, arguments) of each function, an argument being (type, name)."""
    header = (ROOT / "kvlm/include/kvlm.h").read_text()
    for name, arguments in re.findall(r"^KVLM_API KvlStatus kvlm(\w+)\((.*?)\);", header, re.M | re.S):
        family, letters, element, description = re.fullmatch(
            r"([A-Za-z0-9]+?)(?:_([mtvca]+))?_(32f|64f)(?:_([PLS]+))?", name).groups("")
        yield (family, letters, element, description,
               [re.match(r"(.*?)(\w+)$", x.strip()).groups() for x in " ".join(arguments.split()).split(",")])


def is_stride(name):
    return name.endswith(("Stride", "Shift"))


def remark(order):
    """Where an order of arguments differs from sources, destination, shape."""
    shape = [x for x in order if x in ("width", "height", "widthHeight", "len")]
    results = [x for x in order if x.startswith("dst")]
    found = []
    between = order[order.index("src1"):order.index("src2")] if "src2" in order else ()
    if any(x.lower().endswith("width") for x in between):
        found.append("own shapes")
    elif shape and results and order.index(shape[0]) < order.index(results[0]):
        found.append("shape first")
    for scratch in ("buffer", "pivot"):
        if scratch in order:
            behind = order[order.index(scratch) + 1:]
            place = "before " + behind[0] if behind else "last"
            found.append(f"`{scratch}` {place}")
    return ", ".join(found)


def functions():
    rows = {}
    for family, letters, element, description, arguments in declarations():
        order = tuple(name for _, name in arguments if not is_stride(name) and name != "count")
        row = rows.setdefault((family, order), {"one": [], "many": [], "types": [], "forms": [], "number": 0})
        form = DESCRIPTIONS.get(description, "S P L, each into each")
        for key, item in (("many" if "a" in letters else "one", letters), ("types", element), ("forms", form)):
            if item and item not in row[key]:
                row[key].append(item)
        row["number"] += 1
    yield "| Family | One object | Arrays | Types | Descriptions | Arguments | Order | Functions |"
    yield "|--------|------------|--------|-------|--------------|-----------|-------|----------:|"
    for (family, order), row in sorted(rows.items(), key=lambda item: item[0][0].lower()):
        yield "| " + " | ".join((f"`{family}`", " ".join(row["one"]), " ".join(row["many"]), " ".join(row["types"]),
                                 " ".join(row["forms"]), " ".join(order), remark(order), str(row["number"]))) + " |"
    yield f"| {len({family for family, _ in rows})} families | | | | | | | {sum(r['number'] for r in rows.values())} |"


def strides():
    """What stands behind a source of each kind, in each description."""
    seen = {}
    for _, letters, _, description, arguments in declarations():
        form = "_" + description[0] if description[:1] in ("P", "L") else "S"
        names = [name for _, name in arguments]
        operands = re.findall(r"[mtvc]a?", letters)
        # Constants are called val, wherever their letter stands.
        for pattern, isConstant in ((r"val", True), (r"src\d?", False)):
            places = [i for i, name in enumerate(names) if re.fullmatch(pattern, name)]
            for operand, i in zip([x for x in operands if (x[0] == "c") == isConstant], places):
                tail = list(itertools.takewhile(is_stride, names[i + 1:]))
                tail = ", ".join(re.search(r"(Obj|Row|Elem)?(Stride|Shift)$", name).group() for name in tail)
                kind = operand.replace("t", "m")
                row = kind + (" beside an array" if kind in "mv" and "a" in letters else "")
                seen.setdefault((row, form), set()).add(tail or "none, by value")
    yield "| Source | S | _P | _L |"
    yield "|--------|---|----|----|"
    for row in sorted({row for row, _ in seen}, key=lambda row: ("a" in row[1:2], row)):
        yield f"| {row} | " + " | ".join(" or ".join(sorted(seen.get((row, form), "-")))
                                         for form in ("S", "_P", "_L")) + " |"


def tables():
    """How many functions take tables or lists, and how many of both kinds."""
    kinds = [{kind.startswith("const") for kind, _ in arguments if kind.count("*") == 2}
             for *_, arguments in declarations()]
    yield f"{sum(map(bool, kinds))} functions take tables or lists, {kinds.count({True, False})} of them of both kinds."


def filled(page):
    for make in (functions, strides, tables):
        mark = f"<!-- {make.__name__}: tools/interface.py -->"
        begin, end = page.index(mark) + len(mark), page.index("<!-- end -->", page.index(mark))
        page = page[:begin] + "\n\n" + "\n".join(make()) + "\n\n" + page[end:]
    return page


page = PAGE.read_text()
if "--check" not in sys.argv:
    PAGE.write_text(filled(page))
elif page != filled(page):
    sys.exit("docs/interface.md is not what kvlm.h declares: run tools/interface.py.")
