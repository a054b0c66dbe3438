# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""The package over a store whose names and password are Korean. Where it is, the environment says."""

import datetime
import gc
import inspect
import os
import pathlib
import tempfile
import threading
import typing
import unittest
import unittest.mock

import sigildesk
from sigildesk import Cipher, Entry, Family, Form, Language, Protection, Purpose, Session, SigilError

FOLDER, STORE, PASSWORD, NAME, IDENTITY, TOKEN, PLUGINS = (
    os.environ[f"SIGIL_TEST_{name}"]
    for name in ("FOLDER", "STORE", "PASSWORD", "NAME", "IDENTITY", "TOKEN", "PLUGINS"))
CONTRACT, OTHER = "계약서".encode(), "다른 글".encode()


class Sessions(unittest.TestCase):
    def setUp(self):
        self.session = self.opened()
        self.entry = self.session.list(STORE)[0]

    def opened(self, language=Language.ENGLISH):
        session = Session(FOLDER, language=language)
        self.addCleanup(session.close)
        return session

    def refused(self, code, function, *arguments):
        with self.assertRaises(SigilError) as caught:
            function(*arguments)
        self.assertEqual(caught.exception.code, code)
        return caught.exception

    def failing(self, function, *arguments):
        """The code that the function fails with."""
        with self.assertRaises(SigilError) as caught:
            function(*arguments)
        return caught.exception.code

    def test_a_korean_name_comes_out_as_it_is(self):
        fields = self.entry.fields
        self.assertEqual((fields.name, self.entry.name), (NAME, NAME))
        self.assertEqual((fields.family, fields.has_key, fields.unlocked, fields.expired), (Family.NPKI, True, False, False))
        now = datetime.datetime.now(datetime.timezone.utc)
        self.assertTrue(fields.valid_from < now < fields.valid_to)
        self.assertTrue(pathlib.Path(fields.certificate_file).is_file())
        self.assertTrue(pathlib.Path(fields.key_file).is_file())

    def test_a_wrong_password_has_its_code_and_words(self):
        for language, word in (Language.ENGLISH, "password"), (Language.KOREAN, "비밀번호"):
            error = self.refused(1113, self.opened(language).list(STORE)[0].unlock, "틀린 비밀번호")
            self.assertEqual(error.name, "SIGIL_WRONG_PASSWORD")
            self.assertIn(word, error.sentence)
            self.assertTrue(error.advice)

    def test_a_detached_signature_covers_its_data_alone(self):
        self.entry.unlock(PASSWORD)
        signed = self.entry.sign(CONTRACT, Form.DETACHED)
        signer = self.session.verify(signed, CONTRACT)[1][0]
        self.assertEqual((signer.fields.name, signer.certificate), (NAME, self.entry.certificate()))
        self.assertRaises(SigilError, self.session.verify, signed, OTHER)

    def test_a_signature_value_verifies(self):
        self.entry.unlock(PASSWORD)
        value = self.entry.sign(CONTRACT, Form.RAW)
        self.session.verify_raw(self.entry.certificate(), CONTRACT, value)
        self.assertRaises(SigilError, self.session.verify_raw, self.entry.certificate(), OTHER, value)

    def test_a_locked_entry_decrypts_nothing(self):
        message = self.session.encrypt([self.entry.certificate()], CONTRACT, Cipher.SEED)
        self.entry.unlock(PASSWORD)
        self.assertEqual(self.entry.decrypt(message), CONTRACT)
        self.assertTrue(self.entry.private_key())
        self.entry.lock()
        self.assertRaises(SigilError, self.entry.decrypt, message)

    def disk(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        return folder.name

    def test_what_is_copied_is_another_s_until_it_is_deleted(self):
        disk = self.disk()
        self.entry.copy(disk)
        self.refused(1602, self.entry.copy, disk)
        self.entry.copy(disk, replace=True)
        copied = self.session.list(disk)[0]
        file = pathlib.Path(copied.fields.certificate_file)
        self.assertTrue(file.is_file())
        self.assertEqual(copied.name, NAME)
        copied.delete()
        self.assertFalse(file.exists())
        self.assertEqual(self.session.list(disk), [])

    def test_pairs_go_out_and_in_under_another_password(self):
        disk = self.disk()
        self.refused(1601, self.entry.export, "또 다른 5678?")
        self.entry.unlock(PASSWORD)
        pkcs12 = self.entry.export("또 다른 5678?", Protection.AES256)
        self.refused(1113, self.session.import_pairs, pkcs12, PASSWORD, disk)
        self.session.import_pairs(pkcs12, "또 다른 5678?", disk)
        brought = self.session.list(disk)[0]
        self.refused(1113, brought.unlock, PASSWORD)
        brought.unlock("또 다른 5678?")

    def test_a_changed_password_opens(self):
        disk = self.disk()
        self.entry.copy(disk)
        copied = self.session.list(disk)[0]
        self.refused(1113, copied.change_password, "틀린 비밀번호", "새 비밀번호 9!")
        copied.change_password(PASSWORD, "새 비밀번호 9!")
        self.refused(1113, copied.unlock, PASSWORD)
        copied.unlock("새 비밀번호 9!")

    def test_the_holder_s_identity_number_is_told_from_another(self):
        self.entry.unlock(PASSWORD)
        self.entry.identity(IDENTITY)
        self.refused(1132, self.entry.identity, "0000000000000")

    def test_a_certificate_is_valid_under_its_authorities(self):
        certificate = self.entry.certificate()
        authorities = [file.read_bytes() for file in pathlib.Path(STORE, "ca").glob("*.der")]
        self.session.verify_certificate(certificate, authorities, revocation=False, purpose=Purpose.SIGN)
        later = self.entry.fields.valid_to + datetime.timedelta(days=1)
        self.refused(3202, lambda: self.session.verify_certificate(certificate, authorities, revocation=False, time=later))
        self.refused(1605, lambda: self.session.status(certificate, authorities, responder="http://127.0.0.1:1/"))

    def test_a_stamp_is_of_an_authority_that_can_be_reached(self):
        self.assertIn(self.failing(self.session.timestamp, "http://127.0.0.1:1/", CONTRACT), {3600, 3601, 3602})
        self.assertNotEqual(self.failing(self.session.stamp, b"no token", CONTRACT), 0)

    def test_findings_say_why_something_is_listed(self):
        findings = self.session.examine(STORE)
        listed = [finding.path for finding in findings if finding.listed]
        self.assertTrue(any(self.entry.fields.certificate_file.startswith(path) for path in listed), findings)
        self.assertTrue(all(finding.rule and finding.detail for finding in findings))

    def test_a_token_is_told_with_its_certificate(self):
        token = next(token for token in self.session.tokens() if token.label == TOKEN)
        self.assertTrue(token.initialised and token.maker)
        self.assertEqual(token.certificates, (self.entry.certificate(),))

    def test_nobody_picks_without_a_display(self):
        self.refused(1607, self.session.pick)
        self.assertEqual(self.entry.name, NAME)

    def picked(self, how):
        """What pick gives when somebody uses the dialog: it is shown by another process, for which the environment is."""
        told = {"passwd": f"user:x:{os.getuid()}:0:user:{STORE}:/bin/sh\n", "group": "user:x:0:\n", "password": PASSWORD}
        folder = pathlib.Path(self.disk())
        for name, text in told.items():
            (folder / name).write_text(text, encoding="utf-8")
        environment = {"LD_PRELOAD": "libnss_wrapper.so", "NSS_WRAPPER_PASSWD": f"{folder}/passwd",
                       "NSS_WRAPPER_GROUP": f"{folder}/group", "QT_QPA_PLATFORM": "offscreen", "QT_PLUGIN_PATH": PLUGINS,
                       "QT_QPA_GENERIC_PLUGINS": f"dialog-user:{how}", "SIGIL_TEST_PASSWORD_FILE": f"{folder}/password"}
        with unittest.mock.patch.dict(os.environ, environment):
            return self.session.pick(families=Family.NPKI, policies=[self.entry.fields.policy])

    def test_what_the_user_picked_signs(self):
        mine = self.picked("0")
        self.assertEqual((mine.name, mine.fields.unlocked), (NAME, True))
        self.assertEqual(self.session.verify(mine.sign(CONTRACT))[1][0].fields.name, NAME)
        self.assertIsNone(self.picked("cancel"))

    def test_a_session_locks_all_its_entries(self):
        self.entry.unlock(PASSWORD)
        self.session.lock()
        self.assertFalse(self.entry.fields.unlocked)

    def test_a_closed_session_is_refused(self):
        self.session.close()
        self.session.close()
        self.refused(1008, lambda: self.entry.fields)
        self.refused(1008, self.entry.unlock, PASSWORD)
        self.refused(1008, self.entry.sign, CONTRACT)
        self.refused(1008, self.session.list, STORE)
        self.refused(1008, self.session.verify, CONTRACT)

    def test_the_end_of_a_with_statement_closes(self):
        with Session(FOLDER) as session:
            entry = session.list(STORE)[0]
        self.refused(1008, entry.certificate)

    def test_an_entry_of_an_older_list_is_refused(self):
        newer = self.session.list(STORE)[0]
        self.refused(1001, lambda: self.entry.fields)
        self.assertEqual(newer.name, NAME)

    def test_an_entry_keeps_its_session(self):
        entry = Session(FOLDER).list(STORE)[0]
        gc.collect()
        self.assertEqual(entry.name, NAME)

    def test_threads_take_turns_in_a_session(self):
        self.entry.unlock(PASSWORD)
        signed = []
        threads = [threading.Thread(target=lambda: signed.append(self.entry.sign(CONTRACT))) for _ in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual([self.session.verify(message)[0] for message in signed], [CONTRACT] * 4)

    def test_a_zero_character_cuts_no_text_short(self):
        self.assertRaises(ValueError, self.entry.unlock, PASSWORD + "\0")

    def test_a_folder_without_a_library_is_no_session(self):
        self.assertRaises(SigilError, Session, "/no/such/folder")


class Package(unittest.TestCase):
    def test_says_its_types(self):
        self.assertTrue(pathlib.Path(sigildesk.__file__).with_name("py.typed").is_file())
        self.assertEqual(typing.get_type_hints(Entry.sign)["return"], bytes)

    def test_explains_what_it_offers(self):
        for kind in Session, Entry:
            for name, member in inspect.getmembers(kind):
                if not name.startswith("_"):
                    self.assertTrue(inspect.getdoc(member), f"{kind.__name__}.{name}")

    def test_is_of_the_library_s_version(self):
        self.assertRegex(sigildesk.version(), r"^\d+\.\d+\.\d+$")


if __name__ == "__main__":
    unittest.main()
