# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""list, show, and which certificate a CERT and the filters mean."""

import datetime
import os
import pathlib
import shutil

from command import DONE, FAILED, NO, WRONG_USE, CommandTest, main, width

MEMBERS = ["index", "name", "subject", "issuer", "issuer_name", "serial", "use", "policy", "family", "medium", "valid_from",
           "valid_to", "days_left", "expired", "has_key", "has_km", "files"]


class ListTest(CommandTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.report = cls.store("--count", "10", "--families", "npki,gpki", "--keys", "2")

    def listed(self, *arguments, status=DONE):
        return self.json("list", *arguments, status=status)["certificates"]

    def test_one_line_a_certificate(self):
        lines = self.answer("list").splitlines()
        self.assertEqual(len(lines), 10)
        self.assertEqual([int(line.split()[0]) for line in lines], list(range(10)))

    def test_members_and_their_order(self):
        for certificate in self.listed():
            self.assertEqual(list(certificate), MEMBERS)
            self.assertEqual(list(certificate["files"]), ["certificate", "key", "km_certificate", "km_key"])

    def test_members_say_what_the_store_has(self):
        listed = {certificate["serial"]: certificate for certificate in self.listed()}
        self.assertEqual(len(listed), 10)
        for row in self.report:
            certificate = listed[row["serial"]]
            self.assertEqual(certificate["subject"], row["subject"])
            self.assertEqual(certificate["issuer"], row["issuer"])
            self.assertEqual(certificate["family"], row["family"])
            self.assertIn(certificate["policy"], row["policy"].split())
            self.assertEqual(certificate["medium"], "disk")
            self.assertEqual(certificate["expired"], row["state"] == "expired")
            self.assertTrue(certificate["valid_to"].endswith("+09:00"))
            self.assertEqual(datetime.datetime.fromisoformat(certificate["valid_to"]),
                             datetime.datetime.fromisoformat(row["not_after"] + "+00:00"))
            self.assertEqual(certificate["has_km"], row["pairs"] == "both")
            self.assertEqual(certificate["files"]["key"], row["signing_key"])
            self.assertEqual(certificate["files"]["km_key"], row["km_key"] or None)

    def test_columns_stand_below_each_other(self):
        lines = self.answer("list").splitlines()
        dates = [str(certificate["valid_to"])[:10] for certificate in self.listed()]
        places = {width(line[:line.index(date)]) for line, date in zip(lines, dates)}
        self.assertEqual(len(places), 1, lines)

    def test_filters(self):
        everything = self.listed()

        def with_index(*arguments):
            return [certificate["index"] for certificate in self.listed(*arguments)]

        def expected(condition):
            return [certificate["index"] for certificate in everything if condition(certificate)]

        self.assertEqual(with_index("--family", "gpki"), expected(lambda c: c["family"] == "gpki"))
        self.assertEqual(with_index("--family", "gpki,npki"), list(range(10)))
        self.assertEqual(with_index("--issuer", "YESSIGN"), expected(lambda c: "yessign" in c["issuer"]))
        self.assertEqual(with_index("--expired"), expected(lambda c: c["expired"]))
        self.assertEqual(with_index("--valid"), expected(lambda c: not c["expired"]))
        self.assertEqual(with_index("--expires-within", "30"), expected(lambda c: 0 <= c["days_left"] < 30))
        one = everything[3]
        self.assertIn(3, with_index("--policy", one["policy"]))
        self.assertIn(3, with_index("--policy", one["policy"].replace(".", " ")))
        self.assertEqual(with_index("--policy", one["policy"]), expected(lambda c: c["policy"] == one["policy"]))
        self.assertEqual(with_index("--subject", one["subject"].replace(",", ", ")), [3])
        self.assertEqual(with_index("--serial", "0x" + one["serial"].upper()), [3])
        self.assertGreater(len(with_index("--expired")), 0)

    def test_no_match_is_no(self):
        document = self.json("list", "--serial", "ffff", status=NO)
        self.assertEqual(document["certificates"], [])
        self.assertEqual(document["error"]["code"], 1115)
        self.assertIn("Looked in", self.answer("list", "--serial", "ffff", status=NO))

    def test_nothing_found_names_the_folders(self):
        empty = self.work / "empty"
        empty.mkdir()
        answer = self.answer("list", "--media", empty, status=NO)
        self.assertIn(f"{empty}/NPKI/yessign/USER/", answer)
        self.assertIn(f"{empty}/GPKI/Certificate/class2/", answer)

    def test_media(self):
        other = self.work / "usb"
        self.store("--count", "2", "--keys", "2", target=other)
        listed = self.listed("--media", other)
        self.assertEqual([certificate["medium"] for certificate in listed], [str(other)] * 2)
        self.assertEqual(self.error("list", "--media", self.work / "gone", status=FAILED)["name"], "not_found")
        self.assertEqual(self.listed("--media", "disk"), self.listed())

    def test_cert_forms(self):
        one = self.listed()[7]
        der = one["files"]["certificate"]
        forms = ["7", der, "serial:" + one["serial"], "serial:00" + one["serial"].upper(), "cn:" + one["name"].upper(),
                 str(pathlib.Path(der).parent)]
        for form in forms:
            self.assertEqual(self.json("show", form)["certificate"]["serial"], one["serial"], form)
        pem = self.openssl("x509", "-inform", "DER", "-in", der)
        (self.work / "one.pem").write_bytes(pem)
        self.assertEqual(self.json("show", self.work / "one.pem")["certificate"]["serial"], one["serial"])
        with open(der, "rb") as file:
            self.assertEqual(self.json("show", "-", stdin=file)["certificate"]["serial"], one["serial"])

    def test_a_pair_in_a_shared_folder(self):
        one = next(c for c in self.listed() if c["family"] == "gpki")
        shown = self.json("show", one["files"]["certificate"])["certificate"]
        self.assertEqual(shown["files"], one["files"])
        self.assertEqual(self.error("show", pathlib.Path(one["files"]["certificate"]).parent, status=NO)["name"],
                         "ambiguous")

    def test_a_key_management_certificate_has_its_own_key(self):
        one = next(c for c in self.listed() if c["family"] == "gpki" and c["has_km"])
        shown = self.json("show", one["files"]["km_certificate"])["certificate"]["files"]
        self.assertEqual(shown, {"certificate": one["files"]["km_certificate"], "key": one["files"]["km_key"],
                                 "km_certificate": None, "km_key": None})

    def test_a_pair_in_other_letter_case(self):
        one = next(c for c in self.listed() if c["family"] == "npki")
        folder = self.work / "letter case"
        folder.mkdir()
        (folder / "SIGNPRI.KEY").mkdir()
        shutil.copy(one["files"]["certificate"], folder / "SignCert.DER")
        shown = self.json("show", folder)["certificate"]
        self.assertEqual((shown["serial"], shown["files"]["certificate"]), (one["serial"], str(folder / "SignCert.DER")))
        self.assertIsNone(shown["files"]["key"], "a folder is no key")
        (folder / "SIGNPRI.KEY").rmdir()
        shutil.copy(one["files"]["key"], folder / "SIGNPRI.KEY")
        self.assertEqual(self.json("show", folder)["certificate"]["files"]["key"], str(folder / "SIGNPRI.KEY"))

    def test_a_certificate_that_is_not_valid_yet(self):
        later = (datetime.date.today() + datetime.timedelta(days=800)).isoformat()
        self.store("--count", "1", "--keys", "2", "--state", "valid", "--now", later, target=self.work / "later")
        self.assertIn("not valid yet", self.answer("list", "--media", self.work / "later"))

    def test_several_fit(self):
        one = self.listed()[7]
        twice = pathlib.Path(one["files"]["certificate"]).parent
        copy = twice.with_name(twice.name + " (2)")
        shutil.copytree(twice, copy)
        self.addCleanup(shutil.rmtree, copy)
        error = self.error("show", "serial:" + one["serial"], status=NO)
        self.assertEqual(error["name"], "ambiguous")
        self.assertEqual([candidate["serial"] for candidate in error["candidates"]], [one["serial"]] * 2)
        process = self.run_command("show", "cn:" + one["name"])
        self.assertEqual((process.returncode, process.stdout), (NO, ""))
        self.assertEqual(process.stderr.count(one["serial"]), 2)

    def test_no_such_certificate(self):
        for form in ("99", "serial:ffff", "cn:nobody"):
            self.assertEqual(self.error("show", form, status=NO)["name"], "no_match", form)
        self.assertEqual(self.error("show", "/no/such/file", status=FAILED)["name"], "not_found")
        self.assertEqual(self.error("show", self.work, status=NO)["name"], "no_match")
        self.assertEqual(self.error("show", "0", "--serial", "ffff", status=NO)["name"], "no_match")
        path = self.listed()[0]["files"]["certificate"]
        self.assertIn("options", self.error("show", path, "--serial", "ffff", status=NO)["message"])
        for form in ("", "1234567890"):  # no index
            self.assertEqual(self.error("show", form, status=FAILED)["name"], "not_found", form)
        self.assertEqual(self.error("list", "--family", "xpki", status=WRONG_USE)["name"], "wrong_use")

    def test_an_empty_certificate(self):
        (self.work / "empty.der").touch()
        for form in ("empty.der", "-"):  # standard input is empty
            self.assertEqual(self.error("show", form, status=FAILED)["name"], "empty_file", form)

    def test_paths_that_the_system_refuses(self):
        error = self.error("show", "a" * 300, status=FAILED)
        self.assertEqual((error["name"], error["message"]), ("file_not_read", f"cannot read {'a' * 300}: File name too long"))
        loop = self.work / "loop"
        loop.mkdir()
        (loop / "signCert.der").symlink_to("signCert.der")
        self.assertEqual(self.error("show", loop, status=NO)["name"], "no_match")

    def test_what_standard_input_may_be(self):
        large = self.work / "large.der"
        large.write_bytes(bytes((1 << 20) + 1))
        for path, message in ((large, "standard input holds more than a certificate"),
                              (self.work, "cannot read -: Is a directory")):
            descriptor = os.open(path, os.O_RDONLY)
            self.addCleanup(os.close, descriptor)
            error = self.error("show", "-", status=FAILED, stdin=descriptor)
            self.assertEqual((error["name"], error["message"]), ("file_not_read", message))

    def test_show_has_fingerprints_and_files(self):
        one = self.listed()[7]
        shown = self.json("show", "7")["certificate"]
        self.assertEqual({key: shown[key] for key in MEMBERS}, one)
        for kind in ("sha1", "sha256"):
            said = self.openssl("x509", "-inform", "DER", "-in", one["files"]["certificate"], "-noout", "-fingerprint", "-" + kind)
            self.assertEqual(shown["fingerprints"][kind], said.decode().strip().split("=")[1])
        text = self.answer("show", "7")
        for value in (one["subject"], one["serial"], one["files"]["key"], shown["fingerprints"]["sha256"]):
            self.assertIn(value, text)

    def test_both_toolkits(self):
        self.assertEqual(self.json("list", "--toolkit", "gpki"), self.json("list", "--toolkit", "maker"))
        self.assertEqual(self.json("show", "3", "--toolkit", "gpki"), self.json("show", "3"))


main()
