// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

/** The cipher of an encrypted message. */
public enum Cipher {
    AES256(0), AES192(1), AES128(2), ARIA256(3), ARIA192(4), ARIA128(5), SEED(6), TRIPLE_DES(7);

    final int number;

    Cipher(int number) {
        this.number = number;
    }
}
