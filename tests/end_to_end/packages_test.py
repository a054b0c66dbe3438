# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Holds debian/ against the tree that `cmake --install` made: packages_test.py SOURCE PREFIX LIBRARY-FOLDER, the last one
below the prefix. What a package's build would find out too, in a second."""

import fnmatch
import pathlib
import re
import subprocess
import sys

import run_packages_test

# What is on every machine that builds packages, and what is no package.
ALWAYS_BUILT_WITH = {"g++", "libc-bin"}
BUILT_WITH_BESIDES = {"debhelper-compat"}


def lines(file):
    return [line.split() for line in file.read_text(encoding="utf-8").splitlines() if line.strip()]


def covers(pattern, path):
    """Whether dh_install takes the path with a pattern: for itself or in a folder."""
    parts = pathlib.PurePosixPath(path).parts
    wanted = pathlib.PurePosixPath(pattern).parts
    return len(parts) >= len(wanted) and all(map(fnmatch.fnmatchcase, parts, wanted))


def faults_of_lists(debian, installed):
    """Every file goes into one package, and every line takes a file."""
    patterns = [(file.stem, line[0]) for file in debian.glob("*.install") for line in lines(file)]
    for path in installed:
        packages = [package for package, pattern in patterns if covers(pattern, path)]
        if len(packages) != 1:
            yield f"{path} goes into {packages or 'no package'}"
    for package, pattern in patterns:
        if not any(covers(pattern, path) for path in installed):
            yield f"{package}.install: nothing is {pattern}"


def faults_of_settings(debian, library_folder):
    """What goes to /etc has its link where the library looks for it."""
    moved = {line[0] for file in debian.glob("*.install") for line in lines(file) if line[1:] == ["etc/sigildesk"]}
    links = {tuple(line) for file in debian.glob("*.links") for line in lines(file)}
    folder = "usr/lib/${DEB_HOST_MULTIARCH}/sigildesk/"
    wanted = {(f"etc/sigildesk/{pathlib.Path(path).name}", folder + pathlib.Path(path).name) for path in moved}
    for link in sorted(links ^ wanted):
        yield f"a setting and its link do not agree: {link}"
    for file in sorted(library_folder.glob("*.conf")) + [library_folder / "TWAPI_LOG.ini"]:
        if f"usr/lib/*/sigildesk/{file.name}" not in moved:
            yield f"{file.name} is no setting of /etc/sigildesk"


def symbols_of(debian):
    """By the name of each library: its symbols as the packages state them."""
    stated = {}
    for file in debian.glob("*.symbols"):
        for line in file.read_text(encoding="utf-8").splitlines():
            if line[0] not in " *":
                symbols = stated.setdefault(line.split()[0], set())
            elif found := re.fullmatch(r' (?:\(c\+\+\)"(.+)@Base"|([\w.]+@[\w.]+)) \S+', line):
                symbols.add(found[1] or found[2].removesuffix("@Base"))
    return stated


def faults_of_symbols(debian, libraries):
    stated = symbols_of(debian)
    for file in sorted(libraries.glob("lib*.so.?")):
        names = subprocess.run(["nm", "-DC", "--defined-only", file], check=True, capture_output=True, text=True).stdout
        # A version is a symbol too, an absolute one, which packages call VERSION@VERSION.
        exported = {f"{symbol}@{symbol}" if kind == "A" else symbol.replace("@@", "@")
                    for _, kind, symbol in (line.split(" ", 2) for line in names.splitlines())}
        for symbol in sorted(exported - stated.get(file.name, set())):
            line = symbol if "@" in symbol else symbol + "@Base" if symbol.isidentifier() else f'(c++)"{symbol}@Base"'
            yield f"debian/*.symbols, {file.name}: add the line, with the version that it comes with:  {line}"
        for symbol in sorted(stated.get(file.name, set()) - exported):
            yield f"debian/*.symbols, {file.name}: {symbol} is not exported"


def faults_of_dependencies(source, control, prefix, libraries):
    packages = source / "scripts" / "packages.txt"
    build = re.search(r"^Build-Depends:\n((?: .*\n)+)", control, re.MULTILINE)[1]
    built_with = set(re.findall(r"^ ([\w.+-]+)", build, re.MULTILINE)) - BUILT_WITH_BESIDES - run_packages_test.group(packages, "package")
    for package in sorted(built_with ^ (run_packages_test.group(packages, "build") - ALWAYS_BUILT_WITH)):
        yield f"built with, in only one of debian/control and scripts/packages.txt: {package}"

    files = [*libraries.glob("*.so.?"), *libraries.glob("sigildesk/*.so"), prefix / "bin" / "sigildesk"]
    places = run_packages_test.library_places()
    linked = {run_packages_test.package_of(name, places)
              for file in files for name in run_packages_test.needed(file) if name in places}
    # Linked ones are found by the packages' build, which makes the dialogs of Qt 5; the others are said by hand.
    for package in sorted(run_packages_test.group(packages, "run") - linked):
        if not package.startswith("libqt5") and not re.search(rf"^ {re.escape(package)}(?= [|]|,)", control, re.MULTILINE):
            yield f"needed by what is installed, and in no package's Recommends: {package}"


def main():
    source, prefix, libdir = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]
    debian = source / "debian"
    installed = [f"usr/{path.relative_to(prefix)}" for path in sorted(prefix.rglob("*")) if not path.is_dir()]
    control = (debian / "control").read_text(encoding="utf-8")
    faults = [*faults_of_lists(debian, installed), *faults_of_settings(debian, prefix / libdir / "sigildesk"),
              *faults_of_symbols(debian, prefix / libdir), *faults_of_dependencies(source, control, prefix, prefix / libdir)]
    print("\n".join(faults) or f"{len(installed)} files are in packages")
    return 1 if faults or not installed else 0


sys.exit(main())
