// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

import java.time.Instant;

/** Who signed a message that was verified: the certificate in DER and what it says; when the message says that it was
 *  signed, and the time of its time stamp (null without them); the result of verifying the time stamp. */
public record Signer(byte[] certificate, Fields fields, Instant signingTime, Instant stampTime, int stampCode) {
    static Signer of(CLibrary.SignerRecord told, byte[] certificate, Fields fields) {
        return new Signer(certificate, fields, time(told.signingTime), time(told.stampTime), told.stampCode);
    }

    private static Instant time(long seconds) {
        return seconds == 0 ? null : Instant.ofEpochSecond(seconds);
    }
}
