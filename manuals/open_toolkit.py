# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""What the open toolkit has of the functions that hosts call: read from the façade's rows and the toolkit's faces."""

import functools
import pathlib
import re

TYPES = {"HVTK_": "type 0 (libHVCToolkitV30.so)", "GPKI_": "type 1 (libgpkiapi_v15.so)"}
# The layers behind a header that reach a toolkit through the façade.
LAYERS = {"sigildesk/certlist.h": ["certlist"], "sigildesk/dialogs.h": ["ui", "certlist"], "sigil.h": ["sigil", "jobs", "certlist"]}
REFUSING = "certlist/clp_stubs.cpp"


def bodies(files):
    """The functions that the files define, by name, with all of their text; of one name, all together."""
    found = {}
    for file in files:
        text = re.sub(r"//[^\n]*", "", file.read_text(encoding="utf-8"))
        for match in re.finditer(r"^[\w:<>*& ]*?\b([\w:<>]+)\((?=[^;]*?\{)[^;{]*\{(?:[^\n]*\}$|.*?^\})", text, re.M | re.S):
            found[match[1]] = found.get(match[1], "") + match[0]
    return found


def methods(body):
    """Methods of the backends that a body calls: on what its lambdas receive, on a member, or through a pointer."""
    classes = {"CHVTKWrap": ["CHVTKWrap"], "CGPKIWrap": ["CGPKIWrap"], "auto": ["CHVTKWrap", "CGPKIWrap", "CWrapperAPI", "Toolkit<Traits>"]}
    lambdas = re.findall(r"\]\((?:const )?(CHVTKWrap|CGPKIWrap|auto)& (\w+)\)[^{]*\{((?:[^{}]|\{\})*)\}", body)
    calls = [(kind, method) for kind, name, inside in lambdas for method in re.findall(rf"\b{name}\.(\w+)\(", inside)]
    calls += [("auto", method) for method in re.findall(r"->(\w+)\(", body)]
    return {f"{owner}::{method}" for kind, method in calls for owner in classes[kind]}


class OpenToolkit:
    def __init__(self, source: pathlib.Path):
        self.source = source
        facade = [*sorted((source / "facade").glob("*.cpp")), *sorted((source / "facade" / "backends").glob("*.cpp"))]
        self.facade = bodies(facade)
        text = "".join(file.read_text(encoding="utf-8") for file in facade)
        frame = (source / "facade" / "backends" / "toolkit.h").read_text(encoding="utf-8")
        fields = re.findall(r"^    Symbol<.*> (\w+);$", frame, re.M)
        values = [re.findall(r"SYMBOL\((\w+)\)", value) for value in re.findall(r"ToolkitTraits \w+\{(.*?)\};", frame, re.S)]
        self.traits = dict(zip(fields, zip(*values, strict=True), strict=True))
        self.named = dict(re.findall(r'\bSymbol<\w+> (\w+)\{"(\w+)"\}', text))
        self.named.update((name, self.named[other]) for name, other in re.findall(r"(\w+)\{(\w+)\.name\}", text))
        faces = "".join(file.read_text(encoding="utf-8") for file in sorted((source / "toolkit" / "faces").glob("*.cpp")))
        defined = re.findall(r"^TOOLKIT_FUNCTION (\w+)\((.*?)^\}|^TOOLKIT_FUNCTION (\w+)\(([^\n]*\})$", faces, re.M | re.S)
        definitions = {first or second: body or line for first, body, second, line in defined}
        same = dict(re.findall(r"^SAME_FUNCTION\((\w+),\s*(\w+)\)", faces, re.M))
        self.exported = set(re.findall(r"^(?:TOOLKIT_FUNCTION | +\.globl )(\w+)", faces, re.M)) | set(same)
        self.refused = {name for name in self.exported if "notOffered" in definitions.get(same.get(name, name), "")}

    def members(self):
        """The façade's functions."""
        headers = (self.source / "include" / "sigildesk" / "crypto").glob("*.h")
        return {name for file in headers for name in re.findall(r"^SIGIL_EXPORT \w+ (\w+)\(", file.read_text(encoding="utf-8"), re.M)}

    @functools.cache
    def symbols(self, function):
        """What the façade looks up in a toolkit for one of its functions."""
        seen, waiting, found = set(), {function}, set()
        while waiting:
            name = waiting.pop()
            seen.add(name)
            body = self.facade.get(name, "")
            words = set(re.findall(r"[\w:]+", body))
            found |= set(re.findall(r"SYMBOL\((\w+)\)", body)) | {self.named[word] for word in words & self.named.keys()}
            found |= {symbol for field in re.findall(r"\bTraits\.(\w+)", body) for symbol in self.traits.get(field, ())}
            waiting |= ((words | methods(body)) & self.facade.keys()) - seen
        return frozenset(found)

    def answer(self, function, prefix):
        """What the open toolkit does for a façade function on one toolkit type."""
        wanted = sorted(symbol for symbol in self.symbols(function) if symbol.startswith(prefix))
        absent = [symbol for symbol in wanted if symbol not in self.exported]
        refused = [symbol for symbol in wanted if symbol in self.refused]
        if not wanted or absent:
            return "no, 1003"
        return f"{', '.join(wanted)} answers 3010" if refused else f"yes, {', '.join(wanted)}"

    def said_of_member(self, function):
        if not self.symbols(function):
            return "asks no toolkit."
        return "; ".join(f"{name}: {self.answer(function, prefix)}" for prefix, name in TYPES.items()) + "."

    def said_of_layers(self, layers):
        """What functions need that reach a toolkit through the façade."""
        text = "".join(file.read_text(encoding="utf-8") for layer in layers for file in sorted((self.source / layer).glob("*.cpp")))
        used = set(re.findall(r"\b\w+(?=\()", text)) & self.members()
        sentences = []
        for prefix, name in TYPES.items():
            missing = sorted(function for function in used if self.answer(function, prefix).startswith("no") and self.symbols(function))
            sentences.append(f"{name}: yes" + (f", as far as it does without {', '.join(missing)}" if missing else ""))
        return "; ".join(sentences) + "."

    @functools.cache
    def said_of(self, header, function):
        """One sentence for a function's page, for a function of <header>."""
        if header.startswith("sigildesk/crypto/"):
            return self.said_of_member(function)
        if header not in LAYERS:
            return "asks no toolkit."
        if re.search(rf"\b{function}\(", (self.source / REFUSING).read_text(encoding="utf-8")):
            return "no toolkit makes a difference: always refused."
        return self.said_of_layers(tuple(LAYERS[header]))
