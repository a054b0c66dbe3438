# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""tokens, over a token in software."""

import glob
import shutil
import subprocess

import shapes
from command import DONE, CommandTest, main

PIN = "1234"


class TokensTest(CommandTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.report = cls.store("--count", "1", "--keys", "2")
        (cls.work / "tokens").mkdir()
        config = cls.work / "softhsm2.conf"
        config.write_text(f"directories.tokendir = {cls.work}/tokens\nobjectstore.backend = file\nlog.level = ERROR\n")
        cls.environment["SOFTHSM2_CONF"] = str(config)
        cls.run_tool("softhsm2-util", "--init-token", "--free", "--label", "계약 토큰", "--pin", PIN, "--so-pin", "5678")
        module = glob.glob("/usr/lib/*/softhsm/libsofthsm2.so")[0]
        certificate = shutil.copy(cls.report[0]["signing_certificate"], cls.work / "certificate.der")
        cls.run_tool("pkcs11-tool", "--module", module, "--token-label", "계약 토큰", "--login", "--pin", PIN, "--write-object",
                     certificate, "--type", "cert", "--id", "01", "--label", "one")

    @classmethod
    def run_tool(cls, *arguments):
        subprocess.run([str(argument) for argument in arguments], check=True, capture_output=True, env=cls.environment)

    def test_tokens_and_their_certificates(self):
        for toolkit in ("maker", "gpki"):
            document = self.json("tokens", "--toolkit", toolkit, status=DONE)
            token = next(token for token in document["tokens"] if token["label"] == "계약 토큰")
            self.assertTrue(token["initialised"])
            self.assertEqual([c["serial"] for c in token["certificates"]], [self.report[0]["serial"]])
            shapes.check(self.answer("manual"), "tokens", document)
            self.assertIn("계약 토큰", self.answer("tokens", "--toolkit", toolkit))


main()
