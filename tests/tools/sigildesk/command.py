# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Runs the command in a home folder of its own, and makes what its tests need."""

import csv
import io
import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unicodedata
import unittest

BUILD = pathlib.Path(os.environ["SIGILDESK_BUILD"])
PROGRAM = BUILD / "bin" / "sigildesk"
PASSWORD = "sample1234!"

DONE, NO, WRONG_USE, FAILED = 0, 1, 2, 3


def nss_wrapper():
    known = subprocess.run(["/sbin/ldconfig", "-p"], check=True, capture_output=True, text=True).stdout
    lines = [line.split()[-1] for line in known.splitlines() if "libnss_wrapper.so" in line]
    return lines[-1] if lines else "libnss_wrapper.so"


def width(text):
    """Columns of a terminal."""
    return sum(2 if unicodedata.east_asian_width(letter) in "WF" else 1 for letter in text)


class CommandTest(unittest.TestCase):
    """A home folder that goes away with the class; `store()` fills it."""

    @classmethod
    def setUpClass(cls):
        cls.work = pathlib.Path(tempfile.mkdtemp())
        cls.addClassCleanup(shutil.rmtree, cls.work)
        cls.home = cls.work / "home"
        cls.home.mkdir()
        user, group = os.getuid(), os.getgid()
        (cls.work / "passwd").write_text(f"tester:x:{user}:{group}:tester:{cls.home}:/bin/sh\n")
        (cls.work / "group").write_text(f"tester:x:{group}:\n")
        cls.environment = {
            **os.environ,
            "LD_PRELOAD": nss_wrapper(),
            "NSS_WRAPPER_PASSWD": str(cls.work / "passwd"),
            "NSS_WRAPPER_GROUP": str(cls.work / "group"),
            "NSS_WRAPPER_DISABLE_DEEPBIND": "1",
            "LC_ALL": "C.UTF-8",
            "TERM": "xterm",
            "TZ": "Asia/Seoul",
        }
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "SIGILDESK_ASKPASS", "QT_QPA_PLATFORM", "NO_COLOR"):
            cls.environment.pop(name, None)

    @classmethod
    def store(cls, *arguments, target=None):
        """Makes a store of certificates; its report, a dictionary each."""
        made = subprocess.run(
            [BUILD / "bin" / "sample-store", "--target", target or cls.home, "--format", "tsv", *arguments],
            check=True, capture_output=True, text=True, env=cls.environment).stdout
        return list(csv.DictReader(io.StringIO(made), delimiter="\t", quoting=csv.QUOTE_NONE))

    def run_command(self, *arguments, environment=None, **options):
        """The finished process; it has no terminal."""
        return subprocess.run([PROGRAM, *map(str, arguments)], env={**self.environment, **(environment or {})},
                              stdin=options.pop("stdin", subprocess.DEVNULL), capture_output=True, text=True, check=False,
                              start_new_session=True, cwd=options.pop("cwd", self.work), **options)

    def answer(self, *arguments, status=DONE, **options):
        """What the command prints."""
        process = self.run_command(*arguments, **options)
        self.assertEqual(process.returncode, status, f"{arguments}: {process.stdout} {process.stderr}")
        return process.stdout

    def json(self, *arguments, status=DONE, **options):
        """The document that the command prints."""
        return json.loads(self.answer("--json", *arguments, status=status, **options))

    def error(self, *arguments, status, **options):
        """The error object."""
        return self.json(*arguments, status=status, **options)["error"]

    def openssl(self, *arguments, status=0, **options):
        process = subprocess.run(["openssl", *map(str, arguments)], capture_output=True, check=False, cwd=self.work, **options)
        self.assertEqual(process.returncode, status, process.stderr)
        return process.stdout


def main():
    unittest.main(verbosity=2)
