// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

import java.util.List;

/** A message that was verified: its content, and who signed it. */
public record Verified(byte[] content, List<Signer> signers) {
}
