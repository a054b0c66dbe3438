# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""doctor: each certificate that is not listed has its reason, in agreement with list; what list says when it finds nothing."""

import os
import pathlib
import re
import shutil

from command import DONE, FAILED, NO, WRONG_USE, CommandTest, main

DOCUMENT = pathlib.Path(__file__).resolve().parents[3] / "docs" / "command-line.md"


class DoctorTest(CommandTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.store("--count", "6", "--families", "npki,gpki", "--keys", "2")
        cls.good = cls.work / "good"
        cls.store("--count", "2", "--keys", "2", "--pairs", "both", "--state", "valid", target=cls.good)

    def copy(self, name):
        """A disk with two certificates; it goes away with the test. @return the folder and those of the certificates"""
        disk = self.work / name
        shutil.copytree(self.good, disk)
        self.addCleanup(shutil.rmtree, disk)
        return disk, sorted(file.parent for file in disk.rglob("signCert.der"))

    def findings(self, *arguments, status=NO):
        return {finding["path"]: finding for finding in self.json("doctor", *arguments, status=status)["findings"]}

    def listed(self, *arguments):
        return {path for path, finding in self.findings(*arguments).items() if finding["rule"] == "listed"}

    def test_a_good_store(self):
        document = self.json("doctor", "--media", self.good)
        self.assertEqual(list(document), ["findings", "folders", "checks"])
        for finding in document["findings"]:
            self.assertEqual(list(finding), ["path", "listed", "rule", "detail", "mend"])
            self.assertEqual((finding["listed"], finding["rule"], finding["mend"]), (True, "listed", ""))
        self.assertEqual(len(document["findings"]), 2)
        self.assertEqual(sum(folder["listed"] for folder in document["folders"]), 2)
        checks = {check["check"] for check in document["checks"]}
        self.assertEqual(checks, {"library_folder", "toolkit", "list", "settings", "home_folder", "removable_disk"})
        self.assertTrue(all(check["ok"] for check in document["checks"]))

    def test_the_home_folder_agrees_with_the_list(self):
        everything = self.json("list")["certificates"]
        one = everything[2]
        filters = [[], ["--family", "gpki"], ["--issuer", "yessign"], ["--policy", one["policy"]], ["--expired"],
                   ["--subject", one["subject"]], ["--serial", one["serial"]], ["--valid"], ["--expires-within", "30"]]
        for arguments in filters:
            process = self.run_command("--json", "list", *arguments)
            listed = {certificate["files"]["certificate"] for certificate in
                      self.json("list", *arguments, status=process.returncode)["certificates"]}
            whole = len(listed) == len(everything)
            findings = self.findings(*arguments, status=DONE if whole else NO)
            self.assertEqual(len(findings), len(everything), arguments)
            self.assertEqual({path for path, finding in findings.items() if finding["listed"]}, listed, arguments)
        self.assertEqual({finding["rule"] for finding in self.findings("--valid").values()},
                         {"listed", "expired_left_out"})

    def test_defects_have_their_rules(self):
        disk, (first, second) = self.copy("defects")
        (first / "signPri.key").unlink()
        (second / "signCert.der").rename(second / "SIGNCERT.DER")
        moved = disk / "NPKI" / "Yessign" / "USER"
        shutil.copytree(self.good / second.relative_to(disk), moved / "a")
        findings = self.findings("--media", disk)
        self.assertEqual(findings[str(first / "signCert.der")]["rule"], "key_missing")
        self.assertEqual(findings[str(second / "SIGNCERT.DER")]["rule"], "file_letter_case")
        case = findings[str(moved / "a" / "signCert.der")]
        self.assertEqual(case["rule"], "folder_letter_case")
        self.assertIn("/NPKI/yessign/USER/", case["mend"])
        self.assertFalse(any(finding["listed"] for finding in findings.values()))

    def test_words_for_people_in_both_languages(self):
        disk, (first, _) = self.copy("words")
        (first / "signPri.key").unlink()
        english = self.answer("doctor", "--media", disk, "--language", "en", status=NO)
        self.assertIn("key_missing", english)
        self.assertIn("Mend: Copy the key file from where the certificate was issued", english)
        self.assertIn("1 certificates listed, 1 findings amiss.", english)
        korean = self.answer("doctor", "--media", disk, "--language", "ko", status=NO)
        self.assertIn("해결: 인증서를 발급받은 곳에서 개인키 파일도 복사하십시오", korean)

    def test_paths(self):
        disk, (first, second) = self.copy("paths")
        (first / "signPri.key").unlink()
        self.assertEqual([f["rule"] for f in self.findings(first).values()], ["key_missing"])
        self.assertEqual([f["rule"] for f in self.findings(second, status=DONE).values()], ["listed"])
        self.assertEqual(len(self.findings(first, second)), 2)
        self.assertEqual(len(self.findings(disk)), 2)
        outside = self.work / "outside"
        shutil.copytree(second, outside)
        self.addCleanup(shutil.rmtree, outside)
        self.assertEqual([f["rule"] for f in self.findings("outside").values()], ["outside_store"])
        self.assertEqual(self.error("doctor", disk / "gone", status=FAILED)["name"], "not_found")

    def test_without_a_toolkit(self):
        empty = self.work / "no library"
        empty.mkdir()
        self.addCleanup(empty.rmdir)
        document = self.json("doctor", "--media", self.good, "--folder", empty, status=NO)
        self.assertEqual({finding["rule"] for finding in document["findings"]}, {"list_not_built"})
        self.assertEqual([check["check"] for check in document["checks"] if not check["ok"]],
                         ["toolkit", "list", "settings"])

    def test_an_empty_store_has_nothing_amiss(self):
        empty = self.work / "empty disk"
        empty.mkdir()
        self.addCleanup(empty.rmdir)
        self.assertEqual(self.findings("--media", empty, status=DONE), {})

    def test_a_broken_installation_is_amiss_without_any_certificate(self):
        empty = self.work / "nothing"
        empty.mkdir()
        self.addCleanup(empty.rmdir)
        self.assertEqual(self.findings("--media", empty, "--folder", empty, status=NO), {})

    def test_a_certificate_that_is_listed_and_useless(self):
        disk, (first, _) = self.copy("useless")
        (first / "signPri.key").write_bytes(b"")
        finding = self.findings("--media", disk)[str(first / "signPri.key")]
        self.assertEqual((finding["listed"], finding["rule"]), (True, "key_empty"))
        lines = self.answer("doctor", "--media", disk, "--color", "always", status=NO).splitlines()
        yellow, green = "\x1b[33m", "\x1b[32m"
        self.assertIn(f"{yellow}{first / 'signPri.key'}  key_empty\x1b[0m", lines)
        self.assertIn(f"{green}{first / 'signCert.der'}  listed\x1b[0m", lines)

    def test_a_folder_that_cannot_be_searched_has_its_reason(self):
        disk = self.work / "file for a folder"
        disk.mkdir()
        self.addCleanup(shutil.rmtree, disk)
        (disk / "NPKI").touch()
        answer = self.answer("doctor", "--media", disk, status=NO)
        self.assertIn(f"{disk}/NPKI/yessign/USER/  Not a directory", answer)
        self.assertIn(f"{disk}/GPKI/Certificate/class2/  not there", answer)

    def test_list_says_what_stands_there(self):
        disk, (first, second) = self.copy("unlisted")
        for folder in (first, second):
            (folder / "signPri.key").unlink()
        answer = self.answer("list", "--media", disk, status=NO)
        self.assertIn(f"Not listed: {first / 'signCert.der'}: The private key", answer)
        self.assertIn("1 more", answer)
        error = self.error("list", "--media", disk, status=NO)
        self.assertEqual([(row["path"], row["rule"]) for row in error["not_listed"]],
                         [(str(folder / "signCert.der"), "key_missing") for folder in (first, second)])

    def test_control_characters_reach_no_terminal(self):
        disk, (first, _) = self.copy("control")
        first.rename(first.with_name("a\x1b[31mb"))
        (first.with_name("a\x1b[31mb") / "signPri.key").unlink()
        self.assertNotIn("\x1b", self.answer("doctor", "--media", disk, status=NO))

    def test_every_rule_stands_in_the_document(self):
        documented = set(re.findall(r"^\| `([a-z0-9_]+)` \|", DOCUMENT.read_text(encoding="utf-8"), re.MULTILINE))
        self.assertIn("listed", documented)
        self.assertTrue({"key_missing", "folder_letter_case", "outside_store"} <= documented)


class CodesTest(CommandTest):
    def test_one_code(self):
        self.assertEqual(self.answer("codes", "1113"),
                         "1113  SIGIL_WRONG_PASSWORD\n    The password is wrong.\n"
                         "    Type it again; letter case and keyboard language count.\n")
        self.assertIn("비밀번호가 틀렸습니다.", self.answer("codes", "1113", "--language", "ko"))
        code = self.json("codes", "sigil_tk_verify_revoked")["codes"]
        self.assertEqual([list(row) for row in code], [["code", "name", "layer", "sentence", "advice"]])
        self.assertEqual(code[0]["code"], 3204)

    def test_the_cancelled_code(self):
        self.assertIn("SIGIL_CANCELLED", self.answer("codes", "-1"))

    def test_all_codes_are_those_of_the_document(self):
        document = (DOCUMENT.parent / "codes.md").read_text(encoding="utf-8")
        codes = self.json("codes")["codes"]
        self.assertEqual([f"{row['code']}" for row in codes], re.findall(r"^\| (-?\d+) \|", document, re.MULTILINE))

    def test_no_code(self):
        self.assertIn("of its own", self.answer("codes", "7777", status=NO))
        self.assertEqual(self.error("codes", "hello", status=WRONG_USE)["name"], "wrong_use")


if __name__ == "__main__":
    main()
