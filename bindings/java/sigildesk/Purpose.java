// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

/** What a certificate is wanted for. */
public enum Purpose {
    ANY(0), SIGN(1), ENCRYPT(2);

    final int number;

    Purpose(int number) {
        this.number = number;
    }
}
