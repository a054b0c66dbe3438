// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

import java.time.Instant;

/** What a time stamp says; the policy is an OID, the serial number hexadecimal. */
public record Stamp(Instant time, String policy, String serial) {
}
