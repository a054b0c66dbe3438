# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Holds libsigil to its header: interface_test.py LIBRARY INCLUDE.

It exports what <sigil.h> declares and nothing else, each with its version, needs neither Qt nor C++ of its host, and every
page of the header has its example, its codes, and a name for every argument.
"""

import pathlib
import re
import subprocess
import sys
import unittest

LIBRARY, INCLUDE = sys.argv.pop(1), pathlib.Path(sys.argv.pop(1))
HEADER = (INCLUDE / "sigil.h").read_text(encoding="utf-8")
PAGE = re.compile(r"/\*\*((?:[^*]|\*(?!/))*)\*/\s*SIGIL_EXPORT ([^;(]+?)(sigil_\w+)\(([^;]*)\);")
ELSEWHERE = {"sigil_code_text"}  # declared in <sigildesk/codes.h>


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def parameters(text):
    names = [re.search(r"(\w+)$", one.strip()) for one in text.split(",")]
    return [name[1] for name in names if name and name[1] not in {"void", "session"}]


class Interface(unittest.TestCase):
    def test_exports_are_what_the_header_declares(self):
        lines = output("nm", "-D", "--defined-only", LIBRARY).splitlines()
        exported = {line.split()[2] for line in lines} - {"SIGIL_1.0"}
        declared = set(re.findall(r"SIGIL_EXPORT [^;(]*?\b(sigil_\w+)\(", HEADER)) | ELSEWHERE
        self.assertEqual(exported, {f"{name}@@SIGIL_1.0" for name in declared})

    def test_needs_no_qt(self):
        dynamic = output("objdump", "-p", LIBRARY)
        self.assertIn("SONAME               libsigil.so.1\n", dynamic)
        needed = re.findall(r"NEEDED\s+(\S+)", dynamic)
        self.assertTrue(needed)
        self.assertEqual([name for name in needed if re.search(r"Qt|crypto|ssl|SigilDesk|toolkit", name)], [])

    def test_every_function_has_its_page(self):
        declared = re.findall(r"SIGIL_EXPORT [^;(]*?\b(sigil_\w+)\(", HEADER)
        pages = PAGE.findall(HEADER)
        self.assertEqual([name for _, _, name, _ in pages], declared)
        for text, result, name, arguments in pages:
            self.assertIn("@code", text, name)
            self.assertIn(f"{name}(", text, name)
            if result.strip() != "void":
                self.assertIn("@return", text, name)
            for parameter in parameters(arguments):
                self.assertRegex(text, rf"(?s)@param [\w, ]*\b{parameter}\b", name)


unittest.main()
