# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Compares the symbols that the built library exports with the lists, so that the interface never changes by accident:
exports_test.py LIBRARY LIST..., one demangled symbol a line."""

import subprocess
import sys


def exported(library):
    lines = subprocess.run(
        ["nm", "-DC", "--defined-only", library], check=True, capture_output=True, text=True
    ).stdout.splitlines()
    return {line.split(" ", 2)[2] for line in lines}


def listed(files):
    return {line for file in files for line in open(file, encoding="utf-8").read().splitlines() if line}


def main():
    library, *files = sys.argv[1:]
    have, want = exported(library), listed(files)
    for symbol in sorted(have - want):
        print(f"exported but not listed: {symbol}")
    for symbol in sorted(want - have):
        print(f"listed but not exported: {symbol}")
    print(f"{len(have & want)} symbols agree")
    return 0 if have == want else 1


sys.exit(main())
