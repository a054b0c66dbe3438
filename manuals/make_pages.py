#!/usr/bin/env python3
# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Makes the manual pages: section 3 from what Doxygen read in the public headers, sections 5 and 7 from documents.

make_pages.py VERSION FOLDER documents PAGE.SECTION=FILE...   pages of documents
make_pages.py VERSION FOLDER headers XML                      pages of headers, from Doxygen's XML
"""

import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

import roff

HERE = pathlib.Path(__file__).resolve().parent
RIGHTS = 3  # lines at the top of an example: whose it is, and an empty one
# Headers for the other headers.
WITHOUT_PAGE = {"sigildesk/export.h", "sigildesk/layout.h"}


def page_name(header):
    """<sigildesk/crypto/cert.h> is described in sigildesk_cert(3), <sigil.h> in sigil(3)."""
    stem = pathlib.PurePath(header).stem
    names = {"sigil.h": "sigil", "sigildesk/sigildesk.h": "libsigildesk", "sigildesk/util.h": "sigildesk_cutil"}
    return names.get(header, f"sigildesk_{stem}")


def text_of(node):
    return " ".join("".join(node.itertext()).split())


def typed(text):
    """A type as the headers write it."""
    return roff.escaped(re.sub(r" ([*&])", r"\1", text))


def source_of(listing):
    """The lines of a program in a comment."""
    lines = []
    for line in listing.iter("codeline"):
        said = []
        for part in line.iter():
            said.append(" " if part.tag == "sp" else part.text or "")
            said.append("" if part is line else part.tail or "")
        lines.append("".join(said))
    return "\n".join(lines)


class Prose:
    """Descriptions of Doxygen as lines of roff."""

    def __init__(self):
        self.lines = []
        self.words = []

    def flush(self):
        if said := roff.paragraph("".join(self.words)):
            self.lines.append(said)
        self.words = []

    def say(self, text):
        self.words.append(roff.escaped(re.sub(r"\s+", " ", text or "")))

    def marked(self, node, font):
        self.words.append(f"\\f{font}{roff.escaped(text_of(node))}\\fR")

    def block(self, request, node):
        self.flush()
        self.lines += request
        self.add(node)
        self.flush()

    def parameters(self, node):
        self.flush()
        for item in node.iter("parameteritem"):
            names = ", ".join(roff.escaped(text_of(name)) for name in item.iter("parametername"))
            self.lines += [".TP", f"\\fI{names}\\fR"]
            self.add(item.find("parameterdescription"))
            self.flush()

    def section(self, node):
        title = {"return": "Returns", "note": "Note", "see": "See also", "since": "Since"}.get(node.get("kind"))
        self.block([".TP", f"\\fB{roff.escaped(title or text_of(node.find('title')))}\\fR"], node)

    def add(self, node):
        """What a node holds, its own text first."""
        self.say(node.text)
        for child in node:
            tag = child.tag
            if tag == "para":
                self.block([] if child is node.find("para") else [".PP"], child)
            elif tag in ("itemizedlist", "orderedlist"):
                self.flush()
                for item in child.iter("listitem"):
                    self.block([".IP \\(bu 2"], item)
                self.lines.append(".PP")
            elif tag == "parameterlist":
                self.parameters(child)
            elif tag == "simplesect":
                self.section(child)
            elif tag in ("verbatim", "programlisting"):
                self.flush()
                self.lines += [".PP", *roff.example(child.text if tag == "verbatim" else source_of(child))]
            elif tag in ("computeroutput", "bold"):
                self.marked(child, "B")
            elif tag == "emphasis":
                self.marked(child, "I")
            elif tag in ("ndash", "mdash"):
                self.words.append("\\(en" if tag == "ndash" else "\\(em")
            elif tag == "nonbreakablespace":
                self.words.append("\\ ")
            elif tag != "title":
                self.add(child)
            self.say(child.tail)


def described(node):
    """The descriptions of a file, a function, a record."""
    prose = Prose()
    for name in ("description", "briefdescription", "detaileddescription"):
        if (description := node.find(name)) is not None:
            prose.add(description)
            prose.flush()
    return prose.lines


def shown(function):
    """The declaration of a function: what is typed in bold, the names of parameters in italics."""
    parameters = []
    for parameter in function.iter("param"):
        kind, name = typed(text_of(parameter.find("type"))), parameter.findtext("declname")
        parameters.append(kind + (f" \\fI{roff.escaped(name)}\\fB" if name else ""))
    return [f"\\fB{typed(function.findtext('definition'))}({', '.join(parameters)});\\fR"]


def functions_of(sections):
    for section in sections:
        for member in section.iter("memberdef"):
            if member.get("kind") == "function" and member.get("prot") == "public":
                yield section, member


class Page:
    def __init__(self, xml, compound):
        self.xml = xml
        self.header = compound.find("location").get("file")
        self.compound = compound
        self.records = [ElementTree.parse(xml / f"{inner.get('refid')}.xml").getroot().find("compounddef")
                        for inner in compound.iter("innerclass")]
        self.records = [record for record in self.records if "." not in text_of(record.find("compoundname"))]

    def free_functions(self):
        return [member for _, member in functions_of(self.compound.findall("sectiondef"))]

    def names(self):
        """What else man finds the page by."""
        return sorted({member.find("name").text for member in self.free_functions()
                       if re.fullmatch(r"[A-Za-z_]\w+", member.find("name").text) and member.get("inline") == "no"})

    def synopsis(self):
        lines = [".SH SYNOPSIS", f".B #include <{self.header}>"]
        for function in self.free_functions():
            lines += [".PP", *shown(function)]
        return lines

    def functions(self, owner):
        lines, group = [], None
        for section, function in functions_of(owner.findall("sectiondef")):
            if section is not group and (title := section.find("header")) is not None:
                lines += [f".SS {roff.escaped(title.text)}", *described(section)]
            group = section
            lines += [".PP", *shown(function), ".RS 4", *described(function), ".RE"]
        return lines

    def record(self, record):
        name = text_of(record.find("compoundname"))
        lines = [f".SS {record.get('kind')} {roff.escaped(name)}", *described(record)]
        for member in record.iter("memberdef"):
            if member.get("kind") == "variable" and member.get("prot") == "public":
                shape = f"{text_of(member.find('type'))} {member.findtext('name')}{member.findtext('argsstring') or ''}"
                lines += [".TP", f"\\fB{typed(shape)}\\fR", *(described(member) or ["\\&"])]
        return lines + self.functions(record)

    def constants(self):
        lines = []
        for member in self.compound.iter("memberdef"):
            if member.get("kind") == "enum":
                lines += [f".SS enum {roff.escaped(member.findtext('name') or '')}", *described(member)]
                for value in member.iter("enumvalue"):
                    number = (value.findtext("initializer") or "").removeprefix("= ")
                    lines += [".TP", f"\\fB{roff.escaped(value.findtext('name'))}\\fR {roff.escaped(number)}".strip(),
                              *(described(value) or ["\\&"])]
            elif member.get("kind") == "define" and (said := described(member)):
                lines += [".TP", f"\\fB{roff.escaped(member.findtext('name'))}\\fR", *said]
        return lines

    def examples(self):
        for file in (HERE / "examples").glob(f"{page_name(self.header)}.c*"):
            return roff.example("\n".join(file.read_text(encoding="utf-8").splitlines()[RIGHTS:]))
        return []

    def what(self):
        """The first sentence of the header, as far as its colon, unless only a name stands before that."""
        said = " ".join(text_of(node) for node in self.compound.iterfind("detaileddescription/para"))
        first, _, rest = re.split(r"(?<=[\w)])\.(?:\s|$)", said, maxsplit=1)[0].partition(": ")
        return rest if rest and " " not in first else first

    def lines(self, version):
        name = page_name(self.header)
        names = ", ".join(roff.escaped(other) for other in [name, *self.names()])
        sections = {"FUNCTIONS": self.functions(self.compound), "RECORDS": [line for record in self.records for line in self.record(record)],
                    "CONSTANTS": self.constants(), "EXAMPLES": self.examples()}
        lines = [*roff.header(name, 3, version), ".SH NAME", f"{names} \\- {roff.escaped(self.what())}", *self.synopsis(),
                 ".SH DESCRIPTION", *described(self.compound)]
        for heading, said in sections.items():
            if said:
                lines += [f".SH {heading}", *said]
        return [*lines, ".SH SEE ALSO", ".BR sigildesk (7),", ".BR libsigildesk (3)"]


def write(folder, name, section, lines):
    place = folder / f"man{section}" / f"{name}.{section}"
    place.parent.mkdir(parents=True, exist_ok=True)
    place.write_text("\n".join(lines) + "\n", encoding="utf-8")


def make_headers(version, folder, xml):
    for entry in ElementTree.parse(xml / "index.xml").iter("compound"):
        if entry.get("kind") != "file" or not entry.findtext("name").endswith(".h"):
            continue
        page = Page(xml, ElementTree.parse(xml / f"{entry.get('refid')}.xml").getroot().find("compounddef"))
        if page.header in WITHOUT_PAGE:
            continue
        name = page_name(page.header)
        write(folder, name, 3, page.lines(version))
        for other in page.names():
            write(folder, other, 3, [f".so man3/{name}.3"])


def make_document(version, folder, page, file):
    name, section = page.rsplit(".", 1)
    markdown = file.read_text(encoding="utf-8")
    write(folder, name, section, [*roff.header(name, section, version), *roff.from_markdown(name, markdown)])
    for other in re.findall(r"^<!-- also: (\S+) -->$", markdown, re.MULTILINE):
        write(folder, other, section, [f".so man{section}/{name}.{section}"])


def main():
    version, folder, kind, *words = sys.argv[1:]
    for word in words:
        if kind == "headers":
            make_headers(version, pathlib.Path(folder), pathlib.Path(word))
        else:
            page, file = word.split("=")
            make_document(version, pathlib.Path(folder), page, pathlib.Path(file))


main()
