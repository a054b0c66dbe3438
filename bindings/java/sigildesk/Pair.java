// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

/** Which certificate and key of an entry. */
public enum Pair {
    SIGNING(0), KEY_MANAGEMENT(1);

    final int number;

    Pair(int number) {
        this.number = number;
    }
}
