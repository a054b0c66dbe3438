// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

import java.time.Instant;

/** By what a certificate is judged; as it is made: by the roots of the settings, for any purpose, now, with revocation. */
public final class Judge {
    byte[][] trusted = {};
    Purpose purpose = Purpose.ANY;
    Instant time;
    boolean noRevocation;
    String responder;

    /** Roots and others of the path, DER or PEM. */
    public Judge trusted(byte[]... certificates) {
        trusted = certificates.clone();
        return this;
    }

    /** Not for the status. */
    public Judge purpose(Purpose wanted) {
        purpose = wanted;
        return this;
    }

    /** When it is to hold; not for the status. */
    public Judge time(Instant when) {
        time = when;
        return this;
    }

    /** Nobody is asked whether it is revoked; not for the status. */
    public Judge noRevocation() {
        noRevocation = true;
        return this;
    }

    /** The address of the OCSP responder; for the status alone. */
    public Judge responder(String url) {
        responder = url;
        return this;
    }
}
