// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

/** What stands at one place, and why it is listed or not: the name of the rule, what there is to say, how to mend it. */
public record Finding(boolean listed, String path, String rule, String detail, String mend) {
}
