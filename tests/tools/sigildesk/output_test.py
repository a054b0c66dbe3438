# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""What reaches standard output and standard error, in every locale, and what the shell is told."""

import json
import os
import pathlib
import re
import socket
import subprocess
import time

from command import DONE, FAILED, NO, PROGRAM, WRONG_USE, CommandTest, main, width
from terminal import Terminal


class OutputTest(CommandTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.store("--count", "3", "--keys", "2", "--state", "expired")

    def certificate(self, subject):
        """A file with a certificate of this subject."""
        made = self.work / "made.der"
        self.openssl("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", "/dev/null", "-utf8", "-subj", subject,
                     "-outform", "DER", "-out", made)
        return made

    def test_wrong_use(self):
        for arguments in (["no-such-command"], ["list", "--no-such-option"], ["list", "--media"], ["show"], [],
                          ["list", "--toolkit", "other"], ["list", "--expires-within", "soon"], ["show", "0", "1"],
                          ["list", "--language"], ["list", "--languages=ko"], ["codes", "12x"]):
            process = self.run_command(*arguments)
            self.assertEqual((process.returncode, process.stdout), (WRONG_USE, ""), arguments)
            self.assertTrue(process.stderr.startswith("sigildesk: "), process.stderr)
            error = self.error(*arguments, status=WRONG_USE)
            self.assertEqual((error["code"], error["name"]), (WRONG_USE, "wrong_use"))

    def test_wrong_use_is_told_in_korean(self):
        for arguments, told in {
            (): "명령이 필요합니다",
            ("lsit",): "lsit은(는) 없는 명령",
            ("--bogus",): "--bogus은(는) 여기에 쓸 수 없습니다",
            ("list", "--bogus"): '"sigildesk list --help"',
            ("list", "show"): "show은(는) 여기에",
            ("show",): "CERT 인자가 필요합니다",
            ("show", "0", "1"): "1은(는) 여기에",
            ("list", "--media"): "--media 옵션에는 값이 필요합니다",
            ("list", "--expired=yes"): "--expired 옵션에는 값을 줄 수 없습니다",
            ("list", "--expires-within", "soon"): "--expires-within: soon은(는) 숫자가 아닙니다",
            ("list", "--expires-within", "30days"): "--expires-within: 30days은(는) 숫자가 아닙니다",
            ("list", "--expires-within=-1"): "--expires-within: -1은(는) 숫자가 아닙니다",
            ("list", "--family", "npki,xpki"): "--family: xpki은(는) 다음 가운데",
            ("list", "--family", "npki,"): "--family: 은(는) 다음 가운데",
            ("list", "--toolkit", "other"): "--toolkit: other은(는) 다음 가운데",
            ("completion", "tcsh"): "SHELL: tcsh은(는) 다음 가운데",
        }.items():
            korean = self.error("--language", "ko", *arguments, status=WRONG_USE)["message"]
            self.assertIn(told, korean)
            words = set(re.findall("[a-z]{2,}", korean)) - set(re.findall("[a-z]{2,}", " ".join(arguments)))
            self.assertLessEqual(words, {"sigildesk", "help", "npki", "gpki", "mpki", "ppki", "maker", "bash", "zsh", "fish"})
            self.assertTrue(self.error(*arguments, status=WRONG_USE)["message"].isascii())

    def test_failures_have_code_name_and_message(self):
        error = self.error("show", self.work / "passwd", status=FAILED)
        self.assertEqual((error["code"], error["name"]), (3101, "SIGIL_TK_CERT_MALFORMED"))
        process = self.run_command("show", self.work / "passwd")
        self.assertEqual((process.returncode, process.stdout), (FAILED, ""))
        self.assertIn("3101", process.stderr)
        self.assertEqual(self.error("list", "--folder", self.work, status=FAILED)["code"], 1010)

    def test_global_options_stand_anywhere(self):
        before, behind = self.answer("--json", "list"), self.answer("list", "--json")
        self.assertEqual(before, behind)
        self.assertEqual(len(json.loads(before)["certificates"]), 3)

    def test_help_and_version(self):
        self.assertRegex(self.answer("--version"), r"^sigildesk \d+\.\d+\.\d+\n$")
        self.assertIn("list", self.answer("--help"))
        self.assertIn("--expires-within DAYS", self.answer("list", "--help"))
        self.assertIn("--expires-within DAYS", self.answer("--help", "list"))
        self.assertIn("인증서", self.answer("list", "--help", "--language", "ko"))

    def test_the_library_folder_is_found_behind_others(self):
        whole = self.answer("--help")
        self.assertRegex(whole, "Library folder: .*/sigildesk\n")
        self.assertEqual(self.answer("--help", environment={"LD_LIBRARY_PATH": f"{self.work}:/none"}), whole)

    def test_language(self):
        self.assertIn("만료", self.answer("list", "--language", "ko"))
        self.assertIn("만료", self.answer("list", environment={"LC_ALL": "", "LANG": "ko_KR.UTF-8", "LC_CTYPE": "C.UTF-8"}))
        self.assertIn("expired", self.answer("list"))
        self.assertIn("만료", self.answer("list", "--language=ko"))
        self.assertIn("expired", self.answer("list", environment={"LC_ALL": "", "LC_MESSAGES": "", "LANG": "", "LC_CTYPE": "C.UTF-8"}))
        self.assertIn("정", self.run_command("show", "/none/정", "--language", "ko").stderr)

    def test_what_stands_behind_two_hyphens_is_no_option(self):
        process = self.run_command("show", "--", "--json")
        self.assertEqual((process.returncode, process.stdout), (FAILED, ""))
        self.assertIn("--json does not exist", process.stderr)

    def test_full_and_closed_output(self):
        for redirection in (">/dev/full", ">&-"):
            for arguments in (["list"], ["list", "--json"], ["--version"], ["--help"], ["show", "0"]):
                process = subprocess.run(["sh", "-c", f'exec "$0" "$@" {redirection}', PROGRAM, *arguments], check=False,
                                         env=self.environment, capture_output=True, text=True)
                self.assertEqual(process.returncode, FAILED, (redirection, arguments))
                self.assertIn("cannot write to standard output", process.stderr)

    def test_a_reader_that_went_away(self):
        reading, writing = os.pipe()
        os.close(reading)
        with os.fdopen(writing, "w") as pipe:
            process = subprocess.run([PROGRAM, "list"], check=False, env=self.environment, stdout=pipe, stderr=subprocess.PIPE)
        self.assertEqual(process.returncode, FAILED)

    def test_nothing_of_a_certificate_steers_the_terminal(self):
        hostile = "a\x1b[31mb\u202ec\u0085d\u2066e\u200bf\x7fg"
        file = self.certificate("/CN=" + hostile)
        text = self.answer("show", file)
        for letter in hostile:
            if not letter.isprintable() or not letter.isalnum() and letter not in "[31m":
                self.assertNotIn(letter, text)
        raw = self.answer("show", file, "--json")
        self.assertFalse(any(ord(letter) < 32 and letter != "\n" or letter in "\u202e\u0085\u2066\u200b\x7f" for letter in raw))

    def test_paths_are_made_harmless_too(self):
        process = self.run_command("show", "/none/\x1b[2J\u202e")
        self.assertNotIn("\x1b", process.stderr)
        self.assertNotIn("\u202e", process.stderr)

    def test_hanja_beside_hangul(self):
        self.assertIn("cn=홍吉동", self.answer("show", self.certificate("/C=KR/CN=홍吉동")))

    def test_letters_that_the_terminal_lacks(self):
        file = self.certificate("/C=KR/CN=ab홍吉c")
        shown = self.answer("show", file, environment={"LC_ALL": "C"})
        self.assertIn("cn=ab??c", shown)
        whole = self.json("show", file, environment={"LC_ALL": "C"})
        self.assertEqual(whole["certificate"]["name"], "ab홍吉c")

    def test_colours_on_a_terminal_alone(self):
        self.assertNotIn("\x1b", self.answer("list"))
        self.assertNotIn("\x1b", self.answer("list", "--json", "--color", "always"))
        self.assertIn("\x1b[31m", self.answer("list", "--color", "always"))
        self.assertIn("\x1b[31m", self.on_terminal("list"))
        self.assertNotIn("\x1b", self.on_terminal("list", "--color", "never"))

    def on_terminal(self, *arguments, environment=None):
        status, seen = Terminal(self, *arguments, environment=environment).end()
        self.assertEqual(status, DONE)
        return seen

    def test_a_dumb_terminal_gets_no_sequences(self):
        self.assertNotIn("\x1b", self.on_terminal("list", environment={"TERM": "dumb"}))

    def test_colours_unless_the_environment_wants_none(self):
        self.assertNotIn("\x1b", self.on_terminal("list", environment={"NO_COLOR": "1"}))
        self.assertIn("\x1b[31m", self.on_terminal("list", "--color=always", environment={"NO_COLOR": "1"}))
        self.environment = {name: value for name, value in self.environment.items() if name != "TERM"}
        self.assertIn("\x1b[31m", self.on_terminal("list"))

    def wait_for_a_server(self, *options, shown):
        """What a terminal shows while a time stamp is awaited from a server that answers late, and then not at all."""
        with socket.create_server(("127.0.0.1", 0)) as server:
            url = f"http://127.0.0.1:{server.getsockname()[1]}/"
            terminal = Terminal(self, "timestamp", self.work / "passwd", "--url", url, *options)
            connection, _ = server.accept()
            if shown:
                terminal.wait_for(shown)
            else:
                time.sleep(1) # long enough for a line that must not come
            connection.close()
            server.close()
            status, seen = terminal.end()
            self.assertEqual(status, FAILED)
            return seen

    def test_progress_is_told_on_a_terminal_and_goes_away(self):
        for language, line in (("en", "Waiting for the time-stamping authority ..."), ("ko", "시점확인 기관의 응답을 기다립니다 ...")):
            seen = self.wait_for_a_server("--language", language, shown=line)
            self.assertRegex(seen, "^\r {%d}\rsigildesk: " % (width(line)))
            self.assertNotIn("\x1b", seen)

    def test_progress_is_not_told_where_nobody_wants_it(self):
        for option in ("--quiet", "--json"):
            self.assertNotIn("Waiting", self.wait_for_a_server(option, shown=""))

    def test_quiet_keeps_results_and_errors(self):
        self.assertEqual(self.answer("list", "--quiet"), self.answer("list"))
        self.assertTrue(self.run_command("--quiet", "show", "77").stderr)

    def test_no_qt_is_linked(self):
        linked = subprocess.run(["ldd", PROGRAM], check=True, capture_output=True, text=True).stdout
        self.assertNotRegex(linked, r"(?i)qt|SigilDesk|crypto|X11")
        self.assertTrue(pathlib.Path(PROGRAM).exists())

    def test_pick_says_that_there_is_no_display(self):
        for environment in ({}, {"QT_QPA_PLATFORM": "xcb"}, {"DISPLAY": ":64999"}, {"QT_QPA_PLATFORM": "none-such"}):
            self.assertEqual(self.error("pick", status=FAILED, environment=environment)["name"], "no_display", environment)
            process = self.run_command("pick", environment=environment)
            self.assertEqual((process.returncode, process.stdout), (FAILED, ""))
            self.assertIn("needs a display", process.stderr)

    def test_exit_codes(self):
        self.assertEqual(self.run_command("list").returncode, DONE)
        self.assertEqual(self.run_command("list", "--valid").returncode, NO)


main()
