# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Builds examples/ against the installed tree, as their reader would, and runs every program on a store of test certificates:
examples_test.py BUILD SOURCE PREFIX SANITIZERS."""

import contextlib
import os
import pathlib
import re
import subprocess
import sys
import tempfile

import sample_home

TEXT = "동해물과 백두산이"


def build(source, prefix, folder, sanitize):
    flags = f"-fsanitize={sanitize}" if sanitize else ""
    subprocess.run(["cmake", "-S", source / "examples", "-B", folder, "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={prefix}",
                    f"-DCMAKE_C_FLAGS={flags} -Werror", f"-DCMAKE_CXX_FLAGS={flags} -Werror"],
                   check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", folder], check=True, stdout=subprocess.DEVNULL)


@contextlib.contextmanager
def desktop():
    """The name of an X display that nobody looks at."""
    number, ready = os.pipe()
    with subprocess.Popen(["Xvfb", "-displayfd", str(ready), "-screen", "0", "800x600x24", "-nolisten", "tcp"],
                          pass_fds=[ready], stderr=subprocess.DEVNULL) as server:
        os.close(ready)
        try:
            yield f":{os.read(number, 16).decode().strip()}"
        finally:
            server.terminate()
            os.close(number)


class Examples:
    """The programs, on a home folder of their own."""

    def __init__(self, build_tree, source, programs, folder):
        self.source, self.programs, self.folder = source, programs, folder
        self.rows, self.environment = sample_home.make(folder, build_tree)

    def answer(self, name, *arguments, **variables):
        text = subprocess.run([self.programs / name, *arguments], input=f"{sample_home.PASSWORD}\n", check=True, text=True,
                              capture_output=True, env={**self.environment, **variables}, timeout=60).stdout
        print(f"{name}: {text}", end="")
        return text

    def test_list(self):
        text = self.answer("example-list")
        assert all(row["subject"] in text for row in self.rows), text
        assert len(text.splitlines()) == len(self.rows)

    def test_sign_verify(self):
        row = self.rows[0]
        text = self.answer("example-sign-verify", row["signing_certificate"], row["signing_key"], TEXT)
        assert text == f"verified: {TEXT} (1 signer)\n"

    def test_five_steps(self):
        for name in "example-five-steps-c", "example-five-steps-cpp":
            text = self.answer(name)
            assert text == f'listed {len(self.rows)}, verified "{TEXT}", decrypted "{TEXT}"\n', text

    def test_dialog(self):
        with desktop() as display, self.person(display) as person:
            text = self.answer("example-dialog", TEXT, DISPLAY=display, QT_QPA_PLATFORM="xcb")
            assert person.wait() == 0
        assert any(text.startswith(f"{row['subject']} signed: ") for row in self.rows), text

    @contextlib.contextmanager
    def person(self, display):
        """Chooses the second certificate of the list and types its password."""
        clicks = [self.source / "scripts" / "drive-dialog", self.folder / "screenshot.png", "example-dialog"]
        with subprocess.Popen(clicks, stdin=subprocess.PIPE, env={**os.environ, "DISPLAY": display}) as person:
            person.stdin.write(f"{sample_home.PASSWORD}\n".encode())
            person.stdin.close()
            try:
                yield person
            finally:
                person.kill()


def steps_of(source):
    """The lines of the function with the five steps, from its first to its last brace."""
    text = source.read_text(encoding="utf-8")
    return re.search(r"^\w[\w ]*(?:five_steps|fiveSteps)\(.*?^}\n", text, re.MULTILINE | re.DOTALL)[0].splitlines()


def main():
    build_tree, source, prefix, sanitize = *map(pathlib.Path, sys.argv[1:4]), sys.argv[4]
    for file in (source / "examples").glob("five_steps.c*"):
        lines = len(steps_of(file))
        print(f"{file.name}: five steps in {lines} lines")
        assert lines <= 20
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        build(source, prefix, folder / "build", sanitize)
        examples = Examples(build_tree, source, folder / "build", folder)
        tests = [getattr(examples, name) for name in dir(examples) if name.startswith("test_")]
        for test in tests:
            test()
        programs = {file.name for file in (folder / "build").glob("example-*")}
    print(f"{len(tests)} tests of {sorted(programs)}")


main()
