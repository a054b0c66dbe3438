# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""The package over a store whose names and password are Korean. Where it is, the environment says."""

import datetime
import gc
import inspect
import os
import pathlib
import threading
import typing
import unittest

import sigildesk
from sigildesk import Cipher, Entry, Family, Form, Language, Session, SigilError

FOLDER, STORE, PASSWORD, NAME = (os.environ[f"SIGIL_TEST_{name}"] for name in ("FOLDER", "STORE", "PASSWORD", "NAME"))
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
