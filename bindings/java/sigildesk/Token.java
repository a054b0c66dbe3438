// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

import java.util.List;

/** A token (PKCS#11) and the certificates on it, DER. */
public record Token(long slot, boolean initialised, String label, String maker, String model, String serial,
    List<byte[]> certificates) {
}
