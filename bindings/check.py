# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Runs a binding over a store whose names and password are Korean.

The binding is built in a copy of its folder, which goes away at the end. Its example must have few lines and print what the
five steps give; its tests find the store through their environment. A command is one text, split at blanks."""

import argparse
import os
import pathlib
import re
import shutil
import subprocess
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
PASSWORD = "비밀번호 1!"
MOST_LINES = 20


def words():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=pathlib.Path, help="build tree")
    parser.add_argument("language", help="folder of the binding")
    parser.add_argument("source", help="file of the example")
    for name in "prepare", "example", "tests":
        parser.add_argument(f"--{name}", type=str.split, required=True)
    return parser.parse_args()


def made_store(build, folder):
    """One certificate on a disk that is a folder; its row."""
    made = subprocess.run(
        [build / "bin" / "sample-store", "--target", folder, "--password", PASSWORD, "--count", "1", "--pairs", "signing",
         "--key-bits", "2048", "--state", "valid", "--format", "tsv"],
        check=True, capture_output=True, text=True, encoding="utf-8").stdout.splitlines()
    return dict(zip(made[0].split("\t"), made[1].split("\t")))


def common_name(row):
    return re.match(r"cn=([^,]*)", row["subject"]).group(1)


def environment(build, store, name):
    told = {"FOLDER": build / "lib" / "sigildesk", "STORE": store, "PASSWORD": PASSWORD, "NAME": name}
    return {**os.environ, **{f"SIGIL_TEST_{key}": str(value) for key, value in told.items()},
            "CPPFLAGS": f"-I{HERE.parent}/include", "LDFLAGS": f"-L{build}/lib", "SIGIL_LIB_DIR": f"{build}/lib",
            "LD_LIBRARY_PATH": f"{build}/lib", "CARGO_HOME": str(store.parent / "cargo"), "LC_ALL": "C.UTF-8"}


def expect_few_lines(example):
    """Those of the steps: without comments and what only closes a block."""
    lines = [line for line in example.read_text(encoding="utf-8").splitlines()
             if re.search(r"\w", line) and not re.match(r"""\s*(//|/\*|\*|#|\"\"\"|'use strict')""", line)]
    print(f"{example.name}: {len(lines)} lines", flush=True)
    assert len(lines) <= MOST_LINES, len(lines)


def expect_five_steps(told, name):
    days, signed, decrypted = told.splitlines()
    assert re.fullmatch(rf"{re.escape(name)}: \d+ days left", days), days
    assert signed == f"계약서: signed by {name}", signed
    assert decrypted == "비밀: decrypted", decrypted


def main():
    arguments = words()
    with tempfile.TemporaryDirectory() as folder:
        copy, store = pathlib.Path(folder) / "bindings" / arguments.language, pathlib.Path(folder) / "store"
        shutil.copytree(HERE / arguments.language, copy)
        (pathlib.Path(folder) / "include").symlink_to(HERE.parent / "include")
        name = common_name(made_store(arguments.build, store))

        def run(command, *more, **options):
            return subprocess.run(
                [*command, *more], check=True, cwd=copy, env=environment(arguments.build, store, name), **options)

        expect_few_lines(copy / arguments.source)
        run(arguments.prepare)
        expect_five_steps(run(arguments.example, store, PASSWORD, stdout=subprocess.PIPE).stdout.decode("utf-8"), name)
        run(arguments.tests)


main()
