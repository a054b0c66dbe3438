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
TOKEN = "계약 토큰"
MOST_LINES = 20
# Where every function of <sigil.h> must stand: it is declared in the first of the places, called in the last.
BOUND_IN = {
    "java": ["sigildesk/CLibrary.java", "sigildesk/[!C]*.java"],
    "node": ["sigildesk_node.c"],
    "python": ["sigildesk/*.py"],
    "rust": ["sigil-sys/src/*.rs", "sigil/src/*.rs"],
}


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


def made_token(folder, certificate):
    """A token of SoftHSM's with the certificate; nothing else has to be known of it than the settings' name."""
    settings = folder / "softhsm2.conf"
    (folder / "tokens").mkdir()
    settings.write_text(f"directories.tokendir = {folder}/tokens\nobjectstore.backend = file\nlog.level = ERROR\n",
                        encoding="utf-8")
    module = next(pathlib.Path("/usr/lib").glob("*/softhsm/libsofthsm2.so"))
    for command in (["softhsm2-util", "--init-token", "--free", "--label", TOKEN, "--pin", "1234", "--so-pin", "5678"],
                    ["pkcs11-tool", "--module", module, "--token-label", TOKEN, "--login", "--pin", "1234", "--write-object",
                     certificate, "--type", "cert", "--id", "01", "--label", "one"]):
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                       env={**os.environ, "SOFTHSM2_CONF": str(settings)})


def common_name(row):
    return re.match(r"cn=([^,]*)", row["subject"]).group(1)


def environment(build, store, row):
    """Without a display: nobody sits before a dialog."""
    told = {"FOLDER": build / "lib" / "sigildesk", "STORE": store, "PASSWORD": PASSWORD, "NAME": common_name(row),
            "IDENTITY": row["identity"], "TOKEN": TOKEN, "PLUGINS": build / "plugins"}
    display = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}
    without = {name: value for name, value in os.environ.items() if name not in display}
    return {**without, **{f"SIGIL_TEST_{key}": str(value) for key, value in told.items()},
            "CPPFLAGS": f"-I{HERE.parent}/include", "LDFLAGS": f"-L{build}/lib", "SIGIL_LIB_DIR": f"{build}/lib",
            "LD_LIBRARY_PATH": f"{build}/lib", "CARGO_HOME": str(store.parent / "cargo"),
            "SOFTHSM2_CONF": str(store.parent / "softhsm2.conf"), "LC_ALL": "C.UTF-8"}


def functions():
    """Those that <sigil.h> declares, with what it takes from <sigildesk/codes.h>."""
    headers = (HERE.parent / "include" / name for name in ("sigil.h", "sigildesk/codes.h"))
    return {name for header in headers
            for name in re.findall(r"SIGIL_EXPORT [^;(]*?\b(sigil_\w+)\(", header.read_text(encoding="utf-8"))}


def expect_all_functions(folder, language):
    for place in BOUND_IN[language]:
        text = "".join(file.read_text(encoding="utf-8") for file in folder.glob(place))
        forgotten = {name for name in functions() if not re.search(rf"\b{name}\b", text)}
        assert not forgotten, f"{language}/{place} has none of {sorted(forgotten)}"


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
        row = made_store(arguments.build, store)
        made_token(store.parent, row["signing_certificate"])

        def run(command, *more, **options):
            return subprocess.run(
                [*command, *more], check=True, cwd=copy, env=environment(arguments.build, store, row), **options)

        expect_all_functions(copy, arguments.language)
        expect_few_lines(copy / arguments.source)
        run(arguments.prepare)
        expect_five_steps(
            run(arguments.example, store, PASSWORD, stdout=subprocess.PIPE).stdout.decode("utf-8"), common_name(row))
        run(arguments.tests)


main()
