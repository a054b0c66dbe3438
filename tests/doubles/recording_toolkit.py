"""Writes a recording toolkit: every function that a header of toolkit_abi/ declares, noting its call.

    recording_toolkit.py HEADER    to standard output, relative to the top of the tree
"""

import pathlib
import re
import sys

DECLARATION = re.compile(r"^int (\w+)\(([^;]*)\);", re.MULTILINE)


def names_of(parameters):
    return [parameter.split()[-1] for parameter in parameters.split(",")]


def definition(function, parameters):
    parameters = " ".join(parameters.split())
    takes_context = parameters.startswith("void* context")
    note = "note" if takes_context else "noteWithoutContext"
    arguments = ", ".join(["__func__"] + names_of(parameters))
    return f"TOOLKIT int {function}({parameters}) {{ return doubles::{note}({arguments}); }}"


def main():
    header = sys.argv[1]
    print(f'#include "tests/doubles/note.h"\n#include "{header}"\n')
    for function, parameters in DECLARATION.findall(pathlib.Path(header).read_text(encoding="utf-8")):
        print(definition(function, parameters))


main()
