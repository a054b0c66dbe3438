# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""What a host in C sees of a store is what was put into it: host_test.py SAMPLE_STORE HOST LIBRARY_FOLDER."""

import pathlib
import subprocess
import sys
import tempfile

import sample


def entry(row):
    """What the host says of a certificate: its path as the file system has it, its subject in CP949."""
    path = row["signing_certificate"]
    size = pathlib.Path(path).stat().st_size
    return [b"entry", path.encode(), row["subject"].encode("cp949"), str(size).encode(), b"2"]


def main():
    sample_store, host, library_folder = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        rows = sample.store(sample_store, folder)
        told = subprocess.run([host, library_folder, folder, rows[0]["signing_certificate"]], check=True,
                              capture_output=True).stdout
        expected = sorted(map(entry, rows))
    functions, subject, *entries = (line.split(b"\t") for line in told.splitlines())
    assert int(functions[1]) > 250, functions
    assert subject == [b"subject", rows[0]["subject"].encode("cp949")], subject
    assert sorted(entries) == expected, (entries, expected)


main()
