// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

/** Of the names and messages that the library makes. */
public enum Language {
    KOREAN(1), ENGLISH(2);

    final int number;

    Language(int number) {
        this.number = number;
    }
}
