# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Builds the wheel into dist/ with setuptools and nothing that is fetched, and unpacks it into installed/, to be tested as it
would be installed."""

import sys
import zipfile

from setuptools import build_meta

sys.argv = ["setup.py"]
wheel = build_meta.build_wheel("dist")
with zipfile.ZipFile(f"dist/{wheel}") as archive:
    archive.extractall("installed")
    print(wheel, *archive.namelist(), sep="\n")
