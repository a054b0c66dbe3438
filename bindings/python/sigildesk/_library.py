# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""libsigil.so.1 as it is: its functions, and how texts and bytes pass between it and Python."""

from __future__ import annotations

import contextlib
from typing import Any, Iterator, Optional

from cffi import FFI

from . import _declarations

ffi: Any = FFI()
ffi.cdef(_declarations.TEXT)
library: Any = ffi.dlopen("libsigil.so.1")


def record(kind: str, **values: Any) -> Any:
    """A zeroed struct that knows its size, with some fields set."""
    made = ffi.new(f"{kind} *")
    made.size = ffi.sizeof(kind)
    for name, value in values.items():
        setattr(made, name, value)
    return made


def text_in(text: Optional[str]) -> Any:
    """A text for the library; whoever calls keeps it until the library has read it."""
    if text is None:
        return ffi.NULL
    if "\0" in text:
        raise ValueError("the text holds a zero character")
    return ffi.new("char[]", text.encode())


@contextlib.contextmanager
def secret_in(text: Optional[str]) -> Iterator[Any]:
    """A password for the library, overwritten afterwards."""
    kept = text_in(text)
    try:
        yield kept
    finally:
        if kept:
            ffi.memmove(kept, bytes(len(kept)), len(kept))


def path_in(path: Optional[str]) -> Any:
    """A path for the library, in the bytes that the file system has."""
    return ffi.NULL if path is None else ffi.new("char[]", path.encode("utf-8", "surrogateescape"))


def text_out(text: Any) -> str:
    return ffi.string(text).decode("utf-8", "surrogateescape")


class Taken:
    """Room for bytes that the library hands out: copied once, wiped and given back at the end."""

    def __enter__(self) -> Taken:
        self.room = ffi.new("SigilBytes *")
        return self

    def __exit__(self, *_: object) -> None:
        library.sigil_free(self.room)

    def copy(self) -> bytes:
        return bytes(ffi.buffer(self.room.data, self.room.size)) if self.room.data else b""
