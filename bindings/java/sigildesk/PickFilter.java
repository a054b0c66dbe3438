// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

/** What the dialog lists; as it is made, everything. */
public final class PickFilter {
    String policies;
    String subject;
    String serial;
    int families;
    boolean withKm;
    boolean noExpired;
    boolean lockExpired;

    /** OIDs, dotted. */
    public PickFilter policies(String... oids) {
        policies = oids.length == 0 ? null : String.join("|", oids);
        return this;
    }

    /** The whole subject. */
    public PickFilter subject(String name) {
        subject = name;
        return this;
    }

    /** The serial number, hexadecimal. */
    public PickFilter serial(String number) {
        serial = number;
        return this;
    }

    /** Families added up: 1 GPKI, 2 NPKI, 4 MPKI, 8 PPKI. */
    public PickFilter families(int sum) {
        families = sum;
        return this;
    }

    /** Only those with a key-management pair. */
    public PickFilter withKm() {
        withKm = true;
        return this;
    }

    /** Without those that have expired. */
    public PickFilter noExpired() {
        noExpired = true;
        return this;
    }

    /** Those that have expired are shown, and cannot be chosen. */
    public PickFilter lockExpired() {
        lockExpired = true;
        return this;
    }
}
