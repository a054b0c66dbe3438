# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Takes the README's examples out as they are printed, builds them against the public headers and the library, and runs
those that need no display."""

import pathlib
import re
import subprocess
import sys
import tempfile

import sample_home

WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Werror"]
# What the README shows, called by a host.
MAIN = """
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

int list(std::string libraryFolder);
std::string subjectOf(std::vector<unsigned char> der, std::string libraryFolder);

int main(int, char** words)
{
    std::ifstream file(words[2], std::ios::binary);
    const std::vector<unsigned char> der{std::istreambuf_iterator<char>(file), {}};
    std::cout << "subject " << subjectOf(der, words[1]) << std::endl;
    return list(words[1]);
}
"""
HEADERS = ["sigildesk/dialogs.h", "sigildesk/certlist.h", "sigildesk/crypto.h"]


def examples(readme):
    return re.findall(r"^```cpp\n(.*?)^```$", readme.read_text(encoding="utf-8"), re.MULTILINE | re.DOTALL)


def build(source, folder, build_tree, sanitize):
    sources = [MAIN, *examples(source / "README.md")]
    for header, text in zip(HEADERS, sources[1:], strict=True):
        assert f"#include <{header}>" in text, f"the example of {header} is missing"
    files = [folder / f"example{number}.cpp" for number in range(len(sources))]
    for file, text in zip(files, sources):
        file.write_text(text, encoding="utf-8")
    program = folder / "host"
    subprocess.run(
        ["g++", "-std=c++11", *WARNINGS, *([f"-fsanitize={sanitize}"] if sanitize else []), f"-I{source}/include",
         *files, "-o", program, f"-L{build_tree}/lib", "-lSigilDesk", f"-Wl,-rpath,{build_tree}/lib"], check=True)
    return program


def main():
    build_tree, source, sanitize = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        program = build(source, folder, build_tree, sanitize)
        (row, _), environment = sample_home.make(folder, build_tree)
        answer = subprocess.run([program, build_tree / "lib" / "sigildesk", row["signing_certificate"]], check=True,
                                capture_output=True, env=environment).stdout.decode("cp949")
    print(answer)
    assert f"subject {row['subject']}\n" in answer
    assert re.search(r"^0 2\d{3}-.*\n1 2\d{3}-.*$", answer, re.MULTILINE)


main()
