# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""How much memory files take that are worked on piece by piece."""

import os
import subprocess

from command import DONE, PASSWORD, PROGRAM, CommandTest, main


class MemoryTest(CommandTest):
    def test_messages_are_worked_on_piece_by_piece(self):
        self.store("--count", "1", "--keys", "2", "--state", "valid", "--pairs", "both")
        size = 24 << 20
        large, plain, password = self.work / "large", self.work / "plain", self.work / "password"
        large.touch()
        os.truncate(large, size)
        password.write_text(PASSWORD)
        password.chmod(0o600)
        commands = [["encrypt", large, "--to", "0", "--toolkit", "gpki"], ["sign", "0", large, "--password-file", password]]
        commands += [["decrypt", "0", "large.p7e", "--out", plain, "--force", "--toolkit", toolkit, "--password-file", password]
                     for toolkit in ("maker", "gpki")]
        before = self.peak("show", "0")
        for arguments in commands:
            self.assertLess(self.peak(*arguments), before + size / 2, arguments)
        self.assertEqual(plain.stat().st_size, size)

    def peak(self, *arguments):
        """Bytes of memory that a run had at once."""
        process = subprocess.Popen([PROGRAM, *map(str, arguments)], env=self.environment, cwd=self.work, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, start_new_session=True)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        self.assertEqual(process.returncode, DONE, arguments)
        return usage.ru_maxrss * 1024


main()
