# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Every source says whose it is, in the two lines of SPDX (https://spdx.dev) that tools read."""

import pathlib
import sys

RIGHTS = [
    "SPDX-FileCopyrightText: The SigilDesk authors",
    "SPDX-License-Identifier: LicenseRef-SigilDesk",
]
# How a comment begins, by the end of a file's name.
COMMENTS = {
    ".c": "// ", ".cpp": "// ", ".h": "// ", ".java": "// ", ".js": "// ", ".rs": "// ",
    ".cmake": "# ", ".py": "# ", ".sh": "# ", "": "# ",
}


def comment_of(source: pathlib.Path) -> str | None:
    if source.name == "CMakeLists.txt":
        return "# "
    if source.suffix == "" and not source.read_bytes().startswith(b"#!"):
        return None
    return COMMENTS.get(source.suffix)


def sources(root: pathlib.Path):
    for folder in sorted(root.iterdir()):
        if folder.name in ("build", "docs") or folder.name.startswith("."):
            continue
        for path in [folder] if folder.is_file() else sorted(folder.rglob("*")):
            if path.is_file() and "corpus" not in path.parts:
                yield path


def main() -> int:
    root = pathlib.Path(sys.argv[1])
    seen = 0
    without = []
    for path in sources(root):
        comment = comment_of(path)
        if comment is None:
            continue
        seen += 1
        lines = path.read_text(encoding="utf-8").splitlines()
        start = 1 if lines[0].startswith("#!") else 0
        if lines[start : start + 2] != [comment + line for line in RIGHTS]:
            without.append(path.relative_to(root))
    for path in without:
        print(f"{path}: does not begin with the two lines of its rights")
    print(f"{seen} sources, {len(without)} without their rights")
    return 1 if without or seen == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
