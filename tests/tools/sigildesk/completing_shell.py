# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""What the shells offer when Tab is pressed behind a line."""

import contextlib
import os
import pathlib
import pty
import subprocess
import threading

# A completion widget of its own writes what would be offered into a pipe.
ZSH = """
PS1= RPS1=
fpath=({folder} $fpath)
autoload -Uz compinit
compinit -D -u
exec 3>{folder}/offered
compadd() {{
    local -a given=("$@") found
    [[ -n ${{given[(r)-[OAD]]}} ]] || {{ builtin compadd -O found "$@"; print -rl -- $found >&3 }}
    builtin compadd "$@"
}}
offer() {{ _main_complete; print END >&3 }}
zle -C offer list-choices offer
bindkey '^X' offer
"""


class Zsh:
    """An interactive shell on a terminal; the script stands in the folder as _sigildesk."""

    def __init__(self, folder, work):
        pathlib.Path(folder, "start").write_text(ZSH.format(folder=folder), encoding="utf-8")
        os.mkfifo(folder / "offered")
        self.control, terminal = pty.openpty()
        self.process = subprocess.Popen(["zsh", "-f", "-i"], stdin=terminal, stdout=terminal, stderr=terminal,
                                        env={**os.environ, "TERM": "dumb", "LC_ALL": "C.UTF-8"}, start_new_session=True, cwd=work)
        os.close(terminal)
        self.reader = threading.Thread(target=self.drain)
        self.reader.start()
        os.write(self.control, f"source {folder}/start\n".encode())
        self.offered = open(folder / "offered", encoding="utf-8")

    def drain(self):
        """Else the shell would wait for somebody to read what it shows."""
        with contextlib.suppress(OSError):
            while os.read(self.control, 4096):
                pass

    def completed(self, line):
        clear = b"\x15"
        os.write(self.control, clear + line.encode() + b"\x18")
        return set(iter(lambda: self.offered.readline().rstrip("\n"), "END")) - {""}

    def close(self):
        self.process.kill()
        self.process.wait()
        self.reader.join()
        self.offered.close()
        os.close(self.control)


def completed_by_fish(script, line, work):
    """@param line  without quotes"""
    answer = subprocess.run(["fish", "--no-config", "-c", f"source {script}; complete -C '{line}'"], check=True, capture_output=True,
                            text=True, cwd=work, env={**os.environ, "LC_ALL": "C.UTF-8", "HOME": str(work)}).stdout
    return {offer.split("\t")[0] for offer in answer.splitlines()}
