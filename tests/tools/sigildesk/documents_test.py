# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Help, man page, completion scripts and docs/command-line.md say the same; the examples of the man page work."""

import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess

import shapes
from command import DONE, NO, PASSWORD, PROGRAM, CommandTest, main
from completing_shell import Zsh, completed_by_fish

SOURCE = pathlib.Path(os.environ["SIGILDESK_SOURCE"])
# Their examples need servers, a display, or a token; their own tests run them.
ELSEWHERE = {"status", "timestamp", "tokens", "pick"}


def options_of(text):
    return set(re.findall(r"^\s+(--[a-z-]+)", text, re.MULTILINE))


class DocumentsTest(CommandTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.report = cls.store("--count", "2", "--keys", "2", "--state", "valid", "--pairs", "both", "--families", "npki")
        shutil.copytree(cls.home, cls.work / "sample")
        process = subprocess.run([PROGRAM, "--help"], check=True, capture_output=True, text=True, env=cls.environment)
        first, rest = process.stdout.split("Commands:\n")[1].split("\nGlobal options")
        cls.commands = re.findall(r"^  (\S+)", first, re.MULTILINE)
        cls.global_options = options_of(rest)
        cls.help = {
            command: subprocess.run([PROGRAM, command, "--help"], check=True, capture_output=True, text=True,
                                    env=cls.environment).stdout
            for command in cls.commands
        }
        cls.page = subprocess.run([PROGRAM, "manual"], check=True, capture_output=True, text=True, env=cls.environment).stdout

    def own_options(self, command):
        return options_of(self.help[command].split("Global options")[0])

    def section(self, command):
        """What the man page says about a command."""
        text = self.page.replace("\\-", "-").replace("\\&", "")
        return re.split(r"^\.S[SH] ", text.split(f".SS {command} ")[1], flags=re.MULTILINE)[0]

    def test_man_page_has_every_option(self):
        for command in self.commands:
            self.assertEqual(set(re.findall(r"^\.B (--[a-z-]+)", self.section(command), re.MULTILINE)), self.own_options(command),
                             command)

    def test_man_page_has_no_requests_by_chance(self):
        self.assertEqual(set(re.findall(r"^[.'](\S*)", self.page, re.MULTILINE)),
                         {"TH", "SH", "SS", "TP", "B", "PP", "nf", "fi", "RS", "RE"})
        self.assertEqual(set(re.findall(r"\\(.)", self.page)), {"-"})

    def test_completion_of_bash(self):
        script = self.work / "completion.bash"
        script.write_text(self.answer("completion", "bash"))

        def completed(*words):
            line = " ".join(shlex.quote(word) for word in words)
            shell = (f"source {script}; COMP_WORDS=({line}); COMP_CWORD={len(words) - 1}; _sigildesk; "
                     "printf '%s\\n' \"${COMPREPLY[@]}\"")
            answer = subprocess.run(["bash", "-c", shell], check=True, capture_output=True, text=True, cwd=self.work).stdout
            return set(answer.split())

        self.check_completion(lambda line: completed(*shlex.split(line), *([""] if line.endswith(" ") else [])))

    def test_completion_of_zsh(self):
        folder = self.work / "zsh"
        folder.mkdir()
        (folder / "_sigildesk").write_text(self.answer("completion", "zsh"))
        shell = Zsh(folder, self.work)
        self.addCleanup(shell.close)
        self.check_completion(shell.completed)

    def test_completion_of_fish(self):
        script = self.work / "completion.fish"
        script.write_text(self.answer("completion", "fish"))
        self.check_completion(lambda line: completed_by_fish(script, line, self.work))

    def check_completion(self, completed):
        """@param completed  what a shell offers behind a line"""
        (self.work / "contract.txt").touch()
        self.assertEqual(completed("sigildesk "), set(self.commands))
        self.assertEqual(completed("sigildesk li"), {"list"})
        for command in self.commands:
            self.assertEqual(completed(f"sigildesk {command} --"), self.own_options(command) | self.global_options, command)
        self.assertEqual(completed("sigildesk --toolkit "), {"maker", "gpki"})
        self.assertEqual(completed("sigildesk list --color "), {"auto", "always", "never"})
        self.assertEqual(completed("sigildesk completion "), {"bash", "zsh", "fish"})
        self.assertEqual(completed("sigildesk export 0 --protection a"), {"aes256"})
        self.assertIn("contract.txt", completed("sigildesk encrypt cont"))

    def test_documents_of_json(self):
        document = (SOURCE / "docs" / "command-line.md").read_text(encoding="utf-8")
        for command in self.commands:
            shape = self.section(command).split("With --json:\n.PP\n.RS\n")[1].split("\n.RE")[0]
            self.assertIn(f"| `{command}` | `{shape.replace('|', chr(92) + '|')}` |", document)

    def test_the_tests_that_the_document_names_exist(self):
        table = (SOURCE / "docs" / "command-line.md").read_text(encoding="utf-8").split("| promise | held by |\n|---|---|\n")[1]
        named = 0
        for held in (row.split("|")[2] for row in table.strip().splitlines()):
            for group in held.split(";"):
                file, *tests = re.findall("`([^`]+)`", group)
                here = SOURCE / file if "/" in file else pathlib.Path(__file__).with_name(file)
                for test in tests:
                    self.assertRegex(here.read_text(encoding="utf-8"), rf"def {test}\(|, {test}\)", file)
                    named += 1
        self.assertGreater(named, 100)

    def prepare_examples(self):
        """What the examples name, and a home folder that nothing was done to."""
        shutil.rmtree(self.home)
        shutil.copytree(self.work / "sample", self.home)
        folder = self.work / self.id()
        (folder / "usb").mkdir(parents=True)
        serial = self.json("show", "0")["certificate"]["serial"]
        identity = next(row["identity"] for row in self.report if row["serial"] == serial)
        for name, text in (("password", PASSWORD), ("new-password", "new-Pass2!"), ("number", identity)):
            (folder / name).write_text(text)
            (folder / name).chmod(0o600)
        (folder / "contract.txt").write_text("a contract")
        authorities = self.home / "ca"
        (folder / "root.pem").write_bytes((authorities / "root.pem").read_bytes() + (authorities / "authorities.pem").read_bytes())
        return folder

    def examples(self):
        for command in self.commands:
            example = self.section(command).split("Example:\n.PP\n.nf\n.RS\n")[1].split("\n.RE")[0]
            words = shlex.split(example)
            self.assertEqual(words[:2], ["sigildesk", command])
            self.assertIn(example, self.help[command])
            if command not in ELSEWHERE:
                yield command, words[1:], (DONE, NO) if command in ("list", "doctor") else (DONE,)

    def test_examples(self):
        folder = self.prepare_examples()
        for _, words, statuses in self.examples():
            self.assertIn(self.run_command(*words, cwd=folder).returncode, statuses, words)

    def test_examples_print_the_documents_of_their_shapes(self):
        folder = self.prepare_examples()
        for command, words, statuses in self.examples():
            process = self.run_command(*words, "--json", cwd=folder)
            self.assertIn(process.returncode, statuses, words)
            document = json.loads(process.stdout)
            document.pop("error", None)  # of a list without certificates
            shapes.check(self.page, command, document)
        shapes.check(self.page, "list", self.json("list"))


main()
