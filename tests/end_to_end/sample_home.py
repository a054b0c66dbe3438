# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""A home folder with two NPKI certificates, for hosts that tests build and run."""

import csv
import io
import os
import subprocess

PASSWORD = "sample1234!"


def make(folder, build_tree, *options):
    """What is known of each certificate, and the environment in which the library finds them."""
    made = subprocess.run(
        [build_tree / "bin" / "sample-store", "--target", folder / "home", "--count", "2", "--families", "npki",
         "--state", "valid", "--format", "tsv", *options], check=True, capture_output=True, text=True).stdout
    (folder / "passwd").write_text(f"host:x:{os.getuid()}:0:host:{folder}/home:/bin/sh\n", encoding="utf-8")
    (folder / "group").write_text("host:x:0:\n", encoding="utf-8")
    preload = {"LD_PRELOAD": "libnss_wrapper.so", "NSS_WRAPPER_PASSWD": f"{folder}/passwd",
               "NSS_WRAPPER_GROUP": f"{folder}/group", "NSS_WRAPPER_DISABLE_DEEPBIND": "1",
               "ASAN_OPTIONS": "verify_asan_link_order=0:detect_leaks=0"}
    rows = list(csv.DictReader(io.StringIO(made), delimiter="\t", quoting=csv.QUOTE_NONE))
    return rows, {**os.environ, **preload}
