# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""A language that looks functions up by their names: names_test.py SAMPLE_STORE FLAT_LIBRARY LIBRARY_FOLDER."""

import ctypes
import pathlib
import sys
import tempfile
import unittest

import sample

SAMPLE_STORE, FLAT, LIBRARY_FOLDER = sys.argv[1:4]


class BINSTR(ctypes.Structure):
    _fields_ = [("pData", ctypes.POINTER(ctypes.c_ubyte)), ("nLength", ctypes.c_int)]


class CodeText(ctypes.Structure):
    _fields_ = [("code", ctypes.c_int), ("name", ctypes.c_char_p), ("layer", ctypes.c_char_p),
                ("sentence", ctypes.c_char_p), ("advice", ctypes.c_char_p)]


class Names(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.store = folder.name
        cls.rows = sample.store(SAMPLE_STORE, folder.name)
        cls.library = ctypes.CDLL(FLAT)

    def succeeds(self, name, *arguments):
        self.assertEqual(getattr(self.library, name)(*arguments), 0, name)

    def test_reads_a_certificate(self):
        der = pathlib.Path(self.rows[0]["signing_certificate"]).read_bytes()
        handle, certificate, subject = ctypes.c_void_p(), BINSTR(), ctypes.create_string_buffer(1024)
        self.succeeds("HV_Initalize", ctypes.byref(handle), 0, LIBRARY_FOLDER.encode())
        self.succeeds("HV_BINSTR_Create", handle, ctypes.byref(certificate))
        self.succeeds("HV_BINSTR_SetData", handle, der, len(der), ctypes.byref(certificate))
        self.succeeds("CertLoad", handle, ctypes.byref(certificate))
        self.succeeds("CertGetSubjectName", handle, len(subject), subject)
        self.succeeds("HV_BINSTR_Delete", handle, ctypes.byref(certificate))
        self.library.HV_Finish(handle)
        self.assertEqual(subject.value.decode("cp949"), self.rows[0]["subject"])

    def test_lists_a_store(self):
        options = ctypes.create_string_buffer(5390)
        options[0] = 2
        handle = ctypes.c_void_p()
        self.succeeds("CLP_Initalize", ctypes.byref(handle), None, 0, 1, LIBRARY_FOLDER.encode())
        self.succeeds("CLP_SetType", handle, options)
        self.succeeds("CLP_SetMediaType", handle, 2, self.store.encode(), 0)
        self.succeeds("CLP_LoadCertList", handle)
        self.assertEqual(self.library.CLP_GetCertCount(handle), len(self.rows))
        self.succeeds("CLP_UnInitalize", handle)

    def test_gives_the_result_of_what_it_forwards_to(self):
        self.assertEqual(self.library.CLP_GetCertCount(None), 1008)
        self.assertEqual(self.library.CLP_MediaDisConnect(None), 1003)

    def test_finds_what_is_c_already_behind_it(self):
        text = CodeText()
        self.succeeds("sigil_code_text", 1008, 2, ctypes.byref(text))
        self.assertEqual(text.name, b"SIGIL_NO_HANDLE")
        self.assertTrue(self.library.ShowUserCert_T)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
