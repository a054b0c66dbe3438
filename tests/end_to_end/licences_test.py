# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Holds LICENSES.md against the libraries that the installed programs and libraries ask for, at once or later, and against the
packages that an installed SigilDesk wants: licences_test.py SOURCE PREFIX."""

import pathlib
import re
import subprocess
import sys


def programs(prefix):
    for path in sorted(prefix.rglob("*")):
        if path.is_file() and not path.is_symlink():
            with path.open("rb") as file:
                if file.read(4) == b"\x7fELF":
                    yield path


def needed(file):
    dynamic = subprocess.run(["objdump", "-p", file], check=True, capture_output=True, text=True).stdout
    return set(re.findall(r"NEEDED\s+(\S+)", dynamic))


def named_inside(file):
    """Texts of a program that are nothing but the name of a library: it hands them to dlopen."""
    return {name.decode() for name in re.findall(rb"(?<=\0)(lib[\w.+-]+\.so[\d.]*)(?=\0)", file.read_bytes())}


def rows(text, heading):
    """What the first two columns of a section's table name."""
    section = text.split(f"\n## {heading}\n")[1].split("\n## ")[0]
    cells = [cell for line in section.splitlines() if line.startswith("|") for cell in line.split("|")[1:3]]
    return {name for cell in cells for name in re.findall(r"`([^`]+)`", cell)}


def wanted_packages(source):
    groups = (source / "scripts" / "packages.txt").read_text(encoding="utf-8").split("\n[")
    run = [group for group in groups if group.startswith(("run]", "run-qt6]"))]
    return {line for group in run for line in group.splitlines()[1:] if line and not line.startswith("#")}


def main():
    source, prefix = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    text = (source / "LICENSES.md").read_text(encoding="utf-8")
    at_once = rows(text, "Libraries that are linked")
    later = rows(text, "Libraries that are loaded when they are first needed")
    installed = list(programs(prefix))
    own = {path.name for path in prefix.rglob("*.so*")}
    linked = set().union(*map(needed, installed)) - own
    loaded = set().union(*map(named_inside, installed)) - linked - own
    missing = [
        *(f"linked, but not in LICENSES.md: {name}" for name in sorted(linked - at_once)),
        *(f"loaded later, but not in LICENSES.md: {name}" for name in sorted(loaded - later)),
        *(f"wanted, but not in LICENSES.md: {name}" for name in sorted(wanted_packages(source)) if f"`{name}`" not in text),
    ]
    print("\n".join([*missing, f"{len(installed)} files, {len(linked)} libraries linked, {len(loaded)} loaded later"]))
    return 1 if missing or not linked or not loaded else 0


sys.exit(main())
