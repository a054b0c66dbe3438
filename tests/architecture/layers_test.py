# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Holds every #include of the tree against the picture of the layers.

A layer includes headers of its own folder, of the layers below it and of include/sigildesk/. The open toolkit stands
apart: the library reaches it through dlopen only, so neither includes anything of the other. What both see is
toolkit_abi/, the declarations of the toolkits' functions, of the layers only the façade may look at them, and secrets/,
the memory that secrets lie in, which the layers know by foundation/secret.h.
"""

import pathlib
import re
import sys

LAYERS_BELOW = {
    "secrets": set(),
    "foundation": {"secrets"},
    "toolkit_abi": set(),
    "facade": {"foundation", "toolkit_abi"},
    "certlist": {"foundation", "facade"},
    "doctor": {"foundation", "facade", "certlist"},
    "jobs": {"foundation", "facade", "certlist"},
    "sigil": {"foundation", "facade", "certlist", "doctor", "jobs"},
    "ui": {"foundation", "facade", "certlist"},
    "toolkit": {"toolkit_abi", "secrets"},
}
# The dialogs use the layers through their exported functions; of the layers' insides only these.
UI_MAY_INCLUDE = {"facade/toolkit_bytes.h", "certlist/listing_pause.h"}
TOOLKIT_PUBLIC = "sigildesk/open_toolkit.h"
# The words for codes are said by number: whoever answered one. What stands above the library is a host of it.
MAY_NAME_TOOLKIT_CODES = "foundation/code_table.cpp"
HOSTS = {"jobs", "sigil"}
# What both sides of the dlopen boundary share.
BOUNDARY_MAY_INCLUDE = {"sigildesk/binstr.h"}
TOOLKIT_MAY_INCLUDE = {TOOLKIT_PUBLIC, "sigildesk/binstr.h", "sigildesk/export.h"}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)


def includes(file):
    for _, name in INCLUDE.findall(file.read_text(encoding="utf-8")):
        yield name


def faults_of_layer(root, layer):
    allowed = LAYERS_BELOW[layer] | {layer}
    for file in sorted((root / layer).rglob("*")):
        if file.suffix not in {".h", ".cpp"}:
            continue
        for name in includes(file):
            top = name.split("/")[0]
            if top in LAYERS_BELOW and top not in allowed:
                yield f"{file.relative_to(root)} includes {name}: {layer} may not use {top}"
            if name == TOOLKIT_PUBLIC and layer not in HOSTS | {"toolkit"} and str(file.relative_to(root)) != MAY_NAME_TOOLKIT_CODES:
                yield f"{file.relative_to(root)} includes {name}: the library does not know which toolkit it loads"
            if layer == "ui" and top in {"facade", "certlist"} and name not in UI_MAY_INCLUDE:
                yield f"{file.relative_to(root)} includes {name}: the dialogs use exported functions only"
            if layer == "toolkit_abi" and top == "sigildesk" and name not in BOUNDARY_MAY_INCLUDE:
                yield f"{file.relative_to(root)} includes {name}: the boundary declares functions over byte strings, no more"
            if layer == "toolkit" and top == "sigildesk" and name not in TOOLKIT_MAY_INCLUDE:
                yield f"{file.relative_to(root)} includes {name}: the toolkit shares no more than the byte string with the library"


def faults_of_public_headers(root):
    for file in sorted((root / "include").rglob("*.h")):
        for name in includes(file):
            if "/" in name and not name.startswith("sigildesk/"):
                yield f"{file.relative_to(root)} includes {name}: public headers use public headers only"


def main():
    root = pathlib.Path(sys.argv[1])
    faults = [fault for layer in LAYERS_BELOW for fault in faults_of_layer(root, layer)]
    faults += faults_of_public_headers(root)
    print("\n".join(faults) or "every include goes downward")
    return 1 if faults else 0


sys.exit(main())
