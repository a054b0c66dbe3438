// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

import java.time.Instant;

/** Whether a certificate is revoked; whether a revocation list says so or a responder; when it was (null: not told). */
public record Status(boolean revoked, boolean byList, Instant revokedAt) {
}
