// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

/** What a signature is: a message with its content, one without it, or the value alone. */
public enum Form {
    ATTACHED(0), DETACHED(1), RAW(2);

    final int number;

    Form(int number) {
        this.number = number;
    }
}
