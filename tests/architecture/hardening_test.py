# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Holds what is shipped to the flags that stop at an overrun: every compile command of an optimized build has them, and
a program compiled with one of these commands ends at each of three faults."""

import json
import pathlib
import shlex
import subprocess
import sys
import tempfile

FLAGS = {
    "-D_FORTIFY_SOURCE=3",
    "-D_GLIBCXX_ASSERTIONS",
    "-fcf-protection",
    "-fstack-clash-protection",
    "-fstack-protector-strong",
}
PROBE = """
#include <cstdlib>
#include <cstring>
#include <vector>
extern "C" int entry(int fault, char* text) { return fault + (text != nullptr); }
int main(int count, char** words)
{
    const int fault = std::atoi(words[1]);
    char field[4];
    std::vector<int> numbers(3);
    if (fault == 1)
        std::strcpy(field, words[2]);
    if (fault == 2)
        return numbers[static_cast<unsigned>(count)];
    return entry(0, fault == 0 ? nullptr : field);
}
"""
ABORTED = -6


def commands(source, tree):
    subprocess.run(
        ["cmake", "-S", source, "-B", tree, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=RelWithDebInfo", "-DBUILD_TESTING=OFF",
         "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON"], check=True, stdout=subprocess.DEVNULL)
    return json.loads((tree / "compile_commands.json").read_text(encoding="utf-8"))


def faults_of_commands(entries):
    for entry in entries:
        for flag in sorted(FLAGS - set(shlex.split(entry["command"]))):
            yield f"{entry['file']} is compiled without {flag}"


def build_probe(tree, entry):
    source, program = tree / "probe.cpp", tree / "probe"
    source.write_text(PROBE, encoding="utf-8")
    words = shlex.split(entry["command"])
    del words[words.index("-o"):]
    subprocess.run([*words, "-o", program, source], cwd=entry["directory"], check=True)
    return program


def faults_of_probe(program):
    for fault, expected in ("0", 0), ("1", ABORTED), ("2", ABORTED):
        answer = subprocess.run([program, fault, "four letters and more"], check=False, stderr=subprocess.DEVNULL)
        if answer.returncode != expected:
            yield f"fault {fault} ends with {answer.returncode}"
    code = subprocess.run(["objdump", "-d", "--disassemble=entry", program], check=True, capture_output=True, text=True)
    if "endbr64" not in code.stdout:
        yield "a function may be entered anywhere"


def main():
    with tempfile.TemporaryDirectory() as folder:
        tree = pathlib.Path(folder)
        entries = commands(sys.argv[1], tree)
        layers = [entry for entry in entries if entry["file"].endswith("/foundation/binary.cpp")]
        faults = list(faults_of_commands(entries)) + list(faults_of_probe(build_probe(tree, layers[0])))
    print("\n".join(faults) or f"{len(entries)} commands are hardened")
    return 1 if faults else 0


sys.exit(main())
