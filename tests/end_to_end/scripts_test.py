# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""The scripts as someone meets them who does not know them: each answers --help, refuses what it does not know, and
says which value is missing. The installation of packages runs against commands that only note what they are asked."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
FOLDER = SOURCE / "scripts"
SCRIPTS = sorted(file.name for file in FOLDER.iterdir() if os.access(file, os.X_OK))
# What must stand behind which words; every one of them is left out in turn.
MISSING = {
    "demo": [["--build"], ["--language"], ["--build", "--headless"]],
    "drive-dialog": [[]],
    "fuzz": [["--minutes"]],
    "nightly": [["--fuzz"]],
    "tidy": [["--commits"]],
}
REFUSED = {
    "analyze": ["no-such-step"],
    "abi": ["no-such-build", "--write=no-such-build"],
    "check": ["one"],
    "coverage": ["no-such-layer", "--report=no-such-layer"],
    "demo": ["one", "--language=fr", "--build=/no/such/folder"],
    "format": ["one", "--chekc"],
    "fuzz": ["no-such-target", "--minutes=few"],
    "install-dependencies": ["runn", "apt-get"],
    "instructions": ["one"],
    "package-check": ["one", "--bild"],
    "nightly": ["one", "--fuzz=long"],
    "tidy": ["no-such-folder", "--commits=many"],
    "torture": ["many", "0", "1=no-seed"],
}


def run(script, *arguments, **more):
    return subprocess.run([FOLDER / script, *arguments], capture_output=True, text=True, timeout=30, **more)


class EveryScript(unittest.TestCase):
    def test_answers_help_with_its_own_use(self):
        for script in SCRIPTS:
            for option in "--help", "-h":
                with self.subTest(script=script, option=option):
                    answer = run(script, option)
                    self.assertEqual((answer.returncode, answer.stderr), (0, ""))
                    self.assertIn(f"scripts/{script}", answer.stdout)

    def test_refuses_an_unknown_option(self):
        for script in SCRIPTS:
            with self.subTest(script=script):
                answer = run(script, "--no-such-option")
                self.assertEqual((answer.returncode, answer.stdout), (2, ""))
                self.assertIn("--no-such-option", answer.stderr)

    def test_says_what_is_missing(self):
        for script, cases in MISSING.items():
            for arguments in cases:
                with self.subTest(script=script, arguments=arguments):
                    answer = run(script, *arguments)
                    self.assertEqual((answer.returncode, answer.stdout), (2, ""))
                    self.assertIn(f"scripts/{script}: ", answer.stderr)
                    self.assertIn(arguments[0] + " needs a value" if arguments else "?", answer.stderr)

    def test_refuses_what_it_does_not_know(self):
        for script, cases in REFUSED.items():
            for case in cases:
                with self.subTest(script=script, case=case):
                    answer = run(script, *case.split("="))
                    self.assertEqual((answer.returncode, answer.stdout), (2, ""))
                    self.assertIn(case.split("=")[-1], answer.stderr)


class Documents(unittest.TestCase):
    def test_name_every_step_of_the_check(self):
        steps = set(re.findall(r"scripts/[a-z-]+|\b(?:dev|asan|tsan)\b", (FOLDER / "check").read_text(encoding="utf-8")))
        document = (SOURCE / "CONTRIBUTING.md").read_text(encoding="utf-8")
        self.assertEqual({step for step in steps if step not in document}, set())
        self.assertGreater(len(steps), 5)


class Instructions(unittest.TestCase):
    """The comparison of what was counted with what is checked in."""

    BEFORE = "facade HVTK_ CertLoad 1000\nlist 2000\n"

    def compared(self, load, listing):
        dumps = "".join(
            f"desc: Trigger: Client Request: {name}\nevents: Ir\nsummary: {count}\n"
            for name, count in {
                "100 facade HVTK_ CertLoad": 100 * load + 500,
                "100 bare HVTK_ CertLoad": 500,
                **({"1 list": listing} if listing else {}),
            }.items())
        with tempfile.TemporaryDirectory() as folder:
            files = [pathlib.Path(folder) / name for name in ("dumps", "counts")]
            for file, text in zip(files, (dumps, self.BEFORE)):
                file.write_text(text, encoding="utf-8")
            return subprocess.run([sys.executable, SOURCE / "bench/instructions/compare.py", *files],
                                  capture_output=True, text=True, check=False)

    def test_a_twentieth_more_passes(self):
        for load, listing in (1000, 2000), (1050, 2100), (500, 1):
            answer = self.compared(load, listing)
            self.assertEqual((answer.returncode, answer.stderr), (0, ""), answer.stdout)

    def test_more_than_that_is_named(self):
        answer = self.compared(1051, 2000)
        self.assertEqual(answer.returncode, 1)
        self.assertIn("facade HVTK_ CertLoad: 1000 -> 1051 instructions", answer.stdout)
        self.assertIn("list: 2000 -> 2101", self.compared(1000, 2101).stdout)

    def test_what_is_not_counted_any_more_is_named(self):
        answer = self.compared(1000, None)
        self.assertEqual(answer.returncode, 1)
        self.assertIn("list: not counted any more", answer.stdout)


class InstallDependencies(unittest.TestCase):
    """Over a folder of commands that note their words in a file. Of the packages, only `git` is there."""

    COMMANDS = {
        "dpkg-query": '[ "${@: -1}" = git ] && echo "install ok installed"',
        "apt-get": "note apt-get",
        "update-rc.d": "note update-rc.d",
        "invoke-rc.d": "note invoke-rc.d",
        "id": "echo 0",
    }

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.notes = pathlib.Path(folder.name) / "notes"
        self.notes.touch()
        for name, body in self.COMMANDS.items():
            command = pathlib.Path(folder.name) / name
            command.write_text(f'#!/bin/bash\nnote() {{ echo "$@" "${{words[@]}}" >>{self.notes}; }}\nwords=("$@")\n{body}\n')
            command.chmod(0o755)
        self.path = f"{folder.name}:{os.environ['PATH']}"

    def installed(self, *groups):
        answer = run("install-dependencies", *groups, env={**os.environ, "PATH": self.path})
        self.assertEqual(answer.returncode, 0, answer.stderr)
        installs = [line for line in self.notes.read_text().splitlines() if line.startswith("apt-get install")]
        self.assertEqual(len(installs), 1)
        return {word for word in installs[0].split()[2:] if not word.startswith("-")}

    def test_installs_the_groups_named_and_no_more(self):
        wanted = {"run": "libqt5widgets5", "build": "cmake", "test": "slapd"}
        for group, package in wanted.items():
            with self.subTest(group=group):
                self.notes.write_text("")
                packages = self.installed(group)
                self.assertIn(package, packages)
                self.assertEqual(packages & set(wanted.values()), {package})

    def test_installs_everything_by_default(self):
        self.assertEqual(self.installed(), self.union_of_groups())

    def union_of_groups(self):
        union = set()
        for group in "run", "build", "test":
            self.notes.write_text("")
            union |= self.installed(group)
        self.notes.write_text("")
        return union

    def test_leaves_alone_what_is_installed(self):
        self.assertNotIn("git", self.installed("test"))

    def test_leaves_alone_what_another_package_has_brought(self):
        with tempfile.TemporaryDirectory() as folder:
            for name in "install-dependencies", "common.sh":
                shutil.copy(FOLDER / name, folder)
            list_of_packages = pathlib.Path(folder) / "packages.txt"
            list_of_packages.write_text("[test]\nabsent-dev /no/such/file # a comment\npresent-dev /bin/sh\n", encoding="utf-8")
            answer = subprocess.run([pathlib.Path(folder) / "install-dependencies", "test"], check=True, capture_output=True,
                                    text=True, env={**os.environ, "PATH": self.path})
        self.assertEqual(answer.stdout, "Installing: absent-dev\n")

    def test_leaves_no_directory_server_enabled(self):
        self.installed("test")
        notes = self.notes.read_text().splitlines()
        self.assertIn("update-rc.d slapd disable", notes)
        self.assertIn("invoke-rc.d slapd stop", notes)

    def test_does_not_touch_services_otherwise(self):
        self.installed("build")
        self.assertNotIn("rc.d", self.notes.read_text())


if __name__ == "__main__":
    unittest.main()
