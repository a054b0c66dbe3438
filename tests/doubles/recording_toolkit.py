# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Writes a toolkit of every function that toolkit_abi/ declares for it: one that notes its calls, or a silent one.

    recording_toolkit.py PREFIX [silent]    to standard output, at the top of the tree; HVTK or GPKI
"""

import pathlib
import re
import sys

DECLARATION = re.compile(r"^int (\w+)\(([^;]*)\);", re.MULTILINE)


def names_of(parameters):
    return [parameter.split()[-1] for parameter in parameters.split(",")]


def silent_definition(function, parameters):
    types = re.sub(r"\w+(?=,|$)", "", parameters)
    return f"TOOLKIT int {function}({types}) {{ return 0; }}"


def recording_definition(function, parameters):
    takes_context = parameters.startswith("void* context")
    note = "note" if takes_context else "noteWithoutContext"
    arguments = ", ".join(["__func__"] + names_of(parameters))
    return f"TOOLKIT int {function}({parameters}) {{ return doubles::{note}({arguments}); }}"


def main():
    prefix = sys.argv[1]
    definition = silent_definition if "silent" in sys.argv[2:] else recording_definition
    print(f'#include "tests/doubles/note.h"\n#include "toolkit_abi/{prefix.lower()}.h"\n')
    for header in sorted(pathlib.Path("toolkit_abi").glob("*.h")):
        for function, parameters in DECLARATION.findall(header.read_text(encoding="utf-8")):
            if function.startswith(prefix + "_"):
                print(definition(function, " ".join(parameters.split())))


main()
