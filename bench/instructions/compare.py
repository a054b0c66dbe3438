# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Compares the dumps of instruction_counts with the counts that are checked in, or writes them.

    compare.py [--write] DUMPS COUNTS
"""

import pathlib
import re
import statistics
import sys

ALLOWED = 1.05
# A count of a few instructions may differ by what the compiler puts between them.
ALWAYS_ALLOWED = 10


def counts_of(dumps):
    """Instructions of one call, by the name of the work; of an export what it takes beyond the look-up of its symbols."""
    found = {}
    times = name = None
    for line in dumps:
        if started := re.match(r"desc: Trigger: Client Request: (\d+) (.*)", line):
            times, name = int(started[1]), started[2]
        elif name and (total := re.match(r"summary: (\d+)", line)):
            found[name] = round(int(total[1]) / times)
            name = None
    bare = {name: count for name, count in found.items() if name.startswith("bare ")}
    return {
        name: count - bare.get(name.replace("facade ", "bare ", 1), 0) for name, count in found.items() if name not in bare
    }


def read(file):
    lines = pathlib.Path(file).read_text(encoding="utf-8").splitlines()
    return {name: int(count) for name, count in (line.rsplit(" ", 1) for line in lines)}


def compare(now, before):
    for name in sorted(before.keys() ^ now.keys()):
        print(f"{name}: " + ("not counted any more" if name in before else "not counted before"))
    grown = {
        name for name in before.keys() & now.keys() if now[name] > max(before[name] * ALLOWED, before[name] + ALWAYS_ALLOWED)
    }
    for name in sorted(grown):
        print(f"{name}: {before[name]} -> {now[name]} instructions")
    return 1 if grown or before.keys() != now.keys() else 0


def main():
    dumps, counts = sys.argv[-2:]
    with open(dumps, encoding="utf-8", errors="replace") as lines:
        now = counts_of(lines)
    exports = [count for name, count in now.items() if name.startswith("facade ")]
    print(f"{len(exports)} exports of both types, median {statistics.median(exports):.0f} instructions beyond the look-up")
    if "--write" in sys.argv:
        pathlib.Path(counts).write_text("".join(f"{name} {count}\n" for name, count in now.items()), encoding="utf-8")
        return 0
    return compare(now, read(counts))


sys.exit(main())
