# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""A store for the hosts of this folder, on a disk that is a folder."""

import subprocess


def store(program, folder):
    """Makes two NPKI certificates in the folder. What they are: a dictionary each, by the columns of sample-store."""
    made = subprocess.run(
        [program, "--target", folder, "--count", "2", "--pairs", "signing", "--state", "valid", "--format", "tsv"],
        check=True, capture_output=True, text=True, encoding="utf-8").stdout.splitlines()
    return [dict(zip(made[0].split("\t"), row.split("\t"))) for row in made[1:]]
