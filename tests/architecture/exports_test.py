"""Compares the symbols that the built library exports with the checked-in list, so that the interface never changes
by accident. The list is the sorted union of exports/*.txt, one demangled symbol a line."""

import pathlib
import subprocess
import sys


def exported(library):
    lines = subprocess.run(
        ["nm", "-DC", "--defined-only", library], check=True, capture_output=True, text=True
    ).stdout.splitlines()
    return {line.split(" ", 2)[2] for line in lines}


def listed(folder):
    files = sorted(pathlib.Path(folder).glob("*.txt"))
    return {line for file in files for line in file.read_text(encoding="utf-8").splitlines() if line}


def main():
    library, folder = sys.argv[1:]
    have, want = exported(library), listed(folder)
    for symbol in sorted(have - want):
        print(f"exported but not listed: {symbol}")
    for symbol in sorted(want - have):
        print(f"listed but not exported: {symbol}")
    print(f"{len(have & want)} symbols agree")
    return 0 if have == want else 1


sys.exit(main())
