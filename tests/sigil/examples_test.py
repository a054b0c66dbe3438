# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Compiles every example of <sigil.h> as strict C99 and runs each over a sample store, with a user before the dialog:
examples_test.py BUILD SOURCE SANITIZERS PLUGINS."""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

BUILD, SOURCE = pathlib.Path(sys.argv.pop(1)), pathlib.Path(sys.argv.pop(1))
SANITIZE, PLUGINS = sys.argv.pop(1), sys.argv.pop(1)
HEADER = (SOURCE / "include" / "sigil.h").read_text(encoding="utf-8")
EXAMPLE = re.compile(r"@code\n(.*?)@endcode[^/]*/\s*SIGIL_EXPORT [^;(]*?\b(sigil_\w+)\(", re.DOTALL)

PRELUDE = """
#include <sigil.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static SigilSession* session;
static const char *folder, *disk, *other_disk;
static SigilBytes authorities[20];
static int authority_count;

static void check(int code)
{
    if (code == SIGIL_SUCCESS)
        return;
    fprintf(stderr, "%d: %s\\n", code, sigil_error_text(session));
    exit(1);
}
"""

MAIN = """
static void trust(const char* path)
{
    SigilBytes* authority = &authorities[authority_count];
    FILE* file = fopen(path, "rb");
    authority->data = malloc(4096);
    authority->size = fread(authority->data, 1, 4096, file);
    fclose(file);
    ++authority_count;
}

int main(int count, char** words)
{
    SigilOpenOptions options = {.size = sizeof options};
    SigilListOptions all = {.size = sizeof all};
    if (count < 5 || count > 25)
        return 2;
    for (int i = 5; i < count; ++i)
        trust(words[i]);
    options.folder = folder = words[2];
    all.medium = disk = words[3];
    other_disk = words[4];
    check(sigil_open(&options, &session));
    check(sigil_list(session, &all, NULL));
%s
    sigil_close(session);
    while (authority_count > 0)
        free(authorities[--authority_count].data);
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
        cls.environment = cls.user(work)

    @classmethod
    def user(cls, work):
        """A home folder with the store, and somebody who chooses its first certificate."""
        told = {"passwd": f"user:x:{os.getuid()}:0:user:{cls.disk}:/bin/sh\n", "group": "user:x:0:\n", "password": "sample1234!"}
        for name, text in told.items():
            (work / name).write_text(text, encoding="utf-8")
        return {**os.environ, "LD_PRELOAD": "libnss_wrapper.so", "NSS_WRAPPER_PASSWD": f"{work}/passwd",
                "NSS_WRAPPER_GROUP": f"{work}/group", "NSS_WRAPPER_DISABLE_DEEPBIND": "1",
                "ASAN_OPTIONS": "verify_asan_link_order=0:detect_leaks=0", "QT_QPA_PLATFORM": "offscreen",
                "QT_PLUGIN_PATH": PLUGINS, "QT_QPA_GENERIC_PLUGINS": "dialog-user:0",
                "SIGIL_TEST_PASSWORD_FILE": f"{work}/password"}

    def run_example(self, name, folder):
        with tempfile.TemporaryDirectory() as other:
            return subprocess.run([self.program, name, folder, self.disk, other, *(self.disk / "ca").glob("*.der")],
                                  capture_output=True, text=True, check=False, env=self.environment)

    def test_every_example_runs(self):
        names = [name for name, _ in examples()]
        self.assertEqual(names, re.findall(r"SIGIL_EXPORT [^;(]*?\b(sigil_\w+)\(", HEADER))
        for name in names:
            with self.subTest(name):
                done = self.run_example(name, BUILD / "lib" / "sigildesk")
                self.assertEqual((done.returncode, done.stderr), (0, ""), done.stdout)

    def test_the_example_of_the_dialog_signs_with_what_the_user_chose(self):
        self.assertIn("signed by ", self.run_example("sigil_pick", BUILD / "lib" / "sigildesk").stdout)

    def test_a_code_ends_an_example(self):
        self.assertEqual(self.run_example("none", "/no/such/folder").returncode, 1)


unittest.main()
