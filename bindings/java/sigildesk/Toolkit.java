// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

/** The toolkit that does the cryptography. */
public enum Toolkit {
    MAKER(0), GPKI(1);

    final int number;

    Toolkit(int number) {
        this.number = number;
    }
}
