#!/usr/bin/env python3
# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Prints a public header as Doxygen is to read it: what is said once for all functions, and what the sources tell of each, stands
in every function's comment. header_filter.py HEADER"""

import pathlib
import re
import sys

from open_toolkit import OpenToolkit

SOURCE = pathlib.Path(__file__).resolve().parent.parent
# Parameters whose rules stand at the top of their header.
SAID_ONCE = {
    "handle": "handle of the façade, from HV_Initalize",
    "hCLP": "handle of the list, from CLP_Initalize",
    "nIndex": "entry of the list, from 0",
    "session": "session, from sigil_open()",
}
FUNCTION = re.compile(r"(/\*\*(?:(?!\*/).)*?)\s*\*/\n(SIGIL_EXPORT [^(;]*?(\w+)\(([^;]*);)", re.DOTALL)


def told(header, open_toolkit):
    """What goes behind the comment of a function."""

    def add(match):
        comment, declaration, function, parameters = match.groups()
        names = re.findall(r"(\w+)(?=[,)])", parameters)
        new = [name for name in SAID_ONCE if name in names and f"@param {name}" not in comment]
        if new and ("@param" in comment or names == new):
            lines = "".join(f"\n *  @param {name}  {SAID_ONCE[name]}" for name in new)
            comment = re.sub(r"(?=\n \*  @(?:param|return))|$", lambda _: lines, comment, count=1)
        return f"{comment}\n *  @par Open toolkit\n *  {open_toolkit.said_of(header, function)} */\n{declaration}"

    return add


def main():
    path = pathlib.Path(sys.argv[1]).resolve()
    header = str(path.relative_to(SOURCE / "include"))
    sys.stdout.reconfigure(encoding="utf-8")
    print(FUNCTION.sub(told(header, OpenToolkit(SOURCE)), path.read_text(encoding="utf-8")), end="")


main()
