# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Compiles every example of <sigil.h> as strict C99 and runs each over a sample store: examples_test.py BUILD SOURCE SANITIZERS."""

import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

BUILD, SOURCE, SANITIZE = pathlib.Path(sys.argv.pop(1)), pathlib.Path(sys.argv.pop(1)), sys.argv.pop(1)
HEADER = (SOURCE / "include" / "sigil.h").read_text(encoding="utf-8")
EXAMPLE = re.compile(r"@code\n(.*?)@endcode[^/]*/\s*SIGIL_EXPORT [^;(]*?\b(sigil_\w+)\(", re.DOTALL)

PRELUDE = """
#include <sigil.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static SigilSession* session;
static const char *folder, *disk;

static void check(int code)
{
    if (code == SIGIL_SUCCESS)
        return;
    fprintf(stderr, "%d: %s\\n", code, sigil_error_text(session));
    exit(1);
}
"""

MAIN = """
int main(int count, char** words)
{
    SigilOpenOptions options = {.size = sizeof options};
    SigilListOptions all = {.size = sizeof all};
    if (count != 4)
        return 2;
    options.folder = folder = words[2];
    all.medium = disk = words[3];
    check(sigil_open(&options, &session));
    check(sigil_list(session, &all, NULL));
%s
    sigil_close(session);
    return 0;
}
"""


def examples():
    for code, name in EXAMPLE.findall(HEADER):
        yield name, "".join(re.sub(r"^ \*  ?", "    ", line) + "\n" for line in code.splitlines())


def program():
    functions, calls = "", ""
    for name, code in examples():
        functions += f"\nstatic void example_of_{name}(void)\n{{\n{code}}}\n"
        calls += f'    if (strcmp(words[1], "{name}") == 0)\n        example_of_{name}();\n'
    return PRELUDE + functions + MAIN % calls


class Examples(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.scratch.cleanup)
        work = pathlib.Path(cls.scratch.name)
        cls.disk = work / "disk"
        subprocess.run([BUILD / "bin" / "sample-store", "--target", cls.disk, "--count", "1", "--families", "gpki",
                        "--state", "valid", "--keys", "2"], check=True, stdout=subprocess.DEVNULL)
        (work / "examples.c").write_text(program(), encoding="utf-8")
        flags = [f"-fsanitize={SANITIZE}"] if SANITIZE else []
        subprocess.run(["cc", "-std=c99", "-Wall", "-Wextra", "-Werror", "-pedantic", *flags, f"-I{SOURCE / 'include'}",
                        work / "examples.c", "-o", work / "examples", f"-L{BUILD / 'lib'}", "-lsigil",
                        f"-Wl,-rpath,{BUILD / 'lib'}"], check=True)
        cls.program = work / "examples"

    def test_every_example_runs(self):
        names = [name for name, _ in examples()]
        self.assertEqual(names, re.findall(r"SIGIL_EXPORT [^;(]*?\b(sigil_\w+)\(", HEADER))
        for name in names:
            with self.subTest(name):
                done = subprocess.run([self.program, name, BUILD / "lib" / "sigildesk", self.disk], capture_output=True,
                                      text=True, check=False)
                self.assertEqual((done.returncode, done.stderr), (0, ""), done.stdout)

    def test_a_code_ends_an_example(self):
        done = subprocess.run([self.program, "none", "/no/such/folder", self.disk], capture_output=True, text=True,
                              check=False)
        self.assertEqual(done.returncode, 1)


unittest.main()
