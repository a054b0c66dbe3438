# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""A terminal for the command."""

import codecs
import contextlib
import fcntl
import os
import pty
import select
import subprocess
import termios

from command import PROGRAM


class Terminal:
    """The command on a terminal of its own."""

    def __init__(self, test, *arguments, pass_fds=(), environment=None):
        self.control, terminal = pty.openpty()
        self.seen = ""
        self.decoder = codecs.getincrementaldecoder("utf-8")()  # a letter may come in two pieces

        def own_terminal():
            os.setsid()
            fcntl.ioctl(terminal, termios.TIOCSCTTY, 0)

        self.process = subprocess.Popen([PROGRAM, *map(str, arguments)], stdin=terminal, stdout=terminal, stderr=terminal,
                                        env={**test.environment, **(environment or {})}, preexec_fn=own_terminal,
                                        pass_fds=pass_fds, cwd=test.work)
        self.terminal = terminal

    def wait_for(self, text):
        """Reads until the text has come."""
        while text not in self.seen:
            readable, _, _ = select.select([self.control], [], [], 120)
            if not readable:
                raise AssertionError(f"no {text!r} in {self.seen!r}")
            self.seen += self.decoder.decode(os.read(self.control, 4096))
        before, self.seen = self.seen.split(text, 1)
        return before

    def type(self, line):
        os.write(self.control, line.encode() + b"\n")

    def echoes(self):
        return bool(termios.tcgetattr(self.terminal)[3] & termios.ECHO)

    def end(self):
        """Exit status and what else was shown."""
        os.close(self.terminal)
        with contextlib.suppress(OSError):  # nobody has the terminal any more
            while chunk := os.read(self.control, 4096):
                self.seen += self.decoder.decode(chunk)
        os.close(self.control)
        return self.process.wait(timeout=120), self.seen
