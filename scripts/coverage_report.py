# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""What llvm-cov exported, as a table of layers and a list of what no test runs; see scripts/coverage.

    coverage_report.py EXPORT EXCEPTIONS FLOORS UNCOVERED [LAYER...]

Ends with 1 when a layer is below its floor, or an exception stands for nothing."""

import bisect
import collections
import json
import pathlib
import re
import sys

LAYERS = ["secrets", "foundation", "facade", "certlist", "doctor", "jobs", "sigil", "ui", "toolkit",
          "tools/pick", "tools/sigildesk"]

# A segment: where it begins, how often it ran, whether it is counted, begins a region, and lies between regions.
Segment = collections.namedtuple("Segment", "line column count counted entry gap")


class Source:
    """The lines and branches of one source. A branch is a condition and a way that it can go."""

    def __init__(self, name, text, file):
        self.name = name
        self.text = text.splitlines()
        self.segments = [Segment(*segment[:6]) for segment in file["segments"]]
        self.lines = dict(self._lines())
        self.branches = dict(self._branches(file["branches"]))

    def _lines(self):
        """Each line that does something, with the number of its runs: the greatest of the regions that begin there and of
        the one that goes on from the line before."""
        starting = collections.defaultdict(list)
        for segment in self.segments:
            starting[segment.line].append(segment)
        before = None
        for line in range(1, len(self.text) + 1):
            here = starting[line]
            regions = [segment for segment in here if segment.entry and segment.counted and not segment.gap]
            skipped = bool(here) and here[0].entry and not here[0].counted
            goes_on = before is not None and before.counted
            if not skipped and (goes_on or regions):
                yield line, max([segment.count for segment in regions] + ([before.count] if goes_on else []))
            if here:
                before = here[-1]

    def _reached(self, line, column):
        at = bisect.bisect_right([segment[:2] for segment in self.segments], (line, column)) - 1
        return at >= 0 and self.segments[at].counted and self.segments[at].count > 0

    def _branches(self, found):
        """Of all instances of a template or an inline function together. A condition that is reached and goes no way is a
        constant."""
        ways = collections.defaultdict(lambda: [0, 0])
        for line, column, _, _, true, false, *_ in found:
            ways[line, column][0] += true
            ways[line, column][1] += false
        for (line, column), (true, false) in ways.items():
            if true or false or not self._reached(line, column):
                yield (line, column, "true"), true
                yield (line, column, "false"), false

    def line_text(self, line):
        """Of a function's opening brace, the line before with its name."""
        text = self.text[line - 1].strip()
        return self.text[line - 2].strip() if text == "{" and line > 1 else text


class Exceptions:
    """Each stands for the uncovered run of lines that begins at a line with its text, and for branches of such a line."""

    def __init__(self, lines):
        self.rows = []
        for line in lines:
            if line.strip() and not line.startswith("#"):
                name, text, reason = (part.strip() for part in line.split(" | ", 2))
                self.rows.append((name, text, reason))
        self.used = set()

    def hold(self, name, text):
        held = [row for row in self.rows if row[0] == name and row[1] in text]
        self.used.update(held)
        return bool(held)

    def unused(self, names):
        """What depends on the machine may stand for nothing on this one."""
        return [row for row in self.rows
                if row[0] in names and row not in self.used and not row[2].startswith("by machine: ")]


def runs_of(lines):
    """Lines grouped into runs without another line in between."""
    runs = []
    for line in sorted(lines):
        if runs and runs[-1][-1] == line - 1:
            runs[-1].append(line)
        else:
            runs.append([line])
    return runs


class Counts:
    """How many lines and branches there are, exceptions apart, and how many of them run."""

    def __init__(self):
        self.lines = self.lines_run = self.branches = self.branches_run = 0

    def __iadd__(self, other):
        for name, value in vars(other).items():
            setattr(self, name, getattr(self, name) + value)
        return self

    def shares(self):
        """In hundredths, rounded down, so that 100 is all of them."""
        return [run * 10000 // of / 100 if of else 100.0
                for run, of in ((self.lines_run, self.lines), (self.branches_run, self.branches))]


def examine(source, exceptions):
    """The counts of one source, and what no test runs there: a line and what is missing of it."""
    counts = Counts()
    counts.lines_run = sum(count > 0 for count in source.lines.values())
    excepted = set()
    missing = []
    for run in runs_of(line for line, count in source.lines.items() if not count):
        if exceptions.hold(source.name, source.line_text(run[0])):
            excepted.update(run)
        else:
            missing += [(line, "") for line in run]
    counts.lines = len(source.lines) - len(excepted)

    for (line, column, way), count in sorted(source.branches.items()):
        if line in excepted or (not count and exceptions.hold(source.name, source.line_text(line))):
            continue
        counts.branches += 1
        counts.branches_run += count > 0
        if not count and source.lines.get(line):
            missing.append((line, f"never {way} at {column}: "))
    return counts, sorted(missing)


def sources(export, root):
    """The sources of the layers among those of the export, each with its layer."""
    for file in json.loads(pathlib.Path(export).read_text())["data"][0]["files"]:
        path = pathlib.Path(file["filename"])
        if not path.is_relative_to(root):
            continue
        name = str(path.relative_to(root))
        layer = next((layer for layer in LAYERS if name.startswith(layer + "/")), None)
        if layer:
            yield layer, Source(name, path.read_text(), file)


def table_of(path):
    rows = (line.split() for line in pathlib.Path(path).read_text().splitlines() if line and not line.startswith("#"))
    return {name: [float(share) for share in shares] for name, *shares in rows}


def main(export, exceptions_file, floors_file, uncovered_file, *chosen):
    layers = chosen or LAYERS
    exceptions = Exceptions(pathlib.Path(exceptions_file).read_text().splitlines())
    floors = table_of(floors_file)
    counts = {layer: Counts() for layer in layers}
    uncovered = []
    names = set()
    for layer, source in sources(export, pathlib.Path.cwd()):
        if layer in counts:
            names.add(source.name)
            of_source, missing = examine(source, exceptions)
            counts[layer] += of_source
            uncovered += [f"{source.name}:{line}: {what}{source.line_text(line)}" for line, what in missing]
    pathlib.Path(uncovered_file).write_text("".join(line + "\n" for line in uncovered))

    sound = True
    print(f"{'':<16} {'lines':>17} {'':>7}   {'branches':>17} {'':>7}")
    for layer in layers:
        of = counts[layer]
        shares = of.shares()
        low = any(share < floor for share, floor in zip(shares, floors[layer]))
        sound = sound and not low
        print(f"{layer:<16} {of.lines_run:>7} of {of.lines:>6} {shares[0]:>6.2f}%   {of.branches_run:>7} of {of.branches:>6} "
              f"{shares[1]:>6.2f}%{'   below ' + ' and '.join(f'{floor:g}' for floor in floors[layer]) if low else ''}")
    for name, text, _ in exceptions.unused(names if chosen else {row[0] for row in exceptions.rows}):
        sound = False
        print(f"{exceptions_file}: {name} | {text}: stands for nothing")
    print(f"{len(uncovered)} more to run, in {uncovered_file}")
    return 0 if sound else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
