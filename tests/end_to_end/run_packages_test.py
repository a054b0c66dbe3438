# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Holds the groups for a run (`run;run-qt6`) of scripts/packages.txt against what the built files ask of the loader, at once or later."""

import pathlib
import re
import subprocess
import sys

# On every Debian machine, because its package manager needs them.
ALWAYS_THERE = {"libc6", "libgcc-s1", "libstdc++6"}


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def needed(file):
    return set(re.findall(r"NEEDED\s+(\S+)", output("objdump", "-p", file)))


def loaded_late(file):
    """Libraries that the file does not need for its start but names, to load them when it first needs them."""
    names = re.findall(rb"\0(lib[\w.+-]+\.so\.[\d.]+)(?=\0)", pathlib.Path(file).read_bytes())
    return {name.decode() for name in names} - needed(file)


def library_places():
    """The file of each library; the loader takes the first that it finds, others of the name are for other machines."""
    return dict(reversed(re.findall(r"^\s+(\S+) .*=> (\S+)", output("ldconfig", "-p"), re.MULTILINE)))


def package_of(library, places):
    # The package data base may know the file by its name below the link /lib.
    file = pathlib.Path(places[library]).resolve()
    names = [str(file), str(file).removeprefix("/usr")]
    found = subprocess.run(["dpkg-query", "--search", *names], check=False, capture_output=True, text=True).stdout
    return found.split(":")[0]


def group(packages, name):
    lines = packages.read_text(encoding="utf-8").split(f"[{name}]\n")[1].split("\n[")[0].splitlines()
    return {word for line in lines if (word := line.split("#")[0].strip())}


def main():
    packages, groups, *files = sys.argv[1:]
    own = {pathlib.Path(file).name for file in files}
    places = library_places()
    late = set().union(*map(loaded_late, files)) - own
    libraries = set().union(*map(needed, files)).intersection(places) - own | late
    asked = {package_of(library, places) for library in libraries} - ALWAYS_THERE
    listed = set().union(*(group(pathlib.Path(packages), name) for name in groups.split(";")))
    for package in sorted(asked - listed):
        print(f"needed but not listed: {package}")
    print(f"{len(libraries)} libraries of {len(asked)} packages; loaded when they are first needed: {sorted(late)}")
    slow_to_load = {name for file in files for name in needed(file) if re.match("lib(curl|ldap)", name)}
    for library in sorted(slow_to_load):
        print(f"loaded at every start: {library}")
    return 1 if asked - listed or slow_to_load or not late else 0


if __name__ == "__main__":
    sys.exit(main())
