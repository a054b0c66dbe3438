// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

import java.time.Instant;

/** What a certificate says. Texts are empty where it does not say. {@code family}: 1 GPKI, 2 NPKI, 4 MPKI, 8 PPKI. */
public record Fields(String name, String subject, String issuer, String issuerName, String serial, String use,
    String policy, String policies, String version, String signatureAlgorithm, String keyAlgorithm, String keyLength,
    String keyUsage, String alternativeName, String authorityKeyId, String subjectKeyId, String revocationList,
    String authorityAccess, String certificateFile, String keyFile, String kmCertificateFile, String kmKeyFile,
    Instant validFrom, Instant validTo, int daysLeft, boolean expired, boolean expiresSoon, boolean hasKey, boolean hasKm,
    boolean unlocked, int family) {

    static Fields of(CLibrary.FieldsRecord told) {
        return new Fields(Texts.out(told.name), Texts.out(told.subject), Texts.out(told.issuer),
            Texts.out(told.issuerName), Texts.out(told.serial), Texts.out(told.use), Texts.out(told.policy),
            Texts.out(told.policies), Texts.out(told.version), Texts.out(told.signatureAlgorithm),
            Texts.out(told.keyAlgorithm), Texts.out(told.keyLength), Texts.out(told.keyUsage),
            Texts.out(told.alternativeName), Texts.out(told.authorityKeyId), Texts.out(told.subjectKeyId),
            Texts.out(told.revocationList), Texts.out(told.authorityAccess), Texts.out(told.certificateFile),
            Texts.out(told.keyFile), Texts.out(told.kmCertificateFile), Texts.out(told.kmKeyFile),
            Instant.ofEpochSecond(told.validFrom), Instant.ofEpochSecond(told.validTo), told.daysLeft, told.expired != 0,
            told.expiresSoon != 0, told.hasKey != 0, told.hasKm != 0, told.unlocked != 0, told.family);
    }
}
