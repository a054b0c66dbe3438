# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Manual pages in the roff that every man understands, from Markdown too."""

import re


def escaped(text):
    """A text as roff prints it, letter for letter."""
    text = text.replace("\\", "\\e").replace("-", "\\-").replace("'", "\\(aq").replace("`", "\\(ga")
    return text.replace("^", "\\(ha").replace("~", "\\(ti")


def guarded(line):
    """A line of text that roff does not take for a request."""
    return "\\&" + line if line.startswith((".", "'")) else line


def paragraph(text):
    return guarded(" ".join(text.split()))


def example(text):
    lines = [guarded(escaped(line)) for line in text.strip("\n").expandtabs(4).splitlines()]
    return [".EX", *lines, ".EE"]


def header(name, section, version):
    return [".\\\" Made by the build of SigilDesk from its headers and documents.",
            f".TH {escaped(name.upper())} {section} \"\" \"SigilDesk {version}\" \"SigilDesk\"", ".ad l", ".nh"]


def inline(text):
    """Markdown within a line: `code` and **strong** in bold, links by their words."""
    text = re.sub(r"\[([^\]]+)\]\([^)]*\)", r"\1", text)
    parts = re.split(r"`([^`]+)`|\*\*([^*]+)\*\*", text)
    said = []
    for number, part in enumerate(parts):
        if part:
            said.append(escaped(part) if number % 3 == 0 else f"\\fB{escaped(part)}\\fR")
    return "".join(said)


def table(rows):
    """A Markdown table as a list: what stands first, then the other cells."""
    cells = [[cell.strip() for cell in row.strip().strip("|").split(" | ")] for row in rows]
    head, *entries = [cells[0], *cells[2:]]
    lines = []
    for first, *others in entries:
        rest = [f"{inline(name)}: {inline(cell)}" if len(others) > 1 else inline(cell)
                for name, cell in zip(head[1:], others, strict=True)]
        lines += [".TP", guarded(inline(first)), guarded("; ".join(rest))]
    return lines


def blocks(markdown):
    """The blocks of a Markdown text: its lines between empty ones, a fenced block with all of its lines."""
    for fenced, plain in re.findall(r"^(```[^\0]*?^```$)|((?:^(?!```).+\n?)+)", markdown, re.MULTILINE):
        yield fenced or plain


def from_markdown(page, markdown):
    """The sections of a page. The first heading tells its NAME line: "# Some title: what it is"."""
    lines = []
    for block in blocks(markdown):
        if len(lines) == 2 and not block.startswith(("#", "<!--")):
            lines.append(".SH DESCRIPTION")
        if block.startswith("```"):
            lines += [".PP"] + example(block.split("\n", 1)[1].removesuffix("```"))
        elif block.startswith("<!--"):
            continue
        elif block.startswith("# "):
            lines += [".SH NAME", f"{escaped(page)} \\- {inline(block.strip().split(': ', 1)[1])}"]
        elif block.startswith("#"):
            level, heading = block.strip().split(" ", 1)
            lines.append(f".SH {inline(heading.upper())}" if level == "##" else f".SS {inline(heading)}")
        elif block.startswith("|"):
            lines += table(block.strip().splitlines())
        elif block.startswith("- "):
            for item in re.split(r"^- ", block, flags=re.MULTILINE)[1:]:
                lines += [".IP \\(bu 2", paragraph(inline(item))]
        else:
            lines += [".PP", paragraph(inline(block))]
    return lines
