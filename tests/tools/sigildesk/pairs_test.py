# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""copy, delete and passwd: the pairs of a certificate, all of them or none."""

import os
import pathlib
import pty
import shutil
import stat
import struct

from command import DONE, FAILED, NO, PASSWORD, PROGRAM, WRONG_USE, CommandTest, main
from terminal import Terminal

PARTS = ["certificate", "key", "km_certificate", "km_key"]
NEW_PASSWORD = "renewed5678?"


class PairsTest(CommandTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.report = cls.store("--count", "4", "--families", "npki,gpki,mpki,ppki", "--pairs", "both", "--keys", "2",
                               "--pfx", target=cls.work / "sample")

    def setUp(self):
        for folder in (self.home, self.work / "usb"):
            shutil.rmtree(folder, ignore_errors=True)
        shutil.copytree(self.work / "sample", self.home)
        (self.work / "usb").mkdir()
        self.old, self.new = self.secret("old", PASSWORD), self.secret("new", NEW_PASSWORD)

    def secret(self, name, content):
        file = self.work / name
        file.write_text(content + "\n")
        file.chmod(0o600)
        return file

    def listed(self, *arguments, status=DONE):
        return self.json("list", *arguments, status=status)["certificates"]

    def of(self, family):
        return next(certificate for certificate in self.listed() if certificate["family"] == family)

    def contents(self, certificate):
        return {part: pathlib.Path(certificate["files"][part]).read_bytes() for part in PARTS}

    def state(self, folder):
        """All files below a folder."""
        return {path: path.read_bytes() for path in sorted(folder.rglob("*")) if path.is_file()}

    def test_copy_writes_what_list_reads(self):
        usb = self.work / "usb"
        for family in ("npki", "gpki", "mpki"):
            source = self.of(family)
            copied = self.json("copy", source["index"], "--to", usb)["certificate"]
            self.assertEqual(self.contents(copied), self.contents(source), family)
            found = [c for c in self.listed("--media", usb) if c["family"] == family]
            self.assertEqual([c["serial"] for c in found], [source["serial"]], family)
            self.assertEqual(found[0]["files"], copied["files"])
        for path in usb.rglob("*"):
            self.assertEqual(stat.S_IMODE(path.stat().st_mode), 0o700 if path.is_dir() else 0o600, path)
        self.assertEqual(len(self.state(usb)), 12)

    def test_copy_prints_where(self):
        self.assertIn("signCert.der", self.answer("copy", self.of("npki")["index"], "--to", self.work / "usb"))

    def test_copy_to_the_home_folder(self):
        usb = self.work / "usb"
        for family in ("npki", "gpki", "mpki", "ppki"):
            source = self.of(family)
            same = self.json("copy", source["index"], "--to", "disk", "--force")["certificate"]
            self.assertEqual(same["files"], source["files"], "a certificate of the sample has another place")
            if family != "ppki":
                self.json("copy", source["index"], "--to", usb)
        serials = [c["serial"] for c in self.listed("--media", usb)]
        shutil.rmtree(self.home)
        self.home.mkdir()
        for index in range(3):
            self.json("copy", index, "--media", usb, "--to", "disk")
        self.assertEqual([c["serial"] for c in self.listed()], serials)

    def test_copy_over_an_older_pair(self):
        usb = self.work / "usb"
        source = self.of("npki")
        copied = self.json("copy", source["index"], "--to", usb)["certificate"]
        place = {part: pathlib.Path(copied["files"][part]) for part in PARTS}
        place["key"].write_bytes(b"another")
        before = self.state(usb)
        self.assertEqual(self.error("copy", source["index"], "--to", usb, status=FAILED)["name"], "file_exists")
        self.assertEqual(self.state(usb), before)
        self.json("copy", source["index"], "--to", usb, "--force")
        self.assertEqual(self.contents(copied), self.contents(source))
        for part in ("km_certificate", "km_key"):
            pathlib.Path(source["files"][part]).unlink()
        alone = self.json("copy", source["index"], "--to", usb, "--force")["certificate"]
        self.assertEqual((alone["files"]["km_certificate"], alone["files"]["km_key"]), (None, None))
        self.assertEqual(len(self.state(usb)), 2, "a key-management pair of another make stays behind")

    def test_copy_of_what_has_no_place(self):
        ppki = self.of("ppki")
        self.assertEqual(self.error("copy", ppki["index"], "--to", self.work / "usb", status=FAILED)["name"], "no_place")
        self.openssl("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", self.work / "signPri.key", "-outform", "DER",
                     "-subj", "/CN=nobody", "-out", self.work / "signCert.der")
        self.assertEqual(self.error("copy", self.work / "signCert.der", "--to", self.work / "usb", status=FAILED)["name"],
                         "no_place")
        self.assertEqual(self.state(self.work / "usb"), {})

    def test_copy_without_key_or_target(self):
        source = self.of("npki")
        self.assertEqual(self.error("copy", source["index"], status=WRONG_USE)["name"], "wrong_use")
        self.assertEqual(self.error("copy", source["index"], "--to", self.work / "gone", status=FAILED)["name"], "not_found")
        alone = self.work / "alone.der"
        shutil.copy(source["files"]["certificate"], alone)
        self.assertEqual(self.error("copy", alone, "--to", self.work / "usb", status=NO)["name"], "no_key")
        self.assertEqual(self.error("copy", source["files"]["km_certificate"], "--to", self.work / "usb",
                                    status=WRONG_USE)["name"], "key_management")

    def test_delete_takes_all_files_of_both_pairs(self):
        for family in ("npki", "gpki", "mpki", "ppki"):
            certificate = self.of(family)
            document = self.json("delete", certificate["index"], "--yes")
            self.assertTrue(document["deleted"])
            self.assertEqual(document["certificate"]["serial"], certificate["serial"])
            for part in PARTS:
                self.assertFalse(pathlib.Path(certificate["files"][part]).exists(), part)
        self.assertEqual(self.listed(status=NO), [])
        self.assertTrue((self.home / "GPKI/Certificate/class2").is_dir())
        self.assertEqual([p for p in (self.home / "MPKI/USER").iterdir()], [], "a folder without a certificate stays")

    def test_delete_asks(self):
        certificate = self.of("gpki")
        before = self.state(self.home)
        self.assertEqual(self.error("delete", certificate["index"], status=WRONG_USE)["name"], "no_terminal")
        self.assertIn("--yes", self.run_command("delete", certificate["index"]).stderr)
        self.assertEqual(self.state(self.home), before)
        self.assertEqual(self.at_terminal("n\n", "delete", certificate["index"]), NO)
        self.assertEqual(self.state(self.home), before)
        self.assertEqual(self.at_terminal("y\n", "delete", certificate["index"]), DONE)
        self.assertEqual(len(before) - len(self.state(self.home)), 4)

    def test_delete_asks_in_both_languages(self):
        question = {"en": "? [y/N] ", "ko": "지울까요? [예(y)/아니요(N)] "}
        for language, answer, status in (("ko", "아니요", NO), ("ko", "", NO), ("en", "", NO), ("en", "no", NO), ("ko", "예", DONE),
                                         ("ko", "네", DONE), ("ko", "ㅛ", DONE), ("en", "Yes", DONE), ("en", "y", DONE)):
            self.setUp()
            before = self.state(self.home)
            terminal = Terminal(self, "delete", self.of("gpki")["index"], "--language", language)
            terminal.wait_for(question[language])
            terminal.type(answer)
            self.assertEqual(terminal.end()[0], status, answer)
            self.assertEqual(self.state(self.home) == before, status == NO, answer)

    def test_delete_is_not_confirmed_by_the_end_of_input(self):
        before = self.state(self.home)
        terminal = Terminal(self, "delete", self.of("gpki")["index"])
        terminal.wait_for("? [y/N] ")
        os.write(terminal.control, b"\x04")
        self.assertEqual(terminal.end()[0], NO)
        self.assertEqual(self.state(self.home), before)

    def at_terminal(self, answers, *arguments):
        """The exit code of a run that a person at a terminal answers, a line for each question."""
        child, terminal = pty.fork()
        if child == 0:
            os.execve(PROGRAM, [str(PROGRAM), *map(str, arguments)], self.environment)
        said = b""
        lines = answers.splitlines(keepends=True)
        while True:
            try:
                said += os.read(terminal, 1024)
            except OSError:
                break
            if lines and said.rstrip().endswith((b"]", b":")):
                os.write(terminal, lines.pop(0).encode())
                said = b""
        os.close(terminal)
        return os.waitstatus_to_exitcode(os.waitpid(child, 0)[1])

    def test_delete_of_what_has_no_files(self):
        certificate = self.of("npki")
        with open(certificate["files"]["certificate"], "rb") as file:
            self.assertEqual(self.error("delete", "-", "--yes", stdin=file, status=WRONG_USE)["name"], "wrong_use")
        self.assertEqual(self.error("delete", "99", "--yes", status=NO)["name"], "no_match")
        alone = self.work / "alone.der"
        shutil.copy(certificate["files"]["certificate"], alone)
        self.json("delete", alone, "--yes")
        self.assertFalse(alone.exists())

    def passwd(self, certificate, *arguments, **options):
        return self.run_command("passwd", certificate, "--password-file", self.old, "--new-password-file", self.new,
                                *arguments, **options)

    def test_passwd_changes_both_keys(self):
        for family in ("npki", "gpki", "mpki", "ppki"):
            certificate = self.of(family)
            before = self.contents(certificate)
            self.assertEqual(self.passwd(certificate["index"]).returncode, DONE)
            after = self.contents(certificate)
            for part in PARTS:
                self.assertEqual(after[part] == before[part], part.endswith("certificate"), (family, part))
            refused = self.passwd(certificate["index"], "--json")
            self.assertEqual(refused.returncode, NO, "the old password still opens a key")
            back = self.json("passwd", certificate["index"], "--password-file", self.new, "--new-password-file", self.old)
            self.assertTrue(back["changed"])

    def test_passwd_by_descriptors(self):
        certificate = self.of("npki")
        reading, writing = os.pipe()
        os.write(writing, f"{PASSWORD}\n{NEW_PASSWORD}\n".encode())
        os.close(writing)
        self.assertEqual(self.answer("passwd", certificate["index"], "--password-fd", reading, "--new-password-fd", reading,
                                     pass_fds=[reading]), f"The password of {certificate['name']} is changed.\n")
        os.close(reading)

    def test_passwd_at_a_terminal(self):
        index = self.of("gpki")["index"]
        right = f"{PASSWORD}\n{NEW_PASSWORD}\n{NEW_PASSWORD}\n"
        before = self.state(self.home)
        self.assertEqual(self.at_terminal(f"{PASSWORD}\none\nother\n", "passwd", index), NO)
        self.assertEqual(self.at_terminal("wrong\nwrong\n", "passwd", index), NO)
        self.assertEqual(self.state(self.home), before)
        self.assertEqual(self.at_terminal("wrong\n" + right, "passwd", index), DONE)
        self.assertNotEqual(self.state(self.home), before)

    def test_passwd_refused_leaves_everything(self):
        certificate = self.of("npki")
        before = self.state(self.home)
        wrong = self.secret("wrong", "not it")
        self.assertEqual(self.error("passwd", certificate["index"], "--password-file", wrong, "--new-password-file", self.new,
                                    status=NO)["code"], 2004)
        self.assertEqual(self.error("passwd", certificate["index"], "--password-file", self.old, status=WRONG_USE)["name"],
                         "no_terminal")
        self.assertEqual(self.state(self.home), before)
        # Two keys with two passwords are not one pair to this command.
        other = self.of("gpki")
        self.assertEqual(self.passwd(other["index"]).returncode, DONE)
        shutil.copy(other["files"]["km_key"], certificate["files"]["km_key"])
        before = self.state(self.home)
        self.assertEqual(self.passwd(certificate["index"]).returncode, NO)
        self.assertEqual(self.state(self.home), before)

    def interrupt(self, certificate):
        """Leaves behind what a killed command does: notes of the old files beside new ones, and a temporary."""
        key = pathlib.Path(certificate["files"]["key"])
        before = self.contents(certificate)
        notes = b"changed pairs\n" + b"".join(struct.pack("<q", len(before[part])) + before[part] for part in PARTS)
        key.with_name(key.name + ".undo").write_bytes(notes)
        key.with_name(key.name + ".Ab12Cd").write_bytes(b"half")
        key.write_bytes(before["km_key"])

    def test_whoever_reads_next_repairs_first(self):
        before = self.state(self.home)
        for family in ("npki", "gpki", "mpki", "ppki"):
            certificate = self.of(family)
            file = certificate["files"]["certificate"]
            for arguments in (["list"], ["show", file], ["show", "serial:" + certificate["serial"]]):
                self.interrupt(certificate)
                self.json(*arguments)
                self.assertEqual(self.state(self.home), before, (family, arguments))
            self.interrupt(certificate)
            pathlib.Path(file).unlink()
            self.json("show", pathlib.Path(file).name, cwd=pathlib.Path(file).parent)
            self.assertEqual(self.state(self.home), before, family)

    def test_a_folder_that_takes_nothing(self):
        certificate = self.of("gpki")
        folder = pathlib.Path(certificate["files"]["certificate"]).parent
        notes = folder / (pathlib.Path(certificate["files"]["key"]).name + ".undo")
        notes.mkdir()
        before = self.state(self.home)
        for arguments in (["delete", certificate["index"], "--yes"],
                          ["passwd", certificate["index"], "--password-file", self.old, "--new-password-file", self.new]):
            self.assertEqual(self.error(*arguments, status=FAILED)["name"], "pair_not_changed")
            self.assertEqual(self.state(self.home), before)

    def test_import_files_pairs_where_list_reads(self):
        usb = self.work / "usb"
        for row in self.report:
            if row["family"] == "ppki":
                continue
            imported = self.json("import", row["pfx"], "--to", usb, "--password-file", self.old)["certificate"]
            self.assertEqual(imported["serial"], row["serial"])
            found = next(c for c in self.listed("--media", usb) if c["serial"] == row["serial"])
            self.assertEqual(found["files"], imported["files"])
            for part, source in (("certificate", "signing_certificate"), ("km_certificate", "km_certificate")):
                self.assertEqual(pathlib.Path(found["files"][part]).read_bytes(), pathlib.Path(row[source]).read_bytes())
            # The keys have the password of the file, and are these certificates'.
            self.json("passwd", found["index"], "--media", usb, "--password-file", self.old, "--new-password-file", self.new)
        self.assertEqual(len(self.state(usb)), 12)

    def test_import_is_refused(self):
        usb, row = self.work / "usb", self.report[0]
        arguments = ("import", row["pfx"], "--media", usb, "--password-file")
        self.assertEqual(self.error(*arguments, self.new, status=NO)["code"], 1113)
        self.assertEqual(self.error("import", "/no/file.pfx", "--to", usb, status=FAILED)["name"], "not_found")
        self.assertEqual(self.error("import", row["pfx"], "--to", usb, status=WRONG_USE)["name"], "no_terminal")
        self.assertEqual(self.error("import", row["signing_key"], "--to", usb, "--password-file", self.old,
                                    status=FAILED)["code"], 1129)
        self.assertEqual(self.state(usb), {})
        self.json(*arguments, self.old)
        before = self.state(usb)
        self.assertEqual(self.error(*arguments, self.old, status=FAILED)["name"], "file_exists")
        self.assertEqual(self.state(usb), before)
        self.json(*arguments, self.old, "--force", "--toolkit", "gpki")
        self.assertEqual(len(self.state(usb)), 4)

    def test_import_of_a_file_that_openssl_made(self):
        made = self.work / "made"
        made.mkdir()
        self.openssl("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", made / "key.pem", "-out", made / "cert.pem",
                     "-subj", "/C=kr/O=yessign/OU=personal/CN=Made elsewhere", "-set_serial", "0x5a5a",
                     "-addext", "keyUsage=digitalSignature", "-addext", "certificatePolicies=1.2.410.200005.1.1.4")
        self.openssl("pkcs12", "-export", "-inkey", made / "key.pem", "-in", made / "cert.pem", "-out", made / "made.pfx",
                     "-passout", f"file:{self.old}")
        shutil.rmtree(self.home)
        self.home.mkdir()
        self.json("import", made / "made.pfx", "--password-file", self.old)
        listed = self.listed()
        self.assertEqual([(c["serial"], c["has_km"]) for c in listed], [("5a5a", False)])
        der = self.openssl("x509", "-in", made / "cert.pem", "-outform", "DER")
        self.assertEqual(pathlib.Path(listed[0]["files"]["certificate"]).read_bytes(), der)
        self.assertEqual(self.passwd(0).returncode, DONE)

    def test_both_toolkits(self):
        index = self.of("gpki")["index"]
        self.assertEqual(self.passwd(index, "--toolkit", "gpki").returncode, DONE)
        self.json("copy", index, "--to", self.work / "usb", "--toolkit", "gpki")
        self.json("delete", index, "--yes", "--toolkit", "gpki")


main()
