# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Signals that end the command: nothing half written stays, whatever it was doing."""

import os
import signal
import socket
import subprocess

from command import PASSWORD, PROGRAM, CommandTest, main
from terminal import Terminal

ENDINGS = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGQUIT)


class SignalsTest(CommandTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.store("--count", "1", "--keys", "2", "--state", "valid", "--pairs", "both")
        cls.folder = cls.work / "folder"
        cls.folder.mkdir()
        cls.text = cls.work / "text.txt"
        cls.text.write_text("a text")
        cls.password = cls.work / "password"
        cls.password.write_text(PASSWORD)
        cls.password.chmod(0o600)

    def only_file(self):
        name, = os.listdir(self.folder)
        return name

    def test_at_a_prompt(self):
        for number in ENDINGS:
            terminal = Terminal(self, "sign", "0", self.text, "--out", self.folder / "text.p7m")
            terminal.wait_for(": ")
            # The file is written in a folder of its own, with what a toolkit that writes it has beside it; strangers stay.
            (self.folder / self.only_file() / "more").write_text("")
            (self.folder / "text.p7m.other").write_text("")
            terminal.process.send_signal(number)
            self.assertEqual(terminal.end()[0], -number)
            self.assertEqual(self.only_file(), "text.p7m.other")
            (self.folder / "text.p7m.other").unlink()

    def test_while_a_server_does_not_answer(self):
        for arguments in (["timestamp", self.text, "--url"],
                          ["sign", "0", self.text, "--password-file", self.password, "--timestamp"]):
            for number in ENDINGS:
                with self.silent_server() as server:
                    process = self.start(*arguments, f"http://127.0.0.1:{server.getsockname()[1]}/", "--out", "folder/out")
                    connection, _ = server.accept()
                    self.assertTrue(self.only_file().startswith("out."))
                    process.send_signal(number)
                    self.assertEqual(process.wait(timeout=120), -number)
                    connection.close()
                self.assertEqual(os.listdir(self.folder), [], arguments)

    def test_a_signal_that_is_ignored_stays_so(self):
        with self.silent_server() as server:
            process = self.start("timestamp", self.text, "--url", f"http://127.0.0.1:{server.getsockname()[1]}/", "--out",
                                 "folder/out", preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
            connection, _ = server.accept()
            process.send_signal(signal.SIGHUP)
            self.assertTrue(self.only_file())
            process.send_signal(signal.SIGTERM)
            self.assertEqual(process.wait(timeout=120), -signal.SIGTERM)
            connection.close()

    @staticmethod
    def silent_server():
        return socket.create_server(("127.0.0.1", 0))

    def start(self, *arguments, **options):
        return subprocess.Popen([PROGRAM, *map(str, arguments)], env=self.environment, cwd=self.work, stdin=subprocess.DEVNULL,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True, **options)


main()
