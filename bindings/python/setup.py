# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Puts what <sigil.h> declares into the package, so that both always say the same."""

import pathlib
import re

from setuptools import setup
from setuptools.command.build_py import build_py

INCLUDE = pathlib.Path(__file__).resolve().parents[2] / "include"
HEADERS = ["sigildesk/codes.h", "sigil.h"]


def declarations(header):
    """The header without what is said to people, to the preprocessor and to C++."""
    text = (INCLUDE / header).read_text(encoding="utf-8")
    text = re.sub(r"/\*.*?\*/|//[^\n]*", "", text, flags=re.DOTALL)
    text = re.sub(r'#ifdef __cplusplus.*?#endif', "", text, flags=re.DOTALL)
    text = re.sub(r"^\s*#.*?(?<!\\)$", "", text, flags=re.MULTILINE)
    return re.sub(r"\s+", " ", text.replace("SIGIL_EXPORT", "")).strip()


class BuildWithDeclarations(build_py):
    def run(self):
        super().run()
        text = "\n".join(map(declarations, HEADERS))
        target = pathlib.Path(self.build_lib) / "sigildesk" / "_declarations.py"
        target.write_text(f'"""What <sigil.h> declares."""\n\nTEXT = """{text}"""\n', encoding="utf-8")


setup(cmdclass={"build_py": BuildWithDeclarations})
