# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""sign, verify-file, encrypt, decrypt, unlock, export and identity: what the command makes other programs read, and the
other way round."""

import fcntl
import os
import pathlib
import shutil

from command import DONE, FAILED, NO, PASSWORD, WRONG_USE, CommandTest, main

TEXT = "계약서: 이 글에 서명합니다.\r\n".encode()
TOOLKITS = ("maker", "gpki")


class KeysTest(CommandTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.report = cls.store("--count", "4", "--keys", "2", "--families", "npki,gpki", "--pairs", "both", "--state", "valid")
        cls.password = cls.secret("password", PASSWORD)
        cls.new_password = cls.secret("new-password", "another-Pass2!")
        authorities = cls.home / "ca"
        cls.trusted = cls.work / "trusted.pem"
        cls.trusted.write_bytes((authorities / "root.pem").read_bytes() + (authorities / "authorities.pem").read_bytes())
        cls.text = cls.work / "text.txt"
        cls.text.write_bytes(TEXT)

    @classmethod
    def secret(cls, name, text):
        """A file that holds a secret."""
        file = cls.work / name
        file.write_text(text + "\n")
        file.chmod(0o600)
        return file

    def fresh(self, name):
        """A path at which nothing is."""
        path = self.work / name
        path.unlink(missing_ok=True)
        return path

    def files(self, index=0):
        return self.json("show", index)["certificate"]["files"]

    def public_key(self, index=0):
        key = self.work / "public.pem"
        key.write_bytes(self.openssl("x509", "-inform", "DER", "-in", self.files(index)["certificate"], "-noout", "-pubkey"))
        return key

    def plain_key(self, *arguments):
        key = self.fresh("plain.pem")
        self.answer("unlock", "0", "--out", key, "--plain", "--password-file", self.password, *arguments)
        return key

    # -- sign ------------------------------------------------------------------------------------------------------

    def test_attached_message_is_read_by_openssl(self):
        for toolkit in TOOLKITS:
            target = self.fresh("text.txt.p7m")
            answer = self.json("sign", "0", self.text, "--toolkit", toolkit, "--password-file", self.password)
            self.assertEqual((answer["file"], answer["form"]), (str(target), "attached"))
            content = self.openssl("cms", "-verify", "-binary", "-inform", "DER", "-in", target, "-CAfile", self.trusted,
                                   "-purpose", "any")
            self.assertEqual(content, TEXT)

    def test_detached_message_is_read_by_openssl(self):
        for toolkit in TOOLKITS:
            target = self.fresh("text.txt.p7s")
            self.answer("sign", "0", self.text, "--detached", "--toolkit", toolkit, "--password-file", self.password)
            self.openssl("cms", "-verify", "-binary", "-inform", "DER", "-in", target, "-content", self.text, "-CAfile",
                         self.trusted, "-purpose", "any")
            self.assertNotIn(TEXT, target.read_bytes())

    def test_bare_signature_is_read_by_openssl(self):
        for toolkit in TOOLKITS:
            target = self.fresh("text.txt.sig")
            self.answer("sign", "0", self.text, "--raw", "--toolkit", toolkit, "--password-file", self.password)
            self.openssl("dgst", "-sha256", "-verify", self.public_key(), "-signature", target, self.text)

    def test_forms_exclude_each_other(self):
        for options in (["--raw", "--detached"], ["--raw", "--timestamp", "http://127.0.0.1:1/"]):
            self.assertEqual(self.error("sign", "0", self.text, *options, status=WRONG_USE)["name"], "wrong_use")

    def test_wrong_password_of_what_needs_a_key(self):
        wrong = self.secret("wrong", "wrong-Pass9!")
        self.answer("encrypt", self.text, "--to", "0", "--out", "wrong.p7e", "--force")
        for arguments in (["export", "0", "--new-password-file", self.new_password], ["decrypt", "0", "wrong.p7e"]):
            error = self.error(*arguments, "--out", "out-of-wrong", "--password-file", wrong, status=NO)
            self.assertEqual(error["code"], 2004, arguments)
            self.assertEqual([path for path in os.listdir(self.work) if path.startswith("out-of-wrong")], [])

    def test_wrong_password(self):
        wrong = self.secret("wrong", "wrong-Pass9!")
        error = self.error("sign", "0", self.text, "--out", self.fresh("no.p7m"), "--password-file", wrong, status=NO)
        self.assertEqual((error["code"], error["name"]), (2004, "SIGIL_TK_KEY_WRONG_PASSWORD"))
        self.assertEqual([path for path in os.listdir(self.work) if path.startswith("no.p7m")], [])

    # -- verify-file -----------------------------------------------------------------------------------------------

    def test_own_messages_verify(self):
        for form, ending, how in (("--attached", ".p7m", ["text.p7m"]),
                                  ("--detached", ".p7s", [self.text, "--signature", "text.p7s"]),
                                  ("--detached", ".p7s", ["text.p7s", "--content", self.text])):
            self.answer("sign", "0", self.text, form, "--out", "text" + ending, "--force", "--password-file", self.password)
            for toolkit in TOOLKITS:
                document = self.json("verify-file", *how, "--trust", self.trusted, "--toolkit", toolkit)
                self.assertTrue(document["valid"], document)
                self.assertEqual([step["step"] for step in document["steps"]], ["signature", "signer", "path"])
                signer = document["signers"][0]
                self.assertEqual(signer["certificate"]["serial"], self.json("show", "0")["certificate"]["serial"])
                self.assertRegex(signer["signing_time"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\+09:00$")

    def test_content_comes_out(self):
        self.answer("sign", "0", self.text, "--out", "text.p7m", "--force", "--password-file", self.password)
        content = self.fresh("content.txt")
        self.answer("verify-file", "text.p7m", "--out", content)
        self.assertEqual(content.read_bytes(), TEXT)
        self.assertEqual(self.error("verify-file", "text.p7m", "--out", content, status=FAILED)["name"], "file_exists")

    def test_a_second_writer_is_refused(self):
        self.answer("sign", "0", self.text, "--out", "text.p7m", "--force", "--password-file", self.password)
        content = self.fresh("content.txt")
        drafts = self.work / "content.txt.part~"
        drafts.mkdir()
        half = drafts / "content.txt"
        half.write_text("half")
        first = os.open(drafts, os.O_RDONLY)
        try:
            fcntl.flock(first, fcntl.LOCK_EX)
            error = self.error("verify-file", "text.p7m", "--out", content, status=FAILED)
            self.assertEqual(error["name"], "file_not_written")
            self.assertEqual(half.read_text(), "half", "the first one's work is left alone")
        finally:
            os.close(first)
        self.answer("verify-file", "text.p7m", "--out", content)
        self.assertEqual(content.read_bytes(), TEXT)
        self.assertFalse(drafts.exists(), "what a killed one left goes")

    def test_openssl_messages_verify(self):
        self.openssl("cms", "-sign", "-binary", "-nodetach", "-in", self.text, "-signer", self.pem_certificate(), "-inkey",
                     self.plain_key(), "-outform", "DER", "-out", "openssl.p7m")
        self.openssl("dgst", "-sha256", "-sign", self.plain_key(), "-out", "openssl.sig", self.text)
        for toolkit in TOOLKITS:
            self.assertTrue(self.json("verify-file", "openssl.p7m", "--trust", self.trusted, "--toolkit", toolkit)["valid"])
            self.assertTrue(self.json("verify-file", self.text, "--signature", "openssl.sig", "--certificate", "0", "--trust",
                                      self.trusted, "--toolkit", toolkit)["valid"])

    def pem_certificate(self):
        file = self.work / "certificate.pem"
        file.write_bytes(self.openssl("x509", "-inform", "DER", "-in", self.files()["certificate"]))
        return file

    def test_changed_content_is_no(self):
        other = self.work / "other.txt"
        other.write_bytes(TEXT + b"!")
        for form, ending, more in (("--detached", ".p7s", []), ("--raw", ".sig", ["--certificate", "0"])):
            self.answer("sign", "0", self.text, form, "--out", "text" + ending, "--force", "--password-file", self.password)
            document = self.json("verify-file", other, "--signature", "text" + ending, *more, status=NO)
            self.assertEqual((document["valid"], document["steps"][0]["step"]), (False, "signature"))
            content = self.fresh("nothing.txt")
            self.answer("verify-file", other, "--signature", "text" + ending, *more, "--out", content, status=NO)
            self.assertFalse(content.exists())

    def test_the_content_beside_a_message_is_the_one_in_it(self):
        other = self.work / "beside.txt"
        self.answer("sign", "0", self.text, "--out", "text.p7m", "--force", "--password-file", self.password)
        for toolkit in TOOLKITS:
            for content, status in ((TEXT, DONE), (TEXT + b"!", NO), (b"", NO)):
                other.write_bytes(content)
                for how in ([other, "--signature", "text.p7m"], ["text.p7m", "--content", other]):
                    document = self.json("verify-file", *how, "--toolkit", toolkit, status=status)
                    self.assertEqual((document["valid"], document["steps"][0]["ok"]), (status == DONE, status == DONE))
                    self.assertEqual(other.read_bytes(), content)

    def test_a_signed_empty_file_verifies(self):
        empty = self.work / "nothing.txt"
        empty.write_bytes(b"")
        for toolkit in TOOLKITS:
            for form, how in (("--detached", [empty, "--signature", "nothing.txt.p7s"]), ("--attached", ["nothing.txt.p7m"])):
                self.answer("sign", "0", empty, form, "--force", "--toolkit", toolkit, "--password-file", self.password)
                document = self.json("verify-file", *how, "--trust", self.trusted, "--toolkit", toolkit)
                self.assertEqual([step["ok"] for step in document["steps"]], [True] * 3)
                self.assertEqual(len(document["signers"]), 1)
        self.openssl("cms", "-verify", "-binary", "-inform", "DER", "-in", "nothing.txt.p7s", "-content", empty, "-CAfile",
                     self.trusted, "-purpose", "any")

    def test_untrusted_signer_is_no(self):
        self.answer("sign", "0", self.text, "--out", "text.p7m", "--force", "--password-file", self.password)
        self.openssl("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", "/dev/null", "-subj", "/CN=other", "-out",
                     "stranger.pem")
        document = self.json("verify-file", "text.p7m", "--trust", "stranger.pem", status=NO)
        self.assertEqual([step["ok"] for step in document["steps"]], [True, True, False])

    def test_a_bare_signature(self):
        self.answer("sign", "0", self.text, "--raw", "--out", "bare.sig", "--force", "--password-file", self.password)
        bare = ["verify-file", self.text, "--certificate", "0"]
        for toolkit in TOOLKITS:
            document = self.json(*bare, "--signature", "bare.sig", "--toolkit", toolkit)
            self.assertEqual([(step["step"], step["ok"]) for step in document["steps"]], [("signature", True), ("signer", True)])
            (self.work / "void.sig").touch()
            self.assertEqual(self.error(*bare, "--signature", "void.sig", "--toolkit", toolkit, status=FAILED)["code"], 1001)
        self.assertIn("--signature names", self.error(*bare, status=WRONG_USE)["message"])

    def test_one_content_alone(self):
        error = self.error("verify-file", self.text, "--signature", "bare.sig", "--content", self.text, status=WRONG_USE)
        self.assertEqual(error["message"], "--content and --signature exclude each other")

    def test_a_message_without_a_time(self):
        self.openssl("cms", "-sign", "-binary", "-nodetach", "-noattr", "-in", self.text, "-signer", self.pem_certificate(),
                     "-inkey", self.plain_key(), "-outform", "DER", "-out", "timeless.p7m")
        self.assertIsNone(self.json("verify-file", "timeless.p7m")["signers"][0]["signing_time"])
        self.assertIn("the message tells no time", self.answer("verify-file", "timeless.p7m"))

    def test_no_message_is_a_failure(self):
        self.assertEqual(self.error("verify-file", self.text, status=FAILED)["code"], 3900)

    # -- encrypt, decrypt ------------------------------------------------------------------------------------------

    def test_there_and_back(self):
        for toolkit in TOOLKITS:
            for recipients in (["0"], ["1", "0"]):
                answer = self.json("encrypt", self.text, "--force", "--to", *recipients, "--toolkit", toolkit)
                self.assertEqual(answer["file"], str(self.text) + ".p7e")
                self.assertEqual(len(answer["recipients"]), len(recipients))
                for recipient in recipients:
                    plain = self.fresh("again.txt")
                    self.answer("decrypt", recipient, answer["file"], "--out", plain, "--toolkit", toolkit, "--password-file",
                                self.password)
                    self.assertEqual(plain.read_bytes(), TEXT)

    def test_default_names_of_decrypted_files(self):
        message = self.work / "letter.p7e"
        self.answer("encrypt", self.text, "--to", "0", "--out", message, "--force")
        self.fresh("letter")
        self.assertEqual(self.json("decrypt", "0", message, "--password-file", self.password)["file"], str(self.work / "letter"))
        shutil.copy(message, self.work / "letter.bin")
        self.fresh("letter.bin.plain")
        self.assertEqual(self.json("decrypt", "0", "letter.bin", "--password-file", self.password)["file"], "letter.bin.plain")

        for name in ("abc", ".p7e"):  # nothing is left without the ending
            shutil.copy(message, self.work / name)
            self.fresh(name + ".plain")
            self.assertEqual(self.json("decrypt", "0", name, "--password-file", self.password)["file"], name + ".plain")

    def test_encrypt_needs_a_recipient(self):
        self.assertEqual(self.error("encrypt", self.text, status=WRONG_USE)["message"], "--to names nobody")

    def test_openssl_decrypts_for_every_cipher(self):
        key = self.plain_key("--km")
        for cipher in ("aes256", "aes192", "aes128", "aria256", "aria192", "aria128", "3des"):
            message = self.fresh("message.p7e")
            self.answer("encrypt", self.text, "--to", "0", "--cipher", cipher, "--out", message)
            plain = self.openssl("cms", "-decrypt", "-binary", "-inform", "DER", "-in", message, "-inkey", key)
            self.assertEqual(plain, TEXT, cipher)

    def test_openssl_encrypts(self):
        km = self.work / "km.pem"
        km.write_bytes(self.openssl("x509", "-inform", "DER", "-in", self.files()["km_certificate"]))
        for recipient in (km, self.pem_certificate()):
            self.openssl("cms", "-encrypt", "-binary", "-aes-256-cbc", "-in", self.text, "-outform", "DER", "-out",
                         "openssl.p7e", recipient)
            for toolkit in TOOLKITS:
                plain = self.fresh("openssl")
                self.answer("decrypt", "0", "openssl.p7e", "--toolkit", toolkit, "--password-file", self.password)
                self.assertEqual(plain.read_bytes(), TEXT)

    def test_an_empty_file(self):
        empty, message, plain = self.work / "empty", self.fresh("empty.p7e"), self.fresh("plain")
        empty.write_bytes(b"")
        self.answer("encrypt", empty, "--to", "0", "--toolkit", "gpki")
        for toolkit in TOOLKITS:
            self.answer("decrypt", "0", message, "--out", plain, "--force", "--toolkit", toolkit, "--password-file", self.password)
            self.assertEqual(plain.read_bytes(), b"")
        for arguments in (["encrypt", empty, "--to", "0", "--force"], ["encrypt", empty, "--to", "0", "1", "--toolkit", "gpki", "--force"],
                          ["sign", "0", empty, "--raw", "--password-file", self.password],
                          ["timestamp", empty, "--url", "http://127.0.0.1:1/"]):
            self.assertEqual(self.error(*arguments, status=FAILED)["name"], "empty_file", arguments)

    def test_a_file_that_is_needed_in_one_piece(self):
        large = self.work / "large"
        large.touch()
        os.truncate(large, 1 << 31)  # takes no room
        self.addCleanup(large.unlink)
        for arguments in (["encrypt", large, "--to", "0"], ["sign", "0", large, "--raw", "--password-file", self.password],
                          ["timestamp", large, "--url", "http://127.0.0.1:1/"], ["verify-file", large],
                          ["verify-file", self.text, "--signature", large]):
            self.assertEqual(self.error(*arguments, status=FAILED)["name"], "file_too_large", arguments)

    def test_not_for_this_key(self):
        self.answer("encrypt", self.text, "--to", "1", "--out", "other.p7e", "--force")
        error = self.error("decrypt", "0", "other.p7e", "--password-file", self.password, status=NO)
        self.assertEqual(error["name"], "not_a_recipient")

    # -- unlock ----------------------------------------------------------------------------------------------------

    def test_password_is_tested(self):
        self.assertTrue(self.json("unlock", "0", "--password-file", self.password)["unlocked"])
        self.assertTrue(self.json("unlock", "0", "--km", "--password-file", self.password)["unlocked"])
        wrong = self.secret("wrong", "wrong-Pass9!")
        self.assertEqual(self.error("unlock", "0", "--password-file", wrong, status=NO)["code"], 2004)

    def test_openssl_reads_the_key(self):
        for toolkit in TOOLKITS:
            key = self.fresh("key.pem")
            self.answer("unlock", "0", "--out", key, "--toolkit", toolkit, "--password-file", self.password,
                        "--new-password-file", self.new_password)
            self.assertEqual(key.stat().st_mode & 0o777, 0o600)
            text = self.openssl("asn1parse", "-in", key).decode()
            self.assertIn("PBES2", text)
            self.assertIn("aes-256-cbc", text)
            public = self.openssl("pkey", "-in", key, "-passin", f"file:{self.new_password}", "-pubout")
            self.assertEqual(public, self.public_key().read_bytes())
            self.openssl("pkey", "-in", key, "-passin", f"file:{self.password}", "-noout", status=1)

    def test_plain_key(self):
        key = self.plain_key()
        self.assertEqual(key.stat().st_mode & 0o777, 0o600)
        self.assertEqual(self.openssl("pkey", "-in", key, "-pubout"), self.public_key().read_bytes())
        self.assertEqual(self.error("unlock", "0", "--plain", status=WRONG_USE)["name"], "wrong_use")

    def test_no_such_pair(self):
        alone = self.work / "alone.der"
        shutil.copy(self.files()["certificate"], alone)
        for arguments in ([], ["--km"]):
            error = self.error("unlock", alone, *arguments, "--password-file", self.password, status=NO)
            self.assertEqual(error["name"], "no_key")

    # -- export ----------------------------------------------------------------------------------------------------

    def test_openssl_reads_the_export(self):
        for toolkit in TOOLKITS:
            for protection in ("3des", "seed", "aes256"):
                file = self.fresh("mine.pfx")
                self.answer("export", "0", "--out", file, "--protection", protection, "--toolkit", toolkit, "--password-file",
                            self.password, "--new-password-file", self.new_password)
                self.assertEqual(file.stat().st_mode & 0o777, 0o600)
                text = self.openssl("pkcs12", "-in", file, "-nodes", "-passin", f"file:{self.new_password}", "-provider",
                                    "default", "-provider", "legacy").decode()
                self.assertEqual(text.count("BEGIN CERTIFICATE"), 2, (toolkit, protection))
                self.assertEqual(text.count("BEGIN PRIVATE KEY"), 2)
                self.openssl("pkcs12", "-in", file, "-nokeys", "-passin", f"file:{self.password}", status=1)

    def test_export_needs_a_file(self):
        self.assertEqual(self.error("export", "0", status=WRONG_USE)["name"], "wrong_use")

    # -- identity --------------------------------------------------------------------------------------------------

    def test_identity(self):
        row = next(row for row in self.report if row["identity"])
        number = row["identity"]
        for toolkit in TOOLKITS:
            for digits, matches in ((number, True), (number[:-1] + str(9 - int(number[-1])), False)):
                answer = self.json("identity", "serial:" + row["serial"], "--identity-file", self.secret("number", digits), "--password-file",
                                   self.password, "--toolkit", toolkit, status=DONE if matches else NO)
                self.assertEqual(answer["matches"], matches)

    def test_identity_of_a_certificate_without_one(self):
        with_random = next(row["signing_key"] for row in self.report if row["identity"])
        folder = self.work / "mixed"
        folder.mkdir()
        self.openssl("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", "/dev/null", "-subj", "/CN=other", "-outform",
                     "DER", "-out", folder / "signCert.der")
        shutil.copy(with_random, folder / "signPri.key")
        error = self.error("identity", folder, "--identity-file", self.secret("number", "1"), "--password-file", self.password,
                           status=FAILED)
        self.assertEqual(error["code"], 3501)

    # -- files -----------------------------------------------------------------------------------------------------

    def test_nothing_is_replaced_without_force(self):
        commands = {
            "sign": ["sign", "0", self.text, "--password-file", self.password],
            "encrypt": ["encrypt", self.text, "--to", "0"],
            "unlock": ["unlock", "0", "--plain", "--password-file", self.password],
            "export": ["export", "0", "--password-file", self.password, "--new-password-file", self.new_password],
        }
        there = self.work / "there"
        for name, arguments in commands.items():
            there.write_text("mine")
            self.assertEqual(self.error(*arguments, "--out", there, status=FAILED)["name"], "file_exists", name)
            self.assertEqual(there.read_text(), "mine")
            self.answer(*arguments, "--out", there, "--force")
            self.assertNotEqual(there.read_bytes(), b"mine")
        self.assertEqual([name for name in os.listdir(self.work) if name.startswith("there.")], [])

    def test_a_link_is_replaced_itself(self):
        aim = self.work / "aim"
        aim.write_text("mine")
        link = self.fresh("link")
        link.symlink_to(aim)
        self.assertEqual(self.error("encrypt", self.text, "--to", "0", "--out", link, status=FAILED)["name"], "file_exists")
        self.answer("encrypt", self.text, "--to", "0", "--out", link, "--force")
        self.assertEqual((aim.read_text(), link.is_symlink()), ("mine", False))

    def test_files_that_cannot_be_read_or_written(self):
        self.assertEqual(self.error("encrypt", "/no/such", "--to", "0", status=FAILED)["name"], "not_found")
        self.assertEqual(self.error("encrypt", self.work, "--to", "0", "--out", "x", status=FAILED)["name"], "file_not_read")
        for place in ("/no/such/place", self.work):
            self.assertEqual(self.error("encrypt", self.text, "--to", "0", "--out", place, status=FAILED)["name"],
                             "file_not_written")
        pipe = self.work / "pipe"
        os.mkfifo(pipe)
        self.assertEqual(self.error("encrypt", pipe, "--to", "0", "--out", "x", status=FAILED)["name"], "file_not_read")
        self.assertFalse(pathlib.Path(self.work / "x").exists())


main()
