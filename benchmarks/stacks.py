#!/usr/bin/env python3
"""The Python package beside numpy.linalg, scipy.linalg and tricks with einsum: stacks.py [--readme] OUTDIR [COUNT]...

Leaves OUTDIR/python.csv, python.txt (a table, also printed) and python.svg; --readme: also the figures in
python/README.md, and their picture.
"""
import argparse
import csv
import os
import pathlib
import platform
import re
import statistics
import textwrap
import time

import matplotlib
import numpy as np
import scipy.linalg

import kvlm as la

matplotlib.use("Agg")
import matplotlib.pyplot as plt

ROOT = pathlib.Path(__file__).resolve().parents[1]
BEGIN, END = "<!-- by ./bench python --readme -->\n", "\n<!-- to here -->"
ORDERS, TYPES, COUNTS = range(2, 7), (np.float32, np.float64), (100, 10**4, 10**6)


def cofactors(a):
    """Rows of cross products over the determinant, of order 3: what is recommended in place of numpy's inverse."""
    columns = np.stack([np.cross(a[:, :, i], a[:, :, j]) for i, j in ((1, 2), (2, 0), (0, 1))], axis=1)
    return columns / np.einsum("ij,ij->i", columns[:, 0], a[:, :, 0])[:, None, None]


def triple(a):
    return np.einsum("ij,ij->i", a[:, 0], np.cross(a[:, 1], a[:, 2]))


def each(f):
    return lambda *arguments: [f(*objects) for objects in zip(*arguments)]


# The sources a, p (positive definite), s (symmetric), x (vectors); ours, numpy's, scipy's for an object, a trick.
FUNCTIONS = {
    "inv": ("a", la.inv, np.linalg.inv, scipy.linalg.inv, {3: cofactors}),
    "det": ("a", la.det, np.linalg.det, scipy.linalg.det, {3: triple}),
    "solve": ("ax", la.solve, np.linalg.solve, scipy.linalg.solve, {}),
    "cholesky": ("p", la.cholesky, np.linalg.cholesky, lambda a: scipy.linalg.cholesky(a, lower=True), {}),
    "qr": ("a", la.qr, np.linalg.qr, scipy.linalg.qr, {}),
    "eigh": ("s", la.eigh, np.linalg.eigh, scipy.linalg.eigh, {}),
    "eigvals": ("a", la.eigvals, np.linalg.eigvals, scipy.linalg.eigvals, {}),
    "eig": ("a", la.eig, np.linalg.eig, scipy.linalg.eig, {}),
    "matmul": ("ap", la.matmul, np.matmul, np.dot, {n: lambda a, b: np.einsum("nij,njk->nik", a, b) for n in ORDERS}),
    "matvec": ("ax", la.matvec, lambda a, x: np.matmul(a, x[..., None])[..., 0], np.dot,
               {n: lambda a, x: np.einsum("nij,nj->ni", a, x) for n in ORDERS}),
}
PEERS = ("kvlm", "numpy", "scipy", "einsum")


def seconds(calls):
    """Medians of the processor times of some rounds, in each of which every call is measured; long calls have few
    rounds. The first round doesn't count: it may be the first to touch the memory."""
    clock = time.process_time  # what others do on the machine doesn't count
    times = [[] for _ in calls]
    start = clock()
    while len(times[0]) < 2 or len(times[0]) < 9 and clock() - start < 2:
        for f, own in zip(calls, times):
            begin = clock()
            f()
            once = clock() - begin
            loops = int(min(0.002 / max(once, 1e-9), 1000))
            begin = clock()
            for _ in range(loops):
                f()
            own.append((clock() - begin) / loops if loops else once)
    return [statistics.median(own[1:]) for own in times]


def sources(n, dtype, count):
    rng = np.random.default_rng(n)
    a = rng.standard_normal((count, n, n), np.float32).astype(dtype)
    s = a + a.swapaxes(-1, -2)
    return {"a": a, "s": s, "p": a @ a.swapaxes(-1, -2) + np.eye(n, dtype=dtype), "x": a[:, 0].copy()}


def measure(count):
    for dtype in TYPES:
        for n in ORDERS:
            operands = sources(n, dtype, count)
            some = min(count, 100)  # scipy has no stacks: a loop, of which a part tells
            for name, (letters, ours, numpys, scipys, tricks) in FUNCTIONS.items():
                arguments = [operands[letter] for letter in letters]
                calls = [lambda: ours(*arguments), lambda: numpys(*arguments),
                         lambda: each(scipys)(*(x[:some] for x in arguments))]
                if n in tricks:
                    calls.append(lambda: tricks[n](*arguments))
                times = seconds(calls)
                yield {"function": name, "type": np.dtype(dtype).name, "order": n, "count": count,
                       **{peer: t / (some if peer == "scipy" else count) * 1e9 for peer, t in zip(PEERS, times)}}


def overhead():
    a = np.eye(3)
    rounds = []
    for _ in range(15):
        begin = time.process_time()
        for _ in range(3000):
            la.inv(a)
        rounds.append((time.process_time() - begin) / 3000)
    return statistics.median(rounds)


def conditions():
    processor = re.search("model name.*: (.*)", pathlib.Path("/proc/cpuinfo").read_text()).group(1)
    lapack = re.search(r"\S*/(\S+/lib(?:lapack|openblas)\S*)", pathlib.Path("/proc/self/maps").read_text()).group(1)
    return (f"{time.strftime('%F')}, {processor}, Python {platform.python_version()}, numpy {np.__version__}, "
            f"scipy {scipy.__version__}, {lapack} behind both. Medians of the processor time, one thread; load of the "
            f"machine {os.getloadavg()[0]:.1f}. A call of inv of one matrix takes {overhead() * 1e6:.2f} microseconds.")


def table(rows):
    yield conditions()
    yield "ns for an object; in brackets how many times faster kvlm is."
    for row in rows:
        if (row["order"], row["type"]) == (2, "float32"):
            yield (f"\n{row['function']:9}{'count':>8} order {'kvlm':>9} {'numpy':>17} {'scipy, a loop':>17} "
                   f"{'einsum, cross':>17}")
        peers = "".join(f"{row[p]:9.0f} ({row[p] / row['kvlm']:6.1f})" for p in PEERS[1:] if p in row)
        yield f"{row['type']:9}{row['count']:8}{row['order']:6} {row['kvlm']:9.1f} {peers}"


def figures(rows):
    """For the README: the time of kvlm for objects of order 3, 4, 6, and how many times faster than numpy it is."""
    own = {(r["function"], r["type"], r["count"], r["order"]): r for r in rows}
    counts = sorted({r["count"] for r in rows})
    cells = [(dtype, count) for dtype in ("float64", "float32") for count in counts]
    timed = ("float64", counts[len(counts) // 2])
    head = ["", "ns: {}, {:,}".format(*timed)] + ["{}, {:,}".format(*cell) for cell in cells]
    yield textwrap.fill(conditions(), 120) + "\n"
    yield f"| {' | '.join(head)} |"
    yield "|---" * len(head) + "|"
    for name in FUNCTIONS:
        times = " ".join(f"{own[(name, *timed, n)]['kvlm']:.0f}" for n in (3, 4, 6))
        row = [" ".join(f"{r['numpy'] / r['kvlm']:.2g}" for r in (own[(name, *cell, n)] for n in ORDERS))
               for cell in cells]
        yield f"| `{name}` | {times} | {' | '.join(row)} |"


def plot(rows, path):
    plt.rcParams.update({"svg.fonttype": "none", "svg.hashsalt": ""})
    counts = sorted({row["count"] for row in rows})
    figure, axes = plt.subplots(2, 5, figsize=(14, 6), sharex=True, sharey=True)
    for axis, name in zip(axes.flat, FUNCTIONS):
        for count, mark in zip(counts, "osD"):
            for dtype, line in zip(TYPES, ("--", "-")):
                cell = (name, count, np.dtype(dtype).name)
                part = [r for r in rows if (r["function"], r["count"], r["type"]) == cell]
                axis.plot([r["order"] for r in part], [r["numpy"] / r["kvlm"] for r in part], line, marker=mark,
                          color={100: "#7f8c8d", 10**4: "#2471a3"}.get(count, "#c0392b"), ms=4, lw=1.2,
                          label=f"{count:,}, {np.dtype(dtype).name}")
        axis.axhline(1, color="k", lw=0.6)
        axis.set_yscale("log")
        axis.yaxis.set_major_formatter(matplotlib.ticker.ScalarFormatter())
        axis.set_yticks([1, 2, 5, 10, 20, 50, 100])
        axis.minorticks_off()
        axis.grid(axis="y", color="#dddddd")
        axis.set_title(name)
    axes[0, 0].legend(fontsize=7)
    figure.suptitle("kvlm beside numpy: how many times faster, against the order")
    figure.tight_layout()
    figure.savefig(path, metadata={"Date": None})


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--readme", action="store_true")
    parser.add_argument("outdir", type=pathlib.Path)
    parser.add_argument("counts", type=int, nargs="*", default=COUNTS)
    options = parser.parse_args()
    options.outdir.mkdir(parents=True, exist_ok=True)
    rows = [row for count in options.counts for row in measure(count)]
    rows.sort(key=lambda row: (list(FUNCTIONS).index(row["function"]), row["count"]))
    with open(options.outdir / "python.csv", "w", newline="") as file:
        writer = csv.DictWriter(file, ("function", "type", "order", "count", *PEERS))
        writer.writeheader()
        writer.writerows(rows)
    text = "\n".join(table(rows)) + "\n"
    (options.outdir / "python.txt").write_text(text)
    print(text)
    plot(rows, options.outdir / "python.svg")
    if options.readme:
        plot(rows, ROOT / "docs" / "stacks.svg")
        readme = ROOT / "python" / "README.md"
        before, rest = readme.read_text().split(BEGIN)
        readme.write_text(before + BEGIN + "\n".join(figures(rows)) + END + rest.split(END)[1])


main()
