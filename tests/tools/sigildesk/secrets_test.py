# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Where passwords come from, and where they never are."""

import contextlib
import fcntl
import os
import re
import signal
import struct
import subprocess
import termios

from command import DONE, FAILED, NO, PASSWORD, PROGRAM, WRONG_USE, CommandTest, main
from terminal import Terminal


class SecretsTest(CommandTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.report = cls.store("--count", "1", "--keys", "2", "--state", "valid", "--pairs", "both")

    def file(self, text, mode=0o600):
        path = self.work / "secret"
        path.write_text(text)
        path.chmod(mode)
        return path

    @contextlib.contextmanager
    def descriptor(self, text):
        reading, writing = os.pipe()
        os.write(writing, text.encode())
        os.close(writing)
        yield reading
        os.close(reading)

    def askpass(self, body):
        program = self.work / "askpass"
        program.write_text("#!/bin/sh\n" + body)
        program.chmod(0o700)
        return {"SIGILDESK_ASKPASS": str(program)}

    def unlock(self, *arguments, status=DONE, **options):
        return self.answer("unlock", "0", *arguments, status=status, **options)

    def test_descriptor(self):
        for text, status in ((PASSWORD + "\nnot this\n", DONE), (PASSWORD, DONE), (PASSWORD + "\r\n", DONE),
                             ("wrong-Pass9!\n", NO), ("\n", NO), ("", WRONG_USE), (PASSWORD + "\0\n", WRONG_USE),
                             ("x" * 1025 + "\n", WRONG_USE)):
            with self.descriptor(text) as number:
                self.unlock("--password-fd", number, status=status, pass_fds=[number])
        self.unlock("--password-fd", "77", status=WRONG_USE)

    def test_one_descriptor_for_two_secrets(self):
        with self.descriptor(PASSWORD + "\nnew-Pass2!\n") as number:
            self.unlock("--out", "two.pem", "--password-fd", number, "--new-password-fd", number, pass_fds=[number])
        self.openssl("pkey", "-in", "two.pem", "-passin", "pass:new-Pass2!", "-noout")

    def test_file(self):
        self.unlock("--password-file", self.file(PASSWORD + "\nmore\n"))
        self.assertEqual(self.error("unlock", "0", "--password-file", "/no/such", status=FAILED)["name"], "file_not_read")

    def test_file_without_a_line(self):
        folder = self.work / "no file"
        folder.mkdir(mode=0o700)
        for path, reason in ((self.file(""), "No data available"), (folder, "Is a directory")):
            error = self.error("unlock", "0", "--password-file", path, status=FAILED)
            self.assertEqual((error["name"], error["message"]), ("file_not_read", f"cannot read {path}: {reason}"))

    def test_file_of_others(self):
        for mode in (0o604, 0o640, 0o644, 0o660):
            error = self.error("unlock", "0", "--password-file", self.file(PASSWORD, mode), status=FAILED)
            self.assertEqual(error["name"], "secret_file_open_to_others", oct(mode))
        self.unlock("--password-file", self.file(PASSWORD, 0o400))

    def test_askpass(self):
        self.unlock(environment=self.askpass(f"echo '{PASSWORD}'; echo more"))
        question = self.work / "question"
        self.unlock(environment=self.askpass(f"printf '%s' \"$1\" >{question}; echo '{PASSWORD}'"))
        self.assertIn(self.json("show", "0")["certificate"]["name"], question.read_text())
        self.unlock(status=NO, environment=self.askpass("exit 1"))
        self.unlock(status=NO, environment=self.askpass("true"))
        self.unlock(status=NO, environment=self.askpass(f"echo '{PASSWORD}'; exit 1"))
        self.assertEqual(self.error("unlock", "0", status=WRONG_USE, environment={"SIGILDESK_ASKPASS": ""})["name"], "no_terminal")
        self.unlock(status=FAILED, environment={"SIGILDESK_ASKPASS": "/no/such/program"})

    def test_askpass_of_a_process_that_takes_no_status_of_others(self):
        self.unlock(environment=self.askpass(f"echo '{PASSWORD}'"), preexec_fn=lambda: signal.signal(signal.SIGCHLD, signal.SIG_IGN))

    def test_order(self):
        wrong = self.askpass("echo wrong-Pass9!")
        with self.descriptor(PASSWORD + "\n") as number:
            self.unlock("--password-fd", number, "--password-file", self.file("wrong-Pass9!"), environment=wrong,
                        pass_fds=[number])
        self.unlock("--password-file", self.file(PASSWORD), environment=wrong)

    def test_no_source_and_no_terminal(self):
        error = self.error("unlock", "0", status=WRONG_USE)
        self.assertEqual(error["name"], "no_terminal")
        self.assertIn("--password-fd", error["message"])
        self.assertEqual(self.error("unlock", "0", "--out", "x", "--password-file", self.file(PASSWORD), status=WRONG_USE)["name"],
                         "no_terminal")
        self.assertEqual(self.error("identity", "0", "--password-file", self.file(PASSWORD), status=WRONG_USE)["name"],
                         "no_terminal")

    def test_prompt(self):
        terminal = Terminal(self, "unlock", "0")
        terminal.wait_for(self.json("show", "0")["certificate"]["name"])
        terminal.wait_for(": ")
        self.assertFalse(terminal.echoes())
        terminal.type(PASSWORD)
        status, seen = terminal.end()
        self.assertEqual(status, DONE, seen)
        self.assertNotIn(PASSWORD, seen)

    def test_one_more_prompt_after_a_wrong_password(self):
        for second, status in ((PASSWORD, DONE), ("wrong again", NO)):
            terminal = Terminal(self, "unlock", "0")
            terminal.wait_for(": ")
            terminal.type("wrong")
            terminal.wait_for(": ")
            terminal.type(second)
            self.assertEqual(terminal.end()[0], status)

    def test_new_password_is_typed_twice(self):
        for again, status in (("new-Pass2!", DONE), ("other", NO)):
            terminal = Terminal(self, "unlock", "0", "--out", f"twice{status}.pem", "--password-file", self.file(PASSWORD))
            terminal.wait_for("New password")
            terminal.wait_for(": ")
            terminal.type("new-Pass2!")
            terminal.wait_for("once more: ")
            terminal.type(again)
            self.assertEqual(terminal.end()[0], status)
        self.openssl("pkey", "-in", "twice0.pem", "-passin", "pass:new-Pass2!", "-noout")
        self.assertFalse((self.work / "twice1.pem").exists())

    def test_identity_prompt_names_what_it_wants(self):
        terminal = Terminal(self, "identity", "0", "--password-file", self.file(PASSWORD))
        terminal.wait_for("Identity number of ")
        terminal.wait_for(": ")
        terminal.type(self.report[0]["identity"])
        self.assertEqual(terminal.end()[0], DONE)

    def test_end_of_input_cancels(self):
        terminal = Terminal(self, "unlock", "0")
        terminal.wait_for(": ")
        os.write(terminal.control, b"\x04")
        self.assertEqual(terminal.end()[0], NO)

    def test_an_interrupted_prompt_leaves_the_terminal_as_it_was(self):
        terminal = Terminal(self, "unlock", "0")
        terminal.wait_for(": ")
        self.assertFalse(terminal.echoes())
        os.write(terminal.control, b"\x03")
        terminal.process.wait(timeout=120)
        self.assertTrue(terminal.echoes())
        self.assertEqual(terminal.end()[0], -signal.SIGINT)

    def test_empty_new_password(self):
        error = self.error("unlock", "0", "--out", "x", "--password-file", self.file(PASSWORD), "--new-password-file",
                           "/dev/null", status=FAILED)
        self.assertEqual(error["name"], "secret_file_open_to_others")
        with self.descriptor("\n") as number:
            error = self.error("unlock", "0", "--out", "x", "--password-file", self.file(PASSWORD), "--new-password-fd", number,
                               status=WRONG_USE, pass_fds=[number])
        self.assertEqual(error["name"], "bad_secret")

    def test_other_processes_see_no_secret(self):
        password_reading, password_writing = os.pipe()
        identity_reading, identity_writing = os.pipe()
        process = subprocess.Popen(
            [PROGRAM, "identity", "0", "--password-fd", str(password_reading), "--identity-fd", str(identity_reading)],
            env=self.environment, pass_fds=[password_reading, identity_reading], stdout=subprocess.DEVNULL, start_new_session=True)
        os.write(password_writing, PASSWORD.encode() + b"\n")
        while self.waiting(password_reading):
            os.sched_yield()
        # It has the password now, and goes on to wait for the number.
        for name in ("cmdline", "environ"):
            with contextlib.suppress(PermissionError):
                with open(f"/proc/{process.pid}/{name}", "rb") as file:
                    self.assertNotIn(PASSWORD.encode(), file.read(), name)
        with open(f"/proc/{process.pid}/limits", encoding="ascii") as file:
            self.assertRegex(file.read(), r"Max core file size\s+0\s+0\s")
        os.write(identity_writing, self.report[0]["identity"].encode() + b"\n")
        self.assertEqual(process.wait(timeout=120), DONE)
        for descriptor in (password_reading, password_writing, identity_reading, identity_writing):
            os.close(descriptor)

    @staticmethod
    def waiting(descriptor):
        """Bytes in a pipe that nobody has read."""
        return struct.unpack("i", fcntl.ioctl(descriptor, termios.FIONREAD, b"\0\0\0\0"))[0]

    def test_no_option_takes_a_secret(self):
        for command in re.findall(r"^  (\S+)", self.answer("--help").split("Global options")[0], re.MULTILINE):
            for option in re.findall(r"--[a-z-]*(?:password|identity|pin)[a-z-]*", self.answer(command, "--help")):
                self.assertRegex(option, "-(fd|file)$")


main()
