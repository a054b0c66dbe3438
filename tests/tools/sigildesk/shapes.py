# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""The documents of --json, held against the shapes that the man page and docs/command-line.md give them."""

import datetime
import json
import re

CERTIFICATE = {
    "index": (int, None), "name": str, "subject": str, "issuer": str, "issuer_name": str, "serial": str, "use": str, "policy": str,
    "family": (str, None), "medium": (str, None), "valid_from": "time", "valid_to": "time", "days_left": int, "expired": bool,
    "has_key": bool, "has_km": bool, "files": ["certificate", "key", "km_certificate", "km_key"],
}
WORDS = {"true": bool, "bool": bool, "number": int, "path": str, "name": str, "text": str, "hex": str, "oid": str, "time": "time"}
PARTS = re.compile(r'\s*("[^"]*"|\.\.\.|[{}\[\]:,]|[a-z]+)')


class Shape:
    """A shape such as {"file": path or null, "steps": [{"step", "ok"}, ...], "certificate": certificate}."""

    def __init__(self, text):
        self.parts = PARTS.findall(text)
        assert "".join(self.parts) == text.replace(" ", ""), text
        self.read = self.value()

    def take(self, *wanted):
        if self.parts and self.parts[0] in wanted:
            return self.parts.pop(0)
        return None

    def value(self):
        """A function that checks a value."""
        if self.take("{"):
            return self.members()
        if self.take("["):
            item = self.value()
            if self.take(","):
                assert self.take("...")
            assert self.take("]")
            return lambda value: [item(one) for one in same_type(value, list)]
        word = self.parts.pop(0)
        if word.startswith('"'):
            return lambda value: same(value in word.strip('"').split("|"), f"{value} is none of {word}")
        check = certificate if word == "certificate" else lambda value: scalar(value, WORDS[word])
        if self.take("with"):  # "certificate with all fields and ...": of a document of its own
            assert self.take("all") and self.take("fields") and self.take("and")
            key = json.loads(self.parts.pop(0))
            assert self.take(":")
            more = self.value()
            return lambda value: (certificate(value, whole=False), more(value[key]))
        if self.take("or"):
            assert self.take("null")
            return lambda value: value is None or check(value)
        return check

    def members(self):
        members = {}
        while not self.take("}"):
            key = json.loads(self.parts.pop(0))
            members[key] = self.value() if self.take(":") else anything
            self.take(",")

        def check(value):
            same(list(value) == list(members), f"{list(value)} are not {list(members)}")
            for key, member in members.items():
                member(value[key])
        return check


def same(condition, text):
    if not condition:
        raise AssertionError(text)


def anything(value):
    """A member of which the shape tells the name alone: no list and no object, unless a certificate."""
    if isinstance(value, dict):
        certificate(value)
    same(not isinstance(value, list), value)


def same_type(value, kind):
    same(type(value) is kind, f"{value!r} is no {kind}")
    return value


def scalar(value, kind):
    if kind == "time":
        same(datetime.datetime.fromisoformat(value).tzinfo is not None, value)
    else:
        same_type(value, kind)


def certificate(value, whole=True):
    same((list(value) if whole else list(value)[:len(CERTIFICATE)]) == list(CERTIFICATE), list(value))
    for key, kind in CERTIFICATE.items():
        if isinstance(kind, list):
            same(list(value[key]) == kind, value[key])
        elif isinstance(kind, tuple):
            same(value[key] is None or type(value[key]) is kind[0], value[key])
        else:
            scalar(value[key], kind)


def check(page, command, document):
    """@param page  the manual page"""
    text = page.replace("\\-", "-").replace("\\&", "").split(f".SS {command} ")[1].split("With --json:\n.PP\n.RS\n")[1]
    check_shape(text.split("\n.RE")[0], document)


def check_shape(text, document):
    shape = Shape(text)
    same(not shape.parts, shape.parts)
    shape.read(document)
