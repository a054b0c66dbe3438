// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

/** How a PKCS#12 file is encrypted; every tool reads the first. */
public enum Protection {
    TRIPLE_DES(0), SEED(1), AES256(2);

    final int number;

    Protection(int number) {
        this.number = number;
    }
}
