// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

/** Which certificates to list; as it is made, all of the home folder. */
public final class Filter {
    String medium;
    String issuer;
    String policy;
    String subject;
    String serial;
    int families;
    int expiresWithin;
    boolean valid;
    boolean expired;

    /** A mounted disk's folder instead of the home folder. */
    public Filter medium(String folder) {
        medium = folder;
        return this;
    }

    /** A part of the issuer's name. */
    public Filter issuer(String part) {
        issuer = part;
        return this;
    }

    /** The OID of a policy, dotted. */
    public Filter policy(String oid) {
        policy = oid;
        return this;
    }

    /** The whole subject. */
    public Filter subject(String name) {
        subject = name;
        return this;
    }

    /** The serial number, hexadecimal. */
    public Filter serial(String number) {
        serial = number;
        return this;
    }

    /** Families added up: 1 GPKI, 2 NPKI, 4 MPKI, 8 PPKI. */
    public Filter families(int sum) {
        families = sum;
        return this;
    }

    /** Only those that end within so many days. */
    public Filter expiresWithin(int days) {
        expiresWithin = days;
        return this;
    }

    /** Only those that are valid now. */
    public Filter valid() {
        valid = true;
        return this;
    }

    /** Only those that have expired. */
    public Filter expired() {
        expired = true;
        return this;
    }
}
