# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""pick, with the dialog on Qt's platform without a display, used by a plug-in in a person's place."""

import os
import socket
import subprocess

import shapes
from command import BUILD, DONE, FAILED, NO, PASSWORD, CommandTest, main


class PickTest(CommandTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        rows = ["--count", "1", "--keys", "2", "--state", "valid", "--key-variant", "E", "--families", "npki"]
        cls.both, = cls.store(*rows, "--pairs", "both")
        cls.signing, = cls.store(*rows, "--pairs", "signing", target=cls.work / "signing")
        (cls.work / "password").write_text(PASSWORD)
        (cls.work / "text.txt").write_text("a text")
        cls.environment.update(QT_QPA_PLATFORM="offscreen", QT_PLUGIN_PATH=str(BUILD / "plugins"),
                               QT_QPA_GENERIC_PLUGINS="dialog-user:0", SIGIL_TEST_PASSWORD_FILE=str(cls.work / "password"))

    def names(self, folder):
        return sorted(os.listdir(self.work / folder))

    def signed(self, file):
        """What a message says that the chosen certificate has signed."""
        content = self.openssl("cms", "-verify", "-noverify", "-binary", "-inform", "DER", "-in", file, "-signer", "signer.pem")
        with open(self.both["signing_certificate"], "rb") as certificate:
            self.assertEqual(self.openssl("x509", "-in", "signer.pem", "-outform", "DER"), certificate.read())
        return content.decode()

    def test_the_choice_is_printed(self):
        for toolkit in ("maker", "gpki"):
            document = self.json("pick", "--toolkit", toolkit)
            chosen = document["certificate"]
            self.assertEqual(document["files"], [])
            self.assertNotIn("signature", document)
            self.assertEqual((chosen["subject"], chosen["issuer"]), (self.both["subject"], self.both["issuer"]))
            self.assertEqual((chosen["serial"], chosen["file"]), (self.both["serial"], self.both["signing_certificate"]))
            self.assertEqual(chosen["valid_to"], self.json("show", "0")["certificate"]["valid_to"][:10])
            self.assertIn(self.both["policy"].replace(".", " "), chosen["policy"])
            for language, label in (("en", "serial number"), ("ko", "일련번호")):
                lines = self.answer("pick", "--toolkit", toolkit, "--language", language).splitlines()
                self.assertEqual(len(lines), len(chosen))
                self.assertRegex("\n".join(lines), rf"(?m)^{label} +{chosen['serial']}$")

    def test_a_file_is_signed(self):
        for toolkit in ("maker", "gpki"):
            folder = "chosen-" + toolkit
            document = self.json("pick", "--sign", "text.txt", "--out", folder, "--toolkit", toolkit)
            shapes.check(self.answer("manual"), "pick", document)
            self.assertEqual(document["files"], [f"{folder}/signCert.der", f"{folder}/kmCert.der"])
            self.assertEqual(document["signature"], f"{folder}/text.txt.p7m")
            self.assertEqual(self.names(folder), ["kmCert.der", "signCert.der", "text.txt.p7m"])
            for name, original in (("signCert.der", "signing_certificate"), ("kmCert.der", "km_certificate")):
                with open(self.both[original], "rb") as file:
                    self.assertEqual((self.work / folder / name).read_bytes(), file.read())
            self.assertEqual(self.signed(f"{folder}/text.txt.p7m"), "a text")

    def test_a_message_beside_its_file(self):
        text = self.work / "beside.txt"
        text.write_text("beside")
        self.assertRegex(self.answer("pick", "--sign", text), rf"(?m)^signed +{text}\.p7m$")
        self.assertEqual(self.signed(f"{text}.p7m"), "beside")
        self.assertEqual(self.error("pick", "--sign", text, status=FAILED)["name"], "file_exists")
        self.answer("pick", "--sign", text, "--force")

    def test_a_certificate_without_a_key_management_pair(self):
        home = self.home.rename(self.work / "other home")
        self.addCleanup(lambda: (self.home.unlink(), home.rename(self.home)))
        self.home.symlink_to(self.work / "signing")
        document = self.json("pick", "--out", "alone")
        self.assertEqual(document["certificate"]["serial"], self.signing["serial"])
        self.assertEqual((document["files"], self.names("alone")), (["alone/signCert.der"], ["signCert.der"]))

    def test_nothing_is_replaced_without_force(self):
        (self.work / "there").mkdir()
        (self.work / "there" / "signCert.der").write_text("mine")
        self.assertEqual(self.error("pick", "--out", "there", status=FAILED)["name"], "file_exists")
        self.assertEqual((self.work / "there" / "signCert.der").read_text(), "mine")
        self.answer("pick", "--out", "there", "--force")
        self.assertNotEqual((self.work / "there" / "signCert.der").read_bytes(), b"mine")

    def test_a_folder_that_cannot_be_made(self):
        for language, message in (("en", "cannot make the folder text.txt/folder: Not a directory"),
                                  ("ko", "text.txt/folder 폴더를 만들 수 없습니다: Not a directory")):
            error = self.error("pick", "--out", "text.txt/folder", "--language", language, status=FAILED)
            self.assertEqual((error["name"], error["message"]), ("file_not_written", message))

    def test_nothing_is_asked_about_a_file_that_is_not_there(self):
        self.assertEqual(self.error("pick", "--sign", "gone.txt", status=FAILED)["name"], "not_found")

    def test_a_person_who_cancels(self):
        error = self.error("pick", "--out", "cancelled", status=NO, environment={"QT_QPA_GENERIC_PLUGINS": "dialog-user:cancel"})
        self.assertEqual((error["code"], error["name"]), (-1, "SIGIL_CANCELLED"))
        self.assertFalse((self.work / "cancelled").exists())

    def test_the_dialogs_program_ends_when_nobody_asks_it(self):
        program = BUILD / "lib" / "sigildesk" / "sigildesk-pick"
        self.assertEqual(subprocess.run([program], env=self.environment, stdin=subprocess.DEVNULL, check=False).returncode, 1)
        ours, its = socket.socketpair()
        with ours, subprocess.Popen([program], env=self.environment, stdin=its) as process:
            its.close()
            self.assertTrue(ours.recv(1), "it says what it is")
            ours.shutdown(socket.SHUT_WR)
            self.assertEqual(process.wait(timeout=120), 1)


main()
