# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""The Korean documents keep up with the English ones: the same headings in number and depth, the same code, the same
measurements."""

import pathlib
import re
import sys

PAIRS = [("README.md", "README.ko.md"), ("docs/overview.md", "docs/overview.ko.md")]
CODE = re.compile(r"^```.*?^```$", re.MULTILINE | re.DOTALL)
MEASURED = re.compile(r"^\|.* \d[\d.,]* [µnm]s\b")


def shape(text):
    prose = CODE.sub("", text)
    return {
        "headings": re.findall(r"^#+(?= )", prose, re.MULTILINE),
        "code": CODE.findall(text),
        "measurements": [sorted(re.findall(r"\d+(?:\.\d+)?", line)) for line in prose.splitlines() if MEASURED.search(line)],
    }


def main():
    root = pathlib.Path(sys.argv[1])
    faults = []
    for english, korean in PAIRS:
        wanted, had = (shape((root / name).read_text(encoding="utf-8")) for name in (english, korean))
        faults += [f"{korean}: other {what} than {english}: {had[what]} instead of {wanted[what]}"
                   for what in wanted if had[what] != wanted[what]]
        if not re.search("[가-힣]", (root / korean).read_text(encoding="utf-8")):
            faults.append(f"{korean} is not Korean")
    print("\n".join(faults) or "the Korean documents have what the English ones have")
    return 1 if faults else 0


sys.exit(main())
