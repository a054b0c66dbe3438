# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Holds <sigildesk/flat.h> to the headers that it is made from and to the libraries: header_test.py SOURCE LIBRARY FLAT."""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

SOURCE, LIBRARY, FLAT = (pathlib.Path(word) for word in sys.argv[1:4])
HEADER = SOURCE / "include" / "sigildesk" / "flat.h"


def output(*command, **more):
    return subprocess.run(command, check=True, capture_output=True, text=True, **more).stdout


def exported(library):
    return {line.split()[2] for line in output("nm", "-D", "--defined-only", library).splitlines()}


def labels():
    """The symbol of each declaration."""
    declared = re.findall(r"SIGIL_EXPORT \w+ (\w+)\([^)]*\)\s+__asm__\(\"(\w+)\"\)", HEADER.read_text(encoding="utf-8"))
    return dict(declared)


def prototypes():
    """Every declaration as the compiler for C has understood it, in the words of a demangler."""
    with tempfile.TemporaryDirectory() as folder:
        unit, notes = pathlib.Path(folder) / "unit.c", pathlib.Path(folder) / "notes"
        unit.write_text("#include <sigildesk/flat.h>\n", encoding="utf-8")
        output("gcc", "-std=c99", f"-I{SOURCE}/include", "-fsyntax-only", "-aux-info", notes, unit)
        lines = [line for line in notes.read_text(encoding="utf-8").splitlines() if "sigildesk/flat.h:" in line]
    for line in lines:
        result, name, parameters = re.search(r"extern (.*?)(\w+) \((.*)\);", line).groups()
        yield name, result.strip(), ", ".join(map(plain, parameters.split(", ")))


def plain(parameter):
    """`const char *` as a demangler writes it."""
    words = parameter.replace("struct ", "").replace("_Bool", "bool")
    constant = words.startswith("const ")
    words = words.removeprefix("const ")
    kind, stars = words.rstrip(" *"), "*" * words.count("*")
    kind = {"long int": "long", "long unsigned int": "unsigned long"}.get(kind, kind)
    return kind + (" const" if constant else "") + stars


class Header(unittest.TestCase):
    def test_is_what_the_script_writes(self):
        with tempfile.TemporaryDirectory() as folder:
            copy = pathlib.Path(folder)
            for part in "include", "scripts":
                (copy / part).mkdir()
            output("cp", "-r", SOURCE / "include" / "sigildesk", copy / "include")
            output("cp", SOURCE / "scripts" / "generate-flat", copy / "scripts")
            written = copy / "include" / "sigildesk" / "flat.h"
            written.unlink()
            output(copy / "scripts" / "generate-flat")
            self.assertEqual(written.read_text(encoding="utf-8"), HEADER.read_text(encoding="utf-8"))

    def test_names_every_function_that_the_library_exports(self):
        functions = {name for symbol in exported(LIBRARY) if (name := self.free_function(symbol))}
        self.assertEqual(set(labels()) ^ functions, set())
        self.assertGreater(len(functions), 250)

    def test_each_symbol_is_one_of_the_library(self):
        self.assertEqual(set(labels().values()) - exported(LIBRARY), set())

    def test_each_function_takes_what_the_library_s_takes(self):
        names = labels()
        demangled = dict(zip(names, output("c++filt", *names.values()).splitlines()))
        read = {name: f"{name}({parameters})" for name, _, parameters in prototypes()}
        self.assertEqual(set(read.items()) ^ set(demangled.items()), set())

    def test_each_function_gives_what_the_documented_one_gives(self):
        documents = "".join(file.read_text(encoding="utf-8") for file in HEADER.parent.rglob("*.h") if file != HEADER)
        documented = {name: result for result, name in re.findall(r"^SIGIL_EXPORT (\w+) (\w+)\(", documents, re.MULTILINE)}
        for name, result, _ in prototypes():
            self.assertEqual(result, documented[name], name)

    @staticmethod
    def free_function(symbol):
        """The name of a function with C++ linkage that belongs to no class and is no operator."""
        match = re.match(r"_Z(\d+)", symbol)
        return symbol[match.end():match.end() + int(match.group(1))] if match else None


class Names(unittest.TestCase):
    def test_are_all_that_the_flat_library_exports(self):
        self.assertEqual(exported(FLAT) ^ set(labels()), set())

    def test_lead_to_the_library_behind_it(self):
        dynamic = output("objdump", "-p", FLAT)
        self.assertRegex(dynamic, r"SONAME\s+libSigilDeskFlat\.so\.1\n")
        self.assertRegex(dynamic, r"NEEDED\s+libSigilDesk\.so\.1\n")
        taken = {line.split()[1] for line in output("nm", "-D", "--undefined-only", FLAT).splitlines()}
        self.assertEqual(set(labels().values()) - taken, set())

    def test_of_what_is_c_already_are_the_library_s_own(self):
        already = {"ShowUserCert", "ShowUserCertInit", "ShowUserCert_T", "sigil_code_text"}
        self.assertEqual(already - exported(LIBRARY), set())
        self.assertEqual(already & set(labels()), set())


if __name__ == "__main__":
    os.environ.setdefault("LC_ALL", "C.UTF-8")
    unittest.main(argv=sys.argv[:1])
