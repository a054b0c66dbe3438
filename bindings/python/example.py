# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Lists, unlocks, signs, verifies and decrypts: example.py FOLDER_OF_A_DISK PASSWORD."""

import sys

import sigildesk

medium, password = sys.argv[1:]
with sigildesk.Session() as session:
    entries = session.list(medium, valid=True)
    for entry in entries:
        print(f"{entry.name}: {entry.fields.days_left} days left")
    mine = entries[0]
    mine.unlock(password)
    signed = mine.sign("계약서".encode())
    content, signers = session.verify(signed)
    print(f"{content.decode()}: signed by {signers[0].fields.name}")
    secret = session.encrypt([mine.certificate()], "비밀".encode())
    print(f"{mine.decrypt(secret).decode()}: decrypted")
