# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""The manuals as they are installed: every function has its page, the pages are well-formed and true, their examples work.

manuals_test.py BUILD SOURCE QT
"""

import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

BUILD, SOURCE, QT = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]
sys.path.insert(0, str(SOURCE / "manuals"))

import sample_home  # noqa: E402
from open_toolkit import OpenToolkit, TYPES  # noqa: E402

FILES = sorted((BUILD / "manuals" / "man").rglob("*.[0-9]"))
PAGES = {path.name: path.read_text(encoding="utf-8") for path in FILES}
PAGE_OF_THE_COMMAND = BUILD / "tools" / "sigildesk" / "sigildesk.1"
LIBRARY_FOLDER = BUILD / "lib" / "sigildesk"
WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Werror"]


def output(*command, **more):
    return subprocess.run(command, check=True, capture_output=True, text=True, **more).stdout


def plain(page):
    """What the roff of a page says, without its fonts."""
    text = re.sub(r"\\f[BIR]", "", page).replace("\\&", "")
    for shape, letter in {"\\-": "-", "\\(aq": "'", "\\(ga": "`", "\\(ha": "^", "\\(ti": "~", "\\e": "\\"}.items():
        text = text.replace(shape, letter)
    return text


def exported():
    """The library's interface, demangled."""
    lists = [*(SOURCE / "library" / "exports").glob("*.txt"), BUILD / "library" / "facade.txt"]
    return {line for file in lists for line in file.read_text(encoding="utf-8").splitlines() if line}


class Pages(unittest.TestCase):
    def test_are_read_without_a_warning(self):
        # A container may deny what man's own sandbox asks for.
        environment = {**os.environ, "LC_ALL": "C.UTF-8", "MANWIDTH": "80", "MANROFFOPT": "", "MAN_DISABLE_SECCOMP": "1"}

        def read(file):
            process = subprocess.run(["man", "--warnings=w", "--local-file", file], capture_output=True, text=True, check=False,
                                     env=environment)
            return file, process.returncode, process.stderr, process.stdout

        own = [file for file in FILES if not PAGES[file.name].startswith(".so ")]
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            for file, status, words, shown in pool.map(read, [*own, PAGE_OF_THE_COMMAND]):
                self.assertEqual((status, words), (0, ""), file)
                self.assertIn("\nNAME\n", shown, file)

    def test_of_the_same_text_lead_to_it(self):
        for name, text in PAGES.items():
            if text.startswith(".so "):
                folder, target = text.split()[1].split("/")
                self.assertEqual(folder, f"man{target[-1]}")
                self.assertFalse(PAGES[target].startswith(".so "), name)

    def test_name_what_they_are_about(self):
        for name, text in PAGES.items():
            if not text.startswith(".so "):
                self.assertRegex(plain(text), rf"\n\.SH NAME\n{re.escape(name[:-2])}(, \w+)* - \S.*\S\n", name)

    def test_are_there_for_every_function(self):
        for symbol in exported():
            name = symbol.split("(")[0]
            if re.fullmatch(r"\w+", name):
                self.assertIn(f"{name}.3", PAGES)

    def test_are_there_for_every_method(self):
        for symbol in exported():
            if found := re.match(r"(CBinary|CUtil|ConvertUTF8)::(~?\w+)\(", symbol):
                page = {"CBinary": "sigildesk_binary", "CUtil": "sigildesk_cutil", "ConvertUTF8": "sigildesk_convert_utf8"}[found[1]]
                self.assertIn(f"{found[1]}::{found[2]}(", plain(PAGES[f"{page}.3"]))

    def test_have_an_example_each(self):
        for name, text in PAGES.items():
            if not text.startswith(".so "):
                self.assertIn("\n.SH EXAMPLES\n", text, name)

    def test_are_there_for_every_settings_file(self):
        for file in re.findall(r"^    (\w+\.\w+)", (SOURCE / "share" / "CMakeLists.txt").read_text(encoding="utf-8"), re.MULTILINE):
            self.assertIn(f"{file}.5", PAGES)


class WhatTheOpenToolkitHas(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.told = OpenToolkit(SOURCE)

    def test_is_what_the_libraries_export(self):
        built = set()
        for library in "libHVCToolkitV30.so", "libgpkiapi_v15.so":
            built |= set(re.findall(r" T (\w+)$", output("nm", "-D", "--defined-only", LIBRARY_FOLDER / library), re.MULTILINE))
        self.assertEqual(self.told.exported, built)

    def test_is_asked_for_by_what_reaches_it(self):
        members = 0
        for file in (SOURCE / "tests" / "facade").glob("members_*.cpp"):
            rows = re.split(r"\{MEMBER\((\w+)\)", file.read_text(encoding="utf-8"))[1:]
            for name, row in zip(rows[::2], rows[1::2], strict=True):
                reached = {symbol for symbol in re.findall(r"\b((?:HVTK|GPKI)_\w+)\(", row) if "BINSTR" not in symbol}
                self.assertEqual(self.told.symbols(name), reached, name)
                members += 1
        self.assertGreater(members, 190)

    def test_stands_on_the_page_of_every_function(self):
        for function in self.told.members():
            page = plain(PAGES[PAGES[f"{function}.3"].split("/")[1].strip()])
            said = page.split(f"\n{'void' if function == 'HV_Finish' else 'int'} {function}(", 2)[2].split("\n.RE\n")[0]
            self.assertIn(f"\nOpen toolkit\n{self.told.said_of_member(function)}", said, function)
            for prefix, name in TYPES.items():
                lacking = not any(symbol.startswith(prefix) for symbol in self.told.symbols(function))
                self.assertEqual(lacking and bool(self.told.symbols(function)), f"{name}: no, 1003" in said, function)


class Examples(unittest.TestCase):
    """Of all pages, as they are printed."""

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        rows, environment = sample_home.make(cls.folder, BUILD, "--pairs", "both", "--keys", "2", "--key-bits", "2048")
        cls.row = rows[0]
        cls.environment = {**environment, "LC_ALL": "C.UTF-8", "QT_QPA_PLATFORM": "offscreen",
                           "PATH": f"{BUILD}/bin:{os.environ['PATH']}", "folder": str(LIBRARY_FOLDER)}
        cls.words = [LIBRARY_FOLDER, cls.row["signing_certificate"], cls.row["signing_key"], sample_home.PASSWORD, cls.row["identity"],
                     cls.issuer(), cls.row["km_certificate"], cls.row["km_key"], "50"]

    @classmethod
    def issuer(cls):
        """The file with the certificate of whoever issued the first one of the store."""
        authorities = (cls.folder / "home" / "ca" / "authorities.pem").read_text(encoding="utf-8")
        for number, pem in enumerate(re.findall(r"-----BEGIN.*?-----END[^\n]*\n", authorities, re.DOTALL)):
            file = cls.folder / f"authority{number}.pem"
            file.write_text(pem, encoding="utf-8")
            if subprocess.run(["openssl", "verify", "-partial_chain", "-trusted", file, cls.row["signing_certificate"]],
                              capture_output=True, check=False).returncode == 0:
                return file
        raise AssertionError("no authority issued the certificate")

    def run_program(self, name, source, place):
        language = "c" if re.search("#include <(sigil|sigildesk/flat).h>", source) else "cpp"
        file = place / f"example.{language}"
        file.write_text(source, encoding="utf-8")
        qt = output("pkg-config", "--cflags", "--libs", f"Qt{QT}Widgets").split() if "<QApplication>" in source else []
        standard = "-std=c99" if language == "c" else "-std=c++17" if qt and QT == "6" else "-std=c++11"
        built = subprocess.run(
            ["gcc" if language == "c" else "g++", standard, "-fPIC", *WARNINGS, f"-I{SOURCE}/include", file, "-o",
             place / "example", f"-L{BUILD}/lib", "-lsigil" if "<sigil.h>" in source else "-lSigilDesk", *qt, f"-Wl,-rpath,{BUILD}/lib"],
            capture_output=True, text=True, check=False)
        self.assertEqual((built.returncode, built.stderr), (0, ""), name)
        return subprocess.run([place / "example", *self.words], capture_output=True, env=self.environment, cwd=place, check=False,
                              timeout=60)

    def run_script(self, source, place):
        (place / "password").write_text(sample_home.PASSWORD, encoding="utf-8")
        (place / "password").chmod(0o600)
        return subprocess.run(["bash", "-euo", "pipefail", "-c", source], capture_output=True, env=self.environment, cwd=place,
                              check=False, timeout=60)

    def try_out(self, name):
        shown = plain(PAGES[name]).split("\n.SH EXAMPLES\n")[1].split("\n.SH ")[0]
        sources = re.findall(r"^\.EX\n(.*?)\n\.EE$", shown, re.MULTILINE | re.DOTALL)
        self.assertEqual(len(sources), 1, name)
        place = self.folder / name
        place.mkdir()
        program = "#include" in sources[0]
        ended = self.run_program(name, sources[0], place) if program else self.run_script(sources[0], place)
        self.assertEqual(ended.returncode, 0, (name, ended.stdout, ended.stderr))

    def test_work(self):
        names = [name for name, text in PAGES.items() if not text.startswith(".so ")]
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            for _ in pool.map(self.try_out, names):
                pass


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
